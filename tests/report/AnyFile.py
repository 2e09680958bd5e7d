"""Every command on every state that a recording may be in: the counts are those of the independent reader, and what
cannot be said is named."""

import csv
import io
import json
import random
import re

import reader
import rig
from rig import position, program

COMMANDS = ["summary", "coverage", "range", "signal", "stations", "compare", "ships", "reports"]


def lines_of(data):
    return data.splitlines(keepends=True)


def moved(data, days):
    """The same lines so many days later, within the month."""
    return re.sub(rb"(?m)^(\d\d)/(\d\d)/", lambda m: b"%s/%02d/" % (m[1], int(m[2]) + days), data)


def damaged(data):
    chance = random.Random(13)
    spoiled = bytearray(data)
    for _ in range(len(data) // 200):
        spoiled[chance.randrange(len(data))] = chance.randrange(256)
    return bytes(spoiled)


def without(data, mark):
    return b"".join(line for line in lines_of(data) if not re.match(mark, line[20:]))


class AnyFile(rig.Case):
    def setUp(self):
        super().setUp()
        lines = lines_of(self.sample("harbour.txt").read_bytes())
        for i in range(len(lines) // 8, len(lines), len(lines) // 8):  # a ship that tells of 25 received stations
            lines[i] = lines[i][:20] + position(211000025, 50.8, -1.3, state=3 << 14 | 25).encode() + b"\r\n" + lines[i]
        harbour = b"".join(lines)
        half = harbour[:harbour.index(b"\n", len(harbour) // 2) + 1]
        self.states = {
            "whole": harbour,
            "damaged": damaged(harbour),
            "truncated in the middle of a line": harbour[:len(half) + 40],
            "clock set back": harbour[len(half):] + half,
            "several runs appended": half + moved(harbour, 1) + half,
            "a gap of a week": half + moved(harbour[len(half):], 7),
            "no GPS": without(harbour, rb"\$GP"),
            "no signal sentences": without(harbour, rb"\$PNMLS"),
            "neither messages nor signals": without(harbour, rb"\$PNMLS|!AIVDM"),
        }

    def result(self, command, path, *words):
        paths = [path, path] if command == "compare" else [path]
        code, out, err = program(command, "--json", *words, *paths)
        self.assertIn(code, (0, 1), (command, err))
        return code, json.loads(out)

    def test_counts_are_those_of_the_reader(self):
        for state, data in self.states.items():
            path, truth = self.file("a.txt", data), reader.Recording(data)
            count, levels = len(truth.messages), [m for m in truth.messages if m.levels]
            with self.subTest(state):
                summary = self.result("summary", path)[1]
                for kind in ("vdm", "pnmls", "gps", "other", "bad_stamp", "bad_size", "bad_checksum", "bad_vdm"):
                    self.assertEqual(summary["lines"][kind], truth.kinds.get(kind, 0), kind)
                self.assertEqual(summary["messages"]["messages"], count)
                self.assertEqual(summary["recording"]["seconds"], truth.seconds())
                self.assertEqual(len(self.result("reports", path)[1]["reports"]), count)
                self.assertEqual(sum(row["reports"] for row in self.result("ships", path)[1]["ships"]), count)
                self.assertEqual(self.result("signal", path)[1]["channels"][0]["reports"], len(levels))
                ranges = self.result("coverage", path)[1]
                dropped = sum(int(n) for note in ranges["notes"] for n in re.findall(r"^(\d+) .*positions", note))
                self.assertEqual(ranges["sectors"][-1]["reports"] + (dropped if truth.own else 0),
                                 sum(m.position is not None for m in truth.messages) if truth.own else 0)

    def test_every_command_says_it_whole_or_names_what_is_missing(self):
        wanting = {"no GPS": {"coverage": "own position", "range": "own position", "summary": "own position",
                              "ships": "own one", "signal": "no range"},
                   "no signal sentences": {"signal": "PNMLS", "summary": "PNMLS", "compare": "level"},
                   "neither messages nor signals": {command: "" for command in COMMANDS},
                   "truncated in the middle of a line": {command: "the last line has no end yet" for command in COMMANDS},
                   "clock set back": {"summary": "clock went back"}}
        unsaid = {"no GPS": {"coverage", "range"}, "no signal sentences": {"signal"},
                  "neither messages nor signals": set(COMMANDS)}
        for state, data in self.states.items():
            path = self.file("a.txt", data)
            for command in COMMANDS:
                with self.subTest(f"{command}, {state}"):
                    code, answer = self.result(command, path)
                    self.assertEqual(code, 1 if command in unsaid.get(state, ()) else 0)
                    text = wanting.get(state, {}).get(command)
                    if text is not None:
                        self.assertTrue([note for note in answer["notes"] if text in note], answer["notes"])

    def test_csv_is_a_table_whatever_the_file(self):
        for state, data in self.states.items():
            path = self.file("a.txt", data)
            for command in COMMANDS:
                with self.subTest(f"{command}, {state}"):
                    out = program(command, "--csv", path, *[path] * (command == "compare"))[1].decode()
                    widths = {len(row) for row in csv.reader(io.StringIO(out))}
                    self.assertLessEqual(len(widths), 1)


if __name__ == "__main__":
    rig.main()
