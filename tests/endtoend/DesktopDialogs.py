"""Record and Playback under the desktop's own file dialogs, here GTK's, by real keys: nothing is replaced without a
question, the file that was chosen is the one that is played, and names in capitals are offered."""

import glob
import os
import subprocess
import sys
import tempfile

import rig

THEME = "/usr/lib/*/qt6/plugins/platformthemes/libqgtk3.so"
SAVE = "Tidewatch - Save As"
OPEN = "Tidewatch - Open"
SENTENCE = b"$GPGLL,5047.10,N,00117.40,W,120000,A"


def use_gtk(folder):
    os.environ["QT_QPA_PLATFORMTHEME"] = "gtk3"
    os.environ["NO_AT_BRIDGE"] = "1"  # its dialogs stay off the accessibility bus, where the program is looked for
    os.environ["GSETTINGS_BACKEND"] = "memory"
    os.environ["HOME"] = os.environ["XDG_CONFIG_HOME"] = os.environ["XDG_DATA_HOME"] = folder


def read(folder, name):
    with open(os.path.join(folder, name), "rb") as file:
        return file.read()


def write(folder, name, content):
    with open(os.path.join(folder, name), "wb") as file:
        file.write(content)


class Person:
    """Sits before the program, with a folder for the recordings."""

    def __init__(self, program, eyes, folder):
        self.program = program
        self.eyes = eyes
        self.folder = folder

    def press(self, caption):
        self.eyes.click(self.eyes.find("push button", caption))

    def windows(self, title):
        search = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.program.process.pid),
                  "--name", f"^{title}$"]
        return subprocess.run(search, capture_output=True, text=True).stdout.split()

    def desktop_dialog(self, title):
        """Waits for the desktop's dialog and gives it the keyboard; no window manager does it here."""
        window = rig.await_that(lambda: self.windows(title), f"{title} shows")[0]
        rig.check(not self.own(title), "the dialog is not the desktop's")
        rig.xdotool("windowfocus", "--sync", window)
        return window

    def name(self, title, name):
        """Types a name of the folder into the desktop's dialog."""
        window = self.desktop_dialog(title)
        if title == SAVE:
            rig.xdotool("key", "ctrl+a")
        rig.xdotool("type", os.path.join(self.folder, name))

        def closed():
            if window not in self.windows(title):
                return True
            rig.xdotool("key", "Return")  # more than once: the dialog swallows it while it completes the name
            return False

        rig.await_that(closed, f"{title} closes", pause=0.5)

    def own(self, title):
        """The program's own dialog of that title; what stands for the desktop's on the bus has nothing in it."""
        return next((c for c in self.eyes.application if c and c.name == title and c.childCount), None)

    def question(self):
        return rig.await_that(lambda: self.own(SAVE), "a question is asked")

    def answer(self, box, caption):
        button = next(n for n in self.eyes.all(box) if n.getRoleName() == "push button" and n.name == caption)
        button.queryAction().doAction(0)
        rig.await_that(lambda: not self.own(SAVE), "the question is answered")

    def state(self, text):
        rig.await_that(lambda: self.eyes.panels()[0] == text, f"panel 1 says {text}")

    def played(self, name):
        rig.await_that(lambda: self.eyes.window.name == f"Tidewatch - {name}", f"{name} is played")
        self.state("Playback")


def check_record(person, line):
    # Two beginnings alike, because the dialog would complete the only one by itself, if it is quick enough.
    for name in ("keep.txt", "keeper.txt"):
        write(person.folder, name, b"old")
    person.press("Start")
    person.state("Running")
    person.press("Record")
    person.name(SAVE, "keep")
    box = person.question()
    texts = [node.name for node in person.eyes.all(box) if node.getRoleName() == "label"]
    rig.check(texts == ["keep.txt already exists.\nDo you want to replace it?"], f"the question: {texts}")
    person.answer(box, "No")
    person.name(SAVE, "other")  # the dialog is back
    person.state("Record")
    line.write(rig.sentence(SENTENCE) + b"\r\n")
    rig.await_that(lambda: person.eyes.lines("Lines of input #1"), "a line of input #1")
    person.press("Stop")
    person.state("Stopped")
    rig.check(read(person.folder, "keep.txt") == b"old", "keep.txt was replaced without consent")
    rig.check(read(person.folder, "other.txt")[20:] == rig.sentence(SENTENCE) + b"\r\n", "other.txt lacks the line")

    person.press("Start")
    person.state("Running")
    person.press("Record")
    person.name(SAVE, "keep")
    person.answer(person.question(), "Yes")
    person.state("Record")
    rig.check(read(person.folder, "keep.txt") == b"", "keep.txt was not replaced")
    person.press("Stop")
    person.state("Stopped")


def check_playback(person):
    for name in ("aaa", "aaa.txt", "aaab.txt", "night.txt", "nights.txt"):
        write(person.folder, name, b"05/15/2011 12:00:00 $GPZDA," + name.encode() + b"\r\n")
    for typed, played in (("aaa", "aaa"), ("night", "night.txt")):
        person.press("Playback Burst")
        person.name(OPEN, typed)
        person.played(played)
        lines = [line for line, _ in person.eyes.lines("Lines of input #1")]
        rig.check(lines == [f"$GPZDA,{played}"], f"lines: {lines}")
        person.press("Start")  # puts the plain caption back
        person.state("Running")
        person.press("Stop")
        person.state("Stopped")


def check_capitals(person, folder):
    """The one thing that the list offers beside the program can be chosen there, though its suffix is in capitals."""
    write(folder, "NIGHT.TXT", b"05/15/2011 12:00:00 $GPZDA,1\r\n")
    person.press("Playback Burst")
    person.desktop_dialog(OPEN)

    def chosen():
        if person.eyes.window.name == "Tidewatch - NIGHT.TXT":
            return True
        rig.xdotool("key", "Down", "Return")  # the list is not filled at once
        return False

    rig.await_that(chosen, "NIGHT.TXT is chosen from the list", pause=0.5)
    person.state("Playback")


def main():
    options = rig.arguments().parse_args()
    rig.skip_without("Xvfb", "xdotool", "dbus-send", rig.AT_SPI_LAUNCHER)
    if not glob.glob(THEME):
        print("skipped, not installed:", THEME)
        sys.exit(rig.SKIPPED)
    with tempfile.TemporaryDirectory() as folder, rig.display(), rig.accessibility():
        beside, recordings, home = folders = [os.path.join(folder, name) for name in ("program", "recordings", "home")]
        for made in folders:
            os.mkdir(made)
        use_gtk(home)
        line = rig.SerialLine(os.path.join(folder, "receiver"))
        with rig.Program(options.program, beside, rig.profile(line.link)) as program:
            person = Person(program, rig.Eyes(program), recordings)
            check_capitals(person, beside)  # the first dialog of a run begins beside the program
            check_record(person, line)
            check_playback(person)
            rig.check(program.running(), f"the program ended with {program.process.poll()}")


if __name__ == "__main__":
    sys.exit(rig.run(main))
