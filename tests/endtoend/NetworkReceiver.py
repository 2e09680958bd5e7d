"""A receiver in the network by the manual's own lines: socat makes a port of it. The server ends and comes back, Stop and
Start close and open the connection, and every line that a connected server says is forwarded once, none of them old."""

import contextlib
import os
import re
import signal
import socket
import subprocess
import sys
import tempfile

import rig

MANUAL = os.path.join(os.path.dirname(__file__), "..", "..", "docs", "manual", "connecting.md")


def manual_line(kind, port, link):
    """The line of the manual, with the test's address and link."""
    with open(MANUAL, encoding="utf-8") as manual:
        lines = [line.strip() for line in manual if line.strip().startswith("while :; do socat") and kind in line]
    rig.check(len(lines) == 1, f"lines for {kind} in the manual: {lines}")
    line, hosts = re.subn(r"192\.168\.1\.20:10110|(?<=UDP-RECV:)10110", f"127.0.0.1:{port}" if kind == "TCP:" else
                          str(port), lines[0])
    line, links = re.subn(r"\$HOME/ais\b", link, line)
    rig.check(hosts == 1 and links == 1, f"the manual's line: {lines[0]}")
    return line


@contextlib.contextmanager
def shell(line):
    process = subprocess.Popen(["sh", "-c", line], start_new_session=True, stderr=subprocess.DEVNULL)
    try:
        yield
    finally:
        os.killpg(process.pid, signal.SIGTERM)
        process.wait()


def listener(port=0):
    server = socket.socket()
    server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    server.bind(("127.0.0.1", port))
    server.listen()
    server.settimeout(rig.PATIENCE)
    return server


class Listening:
    """What comes out at the output port."""

    def __init__(self, plotter):
        self.plotter = plotter
        self.data = b""
        self.number = 0

    def next_lines(self, count):
        self.number += count
        return [rig.sentence(b"$GPXYZ,%d" % number) for number in range(self.number - count, self.number)]

    def takes(self, lines):
        wanted = b"".join(line + b"\r\n" for line in lines)

        def there():
            self.data += self.plotter.read()
            return len(self.data) >= len(wanted)

        rig.await_that(there, f"{len(lines)} lines are forwarded")
        rig.check(self.data == wanted, f"forwarded: {self.data[-100:]!r}")
        self.data = b""


def say(connection, listening):
    lines = listening.next_lines(50)
    connection.sendall(b"".join(line + b"\r\n" for line in lines))
    listening.takes(lines)


def closed(connection):
    """Whether the far end has closed the connection."""
    connection.settimeout(rig.PATIENCE)
    return connection.recv(100) == b""


def made(link):
    """When the link was made; None while there is none."""
    try:
        return os.lstat(link).st_mtime_ns
    except FileNotFoundError:
        return None


def check_tcp(program, plotter, server, listening, link):
    program.press_start((plotter,))
    connection, _ = server.accept()
    say(connection, listening)
    for _ in range(2):  # the server ends and comes back
        port = server.getsockname()[1]
        connection.close()
        server.close()
        server = listener(port)
        connection, _ = server.accept()
        say(connection, listening)
    # Nothing waits on the way while the program is stopped: it would come late and be taken for new.
    before = made(link)
    program.press_stop()
    rig.check(closed(connection), "the connection stays while nobody listens")
    connection.close()
    rig.await_that(lambda: made(link) not in (None, before), "the port is there again")
    program.press_start((plotter,))
    connection, _ = server.accept()
    say(connection, listening)
    program.press_stop()
    connection.close()
    server.close()


def check_udp(program, plotter, port, listening):
    program.press_start((plotter,))
    sender = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    first, last = listening.next_lines(2)

    def heard():  # a datagram to nobody is lost
        sender.sendto(first + b"\r\n", ("127.0.0.1", port))
        return plotter.read()

    rig.await_that(heard, "a datagram is forwarded", pause=0.2)
    sender.sendto(last + b"\r\n", ("127.0.0.1", port))
    begun = bytearray()

    def all_first():  # more of them may have been on the way
        begun.extend(plotter.read())
        return begun.endswith(last + b"\r\n")

    rig.await_that(all_first, "the first datagrams are forwarded")
    lines = listening.next_lines(50)
    for line in lines:
        sender.sendto(line + b"\r\n", ("127.0.0.1", port))
    listening.takes(lines)


def free_port():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
        sender.bind(("127.0.0.1", 0))
        return sender.getsockname()[1]


def try_line(options, line, link, folder, check):
    plotter = rig.SerialLine(os.path.join(folder, "plotter"))
    profile = rig.profile(link, output=plotter.link, output_settings="921600,n,8,1")
    with shell(line):
        rig.await_that(lambda: os.path.exists(link), "the port is there")
        with rig.Program(options.program, folder, profile) as program:
            check(program, plotter, Listening(plotter))
            rig.check(program.close() == 0, "the program ends with an error")


def main():
    options = rig.arguments().parse_args()
    rig.skip_without("Xvfb", "xdotool", "socat")
    with rig.display():
        with tempfile.TemporaryDirectory() as folder:
            link, server = os.path.join(folder, "ais"), listener()
            line = manual_line("TCP:", server.getsockname()[1], link)
            try_line(options, line, link, folder, lambda program, plotter, listening:
                     check_tcp(program, plotter, server, listening, link))
        with tempfile.TemporaryDirectory() as folder:
            link, port = os.path.join(folder, "ais"), free_port()
            line = manual_line("UDP-RECV:", port, link)
            try_line(options, line, link, folder, lambda program, plotter, listening:
                     check_udp(program, plotter, port, listening))


if __name__ == "__main__":
    sys.exit(rig.run(main))
