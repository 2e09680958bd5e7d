"""Every field that the window and tidewatch-report show of AIS messages, against Debian's gpsdecode: messages made at
random, those of the samples and of other recordings. Where ours differ on purpose a rule says so (expected.py); any
other difference fails. Ranges and bearings are held against GeographicLib's (great_circle.py)."""

import argparse
import json
import math
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

import ais_messages
import expected
import gpsdecode

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "nav"))
import great_circle  # noqa: E402

OWN = (ais_messages.OWN_LATITUDE / 600000, ais_messages.OWN_LONGITUDE / 600000)
GLL = ais_messages.closed("$GPGLL,5047.10,N,00117.40,W,120000,A")
STAMP = "06/14/2025 12:00:00 "
AWAY = re.compile(r"   Rng=(nan|[\d.]+), Brg=(nan|\d+)$")
FAULTS_TOLD = 20
OFFSET_OF_ROUNDING = {"log": (0.05, 0.5), "report": (0.05, 0.05)}  # half of the last digit of range and bearing


class Check:
    def __init__(self):
        self.rules = expected.Rules()
        self.faults = 0
        self.away = []  # (who says so, message, place, range, bearing), to be held against GeographicLib

    def same(self, what, message, ours, right):
        if ours == right:
            return
        self.faults += 1
        if self.faults <= FAULTS_TOLD:
            print(f"FAILED: {what} of {message.sentences}: {ours!r}, expected {right!r}")

    def ranges(self):
        pairs = [(OWN, self.on_earth(place)) for _, _, place, _, _ in self.away]
        right = great_circle.solve([own + place for own, place in pairs])
        for (who, message, place, miles, degrees), (own, turned), (range_, bearing) in zip(self.away, pairs, right):
            if turned != place:
                self.rules.use("beyond")
                east = (place[1] - own[1] + 180) % 360 - 180 >= 0
                bearing = bearing if (bearing <= 180) == east else 360 - bearing
            bounds = great_circle.Bounds(own + turned, range_, bearing)
            of_range, of_bearing = OFFSET_OF_ROUNDING[who]
            if miles is None:
                self.same(f"range ({who})", message, bounds.fails, True)
                continue
            self.same(f"range ({who}), {miles} for {range_},", message, bounds.holds_range(miles, of_range), True)
            self.same(f"bearing ({who}), {degrees} for {bearing},", message, bounds.holds_bearing(degrees, of_bearing),
                      True)
        return len(pairs)

    @staticmethod
    def on_earth(place):
        lat, lon = place
        if abs(lat) <= 90:
            return place
        return (180 - lat if lat > 0 else -180 - lat), lon + 180


class Heard:
    """A message as it came: what the port's store held at its end, and what gpsdecode made of it."""

    def __init__(self, message, store):
        self.message, self.length = message, store.length
        self.undefined_part = store.values[0] == 24 and store.bits(38, 2) > 1
        self.whole = store.whole(part_a=self.undefined_part)
        self.told = None


def hear(check, messages, shown):
    """Keeps the store's way of putting sentences together, and picks each message's line out of what was shown."""
    store = ais_messages.Store()
    shown = iter(shown)
    heard = []
    for message in messages:
        lines = [next(shown) for _ in message.sentences]
        over = None
        for sentence, line in zip(message.sentences, lines):
            over = None if store.take(sentence) else "Error, " + sentence
            if over:
                check.rules.use("over")
                check.same("the log", message, line, over)
            elif sentence is not message.sentences[-1]:
                check.same("the log", message, line, "")
        if not over:
            heard.append((Heard(message, store), lines[-1]))
    return heard


def ask_gpsdecode(check, heard, *options):
    """Fills in what gpsdecode says; where it refuses, of the message at its right length."""
    first = gpsdecode.decode([each.message.sentences for each in heard], *options)
    refused = [each for each, told in zip(heard, first) if told is None and each.whole]
    second = iter(gpsdecode.decode([[each.whole] for each in refused], *options))
    for each, told in zip(heard, first):
        each.told = told or (next(second) if each.whole else None)
        if not each.told and each.whole:
            check.same("gpsdecode", each.message, None, "a message")
        elif not told:
            check.rules.use("length" if each.whole else "unknown")
        if each.undefined_part:
            check.rules.use("part")
            each.told["part"] = "none"


def check_window(check, heard):
    for each, line in heard:
        if not each.told:
            continue
        right = expected.Shown(check.rules, each.told, each.message.channel)
        log, *cells = line.split("\t")
        lines = log.split("|")
        if None in right.lines:
            # No line at all where the cosine rule divides by zero.
            found = AWAY.match(lines[2]) if len(lines) == len(right.lines) else None
            check.away.append(("log", each.message, right.place, *(map(float, found.groups()) if found else (None, None))))
            if found:
                right.cells[7:9] = found.groups()
                right.lines[2] = lines[2]
            else:
                right.lines.remove(None)
                right.cells[7:9] = "", ""
        check.same("the log", each.message, lines, right.lines)
        check.same("the row", each.message, cells, right.cells)


def check_scaled(check, heard, scaled):
    """Degrees, knots and degrees a minute as gpsdecode scales them itself, against the texts that were shown."""
    for (each, line), told in zip(heard, scaled):
        if not told or told["type"] not in expected.WITH_POSITION:
            continue
        fields = dict(re.findall(r"(\w+)=([^,|\t]*)", line))
        quiet = told["type"] in expected.CLASS_B and told["reserved"] & 3  # an own rule, checked by the raw value
        for key, name, most in (("Lat", "lat", 91), ("Lon", "lon", 181)):
            if fields[key] != "n/a":
                # Half of the text's last digit, of gpsdecode's, and the longitude's half bit.
                ours, other = degrees_of(fields[key]), told[name]
                if other > 223.69621:  # the greatest longitude, which that half bit makes the least
                    ours = abs(ours)
                check.same(key, each.message, abs(ours - other) < 0.00501 / 60 + 2.2e-6, True)
            else:
                check.same(key, each.message, abs(told[name] - most) < 1e-6, True)
        if told["type"] in expected.CLASS_A:
            word = {"n/a": "nan", "L>720": "fastleft", "R>720": "fastright"}.get(fields["Rot"])
            # gpsdecode squares the sign away and rounds to whole degrees; ours rounds small turns to tenths.
            same = told["turn"] == word if word else abs(abs(float(fields["Rot"])) - told["turn"]) <= 0.55
            check.same("Rot", each.message, same, True)
        if told["type"] != 4 and not quiet:
            # gpsdecode's "fast" and "nan" are words of class A alone; class B has the numbers.
            ours = {"n/a": ("nan", 102.3), "102.2": ("fast", 102.2)}.get(fields["Sog"]) or (float(fields["Sog"]),)
            check.same("Sog", each.message, told["speed"] in ours, True)


def degrees_of(text):
    whole, minutes = text[:-2].split("\xb0")
    return (int(whole) + float(minutes) / 60) * (-1 if text[-1] in "SW" else 1)


def report(program, command, file):
    told = subprocess.run([program, command, "--json", file], stdout=subprocess.PIPE, check=True).stdout
    return json.loads(told)[command]


def check_report(check, program, heard, file):
    rows = report(program, "reports", file)
    check.same("the number of reports", heard[0].message, len(rows), len(heard))
    ships = {}
    for each, row in zip(heard, rows):
        if not each.told:
            continue
        right = expected.reported(check.rules, each.told, each.length)
        check.same("the report", each.message, {key: row[key] for key in right}, right)
        if right["latitude"] is not None:
            place = each.told["lat"] / 600000, expected.signed_longitude(expected.Rules(), each.told) / 600000
            # Both are left out where the cosine rule divides by zero, each where it is not a number.
            away = [row[key] if row[key] is not None else math.nan for key in ("range", "bearing")]
            check.away.append(("report", each.message, place, *(away if row["range"] is not None else (None, None))))
        ship = ships.setdefault(each.told["mmsi"], (each.message, {}))
        ship[1].update(expected.static_data(check.rules, each.told, each.length))
    told = {row["mmsi"]: row for row in report(program, "ships", file)}
    for mmsi, (message, right) in ships.items():
        ours = {key: told[mmsi][key] for key in ("name", "call_sign", "type", "length", "beam")} if mmsi in told else {}
        check.same("the ship", message, {key: each for key, each in ours.items() if each is not None}, right)


def recorded(files):
    for file in files:
        lines = pathlib.Path(file).read_text(encoding="latin-1").splitlines()
        # A sample's lines begin with a stamp, a recording's need not.
        lines = (line[20:] if line[2:3] == "/" else line for line in lines)
        good = (line for line in lines if re.match(r"!AIVDM,\d,\d,\d?,[^,]+,[0-W`-w]+,\d\*\w\w$", line))
        yield from ais_messages.recorded_messages([line for line in good if ais_messages.closed(line[:-3]) == line])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--window", required=True, help="ShownMessages")
    parser.add_argument("--report", required=True, help="tidewatch-report")
    parser.add_argument("--messages", type=int, default=10000, help="made at random")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("recordings", nargs="*", help="record files, or sentences alone")
    options = parser.parse_args()
    messages = list(ais_messages.random_messages(random.Random(options.seed), options.messages))
    messages += recorded(options.recordings)
    sentences = [sentence for message in messages for sentence in message.sentences]
    shown = subprocess.run([options.window, GLL], input="\n".join(sentences + [""]).encode("latin-1"),
                           stdout=subprocess.PIPE, check=True).stdout.decode("latin-1").split("\n")[:-1]
    check = Check()
    heard = hear(check, messages, shown)
    alone = [each for each, _ in heard]
    ask_gpsdecode(check, alone, "-u")
    check_window(check, heard)
    check_scaled(check, heard, gpsdecode.decode([each.message.sentences for each in alone]))
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "messages.txt")
        with open(file, "w", encoding="latin-1") as out:
            out.writelines(STAMP + line + "\r\n" for line in [GLL, *sentences])
        check_report(check, options.report, alone, file)
    ranges = check.ranges()
    for name, reason in expected.RULES.items():
        print(f"{check.rules.uses[name]:7d} by the rule {name}: {reason}")
    needless = [name for name in expected.RULES if not check.rules.uses[name] and name != "unknown"]
    if needless:
        print("FAILED: no message needs the rules", needless)
    print(f"{len(messages)} messages in {len(sentences)} sentences, {len(alone)} complete, {ranges} ranges and bearings: "
          f"{check.faults} differences that no rule covers")
    return 1 if check.faults or needless else 0


if __name__ == "__main__":
    sys.exit(main())
