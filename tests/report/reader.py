"""Reads record files on its own, slowly and plainly, to hold tidewatch-report against: nothing of the program is used.

The rules are those of docs/record-format.md and of the standards (NMEA 0183, ITU-R M.1371): a stamp of 19 characters, a
checksum where the third character from the end is a star, messages put together in the order of their sentences, the
signal sentence right behind a message belongs to it. Ranges are by the haversine formula.
"""

import datetime
import math
import re

STAMP = re.compile(rb"(\d\d)/(\d\d)/(\d\d\d\d) (\d\d):(\d\d):(\d\d)$")
POSITION_BITS = {  # message type: first bit of longitude and of latitude (28 and 27 bits)
    1: (61, 89), 2: (61, 89), 3: (61, 89), 4: (79, 107), 18: (57, 85), 19: (57, 85)}


class Message:
    def __init__(self, time, values, length, channel, own):
        self.time, self.values, self.length, self.channel, self.own = time, values, length, channel, own
        self.levels = None
        self.type = values[0]
        self.mmsi = self.bits(8, 30)

    def bits(self, first, count):
        whole = 0
        for bit in range(first, first + count):
            whole = whole * 2 + (self.values[bit // 6] >> (5 - bit % 6) & 1)
        return whole

    def signed(self, first, count):
        value = self.bits(first, count)
        return value - (1 << count) if value >> (count - 1) else value

    def text(self, first, characters):
        codes = [self.bits(first + 6 * i, 6) for i in range(characters)]
        return "".join(chr(c + 64 if c < 32 else c) for c in codes).split("@")[0].rstrip()

    @property
    def position(self):
        if self.type not in POSITION_BITS or self.length < 23:
            return None
        longitude, latitude = POSITION_BITS[self.type]
        place = self.signed(latitude, 27) / 600000, self.signed(longitude, 28) / 600000
        return place if abs(place[0]) <= 90 and abs(place[1]) <= 180 else None

    @property
    def range(self):
        return distance(self.own, self.position) if self.own and self.position else None

    @property
    def bearing(self):
        return course(self.own, self.position) if self.own and self.position else None


def distance(a, b):
    """Nautical miles, 60 to the degree."""
    (lat1, lon1), (lat2, lon2) = [[math.radians(x) for x in p] for p in (a, b)]
    h = math.sin((lat2 - lat1) / 2) ** 2 + math.cos(lat1) * math.cos(lat2) * math.sin((lon2 - lon1) / 2) ** 2
    return math.degrees(2 * math.asin(math.sqrt(h))) * 60


def course(a, b):
    (lat1, lon1), (lat2, lon2) = [[math.radians(x) for x in p] for p in (a, b)]
    y = math.sin(lon2 - lon1) * math.cos(lat2)
    x = math.cos(lat1) * math.sin(lat2) - math.sin(lat1) * math.cos(lat2) * math.cos(lon2 - lon1)
    return math.degrees(math.atan2(y, x)) % 360


def rank(values, share):
    """The smallest value that at least this share of the values does not exceed."""
    return sorted(values)[max(math.ceil(share * len(values)), 1) - 1]


def dbm(level):
    x = level - 19
    return -0.008658 * x * x + 2.08658 * x - 107


def number(text):
    found = re.match(r"\s*[-+]?(\d+\.?\d*|\.\d+)", text.decode("latin-1"))
    return float(found.group()) if found else 0.0


def coordinate(field, letter, degrees, letters):
    if letter not in letters or not re.fullmatch(rb"\d{%d}(\d+\.?\d*|\.\d+)" % degrees, field):
        return None
    minutes = float("%.2f" % (float(field[degrees:]) + 1e-9))  # as far as the position's text shows them
    value = int(field[:degrees]) + minutes / 60
    return -value if letter in b"SW" else value


class Recording:
    """What all lines say, in the order of the file."""

    def __init__(self, data, own=None):
        self.kinds = {}
        self.times = []
        self.messages = []
        self.fixed = own is not None
        self.own = own
        self.store = [0] * 512
        self.length = 0
        self.last_vdm = False
        for line in re.split(rb"\r\n|\r|\n", data)[:-1]:  # what stands behind the last line end is no line
            kind = self.line(line)
            self.kinds[kind] = self.kinds.get(kind, 0) + 1

    def line(self, line):
        found = STAMP.match(line[:19])
        if not found:
            return "bad_stamp"
        month, day, year, *clock = map(int, found.groups())
        try:
            self.time = datetime.datetime(year, month, day, *clock)
        except ValueError:
            return "bad_stamp"
        self.times.append(self.time)
        return self.sentence(line[20:])

    def sentence(self, text):
        if len(text) < 6:
            return "bad_size"
        if text[-3:-2] == b"*":
            total = 0
            for byte in text[1:-3]:
                total ^= byte
            if b"%02X" % total != text[-2:]:
                return "bad_checksum"
        after_vdm, self.last_vdm = self.last_vdm, text.startswith(b"!AIVDM")
        if text.startswith(b"$PNMLS"):
            return self.signal(text, after_vdm)
        if self.last_vdm:
            return self.vdm(text)
        if text[3:6] in (b"GLL", b"RMC"):
            return self.gps(text)
        return "other"

    def signal(self, text, after_vdm):
        found = re.match(rb"([^,]+),([^,]+),([^*]+)\*", text[7:], re.DOTALL)
        if not found:
            return "bad_pnmls"
        if after_vdm and self.messages:
            self.messages[-1].levels = number(found.group(1)), number(found.group(2))
        return "pnmls"

    def vdm(self, text):
        fields = text[7:].split(b",")
        if len(fields) < 6 or not fields[0].isdigit() or not fields[1].isdigit():
            return "bad_vdm"
        if (fields[2] and not fields[2].isdigit()) or not fields[3] or not fields[4]:
            return "bad_vdm"
        held = 0 if int(fields[1]) == 1 else self.length
        if held + len(fields[4]) > 512:
            return "bad_vdm"
        for i, code in enumerate(fields[4]):
            self.store[held + i] = code - 48 if code < 96 else code - 56
        self.length = held + len(fields[4])
        if fields[0] == fields[1]:
            self.messages.append(Message(self.time, self.store[:80], self.length, fields[3].decode("latin-1"), self.own))
        return "vdm"

    def gps(self, text):
        fields = text.split(b"*")[0].split(b",")
        first = 1 if text[3:6] == b"GLL" else 3
        if len(fields) < 7 or b"V" in (fields[2] if first == 3 else fields[6]):
            return "bad_gps"
        latitude = coordinate(fields[first], fields[first + 1], 2, b"NS")
        longitude = coordinate(fields[first + 2], fields[first + 3], 3, b"EW")
        if latitude is None or longitude is None:
            return "bad_gps"
        if not self.fixed:
            self.own = latitude, longitude
        return "gps"

    def seconds(self, gap=600):
        """Time recorded, steps longer than the gap left out."""
        steps = [(b - a).total_seconds() for a, b in zip(self.times, self.times[1:])]
        return int(sum(s for s in steps if 0 < s <= gap))
