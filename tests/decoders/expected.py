"""What the window and the report ought to show of a message that gpsdecode has read. Where they differ from it on
purpose stands a rule, by name, with its reason; each use is counted, and whatever no rule covers is a failure."""

import collections
import math
from decimal import ROUND_HALF_UP, Decimal

NAMES = {1: "Position Scheduled", 2: "Position Assigned", 3: "Position Response", 4: "Base Station Report",
         5: "Ship Static and Voyage", 11: "UTC/Date Response", 15: "Interrogation", 18: "Class B Standard Position",
         19: "Class B Extended Position", 20: "Data Link Management", 21: "Aids-to-Navigation",
         24: "Class B Static Data"}
NAMED_IN_LOG = (1, 2, 3, 4, 5, 18, 19)
CLASS_A, CLASS_B = (1, 2, 3), (18, 19)
WITH_POSITION = (*CLASS_A, 4, *CLASS_B)
NO_LATITUDE, NO_LONGITUDE = 91 * 600000, 181 * 600000
FIELD_CHARACTERS = 23  # a position report's last field ends in this one
STATIC_CHARACTERS = {"5": 45, "19": 51, "21": 42, "24A": 27, "24B": 27}  # where the last field that is told ends

RULES = {
    "length": "gpsdecode refuses a message that is cut short or too long; we read what is there, and behind its end what "
              "the port's store holds of earlier ones. It is given the message at its right length instead",
    "part": "gpsdecode refuses type 24 with parts 2 and 3, which are not defined; we know its sender all the same, for "
            "which it is given the message as part A",
    "longitude": "the last term of the longitude of types 1 to 4 takes in the sign of the latitude as one half: south of "
                 "the equator an odd longitude becomes the next even one",
    "reserved": "the speed of types 18 and 19 takes in two reserved bits as 102.4 and 204.8 knots; 1023 with one of them "
                "is a speed",
    "identity": "types 5, 9, 11, 21 and 24 are logged by their header alone; position and voyage are not read",
    "fast": "speed 1022 is shown as 102.2, gpsdecode calls it fast",
    "course": "a course above 3600 is shown as err, gpsdecode tells the number",
    "tie": "minutes that end in half a hundredth are rounded as the doubles fall, (degrees - whole degrees) * 60",
    "turn": "the sign is that of the raw value and small turns have a decimal: gpsdecode tells whole degrees",
    "report position": "tidewatch-report leaves out positions beyond 90 and 180 degrees, and of messages that end before "
                       "the fields do",
    "report motion": "tidewatch-report leaves out fields of messages that end before them",
    "report static": "tidewatch-report tells names and sizes of messages that hold all of them",
    "extension": "a name of type 21 is its 20 characters; gpsdecode adds the extension behind them",
    "nothing": "an empty name and a type or size of 0 are not told",
    "beyond": "with a latitude beyond 90 degrees is reckoned as it stands: the range is that to the place across the pole, "
              "the bearing's side that of the longitude told",
    "over": "a message of more than 512 characters is refused with an error line",
    "unknown": "of types that gpsdecode does not read, the header alone, unchecked",
}


class Rules:
    def __init__(self):
        self.uses = collections.Counter()

    def use(self, name):
        assert name in RULES, name
        self.uses[name] += 1


def fixed(number, decimals):
    """Rounded half away from zero, read with 15 digits."""
    return str(Decimal("%.15g" % number).quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP))


def signed_longitude(rules, told):
    """The raw longitude as we read it."""
    raw = told["lon"]
    if told["type"] in (*CLASS_A, 4) and told["lat"] < 0 and raw % 2:
        rules.use("longitude")
        # To the even one of the two neighbours of raw + 1/2, on the unsigned number.
        raw = raw + 1 if raw + 1 < 1 << 27 else -(1 << 27)
    return raw


def angle(rules, raw, width, letters):
    """A position text from ten-thousandths of a minute."""
    degrees = abs(raw) // 600000
    exact = fixed_decimal(Decimal(abs(raw) % 600000) / 10000)
    whole = abs(raw / 600000.0)
    shown = fixed((whole - math.floor(whole)) * 60, 2)
    if shown != exact:
        assert abs(raw) % 100 == 50, f"minutes of {raw}"
        rules.use("tie")
    return f"{degrees:0{width}d}\xb0{shown.zfill(5)}'{letters[raw < 0]}"


def fixed_decimal(number):
    return str(number.quantize(Decimal("0.01"), ROUND_HALF_UP))


def turn(rules, raw):
    if raw in (-128, 0):
        return {-128: "n/a", 0: "0"}[raw]
    if abs(raw) == 127:
        return "R>720" if raw > 0 else "L>720"
    rate = (raw / 4.733) ** 2
    rules.use("turn")
    return ("+" if raw > 0 else "-") + fixed(rate, 0 if rate >= 10 else 1)


def raw_speed(rules, told):
    raw = told["speed"]
    if told["type"] in CLASS_B and told["reserved"] & 3:
        rules.use("reserved")
        raw += (told["reserved"] & 3) * 1024
    if raw == 1022:
        rules.use("fast")
    return raw


def tenths(raw, unavailable):
    return "n/a" if raw == unavailable else str(Decimal(raw) / 10) if raw % 10 else f"{raw // 10}.0"


def course(rules, raw):
    if raw > 3600:
        rules.use("course")
        return "err"
    return tenths(raw, 3600)


class Shown:
    """Texts of the window: the log's lines, None where the line of range and bearing belongs, and the row's cells from
    MMSI to speed, None for range and bearing. place is where the ship is, in degrees, where it is known."""

    def __init__(self, rules, told, channel):
        kind = told["type"]
        title = f"{kind}={NAMES[kind]}" if kind in NAMES else str(kind)
        header = f"Time=12:00:00, Ch={channel}, Id={kind}, MMSI={told['mmsi']}"
        self.lines = [header + (f", {NAMES[kind]}" if kind in NAMED_IN_LOG else "")]
        self.place = None
        latitude = longitude = rate = speed = ""
        if kind in (5, 9, 11, 21, 24):
            rules.use("identity")
        if kind in WITH_POSITION:
            lat, lon = told["lat"], signed_longitude(rules, told)
            latitude = "n/a" if lat == NO_LATITUDE else angle(rules, lat, 2, "NS")
            longitude = "n/a" if lon == NO_LONGITUDE else angle(rules, lon, 3, "EW")
            self.lines.append(f"   Lat={latitude}, Lon={longitude}")
            if "n/a" not in (latitude, longitude):
                self.place = lat / 600000, lon / 600000
                self.lines.append(None)
        if kind in CLASS_A + CLASS_B:
            speed = tenths(raw_speed(rules, told), 1023)
            rate = turn(rules, told["turn"]) if kind in CLASS_A else ""
            self.lines.append(f"   Rot={rate}, Sog={speed}" if kind in CLASS_A else f"   Sog={speed}")
            heading = "n/a" if told["heading"] == 511 else str(told["heading"])
            self.lines.append(f"   Cog={course(rules, told['course'])}, Heading={heading}")
        known = None if self.place else ""
        self.cells = [str(told["mmsi"]), channel, "", "", "", "12:00:00", title, known, known, latitude, longitude, rate,
                      speed]


def reported(rules, told, length):
    """The row of `tidewatch-report reports`, without time, channel, range and bearing."""
    kind = told["type"]
    row = dict.fromkeys(("latitude", "longitude", "turn", "speed", "course", "heading"))
    row["type"], row["mmsi"] = kind, told["mmsi"]
    if kind in WITH_POSITION:
        lat, lon = told["lat"], signed_longitude(Rules(), told)
        if length >= FIELD_CHARACTERS and abs(lat) <= 90 * 600000 and abs(lon) <= 180 * 600000:
            row["latitude"], row["longitude"] = (float(round(Decimal(raw) / 600000, 6)) for raw in (lat, lon))
        elif lat != NO_LATITUDE and lon != NO_LONGITUDE:
            rules.use("report position")
    if kind in CLASS_A + CLASS_B and length < FIELD_CHARACTERS:
        rules.use("report motion")
    elif kind in CLASS_A + CLASS_B:
        quiet = Rules()
        row["turn"] = value(turn(quiet, told["turn"])) if kind in CLASS_A else None
        row["speed"] = value(tenths(raw_speed(quiet, told), 1023))
        row["course"] = value(course(quiet, told["course"]))
        row["heading"] = None if told["heading"] == 511 else told["heading"]
    return row


def value(text):
    if text in ("n/a", "err"):
        return None
    return text if text[1:] == ">720" else float(text)


def static_data(rules, told, length):
    """What `tidewatch-report ships` learns from the message: a dictionary of what is told."""
    kind = told["type"]
    layout = f"24{told.get('part', 'B')}" if kind == 24 else str(kind)
    if layout not in STATIC_CHARACTERS:
        return {}
    if length < STATIC_CHARACTERS[layout]:
        rules.use("report static")
        return {}
    name = told.get("name", told.get("shipname", ""))
    if kind == 21 and len(name) > 20:
        rules.use("extension")
        name = name[:20].rstrip(" ")
    learnt = {"name": name, "call_sign": told.get("callsign"), "type": told.get("aid_type", told.get("shiptype")),
              "length": told.get("to_bow", 0) + told.get("to_stern", 0),
              "beam": told.get("to_port", 0) + told.get("to_starboard", 0)}
    if not all(learnt.values()):
        rules.use("nothing")
    return {key: each for key, each in learnt.items() if each}
