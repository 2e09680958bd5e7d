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
        self.assertLessEqual(within, 100)

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
            self.assertEqual((row["rate"], row["heard"], row["sent"]), (100, 99, 99), speed)

    def test_left_out_and_counted(self):
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        when = iter(range(0, 100000, 10))
        ship = lambda **fields: lines.append((stamp(next(when)), position(211000001, 50.1, 1.01, **fields)))
        for fields in ({}, {}, {"kind": 2}, {}, {}, {"course": 120}, {"course": 120}, {"speed": 20}, {"speed": 20},
                       {"speed": 20, "turn": 20}, {"speed": 20}):
            ship(**fields)
        for _ in range(31):
            next(when)
        ship(speed=20)
        told = result("range", self.file("a.txt", record(*lines)))
        notes = " / ".join(told["notes"])
        for words in ("1 reports in assigned mode", "3 pairs in which a turn or another interval began", "3 pairs that began in a turn",
                      "1 pairs more than 30 intervals apart"):
            self.assertIn(words, notes)
        self.assertEqual([5, 10], [told["rings"][0][k] for k in ("heard", "sent")])

    def test_gap_option(self):
        lines = [("00:00:00", rig.gps((50, 0), (1, 0)))]
        lines += [(stamp(t), position(211000001, 50.1, 1.01)) for t in (0, 10, 110, 120)]
        self.assertEqual(self.ring(lines)["sent"], 12)
        self.assertEqual(self.ring(lines, "--gap", "9")["sent"], 2)

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
