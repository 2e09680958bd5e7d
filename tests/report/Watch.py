"""tidewatch-report watch on files that really grow, stop, are cut and replaced; what it says is waited for, not slept
for."""

import csv
import datetime
import io
import json
import os
import pathlib
import signal
import subprocess
import threading

import rig
from rig import OPTIONS, position, program

STAMP = "%m/%d/%Y %H:%M:%S"


def line(sentence, time=None):
    return f"{(time or datetime.datetime.now()).strftime(STAMP)} {sentence}\r\n".encode()


MESSAGE = position(211000001, 50.1, 1.1)
OTHER = "$GPZDA,080000,14,06,2025,00,00"


class Watching:
    """The program as a process; lines of its output one by one."""

    def __init__(self, *words):
        self.process = subprocess.Popen([OPTIONS.program, "watch", *map(str, words)], stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)
        self.watchdog = threading.Timer(120, self.process.kill)  # against hanging for ever only
        self.watchdog.start()

    def row(self):
        """The next row of CSV, the header left out."""
        text = self.process.stdout.readline().decode()
        if text.startswith("time,"):
            text = self.process.stdout.readline().decode()
        return next(csv.reader(io.StringIO(text)))

    def event(self):
        row = self.row()
        return row[1], row[2]

    def end(self, how=signal.SIGTERM):
        self.process.send_signal(how)
        out, err = self.process.communicate()
        self.watchdog.cancel()
        return self.process.returncode, out.decode(), err.decode()


class Growing:
    """A file to which a line is added several times a second until it is told otherwise."""

    def __init__(self, path, sentence):
        self.path, self.sentence, self.stop = path, sentence, threading.Event()
        self.thread = threading.Thread(target=self.run)
        self.thread.start()

    def run(self):
        while not self.stop.wait(0.1):
            with open(self.path, "ab") as f:
                f.write(line(self.sentence))

    def end(self):
        self.stop.set()
        self.thread.join()


class Watch(rig.Case):
    def watch(self, *words):
        watching = Watching(*words)

        def clean():
            watching.process.kill()
            watching.process.communicate()
            watching.watchdog.cancel()

        self.addCleanup(clean)
        return watching

    def grow(self, path, sentence):
        growing = Growing(path, sentence)
        self.addCleanup(growing.end)
        return growing

    def test_a_file_that_stops_goes_on_and_ends_by_signal(self):
        for how in signal.SIGTERM, signal.SIGINT:
            path = self.file("a.txt", line(MESSAGE))
            watching = self.watch("--csv", "--quiet", "1s", path)
            self.assertEqual(watching.event(), ("stopped", "begins"))
            growing = self.grow(path, MESSAGE)
            self.assertEqual(watching.event(), ("stopped", "over"))
            growing.end()
            self.assertEqual(watching.event(), ("stopped", "begins"))
            code, out, _ = watching.end(how)
            self.assertEqual((code, out), (0, ""))

    def test_a_file_that_grows_without_messages_is_quiet(self):
        path = self.file("a.txt", line(MESSAGE))
        watching = self.watch("--csv", "--quiet", "1s", "--stopped", "1h", path)
        growing = self.grow(path, OTHER)
        self.assertEqual(watching.event(), ("quiet", "begins"))
        growing.sentence = MESSAGE
        self.assertEqual(watching.event(), ("quiet", "over"))
        self.assertEqual(watching.end()[:2], (0, ""))

    def test_half_a_line_is_growth_and_its_rest_completes_it(self):
        path = self.file("a.txt", b"")
        watching = self.watch("--csv", "--quiet", "1s", "--stopped", "1h", path)
        whole = line(MESSAGE)
        growing = self.grow(path, OTHER)
        self.assertEqual(watching.event(), ("quiet", "begins"))
        growing.end()
        with open(path, "ab", buffering=0) as f:
            f.write(whole[:40])
            f.write(whole[40:])
        self.assertEqual(watching.event(), ("quiet", "over"))
        self.assertEqual(watching.end()[0], 0)

    def test_a_file_that_comes_later_is_replaced_and_cut(self):
        path = self.folder / "later.txt"
        watching = self.watch("--csv", "--quiet", "1s", path)
        row = watching.row()
        self.assertEqual(row[1:3], ["stopped", "begins"])
        self.assertIn("no such file", row[6])
        path.write_bytes(line(MESSAGE))
        self.assertEqual(watching.event(), ("stopped", "over"))
        self.assertEqual(watching.event(), ("stopped", "begins"))
        other = self.file("other.txt", line(OTHER))  # a file as long as the first has been read
        os.replace(other, path)
        self.assertEqual(watching.event(), ("stopped", "over"))
        self.assertEqual(watching.event(), ("stopped", "begins"))
        with open(path, "wb") as f:
            f.write(b"06")
        self.assertEqual(watching.event(), ("stopped", "over"))
        code, _, err = watching.end()
        self.assertEqual(code, 0)
        self.assertIn("is not there yet", err)

    def test_the_command_gets_the_event_and_leaves_no_zombie(self):
        path = self.file("a.txt", line(MESSAGE))
        told = self.folder / "told"
        os.mkfifo(told)
        command = f'printf "%s|" "$TIDEWATCH_EVENT" "$TIDEWATCH_STATE" "$TIDEWATCH_FILE" "$TIDEWATCH_TEXT" > {told}; exit 3'
        watching = self.watch("--quiet", "1s", "--run", command, path)
        self.assertEqual(told.read_text(), f"stopped|begins|{path}|the file has not grown for 1 s|")
        self.assertIn(b"the command ended with exit code 3", watching.process.stderr.readline())
        children = pathlib.Path(f"/proc/{watching.process.pid}/task/{watching.process.pid}/children").read_text()
        self.assertEqual(children.split(), [])
        growing = self.grow(path, MESSAGE)
        self.assertTrue(told.read_text().startswith(f"stopped|over|{path}|"))
        growing.end()
        code, out, _ = watching.end()
        self.assertEqual(code, 0)
        self.assertEqual(out.count("\n"), 2, out)  # the head of the table, and no row

    def test_an_hour_below_the_usual(self):
        hour = datetime.datetime(2025, 6, 14, 9)
        days = b"".join(line(OTHER, hour - datetime.timedelta(days=d, hours=1)) +
                        line(OTHER, hour - datetime.timedelta(days=d)) +
                        line(MESSAGE, hour - datetime.timedelta(days=d)) * 10 +
                        line(OTHER, hour - datetime.timedelta(days=d, hours=-1)) for d in (3, 2, 1))
        past = self.file("past.txt", days)
        path = self.file("now.txt", line(OTHER, hour - datetime.timedelta(minutes=5)))
        watching = self.watch("--json", "--quiet", "1h", "--below", "50%", past, path)
        # The hour's last line comes when the program has read what was before.
        self.assertIn(b"known for 1 of the 24 hours", watching.process.stderr.readline())
        with open(path, "ab") as f:
            f.write(line(OTHER, hour) + line(MESSAGE, hour) * 4 + line(OTHER, hour + datetime.timedelta(hours=1)))
        text = b""
        while not text.endswith(b"}"):
            text += watching.process.stdout.read(1)
        code, out, _ = watching.end()
        self.assertEqual(code, 0)
        (event,) = json.loads(text.decode() + out)["events"]
        self.assertEqual((event["event"], event["state"], event["messages"], event["usual"]), ("below", "begins", 4, 10))

    def test_what_cannot_be_followed_is_named(self):
        for name, data, text in (("a.gz", b"\x1f\x8b\x08\x00", "is packed"), (".", None, "no plain file")):
            path = self.file(name, data) if data else self.folder
            code, _, err = program("watch", path)
            self.assertEqual(code, 1)
            self.assertIn(text, err)

    def test_wrong_use(self):
        for words in (["-"], ["--quiet", "10", "a"], ["--quiet", "0s", "a"], ["--below", "0", "a"], ["--html", "x", "a"],
                      ["--days", "0", "a"], []):
            code, out, err = program("watch", *words)
            self.assertEqual((code, out), (2, b""), words)
            self.assertTrue(err.startswith("tidewatch-report: "), err)


if __name__ == "__main__":
    rig.main()
