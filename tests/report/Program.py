"""The program as a process: what it takes, where it writes, how it ends."""

import gzip
import json
import os
import pty
import re
import subprocess
import time
import unittest

import rig
from rig import OPTIONS, levels, position, program, record, result

COMMANDS = ["summary", "coverage", "range", "signal", "stations", "compare", "ships", "reports", "watch"]


class Ends(rig.Case):
    def test_help_and_version(self):
        code, out, err = program("--help")
        self.assertEqual((code, err), (0, ""))
        for command in COMMANDS:
            self.assertIn(f"\n  {command} ", out.decode())
            self.assertEqual(program(command, "--help")[0], 0)
        self.assertRegex(program("--version")[1].decode(), r"^tidewatch-report \d+\.\d+\n$")

    def test_wrong_use(self):
        harbour = self.sample("harbour.txt")
        for words in ([], ["summary"], ["--nonsense", harbour], ["summary", "--by", "year", harbour],
                      ["coverage", "--sector", "7", harbour], ["coverage", "--sector", "0", harbour],
                      ["coverage", "--sector", "x", harbour], ["summary", "--position", "here", harbour],
                      ["coverage", "--by", "hour", harbour], ["--csv", "--json", harbour], ["-", "-"]):
            code, out, err = program(*words, data=b"")
            self.assertEqual((code, out), (2, b""), words)
            self.assertTrue(err.startswith("tidewatch-report: "), err)

    def test_a_file_that_cannot_be_read(self):
        code, out, err = program(self.folder / "nothing.txt", self.sample("harbour.txt"), "--json")
        self.assertEqual(code, 1)
        self.assertIn("nothing.txt: No such file or directory", err)
        self.assertEqual(json.loads(out)["messages"]["messages"], 1601)  # the other one is told of all the same
        self.assertEqual(program(self.folder)[0], 1)

    def test_broken_pipe_ends_quietly(self):
        done = subprocess.run(f"'{OPTIONS.program}' --json '{self.sample('harbour.txt')}' | true; echo ${{PIPESTATUS[0]}}",
                              shell=True, executable="/bin/bash", capture_output=True, timeout=60)
        self.assertEqual(done.stderr, b"")
        self.assertIn(done.stdout, (b"0\n", b"141\n"))  # 0: all was written before the other end went

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs /dev/full")
    def test_result_that_finds_no_room(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([OPTIONS.program, self.sample("harbour.txt")], stdout=full, stderr=subprocess.PIPE,
                                  timeout=60)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"No space left on device", done.stderr)

    def test_nothing_but_the_result(self):
        code, out, err = program(self.sample("harbour.txt"))
        self.assertEqual((code, err), (0, ""))
        self.assertNotIn(b"\x1b", out)

    def test_progress_on_a_terminal(self):
        """A pipe that stays silent for more than a second, then gives enough lines for a beat of the bar."""
        outer, inner = pty.openpty()
        data = self.sample("harbour.txt").read_bytes()
        process = subprocess.Popen([OPTIONS.program, "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=inner)
        os.close(inner)
        process.stdin.write(data)
        process.stdin.flush()
        started = time.monotonic()
        while time.monotonic() - started < 1.1:
            os.sched_yield()
        process.stdin.write(data * 40)
        process.stdin.close()
        out = process.stdout.read()
        self.assertEqual(process.wait(60), 0)
        process.stdout.close()
        self.assertIn(b"reading, ", os.read(outer, 4096))
        os.close(outer)
        self.assertNotIn(b"reading", out)


class Inputs(rig.Case):
    def setUp(self):
        super().setUp()
        self.data = self.sample("harbour.txt").read_bytes()
        self.expected = result(self.sample("harbour.txt"))

    def same(self, told):
        for key in ("recording", "lines", "messages", "types", "levels", "range"):
            self.assertEqual(told[key], self.expected[key], key)

    def test_standard_input(self):
        self.same(result("-", data=self.data))

    def test_packed(self):
        zst = subprocess.run(["zstd", "-q", "-c"], input=self.data, capture_output=True, check=True).stdout
        for name, packed in (("a.gz", gzip.compress(self.data)), ("a.zst", zst)):
            self.same(result(self.file(name, packed)))
            self.same(result("-", data=packed))
            self.same(result(self.file("no-suffix", packed)))

    def test_packed_pieces_one_behind_the_other(self):
        cut = len(self.data) // 3  # within a line
        pieces = self.data[:cut], self.data[cut:]
        zst = [subprocess.run(["zstd", "-q", "-c"], input=p, capture_output=True, check=True).stdout for p in pieces]
        self.same(result(self.file("a.gz", b"".join(map(gzip.compress, pieces)))))
        self.same(result(self.file("a.zst", b"".join(zst))))

    def test_packed_and_damaged(self):
        packed = gzip.compress(self.data)
        zst = subprocess.run(["zstd", "-q", "-c", "--check"], input=self.data, capture_output=True, check=True).stdout
        spoilt = bytearray(packed)
        spoilt[len(spoilt) // 2] ^= 0xFF
        for name, content, words in (("cut.gz", packed[:len(packed) // 2], "ends in the middle"),
                                     ("cut.zst", zst[:-8], "ends in the middle"),
                                     ("tail.gz", packed + b"xx", "damaged"), ("spoilt.gz", bytes(spoilt), "damaged")):
            code, out, err = program(self.file(name, content), "--json")
            self.assertEqual(code, 1, name)
            self.assertIn(words, err)
            told = json.loads(out)
            self.assertGreater(told["lines"]["lines"], 1000 if name.startswith("cut") else 0, name)
            self.assertTrue(any(words in note for note in told["notes"]))

    def test_pieces_in_any_order(self):
        lines = self.data.splitlines(keepends=True)
        # Parted where the second changes: what belongs together stays together.
        cuts = [0, *(next(i for i in range(n, len(lines)) if lines[i][:19] != lines[i - 1][:19]) for n in (1500, 3000)),
                len(lines)]
        files = [self.file(f"{i}.txt", b"".join(lines[a:b])) for i, (a, b) in enumerate(zip(cuts, cuts[1:]))]
        self.same(result(files[2], files[0], files[1]))

    def test_overlapping_files_are_one_sequence(self):
        """Two files whose lines alternate by the minute: the sequence has no step back, and each keeps its pairs."""
        minutes = {}
        for line in self.data.splitlines(keepends=True):
            minutes.setdefault(line[:16], []).append(line)
        halves = [b"".join(b"".join(m) for i, m in enumerate(minutes.values()) if i % 2 == half) for half in (0, 1)]
        told = result(self.file("even.txt", halves[0]), self.file("odd.txt", halves[1]))
        self.same(told)
        self.assertEqual(told["recording"]["set_back"], 0)

    def test_a_ship_first_heard_in_two_files_at_once(self):
        # The first file's message waits for its levels while the second ends.
        report = position(211000001, 50, 1)
        files = [self.file("a.txt", record(("08:00:00", report), ("08:00:05", "$GPZDA,080005,14,06,2025,00,00"))),
                 self.file("b.txt", record(("08:00:01", report)))]
        self.assertEqual(result(*files)["messages"]["ships"], 1)
        self.assertEqual(result("summary", "--by", "hour", *files)["periods"][0]["ships"], 1)
        (ship,) = result("ships", *files)["ships"]
        self.assertEqual(ship["reports"], 2)
        self.assertEqual(result("stations", *files, expect=1)["periods"][0]["ours_period"], 1)

    def test_parts_of_a_message_belong_together_within_a_file(self):
        first = ("08:00:00", rig.closed("!AIVDM,2,1,3,A,55P5TL01VIaAL@7WKO@mBplU@<PDhh000000001S;AJ::4A80?4i@E53,0"))
        second = ("08:00:02", rig.closed("!AIVDM,2,2,3,A,1@0000000000000,2"))
        stranger = ("08:00:01", position(211000001, 50, 1))
        told = result(self.file("a.txt", record(first, second)), self.file("b.txt", record(stranger)))
        self.assertEqual(told["types"], {"1": 1, "5": 1})
        self.assertEqual(told["messages"]["ships"], 2)

    def test_many_files(self):
        """More than a process may have open."""
        files = [self.file(f"{i}.txt", record((f"{i // 3600:02d}:{i // 60 % 60:02d}:{i % 60:02d}",
                                               position(211000000 + i, 50, 1)))) for i in range(1500)]
        self.assertEqual(result(*reversed(files))["messages"]["ships"], 1500)

    def test_a_file_that_grows(self):
        path = self.file("growing.txt", b"")
        whole = record(("08:00:00", position(211000001, 50, 1)), ("08:00:00", levels(30, 20)))
        for written, messages in ((30, 0), (len(whole) // 2 + 20, 1), (len(whole), 1)):
            path.write_bytes(whole[:written])
            code, out, err = program(path, "--json")
            self.assertEqual(json.loads(out)["messages"]["messages"], messages)


class Texts(rig.Case):
    def test_completion_knows_every_option(self):
        with open(OPTIONS.completion, encoding="utf-8") as f:
            known = set(re.findall(r"[\w-]+", f.read()))
        self.check(known, "completion")

    def test_manual_page_tells_every_option(self):
        with open(OPTIONS.manual, encoding="utf-8") as f:
            known = set(re.findall(r"[\w-]+", f.read().replace("\\-", "-")))
        self.check(known, "manual page")

    def check(self, known, where):
        words = set(re.findall(r"^  (\w+) +[A-Z]", program("--help")[1].decode(), re.MULTILINE))
        self.assertEqual(words, set(COMMANDS))
        for command in COMMANDS:
            words |= set(re.findall(r"--[a-z-]+", program(command, "--help")[1].decode()))
        self.assertEqual(words - known, set(), f"not in the {where}")


if __name__ == "__main__":
    rig.main()
