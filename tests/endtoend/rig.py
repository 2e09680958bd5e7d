"""What the end-to-end tests share: a display of their own, the program as a process in a folder of its own, far ends of
serial lines, real mouse events, and the accessibility bus as the eyes. Debian's python3 with python3-pyatspi."""

import argparse
import contextlib
import ctypes
import fcntl
import os
import pty
import re
import select
import shutil
import signal
import subprocess
import sys
import termios
import time
import tty

SKIPPED = 77  # ctest's SKIP_RETURN_CODE
PATIENCE = 60.0  # seconds until a wait is given up; a loaded machine with sanitizers takes its time
AT_SPI_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
TABS = ["Input", "Receiver", "AIS", "GPS", "Targets", "Messages", "Diagram", "About", "Spec", "Timing", "Output"]


class Failure(Exception):
    """A check that did not hold."""


def check(condition, message):
    if not condition:
        raise Failure(message)


def await_that(condition, what, patience=PATIENCE, pause=0.05):
    """Asks until the answer is true, and returns it."""
    deadline = time.monotonic() + patience
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise Failure("timed out waiting until " + what)
        time.sleep(pause)


def skip_without(*programs):
    missing = [p for p in programs if not (shutil.which(p) or os.access(p, os.X_OK))]
    if missing:
        print("skipped, not installed:", ", ".join(missing))
        sys.exit(SKIPPED)


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True, help="the built tidewatch")
    parser.add_argument("--simulator", help="the built tidewatch-sim")
    parser.add_argument("--samples", help="folder of record files")
    return parser


def run(main):
    """Runs a test and tells its outcome by text and exit code."""
    # The outer shell's stop must reach the processes that were started here.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    try:
        main()
    except Failure as failure:
        print("FAILED:", failure, flush=True)
        sys.exit(1)
    print("passed")


# Sentences


def checksum(body):
    value = 0
    for byte in body[1:]:
        value ^= byte
    return b"%02X" % value


def sentence(body):
    return body + b"*" + checksum(body)


def sample_sentences(folder, name):
    """The sentences of a record file, without their time stamps."""
    with open(os.path.join(folder, name), "rb") as file:
        return [line[20:].rstrip(b"\r\n") for line in file if len(line) > 26]


# Processes


def stop(process):
    if process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(10)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


@contextlib.contextmanager
def started(command, **options):
    process = subprocess.Popen(command, **options)
    try:
        yield process
    finally:
        stop(process)


@contextlib.contextmanager
def display():
    """A virtual display; its number is chosen by the server itself, so that tests can run side by side. Gives the server,
    which a test may end."""
    near, far = os.pipe()
    command = ["Xvfb", "-displayfd", str(far), "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset"]
    with started(command, pass_fds=[far], stderr=subprocess.DEVNULL) as server:
        os.close(far)
        with open(near) as answer:
            number = answer.readline().strip()  # to the line end: the server writes that apart, and must find a reader
        check(number, "no virtual display")
        os.environ["DISPLAY"] = ":" + number
        os.environ["QT_QPA_PLATFORM"] = "xcb"
        yield server


@contextlib.contextmanager
def accessibility():
    """The bus on which a screen reader hears the program. To be entered with a display, below dbus-run-session."""
    check("DBUS_SESSION_BUS_ADDRESS" in os.environ, "no session bus: start this through dbus-run-session")
    os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
    with started([AT_SPI_LAUNCHER, "--launch-immediately"], stderr=subprocess.DEVNULL):
        ask = ["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
               "org.a11y.Bus.GetAddress"]
        await_that(lambda: subprocess.run(ask, capture_output=True).returncode == 0, "the accessibility bus is there")
        yield


@contextlib.contextmanager
def simulator(program, folder, *options):
    """The simulated receiver; gives the links of its two ports."""
    links = [os.path.join(folder, "receiver"), os.path.join(folder, "gps")]
    command = [program, "--receiver", links[0], "--gps", links[1], *options]
    with started(command, stdout=subprocess.DEVNULL):
        await_that(lambda: all(os.path.exists(link) for link in links), "the simulated receiver has its ports")
        yield links


class Program:
    """A copy of the program in a folder of its own, so that its profile is its own too."""

    def __init__(self, file, folder, profile):
        self.file = os.path.join(folder, "tidewatch")
        self.profile = os.path.join(folder, "tidewatch.Ini")
        shutil.copy(file, self.file)
        with open(self.profile, "w", newline="\r\n") as ini:
            ini.write(profile)
        self.process = None

    def __enter__(self):
        self.process = subprocess.Popen([self.file], env=dict(os.environ, LC_ALL="C.UTF-8"))
        return self

    def __exit__(self, *_):
        stop(self.process)

    def running(self):
        return self.process.poll() is None

    def descriptors(self):
        """Where each open descriptor leads."""
        folder = f"/proc/{self.process.pid}/fd"
        targets = []
        for entry in os.listdir(folder):
            with contextlib.suppress(OSError):
                targets.append(os.readlink(os.path.join(folder, entry)))
        return targets

    def has_open(self, device):
        return device in self.descriptors()

    def resident_kilobytes(self):
        with open(f"/proc/{self.process.pid}/status") as status:
            return int(re.search(r"VmRSS:\s+(\d+)", status.read()).group(1))

    def processor_seconds(self):
        with open(f"/proc/{self.process.pid}/stat") as stat:
            fields = stat.read().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def window(self):
        command = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.process.pid), "--name", "^Tidewatch$"]

        def found():
            check(self.running(), f"the program ended with {self.process.poll()}")
            return subprocess.run(command, capture_output=True, text=True).stdout.split()

        return int(await_that(found, "the window is there")[0])

    # The toolbar is the top of the window; by these places it can be used without the accessibility bus.

    def press_start(self, lines):
        """Presses Start, and waits until these ports are open."""
        window = self.window()
        time.sleep(1)  # until the window takes clicks: nothing tells
        xdotool("mousemove", "--window", window, 30, 20, "click", 1)
        await_that(lambda: all(line.listened() for line in lines), "the ports are open")

    def press_stop(self):
        xdotool("mousemove", "--window", self.window(), 120, 20, "click", 1)

    def record(self, file):
        """Presses Record and names the file in the dialog, whosever it is."""
        xdotool("mousemove", "--window", self.window(), 200, 20, "click", 1)
        find = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.process.pid), "--name", "Save As"]

        def dialogs():
            return subprocess.run(find, capture_output=True, text=True).stdout.split()

        dialog = await_that(dialogs, "the file dialog is there")[0]
        xdotool("windowfocus", "--sync", dialog)
        time.sleep(0.3)
        xdotool("key", "ctrl+a")
        xdotool("type", file)

        def named():
            if self.has_open(file):
                return True
            if dialogs():
                xdotool("key", "Return")  # more than once: GTK's dialog swallows it while it completes the name
            return False

        await_that(named, "the recording has begun", pause=0.5)

    def close(self):
        """Closes the window as its close button does, and returns the exit code."""
        window = self.window()
        ask_to_close(window)
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise Failure("the program does not end after its window was closed") from None


def profile(port0="", port1="", output="", settings=("38400,n,8,1", "38400,n,8,1"), output_settings="38400,n,8,1"):
    return "\n".join([
        "[Nmea Data]",
        f"Enabled #0={int(bool(port0))}", f"Comm Port #0={port0}", f"Settings #0={settings[0]}",
        f"Enabled #1={int(bool(port1))}", f"Comm Port #1={port1}", f"Settings #1={settings[1]}",
        "[Output Data]",
        f"Enabled={int(bool(output))}", f"Comm Port={output}", f"Settings={output_settings}",
        "[Target Data]", "Detail=All",
        "[Window Data]", "Top=300", "Left=300", "Height=12000", "Width=18000", ""])


class WatchedProgram(Program):
    """The program with libraries of ours loaded in front of the system's, and what they are told by the environment."""

    def __init__(self, file, folder, profile, libraries, **told):
        super().__init__(file, folder, profile)
        self.around = dict(told, LD_PRELOAD=":".join(libraries),
                           ASAN_OPTIONS=os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0")

    def __enter__(self):
        before = dict(os.environ)
        os.environ.update(self.around)
        try:
            return super().__enter__()
        finally:
            os.environ.clear()
            os.environ.update(before)


def slow_disk(folder, seconds, every=1):
    """What makes each Nth synchronisation of the disk take those seconds longer, for a WatchedProgram with SlowDisk."""
    return {"SLOW_DISK_SECONDS": str(seconds), "SLOW_DISK_EVERY": str(every),
            "SLOW_DISK_NOTES": os.path.join(folder, "notes")}


def noted(folder, what, began, ended):
    """When a slow disk did that, within these bounds: (begin, end)."""
    with open(os.path.join(folder, "notes")) as file:
        words = [line.split() for line in file]
    times = [(float(first), float(last)) for kind, first, last in words if kind == what]
    return [(first, last) for first, last in times if began < first and last < ended]


# Mouse, keyboard and the close button


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


class ClientMessage(ctypes.Structure):
    """XClientMessageEvent, with the room of the XEvent union behind it."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]


def ask_to_close(window):
    """What a window manager sends when the close button is clicked; none runs here."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    connection = ctypes.c_void_p(x11.XOpenDisplay(None))
    event = ClientMessage(type=33, send_event=1, window=window, format=32)
    event.message_type = x11.XInternAtom(connection, b"WM_PROTOCOLS", 0)
    event.data[0] = x11.XInternAtom(connection, b"WM_DELETE_WINDOW", 0)
    x11.XSendEvent(connection, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
    x11.XSync(connection, 0)
    x11.XCloseDisplay(connection)


# Serial lines


class SerialLine:
    """The far end of a serial line. It can hang up and come back under the same link, as a plug pulled and put in."""

    def __init__(self, link):
        self.link = link
        self.master = -1
        self.device = ""
        self.create()

    def create(self):
        self.master, slave = pty.openpty()
        tty.setraw(slave, termios.TCSANOW)
        self.device = os.ttyname(slave)
        # From now on the near side can tell whether somebody has the device open.
        os.close(slave)
        flags = fcntl.fcntl(self.master, fcntl.F_GETFL)
        fcntl.fcntl(self.master, fcntl.F_SETFL, flags | os.O_NONBLOCK)
        os.symlink(self.device, self.link)

    def hang_up(self):
        os.unlink(self.link)
        os.close(self.master)
        self.master = -1

    def listened(self):
        poll = select.poll()
        poll.register(self.master, select.POLLOUT)
        return not any(events & select.POLLHUP for _, events in poll.poll(0))

    def write(self, data):
        """All of it; a listener that takes nothing for a long time is a failure."""
        deadline = time.monotonic() + PATIENCE
        while data:
            try:
                data = data[os.write(self.master, data):]
            except BlockingIOError:
                check(time.monotonic() < deadline, "nobody takes what is sent")
                time.sleep(0.002)

    def read(self, size=65536):
        try:
            return os.read(self.master, size)
        except (BlockingIOError, OSError):
            return b""  # nothing is there, or nobody has the device open


# The accessibility bus


class Eyes:
    """The program's window as a screen reader knows it."""

    def __init__(self, program):
        import pyatspi  # only where a display and the bus are there
        self.atspi = pyatspi
        self.program = program
        self.application = await_that(self._find, "the program is on the accessibility bus")
        self.window = await_that(lambda: next((c for c in self.application if c and c.name == "Tidewatch"), None),
                                 "its window is on the accessibility bus")

    def _find(self):
        check(self.program.running(), f"the program ended with {self.program.process.poll()}")
        desktop = self.atspi.Registry.getDesktop(0)
        for application in desktop:
            if application and application.get_process_id() == self.program.process.pid:
                return application if application.childCount else None
        return None

    def all(self, root=None):
        """Every node, tables' and lists' cells left out."""
        root = root or self.window
        stack = [root]
        cells = (self.atspi.ROLE_TABLE, self.atspi.ROLE_TREE_TABLE, self.atspi.ROLE_LIST)
        while stack:
            node = stack.pop()
            yield node
            if node.getRole() not in cells:
                stack.extend(child for child in node if child)

    def find(self, role, name):
        """The node of that role and name; role is a name as of pyatspi ("push button")."""
        for node in self.all():
            if node.getRoleName() == role and node.name == name:
                return node
        raise Failure(f"no {role} named {name!r} on the accessibility bus")

    def extents(self, node):
        return node.queryComponent().getExtents(self.atspi.DESKTOP_COORDS)

    def click(self, node):
        """A real click in the middle of a node."""
        box = self.extents(node)
        xdotool("mousemove", box.x + box.width // 2, box.y + box.height // 2, "click", 1)

    def has_state(self, node, state):
        return node.getState().contains(state)

    def show_tab(self, caption):
        self.click(self.find("page tab", caption))
        bar = next(node for node in self.all() if node.getRoleName() == "page tab list")
        await_that(lambda: bar.name == caption, f"the tab {caption} shows")

    def panels(self):
        """The texts of the status bar that show, left to right."""
        bar = next(node for node in self.all() if node.getRoleName() == "status bar")
        labels = [node for node in self.all(bar) if node.getRoleName() in ("label", "static")
                  and self.has_state(node, self.atspi.STATE_SHOWING)]
        return [label.name for label in sorted(labels, key=lambda label: self.extents(label).x)]

    def lines(self, name):
        """The lines of a log and what is said of each."""
        return [(line.name, line.description) for line in self.find("list", name) if line]

    def rows(self, name):
        """A table's cells, row by row; the header first."""
        table = self.find("table", name).queryTable()
        columns = range(table.nColumns)
        header = [table.getColumnHeader(column).name for column in columns]
        body = [[table.getAccessibleAt(row, column).name for column in columns] for row in range(table.nRows)]
        return [header] + body
