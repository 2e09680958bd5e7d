"""The reception rate against range: held against what was really sent."""

import random
import subprocess
import unittest

import reader
import rig
from rig import OPTIONS, Bits, position, record, result


def stamp(seconds):
    return f"{seconds // 3600:02d}:{seconds // 60 % 60:02d}:{seconds % 60:02d}"


class PlantedTest(rig.Case):
    """Ships that send by the rules, of which a known share is heard."""

    def fleet(self, chance, share, interval=10, minutes=60, ships=12, miles=7, first=211000000, **fields):
        sent = []
        for ship in range(ships):
            when = chance.random() * interval
            while when < minutes * 60:
                scattered = max(0, when + chance.uniform(-0.1, 0.1) * interval)
                if chance.random() < share:
                    sent.append((scattered, position(first + ship, 50 + miles / 60, 1.01 + ship / 1e4, **fields)))
                when += interval
        return [("00:00:00", rig.gps((50, 0), (1, 0)))] + [(stamp(int(t)), s) for t, s in sorted(sent)]

    def ring(self, lines, *words, place=0):
        return result("range", self.file("a.txt", record(*lines)), *words)["rings"][place]

    def test_rate_lies_in_its_interval_in_95_of_100_runs(self):
        within = 0
        for seed in range(100):
            share = 0.4 + 0.5 * (seed % 10) / 10
            row = self.ring(self.fleet(random.Random(seed), share))
            within += row["low"] <= share * 100 <= row["high"]
        self.assertGreaterEqual(within, 90)  # 95 expected; fewer than 90 come by chance once in 80 times

    def test_intervals_of_the_rules(self):
        for interval, fields in ((10, {"speed": 12}), (6, {"speed": 20}), (2, {"speed": 25}),
                                 (180, {"speed": 0.2, "status": 1}), (180, {"speed": 1, "status": 5}),
                                 (10, {"speed": 4, "status": 5}), (10, {"speed": 0})):
            row = self.ring(self.fleet(random.Random(1), 0.7, interval, minutes=interval * 10, **fields))
            self.assertAlmostEqual(row["rate"], 70, delta=4, msg=fields)

    def test_class_b(self):
        for interval, speed, carrier_sense in ((30, 10, 1), (30, 20, 1), (180, 1, 1), (15, 20, 0), (5, 25, 0)):
            lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
            for i in range(100):
                t = Bits(18, 338000001).add(0, 8).add(speed * 10, 10).add(1, 1).add(1.01 * 600000, 28)
                t.add(50.1 * 600000, 27).add(900, 12).add(511, 9).add(60, 6).add(0, 2).add(carrier_sense, 1).add(0, 26)
                lines.append((stamp(i * interval), t.sentence()))
            row = self.ring(lines)
            self.assertEqual((row["rate"], row["heard"], row["sent"]), (100, 98, 98), speed)

    def test_left_out_and_counted(self):
        """What ends a stretch, and that its own ends do not count."""
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        when = iter(range(0, 100000, 10))
        ship = lambda **fields: lines.append((stamp(next(when)), position(211000001, 50.1, 1.01, **fields)))
        miss = lambda count: [next(when) for _ in range(count)]
        for fields in ({}, {}, {}, None, {}, {},  # between the ends three were heard, one was missed
                       {"kind": 2},  # assigned
                       {}, {}, None, {"course": 120}, {"course": 120}, {"course": 120},  # a turn: between it one heard
                       {"speed": 20}, {"speed": 20}):  # another interval: 10 s at 6 s are 2 reports, one missed
            ship(**fields) if fields is not None else miss(1)
        ship(speed=20, turn=20)
        ship(speed=20)
        miss(31)
        ship(speed=20)
        ship(speed=20)  # in the same second the second time
        lines.append(lines[-1])
        told = result("range", self.file("a.txt", record(*lines)))
        notes = " / ".join(told["notes"])
        for words in ("Of 18 position reports (types 1, 2, 3, 18) 4 count as heard", "1 reports in assigned mode",
                      "1 reports in a turn", "1 reports heard twice", "11 reports that begin or end a stretch",
                      "1 silences of more than 30 intervals"):
            self.assertIn(words, notes)
        self.assertEqual([4, 7], [told["rings"][0][k] for k in ("heard", "sent")])

    def test_a_slow_turn_without_an_indicator_is_a_turn(self):
        """Two degrees in each report, of which there are three in ten seconds: these tell nothing of what was missed."""
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        turn = [(100 + 3 * i, 90 + 2 * i) for i in range(20)]
        for t, course in [(10 * i, 90) for i in range(11)] + turn + [(160 + 10 * i, 130) for i in range(10)]:
            lines.append((stamp(t), position(211000001, 50.1, 1.01, course=course, turn=-128)))
        row = self.ring(lines)
        self.assertEqual((row["heard"], row["sent"]), (9 + 8, 9 + 8))

    def test_small_swings_are_no_turn(self):
        """An indicator is rarely still: 4 is 0.7 degrees a minute."""
        for turn in (4, -4, 0, -128):
            lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
            lines += [(stamp(10 * i), position(211000001, 50.1, 1.01, turn=turn)) for i in range(12) if i != 5]
            row = self.ring(lines)
            self.assertEqual((row["heard"], row["sent"]), (9, 10), turn)

    def test_gap_option(self):
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        lines += [(stamp(t), position(211000001, 50.1, 1.01)) for t in (0, 10, 20, 120, 130, 140)]
        self.assertEqual(self.ring(lines)["sent"], 4 + 9)
        self.assertEqual(self.ring(lines, "--gap", "9")["sent"], 2)

    def test_missed_reports_count_where_the_ship_was(self):
        """From 4 to 7 miles in 300 seconds, of which only the middle is heard."""
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        lines += [(stamp(t), position(211000001, 50 + (4 + t / 100) / 60, 1.0001, speed=12)) for t in (0, 10, 290, 300)]
        near, far = result("range", self.file("a.txt", record(*lines)))["rings"]
        # At 10, 20 ... 90 seconds it was within 5 miles, at 100 to 290 beyond.
        self.assertEqual([(near["heard"], near["sent"]), (far["heard"], far["sent"])], [(1, 9), (1, 20)])

    def test_columns_on_the_terminal(self):
        out = rig.program("range", self.sample("harbour.txt"))[1].decode()
        self.assertIn("\n  from nm   to nm   heard %   at least   at most    reports    of about   visits\n", out)

    def test_ship_that_stays_in_a_ring_visits_it_once(self):
        """Four reports within 5 miles, three beyond, three within again, and no faster than a ship may be."""
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        heard = [(0, 4), (10, 4), (20, 4), (30, 4), (150, 7), (160, 7), (170, 7), (290, 4), (300, 4), (310, 4)]
        lines += [(stamp(t), position(211000001, 50 + n / 60, 1.0001, speed=12)) for t, n in heard]
        near, far = result("range", self.file("a.txt", record(*lines)))["rings"]
        self.assertEqual([near["visits"], far["visits"]], [2, 1])

    def test_reliable_range(self):
        chance = random.Random(5)
        lines = self.fleet(chance, 0.95, miles=7)
        lines += self.fleet(chance, 0.5, miles=12, first=235000000)[1:]
        data = self.file("a.txt", record(*sorted(lines, key=lambda line: line[0])))
        for words, miles in (((), 10), (("--share", "40"), 15), (("--share", "99"), None)):
            self.assertEqual(result("range", data, *words)["reliable"]["miles"], miles)


class SimulatedTest(rig.Case):
    def test_share_that_the_simulator_drops(self):
        """A harbour with moored, turning, fast and slow ships of both classes, of whose reports a share is dropped."""
        for missing in (0, 5, 30):
            path = self.folder / "simulated.txt"
            subprocess.run([OPTIONS.generator, "--kind", "mixed", "--lines", "250000", "--targets", "60", "--missing",
                            str(missing), "--out", str(path)], check=True)
            told = result("range", path)
            heard = sum(row["heard"] for row in told["rings"])
            sent = sum(row["sent"] for row in told["rings"])
            self.assertGreater(heard, 10000)
            self.assertAlmostEqual(100 * heard / sent, 100 - missing, delta=1)

    def test_what_cannot_be_said(self):
        told = result("range", self.file("a.txt", record(("08:00:00", position(211000001, 50, 1)))), expect=1)
        self.assertEqual(told["rings"], [])
        self.assertTrue(any("nothing can be said of the rate" in note for note in told["notes"]))
        self.assertIsNone(told["reliable"]["miles"])


if __name__ == "__main__":
    rig.main()
