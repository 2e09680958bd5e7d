"""Two recordings beside each other, held against what was really sent and who heard it: the test sends the messages
itself, lets two receivers hear them by rules of its own, and makes every expected figure from its own list."""

import bisect
import csv
import datetime
import gzip
import io
import math
import random
import statistics
import unittest

import reader
import rig
from rig import Bits, levels, position, program, result

DAY = datetime.datetime(2025, 6, 14)
OWN = (50.0, 1.0)
GPS = rig.gps((50, 0.0), (1, 0.0))


def stamp(seconds):
    return (DAY + datetime.timedelta(seconds=math.floor(seconds))).strftime("%m/%d/%Y %H:%M:%S")


def place(miles, bearing):
    north, east = miles * math.cos(math.radians(bearing)), miles * math.sin(math.radians(bearing))
    return OWN[0] + north / 60, OWN[1] + east / 60 / math.cos(math.radians(OWN[0]))


class Sent:
    """A transmission: when, by whom, from where (None: tells no position)."""

    def __init__(self, when, ship, sentence, kind=1, channel="A", where=None):
        self.when, self.ship, self.sentence, self.kind, self.channel, self.where = when, ship, sentence, kind, channel, where

    @property
    def ring(self):
        if not self.where:
            return "no range"
        first = int(reader.distance(OWN, self.where) // 5) * 5
        return f"{first}-{first + 5}"

    @property
    def sector(self):
        if not self.where:
            return "no bearing"
        first = int(reader.course(OWN, self.where) // 10) * 10
        return f"{first:03d}-{first + 10:03d}"


def name_of_ship(mmsi):
    return Bits(5, mmsi).add(0, 2).add(0, 30).text("CALL", 7).text("SHIP", 20).add(70, 8).add(0, 30).add(
        0, 4).add(0, 20).add(0, 8).text("", 20).add(0, 2)


def traffic(chance, ships=12, count=40, minutes=60):
    """Position reports at odd times, and of each ship the same static data every 6 minutes."""
    sent = []
    for ship in range(ships):
        mmsi = 211000000 + ship
        miles, bearing = chance.uniform(0.5, 29), chance.uniform(0, 360)
        for _ in range(count):
            when = chance.uniform(0, minutes * 60)
            where = place(miles + chance.uniform(0, 0.4), bearing)
            channel = chance.choice("AB")
            sentence = position(mmsi, *where, channel=channel, course=chance.uniform(0, 359.9), state=chance.getrandbits(19))
            sent.append(Sent(when, ship, sentence, 1, channel, where))
        static = name_of_ship(mmsi)
        begin = chance.uniform(0, 360)
        for again in range(int((minutes * 60 - begin) // 360)):
            channel = "AB"[again % 2]
            sent.append(Sent(begin + 360 * again, ship, static.sentence(channel), 5, channel))
    return sorted(sent, key=lambda t: t.when)


class Receiver:
    """What one receiver writes down: who is heard by which rule, how strong, by which clock."""

    def __init__(self, sent, hears, level=lambda t: (40, 25), clock=lambda when: 0.0, minutes=60, begin=0, gps=True):
        self.heard = {}  # number of the transmission: stamp in seconds, levels
        lines = [(begin, GPS if gps else rig.closed("$GPZDA,,,,,,"))]
        for i, t in enumerate(sent):
            if not begin <= t.when <= minutes * 60 or not hears(t):
                continue
            told = level(t)
            self.heard[i] = math.floor(t.when + clock(t.when)), told
            lines.append((t.when, t.sentence))
            if told:
                lines.append((t.when, levels(*told)))
        lines.append((minutes * 60, GPS if gps else rig.closed("$GPZDA,,,,,,")))
        self.first, self.last = (math.floor(when + clock(when)) for when in (begin, minutes * 60))
        self.data = "".join(f"{stamp(w + clock(w))} {s}\r\n" for w, s in lines).encode("latin-1")


def shares(sent, a, b, offset=0):
    """Of the transmissions in common time: lists of those that both heard, A alone, B alone."""
    low = max(a.first, b.first - offset) + 3
    high = min(a.last, b.last - offset) - 3
    told = [], [], []
    for i in range(len(sent)):
        in_a, in_b = a.heard.get(i), b.heard.get(i)
        if in_a or in_b:
            when = in_a[0] if in_a else in_b[0] - offset
            if low <= when <= high:
                told[0 if in_a and in_b else 1 if in_a else 2].append(i)
    return told


# The intervals, once more from their definition.

STUDENT = [12.706, 4.303, 3.182, 2.776, 2.571, 2.447, 2.365, 2.306, 2.262, 2.228, 2.201, 2.179, 2.160, 2.145, 2.131,
           2.120, 2.110, 2.101, 2.093, 2.086, 2.080, 2.074, 2.069, 2.064, 2.060, 2.056, 2.052, 2.048, 2.045, 2.042]


def student(freedom):
    if freedom < 11:
        return STUDENT[int(freedom) - 1]
    low = STUDENT[int(freedom) - 1] if freedom < 30 else 1.96 + 2.4 / freedom
    high = STUDENT[int(freedom)] if freedom < 30 else low
    return low + (high - low) * (freedom - int(freedom))


def jackknife(clusters, part):
    whole, size = sum(map(part, clusters)), sum(map(sum, clusters))
    drops = [(whole - part(c)) / (size - sum(c)) - whole / size for c in clusters]
    return sum(d * d for d in drops) * (len(clusters) - 1) / len(clusters)


def freedom(clusters):
    sizes = [sum(c) for c in clusters]
    return sum(sizes) ** 2 / sum(s * s for s in sizes) - 1


def wilson(share, count, z):
    centre = (share + z * z / 2 / count) / (1 + z * z / count)
    half = z / (1 + z * z / count) * math.sqrt(share * (1 - share) / count + (z / 2 / count) ** 2)
    return centre - half, centre + half


def share_interval(groups, part):
    ends = []
    for clusters in groups:
        whole, size = sum(map(part, clusters)), sum(map(sum, clusters))
        share = whole / size
        variance = max(jackknife(clusters, part), share * (1 - share) / size)
        ends.append(wilson(share, share * (1 - share) / variance if variance else size, student(freedom(clusters))))
    return min(e[0] for e in ends), max(e[1] for e in ends)


def difference_interval(ships, times):
    lead = lambda c: c[1] - c[2]
    size = sum(map(sum, ships))
    centre = sum(map(lead, ships)) / size
    one_by_one = (sum(c[1] + c[2] for c in ships) + 1) / size ** 2
    half = max(student(freedom(ships)) * math.sqrt(max(jackknife(ships, lead), one_by_one)),
               student(freedom(times)) * math.sqrt(jackknife(times, lead)))
    return centre - half, centre + half


def clusters_of(told, key):
    found = {}
    for i, numbers in enumerate(told):
        for number in numbers:
            found.setdefault(key(number), [0, 0, 0])[i] += 1
    return list(found.values())


def rank_interval(values):
    values = sorted(values)
    out = 0
    while sum(math.comb(len(values), k) for k in range(out + 1)) / 2 ** len(values) <= 0.025:
        out += 1
    return (values[out - 1], values[-out]) if out else (None, None)


class CompareCase(rig.Case):
    def compare(self, a, b, *words, expect=0):
        a, b = (self.file(name, t if isinstance(t, bytes) else t.data) for name, t in (("a.txt", a), ("b.txt", b)))
        return result("compare", a, b, *words, expect=expect)

    def totals(self, told):
        return [next(row["messages"] for row in told["totals"] if row["heard"] == name) for name in ("both", "A alone", "B alone")]

    def row(self, told, group, of):
        return next(row for row in told[group] if row["of"] == of)

    def notes(self, told, *words):
        for word in words:
            self.assertIn(word, " / ".join(told["notes"]))

    def ends(self, row, low, high, expected):
        """Ends in percent are rounded outward to a tenth."""
        self.assertAlmostEqual(row[low], math.floor(expected[0] * 1000 + 1e-7) / 10, delta=0.1001, msg=row)
        self.assertAlmostEqual(row[high], math.ceil(expected[1] * 1000 - 1e-7) / 10, delta=0.1001, msg=row)
        self.assertLessEqual(row[low], expected[0] * 100 + 0.02)
        self.assertGreaterEqual(row[high], expected[1] * 100 - 0.02)


class CountsTest(CompareCase):
    def setUp(self):
        super().setUp()
        chance = random.Random(7)
        self.sent = traffic(chance)
        self.a = Receiver(self.sent, lambda t: chance.random() < 0.8, lambda t: (chance.randint(30, 90), 20))
        self.b = Receiver(self.sent, lambda t: chance.random() < (0.7 if t.channel == "A" else 0.5),
                          lambda t: (chance.randint(30, 90), 22), clock=lambda when: 7203.3)
        self.told = self.compare(self.a, self.b)
        self.heard = shares(self.sent, self.a, self.b, 7203)

    def test_totals(self):
        self.assertEqual(self.totals(self.told), [len(t) for t in self.heard])
        either = sum(map(len, self.heard))
        for name, count in (("both", len(self.heard[0])), ("A", either - len(self.heard[2])), ("B", either - len(self.heard[1]))):
            row = next(row for row in self.told["totals"] if row["heard"] == name)
            self.assertAlmostEqual(row["share"], 100 * count / either, delta=0.051)

    def test_rows(self):
        for group, key in (("rings", lambda t: t.ring), ("sectors", lambda t: t.sector), ("channels", lambda t: t.channel),
                           ("types", lambda t: str(t.kind))):
            expected = {}
            for i, numbers in enumerate(self.heard):
                for number in numbers:
                    expected.setdefault(key(self.sent[number]), [0, 0, 0])[i] += 1
            self.assertEqual({row["of"]: [row["both"], row["a_alone"], row["b_alone"]] for row in self.told[group]}, expected)
            for row in self.told[group]:
                self.assertEqual(row["either"], sum(expected[row["of"]]))
                ships = {self.sent[n].ship for t in self.heard for n in t if key(self.sent[n]) == row["of"]}
                self.assertEqual(row["ships"], len(ships))

    def test_clocks_and_time(self):
        time = self.told["time"]
        self.assertEqual([time["offset"], time["offset_text"]], [7203, "2:00:03"])
        self.assertEqual([time["from"], time["to"]], ["2025-06-14 00:00:03", "2025-06-14 00:59:57"])
        self.assertEqual(time["common_seconds"], 3600 - 6)
        # Those of the first and last three seconds.
        self.assertEqual(time["a_left_out"], len(self.a.heard) - len(self.heard[0]) - len(self.heard[1]))
        self.assertEqual(time["b_left_out"], len(self.b.heard) - len(self.heard[0]) - len(self.heard[2]))

    def test_intervals(self):
        # 60 minutes are no more than 64 stretches of one.
        when = lambda n: (self.a.heard[n][0] if n in self.a.heard else self.b.heard[n][0] - 7203) // 60
        for numbers, row in ([self.heard, None],
                             [[[n for n in t if self.sent[n].channel == "B"] for t in self.heard], self.row(self.told, "channels", "B")]):
            ships, times = clusters_of(numbers, lambda n: self.sent[n].ship), clusters_of(numbers, when)
            a, b = (share_interval((ships, times), lambda c, i=i: c[0] + c[i]) for i in (1, 2))
            if row:
                self.ends(row, "a_low", "a_high", a)
                self.ends(row, "b_low", "b_high", b)
                self.ends(row, "difference_low", "difference_high", difference_interval(ships, times))
                continue
            for name, expected in (("A", a), ("B", b), ("A less B", difference_interval(ships, times)),
                                   ("both", share_interval((ships, times), lambda c: c[0]))):
                self.ends(next(r for r in self.told["totals"] if r["heard"] == name), "low", "high", expected)

    def test_interval_where_a_receiver_is_deaf_at_times(self):
        """To all ships alike: by the ships it would look certain."""
        deaf = random.Random(8).sample(range(60), 20)
        a = Receiver(self.sent, lambda t: True)
        b = Receiver(self.sent, lambda t: t.when // 60 not in deaf)
        told, heard = self.compare(a, b), shares(self.sent, a, b)
        ships, times = clusters_of(heard, lambda n: self.sent[n].ship), clusters_of(heard, lambda n: a.heard[n][0] // 60)
        expected = difference_interval(ships, times)
        self.assertGreater(expected[1] - expected[0], 1.2 * 2 * student(freedom(ships)) * math.sqrt(
            jackknife(ships, lambda c: c[1] - c[2])))
        self.ends(next(r for r in told["totals"] if r["heard"] == "A less B"), "low", "high", expected)

    def test_stretches_of_more_than_an_hour(self):
        """90 minutes are 45 stretches of two, which begin at even minutes of the day."""
        sent = traffic(random.Random(9), minutes=90)
        a = Receiver(sent, lambda t: True, minutes=90)
        b = Receiver(sent, lambda t: t.when // 120 % 3 != 1, minutes=90)
        told, heard = self.compare(a, b), shares(sent, a, b)
        ships, times = clusters_of(heard, lambda n: sent[n].ship), clusters_of(heard, lambda n: a.heard[n][0] // 120)
        self.ends(next(r for r in told["totals"] if r["heard"] == "A less B"), "low", "high", difference_interval(ships, times))

    def test_level_interval_by_the_number_of_ships(self):
        for ships in (5, 6, 8, 9, 11, 17):
            chance = random.Random(ships)
            sent = traffic(chance, ships=ships, minutes=30)
            strength = [chance.randint(30, 60) for _ in range(ships)]
            a = Receiver(sent, lambda t: True, lambda t: (strength[t.ship], 20), minutes=30)
            b = Receiver(sent, lambda t: True, lambda t: (45, 20), minutes=30)
            row = self.compare(a, b, "--raw")["levels"][0]
            low, high = rank_interval([s - 45 for s in strength])
            self.assertEqual([row["median"], row["low"], row["high"]], [statistics.median(strength) - 45, low, high], ships)

    def test_levels(self):
        pairs = {}
        for n in self.heard[0]:
            (s1, t1), (s2, t2) = self.a.heard[n][1], self.b.heard[n][1]
            pairs.setdefault(self.sent[n].ship, []).append(
                (reader.dbm(s1) - reader.dbm(s2), reader.dbm(t1) - reader.dbm(t2),
                 reader.dbm(s1) - reader.dbm(t1) - reader.dbm(s2) + reader.dbm(t2)))
        for i, group in enumerate(("signal", "threshold", "snr")):
            row = next(r for r in self.told["levels"] if r["group"] == group)
            self.assertEqual([row["pairs"], row["ships"]], [len(self.heard[0]), len(pairs)])
            means = [statistics.fmean(p[i] for p in ship) for ship in pairs.values()]
            self.assertAlmostEqual(row["pairs_median"], reader.rank([p[i] for s in pairs.values() for p in s], 0.5), delta=0.0501)
            self.assertAlmostEqual(row["median"], statistics.median(means), delta=0.0501)
            low, high = rank_interval(means)
            self.assertAlmostEqual(row["low"], math.floor(low * 10 + 1e-7) / 10, delta=0.001)
            self.assertAlmostEqual(row["high"], math.ceil(high * 10 - 1e-7) / 10, delta=0.001)

    def test_pairs_near_the_threshold_are_left_out(self):
        """By the mean of both, so that neither side is taken: 0 and 4.1 dB above it, and 12.1 and 0."""
        a = Receiver(self.sent, lambda t: True, lambda t: (20 if t.ship < 6 else 26, 20))
        b = Receiver(self.sent, lambda t: True, lambda t: (22 if t.ship < 6 else 20, 20))
        told = self.compare(a, b)
        weak, clear = (sum(1 for t in self.sent if 3 <= t.when < 3598 and (t.ship < 6) == side) for side in (True, False))
        row = {r["group"]: r for r in told["levels"][:3]}
        self.assertEqual([row["signal"]["pairs"], row["snr"]["pairs"], row["threshold"]["pairs"]], [clear, clear, weak + clear])
        self.assertAlmostEqual(row["signal"]["median"], reader.dbm(26) - reader.dbm(20), delta=0.051)
        self.notes(told, f"{weak} pairs are left out of signal and SNR")

    def test_raw_levels(self):
        told = self.compare(self.a, self.b, "--raw")
        row = next(r for r in told["levels"] if r["group"] == "threshold")
        self.assertEqual([row["pairs_median"], row["median"], row["low"], row["high"]], [-2, -2, -2, -2])
        self.assertIn("steps", told["verdict"]["text"])

    def test_csv_is_one_table(self):
        code, out, err = program("compare", self.folder / "a.txt", self.folder / "b.txt", "--csv")
        self.assertEqual(code, 0)
        rows = list(csv.DictReader(io.StringIO(out.decode())))
        self.assertEqual([[int(rows[0][k]) for k in ("both", "a_alone", "b_alone")], rows[0]["group"]], [self.totals(self.told), "totals"])
        for group in ("rings", "sectors", "channels", "types"):
            mine = {row["of"]: row for row in rows if row["group"] == group}
            for row in self.told[group]:
                for key, value in row.items():
                    self.assertEqual(mine[row["of"]][key], "" if value is None else
                                     value if isinstance(value, str) else str(value) if isinstance(value, int) and not
                                     key.split("_")[0] in ("a", "b", "difference") or key in ("a_alone", "b_alone") else f"{value:.1f}")
        self.assertIn(self.told["verdict"]["text"], err)

    def test_text_begins_with_the_verdict(self):
        code, out, _ = program("compare", self.folder / "a.txt", self.folder / "b.txt")
        lines = out.decode().splitlines()
        self.assertEqual((code, lines[0]), (0, "Verdict"))
        self.assertIn(self.told["verdict"]["text"], lines[1])

    def test_turned_round(self):
        told = result("compare", self.folder / "b.txt", self.folder / "a.txt", "--position", "50 N 1 E")
        both, a, b = self.totals(self.told)
        self.assertEqual(told["time"]["offset"], -7203)
        self.assertAlmostEqual(self.totals(told)[0], both, delta=1)  # ends of a second
        self.assertAlmostEqual(self.totals(told)[1], b, delta=2)
        self.assertAlmostEqual(self.totals(told)[2], a, delta=2)

    def test_packed_and_piped(self):
        packed = self.file("b.gz", gzip.compress(self.b.data))
        told = result("compare", "-", packed, data=self.a.data)
        self.assertEqual([told[k] for k in ("totals", "rings", "levels")], [self.told[k] for k in ("totals", "rings", "levels")])


class MatchingTest(CompareCase):
    """One to one, nearest in time."""

    def pair(self, a, b):
        """Receivers that hear one payload at the given seconds, amid traffic that both hear."""
        sent = traffic(random.Random(3), minutes=20)
        plain = Receiver(sent, lambda t: True, minutes=20)
        before = len(plain.heard) - sum(1 for n in plain.heard if not 3 <= plain.heard[n][0] <= 1197)
        told = self.compare(*[self.with_lines(plain.data, times) for times in (a, b)])
        both, alone_a, alone_b = self.totals(told)
        return both - before, alone_a, alone_b

    def with_lines(self, data, times):
        extra = [(stamp(t) + " " + name_of_ship(244000001).sentence() + "\r\n").encode() for t in times]
        lines = data.splitlines(keepends=True)
        # A message and its levels are of one second and stay together behind it.
        return b"".join(sorted(lines + extra, key=lambda line: line[:19]))

    def test_one_to_one(self):
        for a, b, expected in (([600], [603], (1, 0, 0)), ([600], [604], (0, 1, 1)), ([600, 602], [601], (1, 1, 0)),
                               ([600, 602], [603, 601], (2, 0, 0)), ([600, 600], [600], (1, 1, 0)),
                               ([600, 603], [602], (1, 1, 0)), ([600, 960], [600, 780], (1, 1, 1)),
                               ([600, 605, 610], [602, 607, 613], (3, 0, 0)), ([600, 602], [602, 604], (1, 1, 1)), ([600], [], (0, 1, 0)),
                               ([603], [600, 604], (1, 0, 1))):
            self.assertEqual(self.pair(a, b), expected, (a, b))

    def test_long_messages_differ_in_their_last_character(self):
        long = lambda end: Bits(8, 244000001).add(0, 800).add(end, 6)
        sent = traffic(random.Random(3), minutes=20)
        lines = Receiver(sent, lambda t: True, minutes=20).data.splitlines(keepends=True)
        files = []
        for end in (1, 2):
            extra = [(stamp(t) + " " + long(end).sentence() + "\r\n").encode() for t in range(300, 900, 20)]
            files.append(b"".join(sorted(lines + extra, key=lambda line: line[:19])))
        self.assertEqual(self.totals(self.compare(*files))[1:], [30, 30])


class ClocksTest(CompareCase):
    def test_offsets(self):
        """Seconds, hours, a clock that stands at another day; the stamps need not overlap at all."""
        sent = traffic(random.Random(11), minutes=40)
        a = Receiver(sent, lambda t: True, minutes=40)
        for offset in (0, 2, -2, 59, -299, 3600, -7200 - 41, 26 * 3600, -400 * 86400):
            b = Receiver(sent, lambda t: True, clock=lambda when: offset, minutes=40)
            told = self.compare(a, b)
            self.assertEqual([told["time"]["offset"], *self.totals(told)[1:]], [offset, 0, 0])

    def test_static_data_in_step(self):
        """All ships' static data come again after 6 minutes to the second: 363 seconds would fit them as well."""
        sent = traffic(random.Random(19), ships=40, count=60, minutes=125)
        a = Receiver(sent, lambda t: True, minutes=125)
        b = Receiver(sent, lambda t: True, clock=lambda when: 7203, minutes=125)
        told = self.compare(a, b)
        self.assertEqual([told["time"]["offset"], *self.totals(told)[1:]], [7203, 0, 0])

    def test_a_is_longer_and_repeats_the_beginning_of_b(self):
        """Three hours of static data that come again all the time must not mislead the search."""
        sent = traffic(random.Random(12), minutes=180, count=100)
        a = Receiver(sent, lambda t: True, minutes=180)
        b = Receiver(sent, lambda t: True, begin=6000, minutes=130, clock=lambda when: -3600 - 17)
        told = self.compare(a, b)
        self.assertEqual(told["time"]["offset"], -3617)
        self.assertEqual(self.totals(told), [len(t) for t in shares(sent, a, b, -3617)])
        self.assertEqual(self.totals(told)[1:], [0, 0])
        self.assertEqual(told["time"]["common_seconds"], 1800 - 6)
        self.assertEqual(told["time"]["a_left_out"], len(a.heard) - self.totals(told)[0])

    def test_clocks_that_drift(self):
        """A second in five minutes: twelve in the hour, far beyond the three that are let pass."""
        sent = traffic(random.Random(13), count=250)
        a = Receiver(sent, lambda t: True)
        for start in (5, 7205):  # found near by, and by all of both files
            b = Receiver(sent, lambda t: True, clock=lambda when: start + when / 300)
            told = self.compare(a, b)
            self.assertEqual(self.totals(told)[1:], [0, 0])
            self.assertLessEqual(told["time"]["offset_least"], start + 3)
            self.assertGreaterEqual(told["time"]["offset_most"], start + 10)
            self.notes(told, "the offset was followed")

    def test_clock_set_back(self):
        """One clock, or both at the end of summer time, in the middle of the file."""
        sent = traffic(random.Random(14), count=250)
        back = lambda when: -3600.0 if when >= 1800 else 0.0
        plain = Receiver(sent, lambda t: True)
        for a, b in ((Receiver(sent, lambda t: True, clock=back), plain), (plain, Receiver(sent, lambda t: True, clock=back)),
                     (Receiver(sent, lambda t: True, clock=back), Receiver(sent, lambda t: True, clock=back))):
            told = self.compare(a, b)
            self.assertEqual(self.totals(told)[1:], [0, 0])
            lost = max(told["time"]["a_lost"], told["time"]["b_lost"])
            self.assertLess(lost, 400)
            self.assertAlmostEqual(self.totals(told)[0], len(sent) - lost, delta=40)
            self.notes(told, "clock was set back 1 times")

    def test_clock_set_forward_is_told(self):
        """By a minute: nobody can see it in one file, but then both hear and nothing is the same."""
        sent = traffic(random.Random(15), count=250)
        a = Receiver(sent, lambda t: True)
        b = Receiver(sent, lambda t: True, clock=lambda when: 60.0 if when >= 1800 else 0.0)
        told = self.compare(a, b)
        self.assertEqual(self.totals(told)[1:], [0, 0])
        self.notes(told, "a clock was set forward")
        self.assertEqual([told["time"]["offset_least"], told["time"]["offset_most"]], [0, 60])
        # 300 of each are needed to see it, and a minute comes twice.
        self.assertLess(max(told["time"]["a_lost"], told["time"]["b_lost"]), 800)
        self.assertAlmostEqual(self.totals(told)[0], len(sent) - told["time"]["a_lost"], delta=80)
        self.assertGreater(told["time"]["common_seconds"], 2700)

    def test_clock_set_right_at_the_beginning(self):
        """A small computer without a battery: the first minutes bear an old time, then the clock is set."""
        sent = traffic(random.Random(16), count=250)
        a = Receiver(sent, lambda t: True)
        b = Receiver(sent, lambda t: True, clock=lambda when: -40000.0 if when < 300 else 0.0)
        told = self.compare(a, b)
        self.assertEqual(told["time"]["offset"], 0)
        self.assertEqual(self.totals(told)[1:], [0, 0])
        self.assertAlmostEqual(self.totals(told)[0], len(sent) * 55 / 60, delta=60)

    def test_time_in_which_one_did_not_record(self):
        sent = traffic(random.Random(17), count=250)
        a = Receiver(sent, lambda t: True)
        b = Receiver(sent, lambda t: not 1200 < t.when < 2100)
        told = self.compare(a, b)
        self.assertEqual(self.totals(told)[1:], [0, 0])
        self.notes(told, "B did not record 1 times")
        self.assertAlmostEqual(told["time"]["common_seconds"], 3600 - 6 - 906, delta=8)
        # With its GPS going on, B was there and heard nothing.
        lines = b.data.splitlines(keepends=True) + [f"{stamp(t)} {GPS}\r\n".encode() for t in range(1200, 2100, 60)]
        told = self.compare(a, b"".join(sorted(lines, key=lambda line: line[:19])))
        self.assertEqual(self.totals(told)[1:], [sum(1 for t in sent if 1200 < t.when < 2100), 0])


class TruthTest(CompareCase):
    """Many recordings with a known difference, or none. Ships are heard well and badly by each receiver for reasons of
    their own, so that messages of a ship are alike: intervals made from the number of messages fail here."""

    RUNS = 100

    def play(self, seed, lead=0.0, stronger=0.0, alike=0.12):
        chance = random.Random(seed)
        sent = self.sent
        own = lambda: [max(0.05, min(0.95, chance.gauss(0.7, alike))) for _ in range(20)]
        by_a, by_b = own(), own()
        clear_a, clear_b = ([chance.gauss(0, 1.5) for _ in range(20)] for _ in range(2))
        strength = [chance.uniform(-95, -70) for _ in range(20)]
        fading = {}

        def level(t, more, clear):
            fade = fading.setdefault(id(t), chance.gauss(0, 4))
            return raw(strength[t.ship] + fade + more + clear[t.ship] + chance.gauss(0, 1)), 20

        a = Receiver(sent, lambda t: chance.random() < by_a[t.ship], lambda t: level(t, stronger, clear_a), minutes=30)
        b = Receiver(sent, lambda t: chance.random() < by_b[t.ship] * (1 - lead), lambda t: level(t, 0, clear_b), minutes=30)
        told = self.compare(a, b)
        return told, next(r for r in told["totals"] if r["heard"] == "A less B"), told["levels"][0]

    @classmethod
    def setUpClass(cls):
        cls.sent = [t for t in traffic(random.Random(1), ships=20, count=30, minutes=30) if t.kind == 1]

    def test_no_difference_where_there_is_none(self):
        wrong = heard = level = 0
        for seed in range(self.RUNS):
            told, lead, signal = self.play(seed)
            heard += lead["low"] <= 0 <= lead["high"]
            level += signal["low"] <= 0 <= signal["high"]
            wrong += not told["verdict"]["text"].startswith("No difference that these data can show: ")
            self.assertEqual(told["verdict"]["text"].startswith("No difference"),
                             lead["low"] <= 0 <= lead["high"] and signal["low"] <= 0 <= signal["high"])
        # 95 expected of each; fewer than 89 come by chance once in 200 times. Two figures, each wrong once in twenty.
        self.assertGreaterEqual(heard, 89)
        self.assertGreaterEqual(level, 89)
        self.assertLessEqual(wrong, 19)

    def test_planted_difference_lies_in_its_interval_and_is_found(self):
        """B misses 30 of 100 that it would hear, and hears 3 dB less."""
        # Of what either hears, with 0.7 and 0.49 and ships' own reasons: from a long run of the same chances.
        chance = random.Random(99)
        a = b = either = 0.0
        for _ in range(200000):
            p, q = (max(0.05, min(0.95, chance.gauss(0.7, 0.12))) for _ in range(2))
            q *= 0.7
            a, b, either = a + p, b + q, either + p + q - p * q
        truth = 100 * (a - b) / either
        heard = level = found = 0
        for seed in range(1000, 1000 + self.RUNS):
            told, lead, signal = self.play(seed, lead=0.3, stronger=3.0)
            heard += lead["low"] <= truth <= lead["high"]
            level += signal["low"] <= 3.0 <= signal["high"]
            found += told["verdict"]["text"].startswith("A heard ") and " stronger (" in told["verdict"]["text"]
        self.assertGreaterEqual(heard, 89)
        self.assertGreaterEqual(level, 89)
        self.assertGreaterEqual(found, 90)

    def test_small_differences_of_alike_antennas(self):
        """Two dB and one message in ten, where ships differ little: both are found."""
        told, lead, signal = self.play(5, lead=0.1, stronger=2.0, alike=0.0)
        self.assertTrue(lead["low"] < 100 * 0.07 / (0.7 + 0.63 - 0.7 * 0.63) < lead["high"], lead)
        self.assertTrue(0 < signal["low"] < 2.0 < signal["high"], signal)


def raw(dbm):
    """The whole step of the board that is nearest on its curve."""
    above = min(bisect.bisect(CURVE, dbm), len(CURVE) - 1)
    return min(above, max(above - 1, 0), key=lambda step: abs(CURVE[step] - dbm))


CURVE = [reader.dbm(step) for step in range(110)]


class VerdictTest(CompareCase):
    def test_figures_are_those_of_the_tables(self):
        chance = random.Random(21)
        sent = traffic(chance)
        a = Receiver(sent, lambda t: chance.random() < 0.9, lambda t: (60 + t.ship + chance.randint(0, 6), 20))
        b = Receiver(sent, lambda t: chance.random() < 0.5, lambda t: (55 + t.ship + chance.randint(0, 6), 20))
        for first, second, better, weaker in ((a, b, "A", False), (b, a, "B", False)):
            told = self.compare(first, second)
            lead = next(r for r in told["totals"] if r["heard"] == "A less B")
            signal = told["levels"][0]
            sign = 1 if better == "A" else -1
            low, high = sorted((sign * lead["low"], sign * lead["high"]))
            weak, strong = sorted((sign * signal["low"], sign * signal["high"]))
            self.assertEqual(told["verdict"]["text"],
                             f"{better} heard {sign * lead['share']:.1f} % more of what either heard (95 %: {low:.1f} to "
                             f"{high:.1f} %), and {sign * signal['median']:.1f} dB stronger ({weak:.1f} to {strong:.1f}).")

    def test_more_but_weaker(self):
        chance = random.Random(22)
        sent = traffic(chance)
        a = Receiver(sent, lambda t: True, lambda t: (50, 20))
        b = Receiver(sent, lambda t: chance.random() < 0.5, lambda t: (60, 20))
        self.assertRegex(self.compare(a, b)["verdict"]["text"], r"^A heard .*, but \d+\.\d dB weaker \(")

    def test_few_ships_give_no_verdict(self):
        """One ship, whatever the number of its messages, is one ship."""
        chance = random.Random(23)
        sent = traffic(chance, ships=1, count=500)
        a = Receiver(sent, lambda t: True)
        b = Receiver(sent, lambda t: chance.random() < 0.5)
        told = self.compare(a, b)
        self.assertTrue(told["verdict"]["text"].startswith("No difference that these data can show: A heard "))
        self.assertEqual(told["verdict"]["text"].count("too few ships for an interval"), 2)
        self.assertTrue(all(row["low"] is None and row["share"] is not None for row in told["totals"]))


class InputsTest(CompareCase):
    def setUp(self):
        super().setUp()
        self.sent = traffic(random.Random(31), minutes=20)
        self.plain = Receiver(self.sent, lambda t: True, minutes=20)

    def test_same_file_twice(self):
        path = self.file("a.txt", self.plain.data)
        told = result("compare", path, path)
        self.assertEqual(self.totals(told)[1:], [0, 0])
        self.notes(told, "A and B are the same file.")
        self.assertTrue(told["verdict"]["text"].startswith("No difference that these data can show: A heard 0.0 % more"))
        lead = next(r for r in told["totals"] if r["heard"] == "A less B")
        self.assertTrue(lead["low"] < 0 < lead["high"])
        told = self.compare(self.plain, self.plain)
        self.notes(told, "this looks like one recording twice")

    def test_empty(self):
        for a, b, words in ((b"", self.plain, "A has no AIS message"), (self.plain, b"", "B has no AIS message"),
                            (b"", b"", "Neither A nor B has")):
            told = self.compare(a, b, expect=1)
            self.notes(told, words, "is empty")
        told = self.compare(self.plain, b"", expect=1)
        row = self.row(told, "side_by_side", "all")
        self.assertEqual([row["a_messages"], row["b_messages"]], [len(self.plain.heard), None])

    def test_missing_and_damaged(self):
        code, out, err = program("compare", self.file("a.txt", self.plain.data), self.folder / "none.txt", "--json")
        self.assertEqual(code, 1)
        self.assertIn("No such file or directory", err)
        told = self.compare(self.plain, b"\xff\x00 nonsense\r\n" * 50, expect=1)
        self.notes(told, "B has no AIS message", "no line begins with a date and time")
        cut = self.plain.data[:len(self.plain.data) // 2 + 9]
        told = self.compare(self.plain, cut)
        self.assertEqual(self.totals(told)[1:], [0, 0])
        self.notes(told, "the last line has no end yet")

    def test_without_gps_and_without_levels(self):
        bare = Receiver(self.sent, lambda t: True, level=lambda t: None, minutes=20, gps=False)
        told = self.compare(bare, bare)
        self.assertEqual([row["of"] for row in told["rings"]], ["no range"])
        self.notes(told, "own position is in neither file", "A has no levels", "B has no levels")
        self.assertIn("levels cannot be compared", told["verdict"]["text"])
        self.assertIsNone(told["levels"][0]["median"])
        expected = {t.ring for t in self.sent if 3 <= t.when < 1198}
        for a, b, words in ((self.plain, bare, "GPS position in A's file."), (bare, self.plain, "A has none, so they are from B's")):
            told = self.compare(a, b)
            self.assertEqual({row["of"] for row in told["rings"]}, expected)
            self.notes(told, words)
        told = self.compare(bare, bare, "--position", "50 N 1 E")
        self.assertEqual({row["of"] for row in told["rings"]}, expected)

    def test_two_places(self):
        """Rows hold the same messages for both: places are seen from A's."""
        north = self.plain.data.replace(GPS.encode(), rig.gps((50, 30.0), (1, 0.0)).encode())
        told = self.compare(self.plain, north)
        self.assertEqual({row["of"] for row in told["rings"]}, {t.ring for t in self.sent if 3 <= t.when < 1198})
        self.notes(told, "A and B stood 30.0 nm apart")
        deaf = Receiver(self.sent, lambda t: t.kind == 5 or t.when < 300, minutes=20)
        told = self.compare(deaf, north)
        self.assertEqual({row["of"] for row in told["rings"]}, {t.ring for t in self.sent if 3 <= t.when < 1198})

    def test_different_times(self):
        """Another day with the same ships, whose static data are the same."""
        chance = random.Random(32)
        other = traffic(chance, minutes=30)
        later = Receiver(other, lambda t: True, lambda t: (60, 20), clock=lambda when: 86400, minutes=30)
        told = self.compare(self.plain, later)
        self.assertEqual([told["time"]["a_hours"], told["time"]["b_hours"]], [0.33, 0.5])  # 20 and 30 minutes
        out = program("compare", self.file("a.txt", self.plain.data), self.file("b.txt", later.data))[1].decode()
        heads = [line.split() for line in out.splitlines() if line.split()[:2] == ["group", "of"]]
        self.assertEqual(heads[-1], "group of A messages % an hour A dBm B messages % an hour B dBm".split())
        self.notes(told, "of different times", "Warning: at different times traffic and propagation differ")
        self.assertTrue(told["verdict"]["text"].startswith("None"))
        for of, a, b in (("all", self.sent, other), ("1", [t for t in self.sent if t.kind == 1], [t for t in other if t.kind == 1])):
            row = self.row(told, "side_by_side", of)
            self.assertEqual([row["a_messages"], row["b_messages"]], [len(a), len(b)])
            self.assertAlmostEqual(row["a_hour"], 3 * len(a), delta=0.051)
            self.assertAlmostEqual(row["b_hour"], 2 * len(b), delta=0.051)
            self.assertAlmostEqual(row["b_signal"], reader.dbm(60), delta=0.051)
        # The same stamps, but nothing in common: told as what it is.
        told = self.compare(self.plain, Receiver(other, lambda t: True, minutes=30))
        self.notes(told, "too few payloads stand in both to tell")

    def test_how_many_files(self):
        path = self.file("a.txt", self.plain.data)
        for files in ([path], [path] * 3):
            code, out, err = program("compare", *files)
            self.assertEqual((code, out), (2, b""))
            self.assertIn(f"takes two recordings, not {len(files)}", err)


if __name__ == "__main__":
    rig.main()
