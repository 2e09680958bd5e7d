"""Weeks without a hand on it, in half a minute: the program starts and records by itself, is killed, loses its display, and
is started again as its systemd unit says. Each start goes on with a new file, and only what came in the last second is
missing. The unit and the entry for the desktop's autostart are checked by their own tools, where these are installed."""

import configparser
import contextlib
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import rig

PAUSE = 0.02  # seconds between two sentences
RUN = 3.3  # seconds of sentences before each end: some ticks of the program's clock, and a part of one
TICK = 1.0  # seconds; what came since the last tick may be lost
LATE = 2.0  # seconds by which a loaded machine may be late with it
CLEAN_ENDS = (0, -signal.SIGHUP, -signal.SIGINT, -signal.SIGTERM, -signal.SIGPIPE)  # to systemd


class Unit:
    """The part of systemd that counts here."""

    def __init__(self, file):
        parser = configparser.ConfigParser(interpolation=None, strict=False)
        parser.optionxform = str
        parser.read(file)
        self.service = parser["Service"]
        rig.check(self.service["ExecStart"] == "/usr/bin/tidewatch", "the unit starts another program")
        rig.check(parser["Unit"]["StartLimitIntervalSec"] == "0", "systemd would give up after some failures")

    def starts_again_after(self, code):
        return self.service["Restart"] == "always" or (self.service["Restart"] == "on-failure" and code not in CLEAN_ENDS)


def check_files(folder, scratch, program):
    """The two files, by the tools that read them."""
    if shutil.which("desktop-file-validate"):
        entry = os.path.join(folder, "tidewatch-autostart.desktop")
        answer = subprocess.run(["desktop-file-validate", entry], capture_output=True, text=True)
        rig.check(answer.returncode == 0 and not answer.stdout, "the entry for the autostart: " + answer.stdout)
    if shutil.which("systemd-analyze"):
        with open(os.path.join(folder, "tidewatch.service")) as file:
            text = file.read().replace("/usr/bin/tidewatch", program)
        unit = os.path.join(scratch, "tidewatch.service")
        with open(unit, "w") as file:
            file.write(text)
        answer = subprocess.run(["systemd-analyze", "--user", "--man=no", "verify", unit], capture_output=True, text=True,
                                env=dict(os.environ, XDG_RUNTIME_DIR=scratch))
        rig.check(answer.returncode == 0 and not answer.stderr, "the unit: " + answer.stderr)


@contextlib.contextmanager
def display():
    """A display whose server can be killed; gives its process."""
    near, far = os.pipe()
    command = ["Xvfb", "-displayfd", str(far), "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset"]
    with rig.started(command, pass_fds=[far], stderr=subprocess.DEVNULL) as server:
        os.close(far)
        with open(near) as answer:
            number = answer.readline().strip()
        rig.check(number, "no virtual display")
        os.environ.update(DISPLAY=":" + number, QT_QPA_PLATFORM="xcb")
        yield server


class Feed:
    """Numbered sentences on a line, and when each was sent."""

    def __init__(self, line):
        self.line = line
        self.number = 0
        self.sent = []

    def run(self):
        """Sends for a while; gives what was sent, as (sentence, time)."""
        begin = time.monotonic()
        first = len(self.sent)
        while time.monotonic() < begin + RUN:
            self.number += 1
            text = rig.sentence(b"$GPGLL,4916.45,N,12311.12,W,%06d,A" % self.number)
            self.sent.append((text, time.monotonic()))
            self.line.write(text + b"\r\n")
            time.sleep(PAUSE)
        return self.sent[first:]


def judge(file, sent, ended, may_lose):
    """What a file holds of what was sent in its run; prints how much was lost."""
    with open(file, "rb") as record:
        lines = record.read().split(b"\r\n")
    recorded = [line[20:] for line in lines[:-1]]
    texts = [text for text, _ in sent]
    rig.check(recorded == texts[:len(recorded)], f"{file}: lines are missing in between, or in another order")
    rig.check(texts[len(recorded)].startswith(lines[-1][20:]) if lines[-1] else True, f"{file}: rubbish at the end")
    lost = sent[len(recorded):]
    since = ended - lost[0][1] if lost else 0.0
    print(f"{os.path.basename(file)}: {len(recorded)} of {len(sent)} lines, lost those of the last {since:.2f} s", flush=True)
    rig.check(since <= may_lose, "more than the last second is lost")


def newest(folder):
    """What the newest file holds."""
    with open(os.path.join(folder, max(os.listdir(folder))), "rb") as file:
        return file.read()


def main():
    parser = rig.arguments()
    parser.add_argument("--examples", required=True, help="folder of the unit and the autostart entry")
    options = parser.parse_args()
    rig.skip_without("Xvfb", "xdotool")
    unit = Unit(os.path.join(options.examples, "tidewatch.service"))
    with tempfile.TemporaryDirectory() as folder:
        check_files(options.examples, folder, options.program)
        records = os.path.join(folder, "recordings")
        os.mkdir(records)
        line = rig.SerialLine(os.path.join(folder, "receiver"))
        feed = Feed(line)
        profile = rig.profile(line.link) + f"[Unattended]\nStart=1\nRecord={records}\n"
        program = rig.Program(options.program, folder, profile)
        runs = []

        def run(end):
            """One life of the program; end(server) brings it to an end."""
            with display() as server, program:
                rig.await_that(line.listened, "the program has started by itself")
                sent = feed.run()
                ended = time.monotonic()
                end(server)
                runs.append((sent, ended))
                code = program.process.wait(rig.PATIENCE)
            rig.await_that(lambda: not line.listened(), "the line is free again")
            return code

        code = run(lambda _: program.process.kill())
        rig.check(unit.starts_again_after(code), f"not started again after a kill: exit code {code}")
        code = run(lambda server: server.kill())
        rig.check(unit.starts_again_after(code), f"not started again after the display's end: exit code {code}")

        def close(_):
            """Once the program has read everything: what it has not, a port that is closed throws away."""
            last = feed.sent[-1][0]
            rig.await_that(lambda: last in newest(records), "the last line is recorded")
            rig.ask_to_close(program.window())

        code = run(close)
        rig.check(code == 0 and not unit.starts_again_after(code), f"started again though it was closed: exit code {code}")

        files = sorted(os.listdir(records))
        rig.check(len(files) == len(runs), f"{len(runs)} runs left {files}")
        for file, (sent, ended), may_lose in zip(files, runs, (TICK + LATE, TICK + LATE, 0.0)):
            rig.check(re.fullmatch(r"tidewatch-\d{8}-\d{6}\.txt", file), f"a file called {file}")
            judge(os.path.join(records, file), sent, ended, may_lose)


if __name__ == "__main__":
    sys.exit(rig.run(main))
