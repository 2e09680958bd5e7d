"""The summary's figures against those of an independent reader, and against files made by hand."""

import csv
import datetime
import io
import unittest

import reader
import rig
from rig import levels, position, program, record, result

KINDS = ["vdm", "pnmls", "gps", "other", "bad_stamp", "bad_length", "bad_size", "bad_checksum", "bad_vdm", "bad_pnmls",
         "bad_gps"]

RANGE = 0.065  # half of the last digit, and the hundredth of a minute to which the own position is rounded


def iso(time):
    return time.strftime("%Y-%m-%d %H:%M:%S")


class AgainstTheReader(rig.Case):
    """Every figure of a sample, computed in two ways."""

    def check(self, data, *words):
        mine = reader.Recording(data)
        theirs = result("summary", self.file("record.txt", data), *words)
        self.lines(mine, theirs)
        self.messages(mine, theirs["messages"], theirs["types"])
        self.levels(mine, theirs["levels"], raw="--raw" in words)
        self.range(mine, theirs["range"])

    def lines(self, mine, theirs):
        self.assertEqual({k: mine.kinds.get(k, 0) for k in KINDS}, {k: theirs["lines"][k] for k in KINDS})
        self.assertEqual(sum(mine.kinds.values()), theirs["lines"]["lines"])
        told = theirs["recording"]
        self.assertEqual([iso(min(mine.times)), iso(max(mine.times))], [told["from"], told["to"]])
        self.assertEqual(mine.seconds(), told["seconds"])

    def messages(self, mine, told, types):
        self.assertEqual(len(mine.messages), told["messages"])
        self.assertEqual(len({m.mmsi for m in mine.messages}), told["ships"])
        for channel in "AB":
            self.assertEqual(sum(m.channel == channel for m in mine.messages), told["channel_" + channel])
        self.assertAlmostEqual(len(mine.messages) * 60 / mine.seconds(), told["per_minute"], delta=0.051)
        minutes = {}
        for m in mine.messages:
            minutes[m.time.replace(second=0)] = minutes.get(m.time.replace(second=0), 0) + 1
        self.assertEqual(max(minutes.values()), told["busiest_minute"])
        counts = {}
        for m in mine.messages:
            name = str(m.type) if m.type > 0 else "other"
            counts[name] = counts.get(name, 0) + 1
        self.assertEqual(counts, types)

    def levels(self, mine, rows, raw):
        shown = (lambda level: level) if raw else reader.dbm
        for row in rows:
            heard = [m.levels for m in mine.messages if m.levels and row["channel"] in ("all", m.channel)]
            pairs = [(shown(s), shown(t)) for s, t in heard]
            values = {"signal": [s for s, t in pairs], "threshold": [t for s, t in pairs],
                      "SNR": [s - t for s, t in pairs]}[row["figure"]]
            self.assertEqual(len(values), row["reports"])
            for key, share in [("lower_quartile", 0.25), ("median", 0.5), ("upper_quartile", 0.75), ("best", 1)]:
                self.assertAlmostEqual(reader.rank(values, share), row[key], delta=0.0501, msg=(row, key))

    def range(self, mine, told):
        ranges = [m.range for m in mine.messages if m.range is not None]
        self.assertEqual(len(ranges), told["reports"])
        self.assertEqual(told["jumps"], 0)
        for key, share in [("median", 0.5), ("most", 0.95), ("greatest", 1)]:
            self.assertAlmostEqual(reader.rank(ranges, share), told[key], delta=RANGE)
        farthest = max((m for m in mine.messages if m.range is not None), key=lambda m: m.range)
        self.assertEqual([farthest.mmsi, iso(farthest.time)], [told["greatest_mmsi"], told["greatest_at"]])

    def test_harbour(self):
        self.check(self.sample("harbour.txt").read_bytes())

    def test_night_passes_midnight(self):
        self.check(self.sample("night.txt").read_bytes())

    def test_damaged(self):
        self.check(self.sample("damaged.txt").read_bytes())

    def test_times_are_told_in_two_units(self):
        day = datetime.datetime(2025, 6, 14)
        for seconds, text in ((59, "59 s"), (60, "1 min"), (61, "1 min 1 s"), (3599, "59 min 59 s"), (3600, "1 h"),
                              (3660, "1 h 1 min"), (86399, "23 h 59 min"), (86400, "1 d"), (90000, "1 d 1 h")):
            data = "".join((day + datetime.timedelta(seconds=s)).strftime("%m/%d/%Y %H:%M:%S $GPGLL,1\r\n")
                           for s in (0, seconds))
            out = program("summary", self.file("a.txt", data.encode()))[1].decode()
            self.assertIn(f" {seconds} s, {text}\n", out)

    def test_words_below_the_figures(self):
        self.assertIn("A position counts as a jump when it lies farther from the ship's last one than 102.2 knots and 1 nm "
                      "allow. The greatest range is that of a single report. Reliable range: the rings of 5 nm up to the "
                      "first of which less than 80 % was heard of what ships there must have sent; the command range tells "
                      "the rule.", result("summary", self.sample("harbour.txt"))["notes"])
        self.assertIn("\n  positions dropped as jumps     ", program("summary", self.sample("harbour.txt"))[1].decode())

    def test_raw_levels(self):
        self.check(self.sample("harbour.txt").read_bytes(), "--raw")

    def test_line_ends_of_other_systems(self):
        data = self.sample("harbour.txt").read_bytes()
        for end in (b"\n", b"\r"):
            self.check(data.replace(b"\r\n", end))

    def test_periods_add_up(self):
        night = self.sample("night.txt")
        mine = reader.Recording(night.read_bytes())
        for period, length in (("hour", 13), ("day", 10)):
            told = result("summary", "--by", period, night)
            rows = {}
            for m in mine.messages:
                rows.setdefault(iso(m.time)[:length], []).append(m)
            self.assertEqual(list(rows), [row["from"][:length] for row in told["periods"]])
            for row in told["periods"]:
                heard = rows[row["from"][:length]]
                self.assertEqual(len(heard), row["messages"])
                self.assertEqual(len({m.mmsi for m in heard}), row["ships"])
                ranges = [m.range for m in heard if m.range is not None]
                self.assertAlmostEqual(max(ranges), row["range_greatest"], delta=RANGE)
            for key in ("lines", "seconds"):
                whole = told["recording" if key == "seconds" else "lines"][key]
                self.assertEqual(whole, sum(row[key] for row in told["periods"]))

    def test_csv_tells_the_same(self):
        harbour = self.sample("harbour.txt")
        code, out, err = program("summary", "--csv", harbour)
        self.assertEqual(code, 0)
        self.assertIn("gap", err)  # the notes stand there
        (row,) = csv.DictReader(io.StringIO(out.decode()))
        told = result("summary", harbour)
        for kind in KINDS:
            self.assertEqual(row[kind], str(told["lines"][kind]))
        for number in range(1, 33):
            self.assertEqual(row[f"type_{number}"], str(told["types"].get(str(number), 0)))
        self.assertEqual(row["range_greatest"], str(told["range"]["greatest"]))
        self.assertEqual(row["snr_median"], str(told["levels"][2]["median"]))


A_SHIP = [("08:00:00", rig.gps()), ("08:00:01", position(211000001, 50.5, 1.0)), ("08:00:01", levels(30, 20))]


class AnyFile(rig.Case):
    """What can be said is said, what cannot is named, and nothing that is not known is 0."""

    def summary(self, data, *words, expect=0):
        return result("summary", self.file("record.txt", data), *words, expect=expect)

    def test_gap_of_a_week(self):
        told = self.summary(record(*A_SHIP, ("06/21/2025 08:00:01", position(211000001, 50.5, 1.0)),
                                   ("06/21/2025 08:02:01", position(211000001, 50.5, 1.0))))
        self.assertEqual([1, 7 * 86400, 121], [told["recording"][k] for k in ("gaps", "gap_seconds", "seconds")])
        self.assertAlmostEqual(told["messages"]["per_minute"], 3 * 60 / 121, delta=0.051)

    def test_ten_minutes_are_no_gap_and_a_second_more_is(self):
        for stamp, gaps in (("08:10:01", 0), ("08:10:02", 1)):
            told = self.summary(record(*A_SHIP, (stamp, levels(1, 1))))
            self.assertEqual(told["recording"]["gaps"], gaps)

    def test_clock_set_back(self):
        later = [("09:30:00", position(211000002, 50.5, 1.0)), ("08:30:00", position(211000003, 50.5, 1.0)),
                 ("08:31:00", levels(1, 1))]
        told = self.summary(record(*A_SHIP, *later))
        self.assertEqual(told["recording"]["set_back"], 1)
        self.assertEqual(["2025-06-14 08:00:00", "2025-06-14 09:30:00"],
                         [told["recording"][k] for k in ("from", "to")])
        self.assertEqual(told["recording"]["seconds"], 61)
        self.assertTrue(any("went back" in note for note in told["notes"]))

    def test_the_hour_that_comes_twice_is_no_busier_minute(self):
        twice = [(f"08:00:0{i}", position(211000001, 50.5, 1.0)) for i in range(2, 5)]
        between = [("08:59:00", position(211000001, 50.5, 1.0))]
        self.assertEqual(self.summary(record(*twice, *between, *twice))["messages"]["busiest_minute"], 3)

    def test_no_gps(self):
        told = self.summary(record(*A_SHIP[1:]))
        self.assertEqual([0, None, None], [told["range"][k] for k in ("reports", "median", "greatest")])
        self.assertTrue(any("own position is in none" in note for note in told["notes"]))

    def test_position_told(self):
        told = self.summary(record(*A_SHIP), "--position", "50 00.00 N 001 30.00 E")
        self.assertAlmostEqual(told["range"]["greatest"], reader.distance((50, 1.5), (50.5, 1)), delta=0.0505)

    def test_position_heard_before_the_first_own_one(self):
        told = self.summary(record(("08:00:00", position(211000009, 50.1, 1.0)), *A_SHIP))
        self.assertEqual(told["range"]["reports"], 1)
        self.assertTrue(any(note.startswith("1 positions came before") for note in told["notes"]))

    def test_ship_at_the_own_position(self):
        told = self.summary(record(*A_SHIP, ("08:00:03", position(211000009, 50.0, 1.0))))
        self.assertEqual(told["range"]["reports"], 1)
        self.assertTrue(any(note.startswith("1 positions have no range") for note in told["notes"]))

    def test_position_not_available(self):
        told = self.summary(record(*A_SHIP, ("08:00:03", position(211000009, 91, 181))))
        self.assertEqual(told["range"]["reports"], 1)

    def test_no_signal_sentences(self):
        told = self.summary(record(*A_SHIP[:2]))
        self.assertEqual({(0, None, None)}, {(r["reports"], r["median"], r["best"]) for r in told["levels"]})
        self.assertTrue(any("$PNMLS" in note for note in told["notes"]))

    def test_levels_belong_to_the_message_right_before(self):
        other = ("08:00:02", "$GPGSV,nothing")
        told = self.summary(record(A_SHIP[1], other, ("08:00:02", levels(40, 20)), A_SHIP[1], A_SHIP[2],
                                   ("08:00:03", levels(45, 20))), "--raw")
        self.assertEqual([1, 30], [told["levels"][0][k] for k in ("reports", "median")])

    def test_a_line_that_fails_its_test_parts_nothing(self):
        broken = ("08:00:02", A_SHIP[1][1][:-2] + "zz")
        told = self.summary(record(A_SHIP[1], broken, A_SHIP[2]), "--raw")
        self.assertEqual([1, 30], [told["levels"][0][k] for k in ("reports", "median")])

    def test_jump_is_dropped_and_counted(self):
        there = [(f"08:00:{i:02d}", position(211000001, 50.5, 1.0)) for i in (10, 20)]
        told = self.summary(record(*A_SHIP, ("08:00:05", position(211000001, 70, 1.0)), *there))
        self.assertEqual([1, 3], [told["range"][k] for k in ("jumps", "reports")])
        self.assertAlmostEqual(told["range"]["greatest"], 30, delta=0.0505)

    def test_first_position_was_the_wrong_one(self):
        good = [(f"08:00:{i:02d}", position(211000001, 50.5, 1.0)) for i in (10, 20, 30)]
        told = self.summary(record(("08:00:00", rig.gps()), ("08:00:05", position(211000001, 70, 1.2)), *good))
        self.assertEqual([1, 3], [told["range"][k] for k in ("jumps", "reports")])

    def test_truncated_payload_has_no_position(self):
        cut = rig.closed("!AIVDM,1,1,,A," + A_SHIP[1][1].split(",")[5][:20] + ",0")
        self.assertEqual(self.summary(record(*A_SHIP, ("08:00:02", cut)))["range"]["reports"], 1)

    def test_unfinished_last_line_is_left(self):
        whole = record(*A_SHIP)
        told = self.summary(whole + whole[:70])
        self.assertEqual(told["lines"]["lines"], 4)
        self.assertTrue(any("no end yet" in note for note in told["notes"]))
        self.assertEqual(told["messages"]["messages"], 1)

    def test_line_too_long(self):
        for length, kind in ((1 << 20, "bad_stamp"), ((1 << 20) + 1, "bad_length"), (5 << 20, "bad_length")):
            told = self.summary(b"x" * length + b"\r\n" + record(*A_SHIP))
            self.assertEqual((told["lines"][kind], told["messages"]["messages"]), (1, 1))

    def test_several_runs_appended(self):
        one = self.sample("harbour.txt").read_bytes()
        self.assertEqual(self.summary(one + one)["messages"]["messages"], 2 * self.summary(one)["messages"]["messages"])

    def test_nothing_to_say_is_said(self):
        for data, words in ((b"", "is empty"), (b"hello\r\nworld\r\n", "no record file"), (record(A_SHIP[0]), "no AIS")):
            told = self.summary(data, expect=1)
            self.assertTrue(any(words in note for note in told["notes"]), told["notes"])
            self.assertIsNone(told["messages"]["busiest_minute"])

    def test_weeks_begin_on_monday(self):
        days = [(f"06/{day:02d}/2025 08:00:00", levels(1, 1)) for day in (15, 16, 22, 23)]  # Sunday, Monday
        told = self.summary(record(*days, ("06/23/2025 08:00:01", A_SHIP[1][1])), "--by", "week")
        self.assertEqual(["2025-06-09", "2025-06-16", "2025-06-23"], [row["from"][:10] for row in told["periods"]])
        self.assertEqual([1, 2, 2], [row["lines"] for row in told["periods"]])

    def test_time_is_divided_where_the_hour_ends(self):
        told = self.summary(record(("08:58:00", levels(1, 1)), ("09:03:00", A_SHIP[1][1])), "--by", "hour")
        self.assertEqual([120, 180], [row["seconds"] for row in told["periods"]])


if __name__ == "__main__":
    rig.main()
