"""Range by bearing, against the independent reader and against ships put at known places."""

import unittest

import reader
import rig
from rig import position, record, result


class CoverageTest(rig.Case):
    def test_against_the_reader(self):
        for name in ("harbour.txt", "night.txt"):
            # A fixed position: the hundredth of a minute to which the GPS's is rounded would move the borders.
            mine = reader.Recording(self.sample(name).read_bytes(), (50.8, -1.25))
            for width in (10, 45):
                whole = result("coverage", "--sector", width, "--position", "50 48 N 1 15 W", self.sample(name))
                told = whole["sectors"]
                self.assertEqual(len(told), 360 // width + 1)
                sectors = {row["sector"]: [] for row in told}
                meridian = 0  # due north and south, where the window has no bearing either
                for m in mine.messages:
                    if m.range is None:
                        continue
                    if m.bearing in (0, 180):
                        meridian += 1
                        continue
                    first = int(m.bearing // width) * width
                    sectors[f"{first:03d}-{first + width:03d}"].append(m)
                    sectors["all"].append(m)
                noted = [note for note in whole["notes"] if "no bearing" in note]
                self.assertEqual([note.split()[0] for note in noted], [str(meridian)] if meridian else [])
                for row in told:
                    ranges = [m.range for m in sectors[row["sector"]]]
                    self.assertEqual(len(ranges), row["reports"], row)
                    if not ranges:
                        self.assertEqual([None] * 3, [row[k] for k in ("median", "most", "greatest")])
                        continue
                    for key, share in (("median", 0.5), ("most", 0.95), ("greatest", 1)):
                        self.assertAlmostEqual(reader.rank(ranges, share), row[key], delta=0.0505)

    def test_a_shadow(self):
        """Ships all round at 20 miles, in the sector from 90 to 120 degrees at 5."""
        lines = [("08:00:00", rig.gps((50, 0), (1, 0)))]
        for i in range(360):
            bearing, miles = i + 0.5, 5 if 90 <= i < 120 else 20
            place = self.at((50, 1), bearing, miles)
            lines.append((f"08:{i // 60:02d}:{i % 60:02d}", position(211000000 + i, *place)))
        for row in result("coverage", "--sector", 30, self.file("a.txt", record(*lines)))["sectors"][:-1]:
            expected = 5 if row["sector"] == "090-120" else 20
            self.assertEqual(30, row["reports"])
            for key in ("median", "most", "greatest"):
                self.assertAlmostEqual(row[key], expected, delta=0.0505)

    def at(self, own, bearing, miles):
        """Where that is, by searching: the reader's own distance and course decide."""
        import math
        low = math.radians(miles / 60)
        lat1, lon1, b = math.radians(own[0]), math.radians(own[1]), math.radians(bearing)
        lat = math.asin(math.sin(lat1) * math.cos(low) + math.cos(lat1) * math.sin(low) * math.cos(b))
        lon = lon1 + math.atan2(math.sin(b) * math.sin(low) * math.cos(lat1),
                                math.cos(low) - math.sin(lat1) * math.sin(lat))
        place = math.degrees(lat), math.degrees(lon)
        self.assertAlmostEqual(reader.distance(own, place), miles, places=6)
        return place

    def test_jumps_are_dropped_and_counted(self):
        lines = [("08:00:00", rig.gps((50, 0), (1, 0)))]
        for i, latitude in enumerate((50.5, 50.5, 60.5, 50.5)):
            lines.append((f"08:00:0{i + 1}", position(211000001, latitude, 1.01)))
        told = result("coverage", self.file("a.txt", record(*lines)))
        self.assertAlmostEqual(told["sectors"][-1]["greatest"], 30, delta=0.06)
        self.assertEqual(told["sectors"][-1]["reports"], 3)
        self.assertTrue(any(note.startswith("1 of 4 positions were dropped") for note in told["notes"]))

    def test_what_cannot_be_said(self):
        no_own = record(("08:00:00", position(211000001, 50.5, 1)))
        for data, words in ((no_own, "own position is in none"), (record(("08:00:00", rig.gps())), "No message tells")):
            told = result("coverage", self.file("a.txt", data), expect=1)
            self.assertTrue(any(words in note for note in told["notes"]))
        path = self.file("a.txt", no_own)
        self.assertEqual(result("coverage", path, "--position", "50 N 1.2 E")["sectors"][-1]["reports"], 1)

    def test_due_north_is_named_or_in_the_first_sector(self):
        told = result("coverage", self.file("a.txt", record(("08:00:00", rig.gps()),
                                                            ("08:00:01", position(211000001, 50.5, 1.0)),
                                                            ("08:00:02", position(211000002, 50.2, 1.1)))))
        first, every = told["sectors"][0]["reports"], told["sectors"][-1]["reports"]
        self.assertTrue(every == 2 or any("no bearing" in note for note in told["notes"]))
        self.assertEqual(first, every - 1)


if __name__ == "__main__":
    rig.main()
