"""AIS messages made at random, every field over its whole range, and their way into sentences: whole, cut short, too
long, spread over several, with a sentence lost. A message is a whole number of so many bits."""

LENGTHS = {1: 168, 2: 168, 3: 168, 4: 168, 5: 424, 9: 168, 11: 168, 18: 168, 19: 312, 21: 272, 24: 168}

LONGITUDES = (108600000, 108000000, -108000000, 108000001, 0, -1, 1, 2**27 - 1, -(2**27))
LATITUDES = (54600000, 54000000, -54000000, 54000001, 0, -1, 1, 2**26 - 1, -(2**26))
TURNS = (0, 1, -1, 14, 15, -15, 126, -126, 127, -127, -128)
SPEEDS = (0, 1, 1021, 1022, 1023)
COURSES = (0, 1, 3599, 3600, 3601, 4095)
HEADINGS = (0, 1, 359, 360, 510, 511)
OWN_LATITUDE, OWN_LONGITUDE = 30471000, -774000  # 50 47.10 N, 1 17.40 W
RESERVED = (0, 0, 0, 1, 2, 3, 255)

# Type: first bit, bits, values that mean something of their own.
FIELDS = {
    **{kind: ((42, 8, TURNS), (50, 10, SPEEDS), (61, 28, LONGITUDES), (89, 27, LATITUDES), (116, 12, COURSES),
              (128, 9, HEADINGS)) for kind in (1, 2, 3)},
    4: ((79, 28, LONGITUDES), (107, 27, LATITUDES)), 11: ((79, 28, LONGITUDES), (107, 27, LATITUDES)),
    9: ((50, 10, SPEEDS), (61, 28, LONGITUDES), (89, 27, LATITUDES)),
    **{kind: ((38, 8, RESERVED), (46, 10, SPEEDS), (57, 28, LONGITUDES), (85, 27, LATITUDES), (112, 12, COURSES),
              (124, 9, HEADINGS)) for kind in (18, 19)},
    5: ((232, 8, (0, 255)), (240, 9, (0, 511)), (249, 9, (0, 511)), (258, 6, (0, 63)), (264, 6, (0, 63))),
    21: ((38, 5, (0, 31)), (219, 9, (0, 511)), (228, 9, (0, 511)), (237, 6, (0, 63)), (243, 6, (0, 63))),
    24: ((38, 2, (0, 0, 0, 1, 1, 1, 1)), (132, 30, (0, 1, 2**30 - 1))),
}
TEXTS = {5: ((70, 7), (112, 20)), 19: ((143, 20),), 21: ((43, 20),), 24: ((40, 20), (90, 7))}  # first bit, characters
NEAR = {1: (61, 89), 2: (61, 89), 3: (61, 89), 4: (79, 107), 18: (57, 85), 19: (57, 85)}  # longitude, latitude


class Message:
    """The sentences of one message, with what stands in their fields."""

    def __init__(self, sentences, channel, mmsi=None):
        self.sentences, self.channel, self.mmsi = sentences, channel, mmsi


def put(value, length, first, count, field):
    shift = length - first - count
    mask = (1 << count) - 1
    return value & ~(mask << shift) | (field & mask) << shift


def closed(body):
    total = 0
    for c in body[1:].encode():
        total ^= c
    return f"{body}*{total:02X}"


def armour(values):
    return "".join(chr(v + 48 if v < 40 else v + 56) for v in values)


def characters(value, length):
    """The six-bit values of a message and how many bits fill up the last one."""
    fill = -length % 6
    value <<= fill
    return [value >> shift & 63 for shift in range(length + fill - 6, -1, -6)], fill


def single(value, length, channel="A"):
    values, fill = characters(value, length)
    return closed(f"!AIVDM,1,1,,{channel},{armour(values)},{fill}")


def text(random, characters_):
    """Six-bit codes of a text of any characters but the one that ends it, filled up with that one or with blanks."""
    count = random.randint(0, characters_)
    codes = [random.randint(1, 63) for _ in range(count)] + [random.choice((0, 32))] * (characters_ - count)
    whole = 0
    for code in codes:
        whole = whole << 6 | code
    return whole


def any_message(random, kind, mmsi):
    length = LENGTHS[kind]
    value = random.getrandbits(length)  # every field has any value
    for first, count, special in FIELDS[kind]:
        if random.random() < 0.3:
            value = put(value, length, first, count, random.choice(special))
    for first, count in TEXTS.get(kind, ()):
        if random.random() < 0.7:
            value = put(value, length, first, 6 * count, text(random, count))
    if kind in NEAR and random.random() < 0.3:  # as far as ships are heard
        value = put(value, length, NEAR[kind][0], 28, OWN_LONGITUDE + random.randint(-10**6, 10**6))
        value = put(value, length, NEAR[kind][1], 27, OWN_LATITUDE + random.randint(-10**6, 10**6))
    value = put(value, length, 0, 6, kind)
    return put(value, length, 8, 30, mmsi), length


def spread(random, values, fill, channel, parts):
    """One message over so many sentences, cut anywhere."""
    cuts = [0, *sorted(random.sample(range(1, len(values)), parts - 1)), len(values)]
    number = random.randint(0, 9) if parts > 1 else ""
    for i in range(parts):
        payload = armour(values[cuts[i]:cuts[i + 1]])
        yield closed(f"!AIVDM,{parts},{i + 1},{number},{channel},{payload},{fill if i + 1 == parts else 0}")


def in_sentences(random, value, length, mmsi):
    values, fill = characters(value, length)
    way = random.random()
    if way < 0.10:
        values, fill = values[:random.randint(1, len(values) - 1)], 0
    elif way < 0.18:
        values, fill = values + [random.randint(0, 63) for _ in range(random.randint(1, 30))], 0
    elif way < 0.20:
        fill = random.randint(0, 5)
    elif way < 0.205:
        values, fill = values + [random.randint(0, 63) for _ in range(random.randint(400, 500))], 0
    channel = random.choice("AB")
    parts = 9 if len(values) > 300 else 2 if len(values) > 60 else 1
    if parts < 9 and random.random() < 0.2:
        parts = min(random.randint(2, 5), len(values))
    sentences = list(spread(random, values, fill, channel, parts))
    if parts > 1 and random.random() < 0.1:
        del sentences[0]  # lost: the rest is put behind what was there
    return Message(sentences, channel, mmsi)


def random_messages(random, count):
    """As many of each type; no MMSI comes twice, so that each message is a ship of its own."""
    taken = set()
    remarkable = [1, 999999999, 1000000000, 2**30 - 1, 981234567, 111232506, 993456789]
    kinds = sorted(LENGTHS)
    for i in range(count):
        kind = kinds[i % len(kinds)]
        mmsi = remarkable.pop() if remarkable else random.randint(1, 2**30 - 1)
        if kind == 24 and random.random() < 0.2:
            mmsi = random.randint(980000000, 989999999)  # an auxiliary craft
        while mmsi in taken:
            mmsi = random.randint(1, 2**30 - 1)
        taken.add(mmsi)
        yield in_sentences(random, *any_message(random, kind, mmsi), mmsi)


def recorded_messages(lines):
    """The AIS sentences of a recording, put together by their numbers."""
    waiting = []
    for line in lines:
        fields = line.split(",")
        waiting.append(line)
        if fields[1] == fields[2]:
            yield Message(waiting, fields[4])
            waiting = []


class Store:
    """What a port holds of messages, as the program is meant to: sentences are put behind each other as they come, and
    nothing is cleared but by a first one."""

    CAPACITY = 512

    def __init__(self):
        self.values = [0] * self.CAPACITY
        self.length = 0

    def take(self, sentence):
        """False when there is no room for it."""
        fields = sentence.split(",")
        held = 0 if fields[2] == "1" else self.length
        payload = [ord(c) - (48 if c < "`" else 56) for c in fields[5]]
        if held + len(payload) > self.CAPACITY:
            return False
        self.values[held:held + len(payload)] = payload
        self.length = held + len(payload)
        return True

    def bits(self, first, count):
        whole = 0
        for v in self.values[first // 6:(first + count + 5) // 6]:
            whole = whole << 6 | v
        return whole >> -(first + count) % 6 & (1 << count) - 1

    def whole(self, part_a=False):
        """The message that is read from here, at the length of its type; nothing for types that have none here. part_a:
        of type 24, as its part A."""
        length = LENGTHS.get(self.values[0])
        if length is None:
            return None
        value = self.bits(0, length)
        return single(put(value, length, 38, 2, 0) if part_a else value, length)
