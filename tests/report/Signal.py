"""signal and stations, against the independent reader and messages made by hand."""

import csv
import io
import unittest

import reader
import rig
from rig import levels, position, program, record, result


class SignalTest(rig.Case):
    def check(self, messages, row):
        heard = [m.levels for m in messages if m.levels]
        self.assertEqual(len(heard), row["reports"], row)
        if not heard:
            return
        signal = [reader.dbm(s) for s, _ in heard]
        snr = [reader.dbm(s) - reader.dbm(t) for s, t in heard]
        for values, key, share in ((signal, "signal_25", 0.25), (signal, "signal_median", 0.5), (signal, "signal_75", 0.75),
                                   (signal, "signal_best", 1), (snr, "snr_median", 0.5), (snr, "snr_best", 1),
                                   ([reader.dbm(t) for _, t in heard], "threshold_median", 0.5)):
            self.assertAlmostEqual(reader.rank(values, share), row[key], delta=0.0501, msg=(row, key))

    def test_against_the_reader(self):
        # A fixed position: the hundredth of a minute to which the GPS's is rounded would move the rings.
        mine = reader.Recording(self.sample("night.txt").read_bytes(), (50.8, -1.25)).messages
        told = result("signal", self.sample("night.txt"), "--by", "hour", "--position", "50 48 N 1 15 W")
        for row in told["channels"]:
            self.check([m for m in mine if row["of"] in ("all", m.channel)], row)
        rings = {}
        for m in mine:
            if m.range is not None:
                first = int(m.range // 5) * 5
                rings.setdefault(f"{first}-{first + 5}", []).append(m)
        self.assertEqual(set(rings), {row["of"] for row in told["ranges"]})
        for row in told["ranges"]:
            self.check(rings[row["of"]], row)
        self.assertEqual([row["of"] for row in told["periods"]],
                         ["2025-11-21 23:00:00", "2025-11-22 00:00:00"])
        for row in told["periods"]:
            self.check([m for m in mine if m.time.strftime("%Y-%m-%d %H") == row["of"][:13]], row)
        fixed = {m.mmsi for m in mine if m.type in (4, 21)}
        self.assertEqual({str(mmsi) for mmsi in fixed}, {row["of"] for row in told["stations"]})
        for row in told["stations"]:
            own = [m for m in mine if str(m.mmsi) == row["of"]]
            first = next(i for i, m in enumerate(own) if m.type in (4, 21))
            self.check(own[first:], row)

    def test_csv_is_one_table(self):
        code, out, _ = program("signal", "--csv", self.sample("harbour.txt"))
        self.assertEqual(code, 0)
        rows = list(csv.DictReader(io.StringIO(out.decode())))
        self.assertEqual({row["group"] for row in rows}, {"channels", "ranges", "periods", "stations"})
        told = result("signal", self.sample("harbour.txt"))
        self.assertEqual(len(rows), sum(len(told[group]) for group in ("channels", "ranges", "periods", "stations")))

    def test_what_cannot_be_said(self):
        told = result("signal", self.file("a.txt", record(("08:00:00", position(211000001, 50, 1)))), expect=1)
        self.assertTrue(any("$PNMLS" in note for note in told["notes"]))
        self.assertIsNone(told["channels"][0]["signal_median"])


def telling(mmsi, stations, timeout=5, kind=1):
    return position(mmsi, 50.5, 1.0, kind=kind, state=timeout << 14 | stations)


class StationsTest(rig.Case):
    def stations(self, *lines, expect=0):
        return result("stations", self.file("a.txt", record(*lines)), expect=expect)

    def test_ours_beside_theirs(self):
        told = self.stations(*[(f"08:00:{i:02d}", telling(211000000 + i, 10 * i)) for i in range(1, 6)],
                             ("08:01:30", telling(211000001, 70)), ("09:00:00", telling(211000001, 80)))
        first, second = told["periods"]
        self.assertEqual(first, {"from": "2025-06-14 08:00:00", "ours_minute_median": 1, "ours_minute_greatest": 5,
                                 "ours_period": 5, "theirs_median": 30, "theirs_greatest": 70, "told": 6, "telling": 5})
        self.assertEqual([1, 80, 1, 1], [second[k] for k in ("ours_period", "theirs_median", "told", "telling")])
        self.assertEqual([(211000001, 3, round((10 + 70 + 80) / 3, 1), 80)],
                         [(r["mmsi"], r["told"], r["mean"], r["greatest"]) for r in told["senders"]][:1])

    def test_only_where_the_state_tells_it(self):
        """By the slot time-out, and only in messages of types 1, 2 and 4: a type 3 carries another state."""
        lines = [(f"08:00:0{t}", telling(211000001, 100 + t, timeout=t)) for t in range(8)]
        lines += [("08:00:10", telling(211000001, 200, kind=2)), ("08:00:11", telling(211000001, 300, kind=3))]
        told = self.stations(*lines)
        self.assertEqual([4, 200], [told["periods"][0][k] for k in ("told", "theirs_greatest")])
        self.assertEqual(told["senders"][0]["mean"], round((103 + 105 + 107 + 200) / 4 + 1e-9, 1))

    def test_what_cannot_be_said(self):
        told = self.stations(("08:00:00", position(211000001, 50, 1)), expect=1)
        self.assertIsNone(told["periods"][0]["theirs_median"])
        self.assertEqual(told["periods"][0]["ours_period"], 1)
        self.assertTrue(any("nothing can be said of theirs" in note for note in told["notes"]))


if __name__ == "__main__":
    rig.main()
