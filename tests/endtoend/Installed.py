"""The programs as the package installed them, for a user who starts them for the first time: the window comes up, a
sample is played, F1 has a manual to open, the settings go to the user's configuration folder and nowhere else, and the
sample is reported on. Run by the package's own tests; not by ctest, which has nothing installed."""

import glob
import json
import os
import re
import subprocess
import sys
import tempfile

import rig

SAMPLE = "harbour.txt"
ENOUGH_ROWS = 20
OPEN = "Tidewatch - Open"


class InstalledProgram(rig.Program):
    """The program where it is installed, with a home that is new to it."""

    def __init__(self, file, home):
        self.file = file
        self.profile = os.path.join(home, ".config", "tidewatch", "tidewatch.Ini")
        self.process = None
        os.environ["HOME"] = home
        os.environ.pop("XDG_CONFIG_HOME", None)


def play(program, eyes, file):
    eyes.click(eyes.find("push button", "Playback Burst"))
    find = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(program.process.pid), "--name", f"^{OPEN}$"]
    found = lambda: subprocess.run(find, capture_output=True, text=True).stdout.split()
    rig.xdotool("windowfocus", "--sync", rig.await_that(found, "the file dialog is there")[0])
    rig.xdotool("type", file)

    def played():
        if eyes.window.name == f"Tidewatch - {os.path.basename(file)}":
            return True
        rig.xdotool("key", "Return")
        return False

    rig.await_that(played, f"{file} is played", pause=0.5)


def check_window(options, home):
    with InstalledProgram(options.program, home) as program:
        eyes = rig.Eyes(program)
        play(program, eyes, os.path.abspath(os.path.join(options.samples, SAMPLE)))
        eyes.show_tab("Targets")
        rig.await_that(lambda: len(eyes.rows("Targets")) > ENOUGH_ROWS, f"the table has {ENOUGH_ROWS} rows")
        rig.check(re.fullmatch(r"\d+ Targets, >?\d+ Messages", eyes.panels()[1]), f"summary: {eyes.panels()[1]}")
        if options.picture:
            subprocess.run(["import", "-window", "root", options.picture], check=True)
        rig.check(program.close() == 0, f"exit code {program.process.returncode}")
    rig.check(os.path.exists(program.profile), f"no settings in {program.profile}")
    beside = glob.glob(os.path.join(os.path.dirname(options.program), "*.[Ii][Nn][Ii]"))
    rig.check(not beside, f"settings beside the program: {beside}")


def check_report(options):
    sample = os.path.join(options.samples, SAMPLE)
    said = subprocess.run([options.report, "--json", sample], capture_output=True, text=True)
    rig.check(said.returncode == 0, f"tidewatch-report: {said.returncode}, {said.stderr}")
    rig.check(json.loads(said.stdout), "tidewatch-report says nothing")


def main():
    parser = rig.arguments()
    parser.add_argument("--report", required=True, help="the installed tidewatch-report")
    parser.add_argument("--picture", help="where a picture of the display goes (needs import)")
    options = parser.parse_args()
    rig.skip_without("Xvfb", "xdotool", "dbus-send", rig.AT_SPI_LAUNCHER)
    manual = os.path.join(os.path.dirname(options.program), "..", "share", "doc", "tidewatch", "manual.html")
    rig.check(os.path.exists(manual), f"no manual: {manual}")
    with tempfile.TemporaryDirectory() as home, rig.display(), rig.accessibility():
        check_window(options, home)
        check_report(options)


if __name__ == "__main__":
    sys.exit(rig.run(main))
