"""ships and reports: a row a ship, a row a message, against the independent reader and messages made by hand."""

import csv
import io
import unittest

import reader
import rig
from rig import Bits, levels, position, program, record, result

RANGE = 0.065  # half of the last digit, and the hundredth of a minute to which the own position is rounded


def iso(time):
    return time.strftime("%Y-%m-%d %H:%M:%S")


class ShipsTest(rig.Case):
    def test_against_the_reader(self):
        for name in ("harbour.txt", "night.txt"):
            mine = reader.Recording(self.sample(name).read_bytes())
            told = result("ships", self.sample(name))["ships"]
            heard = {}
            for m in mine.messages:
                heard.setdefault(m.mmsi, []).append(m)
            self.assertEqual(sorted(heard), [row["mmsi"] for row in told])
            for row in told:
                self.row(heard[row["mmsi"]], row)

    def row(self, messages, row):
        self.assertEqual([iso(messages[0].time), iso(messages[-1].time), len(messages)],
                         [row["first"], row["last"], row["reports"]])
        ranges = [m.range for m in messages if m.range is not None]
        if ranges:
            self.assertAlmostEqual(max(ranges), row["range_greatest"], delta=RANGE)
        else:
            self.assertIsNone(row["range_greatest"])
        snr = [reader.dbm(m.levels[0]) - reader.dbm(m.levels[1]) for m in messages if m.levels]
        self.assertAlmostEqual(max(snr), row["snr_best"], delta=0.0505)
        self.assertAlmostEqual(sum(snr) / len(snr), row["snr_mean"], delta=0.0505)
        names = [name for name in map(self.name, messages) if name]
        self.assertEqual(names[-1] if names else None, row["name"])

    def name(self, m):
        if m.type == 24 and m.bits(38, 2) == 0:
            return m.text(40, 20)
        return {5: lambda: m.text(112, 20), 19: lambda: m.text(143, 20), 21: lambda: m.text(43, 20)}.get(
            m.type, lambda: "")()

    def one(self, *messages):
        lines = [(f"08:00:{i:02d}", m) for i, m in enumerate(messages)]
        (row,) = result("ships", self.file("a.txt", record(*lines)))["ships"]
        return [row[k] for k in ("name", "call_sign", "type", "length", "beam")]

    def dimensions(self, bits):
        return bits.add(100, 9).add(20, 9).add(12, 6).add(5, 6)

    def test_static_data_of_each_type(self):
        five = self.dimensions(Bits(5, 211000001).add(0, 2).add(9000001, 30).text("DABC", 7).text("ALPHA ONE", 20)
                               .add(70, 8)).add(1, 4).add(0, 20).add(50, 8).text("HAMBURG", 20).add(0, 2)
        self.assertEqual(self.one(five.sentence()), ["ALPHA ONE", "DABC", 70, 120, 17])
        nineteen = self.dimensions(Bits(19, 211000001).add(0, 8).add(50, 10).add(1, 1).add(0, 28).add(0, 27).add(0, 12)
                                   .add(511, 9).add(60, 6).add(0, 4).text("BRAVO", 20).add(37, 8)).add(0, 11)
        self.assertEqual(self.one(nineteen.sentence()), ["BRAVO", None, 37, 120, 17])
        aid = self.dimensions(Bits(21, 992110001).add(14, 5).text("BUOY 7", 20).add(0, 1).add(0, 28).add(0, 27)).add(0, 23)
        self.assertEqual(self.one(aid.sentence()), ["BUOY 7", None, 14, 120, 17])
        part_a = Bits(24, 211000001).add(0, 2).text("CHARLIE", 20).add(0, 8)
        part_b = self.dimensions(Bits(24, 211000001).add(1, 2).add(36, 8).text("XXX", 7).text("DX1", 7)).add(0, 6)
        self.assertEqual(self.one(part_a.sentence(), part_b.sentence()), ["CHARLIE", "DX1", 36, 120, 17])

    def test_auxiliary_craft_tells_no_size(self):
        part_b = self.dimensions(Bits(24, 982110001).add(1, 2).add(36, 8).text("XXX", 7).text("DX1", 7)).add(0, 6)
        self.assertEqual(self.one(part_b.sentence()), [None, "DX1", 36, None, None])

    def test_message_cut_short_tells_nothing(self):
        whole = Bits(5, 211000001).add(0, 2).add(9000001, 30).text("DABC", 7).text("ALPHA ONE", 20)
        self.assertEqual(self.one(whole.sentence()), [None] * 5)

    def test_nothing_heard(self):
        told = result("ships", self.file("a.txt", record(("08:00:00", rig.gps()))), expect=1)
        self.assertEqual(told["ships"], [])


class ReportsTest(rig.Case):
    def test_against_the_reader(self):
        for name in ("harbour.txt", "damaged.txt"):
            mine = reader.Recording(self.sample(name).read_bytes()).messages
            told = result("reports", self.sample(name))["reports"]
            self.assertEqual([(iso(m.time), m.type, m.mmsi) for m in mine],
                             [(row["time"], row["type"], row["mmsi"]) for row in told])
            for m, row in zip(mine, told):
                self.assertEqual(m.position is None, row["latitude"] is None)
                if m.position:
                    self.assertAlmostEqual(m.position[0], row["latitude"], delta=1e-6)
                    self.assertAlmostEqual(m.position[1], row["longitude"], delta=3e-6)
                if m.range is not None:
                    self.assertAlmostEqual(m.range, row["range"], delta=RANGE)
                if m.levels:
                    self.assertAlmostEqual(reader.dbm(m.levels[0]), row["signal"], delta=0.0501)

    def test_fields(self):
        report = position(211000001, 50.5, 1.5, speed=12.3, course=224.5, channel="B")
        ((row),) = result("reports", "--raw", self.file("a.txt", record(("08:00:00", report),
                                                                         ("08:00:00", levels(33, 20)))))["reports"]
        self.assertEqual(row, {"time": "2025-06-14 08:00:00", "channel": "B", "type": 1, "mmsi": 211000001,
                               "latitude": 50.5, "longitude": 1.5, "range": None, "bearing": None, "turn": 0.0,
                               "speed": 12.3, "course": 224.5, "heading": None, "signal": 33.0, "threshold": 20.0,
                               "snr": 13.0})

    def test_report_that_is_cut_off(self):
        """The heading ends in the message's 137th bit: the 23rd character has it, the 22nd has not."""
        t = Bits(1, 211000001).add(0, 12).add(123, 10).add(0, 56).add(2245, 12).add(123, 9).add(0, 31)
        for characters, told in ((28, [12.3, 224.5, 123]), (23, [12.3, 224.5, 123]), (22, [None] * 3)):
            cut = Bits(1, 211000001)
            cut.bits = t.bits[:6 * characters]
            ((row),) = result("reports", self.file("a.txt", record(("08:00:00", cut.sentence()))))["reports"]
            self.assertEqual([row["speed"], row["course"], row["heading"]], told)

    def test_csv(self):
        code, out, _ = program("reports", "--csv", self.sample("harbour.txt"))
        self.assertEqual(code, 0)
        rows = list(csv.DictReader(io.StringIO(out.decode())))
        told = result("reports", self.sample("harbour.txt"))["reports"]
        self.assertEqual(len(rows), len(told))
        for row, expected in zip(rows, told):
            self.assertEqual(list(row), list(expected))
            for key, value in expected.items():
                self.assertEqual(row[key] == "", value is None)


if __name__ == "__main__":
    rig.main()
