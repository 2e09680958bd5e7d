"""Debian's gpsdecode as the other decoder: what it makes of each message."""

import json
import subprocess

import ais_messages

MARK = 111222333  # the sender of the messages that are put in between to tell where one's answer ends


def mark(number):
    """A message of type 10, from MARK to that number."""
    value = ais_messages.put(0, 72, 0, 6, 10)
    value = ais_messages.put(value, 72, 8, 30, MARK)
    return ais_messages.single(ais_messages.put(value, 72, 40, 30, number), 72)


def decode(messages, *options):
    """For each list of sentences the message that they were to gpsdecode, a dictionary, or None."""
    lines = []
    for number, sentences in enumerate(messages):
        lines += [*sentences, mark(number)]
    told = subprocess.run(["gpsdecode", "-j", "-s", *options], input="\r\n".join(lines + [""]).encode("latin-1"),
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True).stdout
    answers = []
    answer = None
    for line in told.splitlines():
        message = json.loads(line.decode("latin-1"))
        if message["type"] == 10 and message["mmsi"] == MARK:
            assert message["dest_mmsi"] == len(answers), "gpsdecode lost a mark"
            answers.append(answer)
            answer = None
        else:
            assert answer is None, f"two answers to one message: {answer}, {message}"
            answer = message
    assert len(answers) == len(messages), "gpsdecode lost marks"
    return answers
