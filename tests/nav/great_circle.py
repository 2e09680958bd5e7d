"""Range and bearing by GeographicLib (Debian's GeodSolve) on the program's sphere, and how far the program's arithmetic
may lie from it.

The program reckons by the cosine rule in doubles, with pi as 3.14159265358979. GeodSolve is given the same angles, that
is degrees times that pi over the real one, and a sphere whose radius makes 60 miles of a degree of that pi. What then
differs is rounding:

    places      each angle is rounded two or three times on its way to radians, and so is the difference of longitudes:
                PLACE radians at the most, as if a place lay that much beside its own
    cosine      four products and sums of numbers up to 1, sines and cosines that are right to half a unit: COSINE at the
                most; the arc cosine takes 1 - c * c, which rounds once more
    range       lies between the angles of c + COSINE and c - COSINE, and PLACE to either side. Near the same and the
                opposite place the cosine is flat: up to sqrt(2 * COSINE), 0.3 m
    bearing     its cosine is a quotient; what numerator (COSINE and its share of the error of c) and denominator (the
                error of the range) may be off, over the denominator. PLACE turns it by PLACE over the distance, and by
                PLACE times the tangent of the own latitude

Where such an interval holds 1 or -1, the division by zero and the not-a-number of the cosine rule are right answers.
"""

import math
import subprocess

SHORT_PI = 3.14159265358979
SCALE = SHORT_PI / math.pi  # 1 - 1.03e-15
RADIUS = 60 * 180 / SHORT_PI
UNIT = 2.0**-53
COSINE = 8 * UNIT
PLACE = 24 * UNIT


def solve(pairs):
    """Miles and bearing for each (lat1, lon1, lat2, lon2) in degrees, all of them places on the earth."""
    lines = "".join(" ".join(f"{each * SCALE:.17f}" for each in pair) + "\n" for pair in pairs)
    told = subprocess.run(["GeodSolve", "-i", "-e", repr(RADIUS), "0", "-p", "9"], input=lines.encode(),
                          stdout=subprocess.PIPE, check=True).stdout.split(b"\n")
    for line in told[:len(pairs)]:
        azimuth, _, miles = map(float, line.split())
        yield miles, azimuth % 360


def clip(number):
    return max(-1.0, min(1.0, number))


class Bounds:
    """What the program may say of a pair whose range and bearing are known."""

    def __init__(self, pair, miles, bearing):
        lat = math.radians(pair[0])
        angle = miles / RADIUS
        cosine = math.cos(angle)
        self.miles = (RADIUS * max(0.0, math.acos(clip(cosine + COSINE)) - PLACE),
                      RADIUS * (math.acos(clip(cosine - COSINE)) + PLACE))
        self.range_fails = self.fails = abs(cosine) + COSINE + math.sin(angle) * PLACE >= 1
        self.bearing = bearing
        low, high = (each / RADIUS for each in self.miles)
        sine = min(math.sin(low), math.sin(high)) * (abs(math.cos(lat)) - PLACE)
        if sine <= 0:
            self.fails = True
            self.off = 180.0
            return
        numerator = 2 * COSINE + abs(math.sin(lat)) * COSINE
        quotient = math.cos(math.radians(bearing))
        denominator = abs(math.cos(angle)) * (high - low) * abs(math.cos(lat)) + PLACE
        off = (numerator + abs(quotient) * denominator) / sine
        self.fails = self.fails or abs(quotient) + off >= 1
        side = math.acos(clip(quotient))
        spread = max(math.acos(clip(quotient - off)) - side, side - math.acos(clip(quotient + off)))
        self.off = min(180.0, math.degrees(spread + PLACE / math.sin(low) + PLACE * abs(math.tan(lat))))

    def holds_range(self, miles, rounding=0.0):
        if math.isnan(miles):
            return self.range_fails
        return self.miles[0] - rounding - 1e-9 <= miles <= self.miles[1] + rounding + 1e-9

    def holds_bearing(self, bearing, rounding=0.0):
        if math.isnan(bearing):
            return self.fails
        return abs((bearing - self.bearing + 180) % 360 - 180) <= self.off + rounding + 1e-9
