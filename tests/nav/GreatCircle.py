"""Range and bearing of pairs of places, random and special ones, against GeographicLib on the program's sphere. How far
they may differ is what the arithmetic allows for that pair (great_circle.py), no more."""

import argparse
import math
import random
import subprocess
import sys

import great_circle

METRE = 1 / 1852 / 60  # degrees of latitude


def near(draw, distance):
    """A pair so many degrees apart, anywhere but at the very poles."""
    lat, lon, course = draw.uniform(-89, 89), draw.uniform(-180, 180), draw.uniform(0, 2 * math.pi)
    east = distance * math.sin(course) / math.cos(math.radians(lat))
    return lat, lon, max(-90, min(90, lat + distance * math.cos(course))), (lon + east + 180) % 360 - 180


# What is asked, and a pair of it. Longitudes go up to 180, latitudes up to 90.
KINDS = {
    "anywhere": lambda d: (d.uniform(-90, 90), d.uniform(-180, 180), d.uniform(-90, 90), d.uniform(-180, 180)),
    "as far as ships are heard": lambda d: near(d, d.uniform(0.01, 2)),
    "across the date line": lambda d: (d.uniform(-80, 80), d.uniform(170, 180) * d.choice((-1, 1)),
                                       d.uniform(-80, 80), d.uniform(170, 180) * d.choice((-1, 1))),
    "1 m apart": lambda d: near(d, METRE),
    "10 m apart": lambda d: near(d, 10 * METRE),
    "1 km apart": lambda d: near(d, 1000 * METRE),
    "the same place": lambda d: (lambda lat, lon: (lat, lon, lat, lon))(d.uniform(-90, 90), d.uniform(-180, 180)),
    "opposite places": lambda d: (lambda lat, lon: (lat, lon, -lat, lon - math.copysign(180, lon)))(
        d.uniform(-90, 90), d.uniform(-180, 180)),
    "nearly opposite": lambda d: (lambda lat, lon: (lat, lon, -lat + d.uniform(-1e-3, 1e-3) * (abs(lat) < 89.9),
                                                    lon - math.copysign(180, lon)))(
        d.uniform(-90, 90), d.uniform(-180, 180)),
    "the same meridian": lambda d: (lambda lon: (d.uniform(-90, 90), lon, d.uniform(-90, 90), lon))(
        d.uniform(-180, 180)),
    "the same latitude": lambda d: (lambda lat: (lat, d.uniform(-180, 180), lat, d.uniform(-180, 180)))(
        d.uniform(-90, 90)),
    "along the equator": lambda d: (0.0, d.uniform(-180, 180), 0.0, d.uniform(-180, 180)),
    "whole degrees": lambda d: (d.randint(-90, 90), d.randint(-180, 180), d.randint(-90, 90), d.randint(-180, 180)),
    "from a pole": lambda d: (d.choice((-90, 90)), d.uniform(-180, 180), d.uniform(-90, 90), d.uniform(-180, 180)),
    "to a pole": lambda d: (d.uniform(-90, 90), d.uniform(-180, 180), d.choice((-90, 90)), d.uniform(-180, 180)),
    "near a pole": lambda d: (d.uniform(89.9, 90) * d.choice((-1, 1)), d.uniform(-180, 180), d.uniform(89.9, 90),
                              d.uniform(-180, 180)),
}


def computed(program, pairs):
    lines = "".join(" ".join(f"{each:.17g}" for each in pair) + "\n" for pair in pairs)
    told = subprocess.run([program], input=lines.encode(), stdout=subprocess.PIPE, check=True).stdout.splitlines()
    assert len(told) == len(pairs), f"{len(told)} answers to {len(pairs)} pairs"
    return [None if line == b"division by zero" else tuple(map(float, line.split())) for line in told]


class Outcome:
    """What came of one kind of pairs."""

    def __init__(self):
        self.failed, self.no_number, self.range_off, self.bearing_off, self.loosest = 0, 0, 0.0, 0.0, 0.0

    def take(self, pair, right, told):
        """Whether what was told lies within what the arithmetic allows."""
        bounds = great_circle.Bounds(pair, *right)
        self.loosest = max(self.loosest, bounds.off)
        if told is None:
            self.failed += 1
            return bounds.fails
        miles, bearing = told
        if math.isnan(bearing):
            self.no_number += 1
        else:
            self.range_off = max(self.range_off, abs(miles - right[0]))
            self.bearing_off = max(self.bearing_off, abs((bearing - right[1] + 180) % 360 - 180))
        in_circle = math.isnan(bearing) or 0 <= bearing <= 360
        return bounds.holds_range(miles) and bounds.holds_bearing(bearing) and in_circle

    def __str__(self):
        return (f"range off by {self.range_off:.1e} nm, bearing by {self.bearing_off:.1e} degrees (allowed up to "
                f"{self.loosest:.1e}); {self.failed} divisions by zero, {self.no_number} not a number")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True, help="RangeBearings")
    parser.add_argument("--pairs", type=int, default=500, help="of each kind")
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    faults = 0
    for kind, make in KINDS.items():
        draw = random.Random(f"{options.seed} {kind}")
        pairs = [make(draw) for _ in range(options.pairs)]
        outcome = Outcome()
        for pair, right, told in zip(pairs, great_circle.solve(pairs), computed(options.program, pairs), strict=True):
            if not outcome.take(pair, right, told):
                faults += 1
                print(f"FAILED: {kind}, {pair}: {told}, GeographicLib says {right}")
        print(f"{kind}: {outcome}")
    print(f"{len(KINDS) * options.pairs} pairs, {faults} outside what the arithmetic allows")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
