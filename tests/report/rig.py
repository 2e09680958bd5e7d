"""What the tests of tidewatch-report share: the program as a process, lines to feed it, and the test's own options."""

import argparse
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

OPTIONS = argparse.Namespace()


def program(*words, data=None, **more):
    """Runs tidewatch-report; returns exit code, standard output and standard error."""
    done = subprocess.run([OPTIONS.program, *map(str, words)], input=data, capture_output=True, timeout=240, **more)
    return done.returncode, done.stdout, done.stderr.decode("utf-8", "replace")


def result(*words, data=None, expect=0):
    """The JSON of a command that ends with the expected code."""
    code, out, err = program(*words, "--json", data=data)
    assert code == expect, f"exit code {code}, not {expect}: {err}"
    return json.loads(out)


def closed(body):
    total = 0
    for c in body[1:].encode("latin-1"):
        total ^= c
    return f"{body}*{total:02X}"


def record(*lines):
    """Lines of ("hh:mm:ss" or a whole stamp, sentence) as a record file."""
    stamped = [(t if len(t) == 19 else "06/14/2025 " + t) + " " + s for t, s in lines]
    return "".join(s + "\r\n" for s in stamped).encode("latin-1")


class Bits:
    """A message bit by bit, as a station sends it."""

    def __init__(self, kind, mmsi):
        self.bits = ""
        self.add(kind, 6).add(0, 2).add(mmsi, 30)

    def add(self, value, count):
        self.bits += format(round(value) & ((1 << count) - 1), f"0{count}b")
        return self

    def text(self, text, characters):
        for c in text.ljust(characters, "@"):
            self.add(ord(c) & 63, 6)
        return self

    def sentence(self, channel="A"):
        whole = self.bits + "0" * (-len(self.bits) % 6)
        values = [int(whole[i:i + 6], 2) for i in range(0, len(whole), 6)]
        payload = "".join(chr(v + 48 if v < 40 else v + 56) for v in values)
        return closed(f"!AIVDM,1,1,,{channel},{payload},{len(whole) - len(self.bits)}")


def position(mmsi, latitude, longitude, kind=1, channel="A", status=0, speed=10.0, course=90.0, state=0,
             turn=0):
    """A class A position report; state is the communication state of its last 19 bits."""
    t = Bits(kind, mmsi).add(status, 4).add(turn, 8).add(speed * 10, 10).add(1, 1)
    t.add(longitude * 600000, 28).add(latitude * 600000, 27).add(course * 10, 12).add(511, 9).add(60, 6).add(0, 6)
    return t.add(state, 19).sentence(channel)


def levels(signal, threshold):
    return closed(f"$PNMLS,{signal},{threshold},3")


def gps(latitude=(50, 0.0), longitude=(1, 0.0)):
    return closed(f"$GPGLL,{latitude[0]:02d}{latitude[1]:07.4f},N,{longitude[0]:03d}{longitude[1]:07.4f},E,080000,A,A")


class Case(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, data):
        path = self.folder / name
        path.write_bytes(data)
        return path

    def sample(self, name):
        return pathlib.Path(OPTIONS.samples) / name


def main():
    parser = argparse.ArgumentParser()
    for name in ("program", "samples", "generator", "completion", "manual", "runs", "failing-calls"):
        parser.add_argument("--" + name)
    parser.parse_known_args(namespace=OPTIONS)
    _, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])
