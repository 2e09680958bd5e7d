"""Three serial lines: a receiver on input 1, a GPS on input 2, and a plotter at the output port. What the plotter gets is
compared byte for byte with what was sent, and read by Debian's gpsdecode: it has to understand every forwarded AIS
sentence and the RMC made from GLL. The same reader's positions serve to check the table's ranges and bearings."""

import json
import math
import os
import statistics
import subprocess
import sys
import tempfile
import time

import rig

MESSAGES = 400  # sentences of the sample that the receiver says
TARGETS = 100  # different ships whose range and bearing are checked
MMSI, RANGE, BEARING, LATITUDE, LONGITUDE = 1, 8, 9, 10, 11  # columns of the table
OWN = (50 + 47.10 / 60, -(1 + 17.40 / 60))
GLL = b"$GPGLL,5047.10,N,00117.40,W,%06d,A"

# Accepted without being decoded: forwarded exactly as they came, whatever bytes they hold.
ODD = [rig.sentence(b"!AIVDO,1,1,,,15M67F@uQqG?w<hK?Mu8iFv00000,0"), b"$XXYYY,no checksum", b"$ABCDE",
       b"$PXYZ,\x00\x01\x7f\x80\xb0\xff,end", b"  blanks  "]
# Refused: neither too short a line nor one with a wrong checksum may reach the output.
REFUSED = [b"$ABCD", b"", rig.sentence(b"$GPGSV,1,1,00")[:-1] + b"x"]


def gpsdecode(lines):
    """What the independent reader makes of sentences: a dictionary for each message."""
    told = subprocess.run(["gpsdecode", "-j", "-s"], input=b"".join(line + b"\r\n" for line in lines),
                          stdout=subprocess.PIPE, check=True).stdout
    return [json.loads(line) for line in told.splitlines()]


def messages_in(lines):
    """How many AIS messages end in these sentences."""
    ends = 0
    for line in lines:
        fields = line.split(b",")
        ends += line.startswith(b"!AIVDM") and fields[1] == fields[2]
    return ends


def made_rmc(number):
    """The RMC that belongs to GLL, by the standard's field order; the date is today's."""
    body = "$ECRMC,%06d,A,5047.10,N,00117.40,W,0.0,000.0,%s,0.0,E"
    return rig.sentence((body % (number, time.strftime("%d%m%y"))).encode())


class Chain:
    def __init__(self, lines):
        self.inputs = lines[:2]
        self.output = lines[2]
        self.got = b""
        self.expected = b""
        self.delays = []

    def send(self, port, line, expected):
        """One line in; what the output has to say to it comes out before anything else is sent."""
        begin = time.monotonic()
        self.inputs[port].write(line + b"\r\n")
        self.expected += b"".join(each + b"\r\n" for each in expected)
        deadline = begin + rig.PATIENCE
        while len(self.got) < len(self.expected):
            rig.check(time.monotonic() < deadline, f"not forwarded: {line!r}")
            data = self.output.read()
            self.got += data
            if not data:
                time.sleep(0.0002)
        if expected:
            self.delays.append(time.monotonic() - begin)
        rig.check(self.got == self.expected, f"after {line!r} came {self.got[-200:]!r}")


def great_circle(own, target):
    """Nautical miles and degrees by the haversine formula, on a sphere of sixty miles to the degree."""
    lat1, lon1, lat2, lon2 = map(math.radians, own + target)
    half = math.sin((lat2 - lat1) / 2) ** 2 + math.cos(lat1) * math.cos(lat2) * math.sin((lon2 - lon1) / 2) ** 2
    east = math.sin(lon2 - lon1) * math.cos(lat2)
    north = math.cos(lat1) * math.sin(lat2) - math.sin(lat1) * math.cos(lat2) * math.cos(lon2 - lon1)
    return math.degrees(2 * math.asin(math.sqrt(half))) * 60, math.degrees(math.atan2(east, north)) % 360


def one_report_of_each(lines):
    """Sentences with the first position of each ship, and those positions as the independent reader tells them."""
    single = [line for line in lines if line.startswith(b"!AIVDM,1,1,")]
    told = gpsdecode(single)
    rig.check(len(told) == len(single), "gpsdecode skips messages of the sample")
    reports = {}
    for line, message in zip(single, told):
        position = (message.get("lat", 91), message.get("lon", 181))
        if position[0] <= 90 and position[1] <= 180:
            reports.setdefault(message["mmsi"], (line, position))
    return dict(list(reports.items())[: TARGETS + 10])


def degrees_of(text):
    """ "50°48.85'N" as degrees. """
    whole, minutes = text[:-2].split("\xb0")
    return (int(whole) + float(minutes) / 60) * (-1 if text[-1] in "SW" else 1)


def shows(row, position):
    """Whether the row's own place is that one, as closely as its text tells."""
    texts = (row[LATITUDE], row[LONGITUDE])
    return all(text and abs(degrees_of(text) - value) < 0.006 / 60 for text, value in zip(texts, position))


def check_ranges(rows, reports):
    seen = set()
    for row in rows:
        mmsi = int(row[MMSI])
        if mmsi not in reports or not shows(row, reports[mmsi][1]):
            continue  # an earlier report
        miles, degrees = great_circle(OWN, reports[mmsi][1])
        if min(degrees % 90, 90 - degrees % 90) < 0.1 or miles < 0.2:
            continue  # due north and the like: the cosine rule is not exact there
        seen.add(mmsi)
        off = abs((float(row[BEARING]) - degrees + 180) % 360 - 180)
        # Half of the last digit shown, and a little for the two ways of computing.
        rig.check(abs(float(row[RANGE]) - miles) <= 0.055, f"range {row[RANGE]} of {mmsi}, expected {miles:.2f}")
        rig.check(off <= 0.55, f"bearing {row[BEARING]} of {mmsi}, expected {degrees:.1f}")
    rig.check(len(seen) >= TARGETS, f"only {len(seen)} ranges and bearings to check")
    return len(seen)


def say_everything(chain, samples):
    sample = rig.sample_sentences(samples, "harbour.txt")
    night = rig.sample_sentences(samples, "night.txt")
    # The first position has to be known before the ships; each GLL gives an RMC, which goes out before it.
    for second in range(120000, 120010):
        gll = rig.sentence(GLL % second)
        chain.send(1, gll, [made_rmc(second), gll])
    receiver = [line for line in sample if line.startswith((b"!AIVDM", b"$PNMLS"))]
    for line in receiver[:MESSAGES]:
        chain.send(0, line, [line])
    for line in ODD:
        chain.send(0, line, [line])
        chain.send(1, line, [line])
    for line in REFUSED:
        chain.send(0, line, [])
    reports = one_report_of_each(receiver + [line for line in night if line.startswith(b"!AIVDM")])
    for line, _ in reports.values():
        chain.send(0, line, [line])
    return reports


def check_reader(lines):
    ais = [line for line in lines if line.startswith(b"!AIVDM")]
    told = gpsdecode(ais)
    rig.check(len(told) == messages_in(ais), f"gpsdecode understood {len(told)} of {messages_in(ais)} messages")
    made = [line for line in lines if line.startswith(b"$ECRMC")]
    fixes = [fix for fix in gpsdecode(made) if fix["class"] == "TPV"]
    # It reports a fix when the time changes, so not the first.
    rig.check(len(fixes) >= len(made) - 1 > 0, f"gpsdecode accepted {len(fixes)} of {len(made)} RMC sentences")
    for fix in fixes:
        rig.check(abs(fix["lat"] - OWN[0]) < 1e-6 and abs(fix["lon"] - OWN[1]) < 1e-6, f"another place: {fix}")
        rig.check(fix["time"].startswith(time.strftime("%Y-%m-%dT12:00:0")), f"another time: {fix}")
    return len(told), len(fixes)


def main():
    options = rig.arguments().parse_args()
    rig.skip_without("Xvfb", "xdotool", "dbus-send", "gpsdecode", rig.AT_SPI_LAUNCHER)
    with tempfile.TemporaryDirectory() as folder, rig.display(), rig.accessibility():
        lines = [rig.SerialLine(os.path.join(folder, name)) for name in ("receiver", "gps", "plotter")]
        with rig.Program(options.program, folder, rig.profile(*(line.link for line in lines), output_settings="921600,n,8,1")) as program:
            eyes = rig.Eyes(program)
            eyes.show_tab("Output")
            eyes.click(eyes.find("check box", "RMC from GLL"))
            eyes.click(eyes.find("push button", "Start"))
            rig.await_that(lambda: all(line.listened() for line in lines), "the three ports are open")
            rig.await_that(lambda: eyes.panels()[0] == "Running", "the program runs")
            chain = Chain(lines)
            reports = say_everything(chain, options.samples)
            eyes.click(eyes.find("push button", "Stop"))
            rig.await_that(lambda: eyes.panels()[0] == "Stopped", "Stop has been pressed")
            eyes.show_tab("Targets")
            time.sleep(0.2)
            checked = check_ranges(eyes.rows("Targets")[1:], reports)
            rig.check(program.close() == 0, f"exit code {program.process.returncode}")
        messages, fixes = check_reader(chain.got.split(b"\r\n"))
        delays = sorted(1000 * delay for delay in chain.delays)
        print(f"{len(delays)} lines forwarded exactly; gpsdecode read {messages} messages and {fixes} fixes; "
              f"{checked} ranges and bearings; delay median {statistics.median(delays):.2f} ms, "
              f"99 of 100 below {delays[len(delays) * 99 // 100]:.2f} ms, most {delays[-1]:.2f} ms")


if __name__ == "__main__":
    sys.exit(rig.run(main))
