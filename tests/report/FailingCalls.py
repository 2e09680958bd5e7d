"""Every call that can fail, failing: what the program reads and writes, one call at a time (tests/failing). It ends well
with the whole result, or with one line that says why not; what it began to write beside the result is whole or not there.
Also what a shell does: streams that are closed or full, gnuplot that is missing or breaks off. Each fifth course, all of
them with --runs all."""

import gzip
import os
import pathlib
import resource
import signal
import subprocess
import unittest

import rig
from rig import OPTIONS, program

FORMER = b"<!DOCTYPE html>\nformer\n"
# Draws the same picture each time, and quickly.
PICTURE = """#!/bin/sh
if grep -q 'terminal png'; then printf '\\211PNG\\r\\n picture IEND\\256B`\\202'
else printf '<?xml version="1.0"?>\\n<svg><title>Gnuplot</title></svg>\\n'; fi
"""
STANDINS = {"gnuplot": PICTURE}
MODES = ("once", "stays", "interrupted", "short")
# Standard input and output may be what they are; those of these names are ours.
COMMANDS = {
    "text": ["summary", "IN"],
    "csv": ["ships", "--csv", "IN"],
    "json": ["summary", "--json", "IN"],
    "standard input": ["summary", "-"],
    "packed": ["summary", "PACKED"],
    "page": ["coverage", "--html", "PAGE", "IN"],
    "png": ["range", "--png", "FOLDER", "IN"],
    "svg": ["range", "--svg", "FOLDER", "IN"],
    "two": ["compare", "IN", "-"],
}


class Calls(rig.Case):
    def setUp(self):
        super().setUp()
        lines = self.sample("harbour.txt").read_bytes().splitlines(keepends=True)
        self.data = b"".join(lines[:1200])
        self.inputs = self.folder / "in"
        self.inputs.mkdir()
        (self.inputs / "in.txt").write_bytes(self.data)
        (self.inputs / "in.gz").write_bytes(gzip.compress(self.data))
        self.outputs = self.folder / "out"
        for name, script in STANDINS.items():
            (self.folder / "bin").mkdir(exist_ok=True)
            (self.folder / "bin" / name).write_text(script)
            (self.folder / "bin" / name).chmod(0o755)
        (self.folder / "tmp").mkdir()
        self.counts = self.folder / "counts"

    def run_program(self, words, plan=None):
        """Exit code, standard output, error lines and the files that are there."""
        subprocess.run(["rm", "-rf", self.outputs], check=True)
        self.outputs.mkdir()
        (self.outputs / "page.html").write_bytes(FORMER)
        places = {"IN": self.inputs / "in.txt", "PACKED": self.inputs / "in.gz", "PAGE": self.outputs / "page.html",
                  "FOLDER": self.outputs / "pictures"}
        environment = {**os.environ, "LD_PRELOAD": OPTIONS.failing_calls, "FAILING_CALLS_PROGRAM": "tidewatch-report",
                       "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0",
                       "FAILING_CALLS_NAMES": f"{self.folder}", "FAILING_CALLS_COUNTS": f"{self.counts}",
                       "TMPDIR": f"{self.folder}/tmp", "PATH": f"{self.folder}/bin:{os.environ['PATH']}"}
        if plan:
            environment["FAILING_CALLS"] = plan
        self.counts.unlink(missing_ok=True)
        done = subprocess.run([OPTIONS.program, *(str(places.get(w, w)) for w in words)], input=self.data,
                              capture_output=True, timeout=120, env=environment)
        files = {str(p.relative_to(self.folder)): p.read_bytes() for folder in (self.outputs, self.folder / "tmp")
                 for p in sorted(folder.rglob("*")) if p.is_file()}
        return done.returncode, done.stdout, done.stderr.decode("utf-8", "replace").splitlines(), files

    def read_counts(self):
        return [line.split() for line in self.counts.read_text().splitlines()]

    def check(self, words, good, plan, mode):
        code, out, err, files = self.run_program(words, plan)
        if mode in ("interrupted", "short") or code == 0:
            self.assertEqual((code, out, err, files), good)
            return
        self.assertEqual(code, 1, err)
        if "--csv" in words:
            err = [line for line in err if line.startswith("tidewatch-report: ")]  # the others are its notes
        told = [line for line in err if "there is nothing to draw" not in line]  # as a file lacks lines
        self.assertEqual(len(set(map(self.without_name, told))), 1, err)
        for line in err:
            self.assertRegex(line, r"^tidewatch-report: .{8,}")
        for name, content in files.items():
            if content in (good[3].get(name), FORMER):
                continue
            # A whole page or picture of what could be read, which says what could not.
            self.assertTrue(content.endswith((b"</html>\n", b"</svg>\n", b"IEND\xaeB`\x82")), name)
            if name.endswith(".html"):
                self.assertIn(self.without_name(told[0]).encode(), content)

    @staticmethod
    def without_name(line):
        """Two files that fail for one reason are told of in two lines."""
        return line.partition(" - ")[0].rpartition(": ")[2]

    def every_call(self, words):
        good = self.run_program(words)
        self.assertEqual(good[0], 0, good[2])
        runs = course = 0
        every = 1 if OPTIONS.runs == "all" else 5
        for call, count, interruptible, partial, _ in self.read_counts():
            for number in range(1, int(count) + 1):
                for mode in MODES:
                    if (mode == "interrupted" and interruptible == "0") or (mode == "short" and partial == "0"):
                        continue
                    course += 1
                    if course % every:
                        continue
                    with self.subTest(f"{call} {number} {mode}"):
                        self.check(words, good, f"{call} {number} {mode}", mode)
                    runs += 1
        print(f"{' '.join(words)}: {sum(int(c[1]) for c in self.read_counts())} calls, {runs} runs")


    def test_a_comparison_that_could_not_read_a_file_each_time(self):
        """It looked for the clocks in half a file, found none, and said so with exit code 0."""
        words = COMMANDS["two"]
        self.run_program(words)
        reads = self.reads()
        failed = 0
        for number in range(1, reads + 1):
            code, _, err, _ = self.run_program(words, f"read {number} once")
            if self.reads() < number:
                continue  # how many there are depends on the threads: this run had not so many
            self.assertEqual((code, len(err)), (1, 1), f"read {number}: {err}")
            failed += 1
        self.assertGreater(failed, reads // 2)

    def reads(self):
        return next(int(c[1]) for c in self.read_counts() if c[0] == "read")


def add(name, words):
    setattr(Calls, "test_" + name.replace(" ", "_"), lambda self: self.every_call(words))


for key, value in COMMANDS.items():
    add(key, value)


class Streams(rig.Case):
    def shell(self, line, **more):
        line = line.replace("PROGRAM", f"'{OPTIONS.program}'").replace("IN", f"'{self.sample('harbour.txt')}'")
        done = subprocess.run(line.replace("OUT", str(self.folder)), shell=True, executable="/bin/bash",
                              capture_output=True, timeout=120, **more)
        return done.returncode, done.stdout, done.stderr.decode("utf-8", "replace").splitlines()

    def fails(self, told, words):
        code, out, err = told
        self.assertEqual((code, out, len(err)), (1, b"", 1), told)
        self.assertRegex(err[0], "^tidewatch-report: .*" + words)

    def test_full(self):
        for words in ("summary", "summary --json", "reports --json", "coverage --html OUT/page.html"):
            self.fails(self.shell(f"PROGRAM {words} IN > /dev/full"), "No space left on device")
        self.whole_page_at_most()

    def whole_page_at_most(self):
        self.assertLessEqual({p.name for p in self.folder.iterdir()}, {"page.html"})
        for page in self.folder.iterdir():
            self.assertTrue(page.read_text().endswith("</html>\n"))

    def test_closed(self):
        for words in ("summary", "summary --json", "coverage --html OUT/page.html"):
            self.fails(self.shell(f"PROGRAM {words} IN >&-"), "Bad file descriptor")
        self.whole_page_at_most()
        self.fails(self.shell("PROGRAM --help > /dev/full"), "No space left on device")
        self.fails(self.shell("PROGRAM --version >&-"), "Bad file descriptor")

    def test_nobody_hears_the_errors(self):
        self.assertEqual(self.shell("PROGRAM OUT/nothing.txt 2>&-")[0], 1)
        self.assertEqual(self.shell("PROGRAM OUT/nothing.txt 2>/dev/full")[0], 1)
        code, out, err = self.shell("PROGRAM --html OUT/page.html IN 2>&- <&-")
        self.assertEqual((code, out), (0, program(self.sample("harbour.txt"))[1]))
        self.assertIn("</html>", (self.folder / "page.html").read_text())

    def test_closed_input(self):
        code, out, err = self.shell("PROGRAM - <&-")
        self.assertEqual((code, len(err)), (1, 1), err)
        self.assertIn("Bad file descriptor", err[0])

    def test_nobody_reads_on(self):
        code, out, err = self.shell("set -o pipefail; PROGRAM reports --html OUT/page.html IN | true")
        self.assertIn(code, (0, 128 + signal.SIGPIPE))
        self.assertEqual(err, [])
        self.whole_page_at_most()

    def test_a_page_that_may_not_grow(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (3000, 3000))
        code, out, err = self.shell("PROGRAM --html OUT/page.html IN", preexec_fn=limit)
        self.assertEqual((code, len(err)), (1, 1), err)
        self.assertIn("File too large", err[0])
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_gnuplot(self):
        """Missing, failing, saying nothing, ended in the middle."""
        tools = self.folder / "bin"
        tools.mkdir()
        for script in (None, "exit 1", "exit 0", "echo '<svg>'; exit 3", "echo '<svg>'; kill -9 $$"):
            if script:
                (tools / "gnuplot").write_text(f"#!/bin/sh\n{script}\n")
                (tools / "gnuplot").chmod(0o755)
            for words in ("--html OUT/page.html", "--png OUT/png", "--svg OUT/svg"):
                with self.subTest(f"{script}, {words}"):
                    code, out, err = self.shell(f"PATH=OUT/bin PROGRAM summary {words} IN")
                    self.assertEqual((code, len(err)), (1, 1), err)
                    self.assertIn("gnuplot", err[0])
                    left = [p for p in self.folder.rglob("*") if p.is_file() and p.parent != tools]
                    self.assertEqual(left, [])


if __name__ == "__main__":
    rig.main()
