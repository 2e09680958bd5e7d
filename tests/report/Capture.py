"""Captures: what tidewatch-report says of an input is what it says of a recording of that input's sentences. The capture is
written here, in random pieces, by the words of docs/capture-format.md."""

import random
import unittest

import rig
from rig import position, program, record, result


def escaped(data):
    text = ""
    for byte in data:
        if byte in b"\r\n\\":
            text += {13: "\\r", 10: "\\n", 92: "\\\\"}[byte]
        else:
            text += chr(byte) if 32 <= byte <= 126 else f"\\x{byte:02X}"
    return text


def capture(chance, *inputs):
    """Lines of ("hh:mm:ss", sentence) for each input, as a capture; each line comes in pieces within its second."""
    pieces = []
    for number, lines in enumerate(inputs, 1):
        for place, (stamp, sentence) in enumerate(lines):
            data = sentence.encode("latin-1") + b"\r\n"
            cuts = sorted(chance.sample(range(1, len(data)), chance.randrange(4)))
            for part, (a, b) in enumerate(zip([0, *cuts], [*cuts, len(data)])):
                pieces.append((stamp, place, part, number, escaped(data[a:b])))
    pieces.sort(key=lambda piece: piece[0])  # stays in order within an input and a second
    head = "06/14/2025 07:59:59.250 Tidewatch capture 1\r\n"
    return (head + "".join(f"06/14/2025 {stamp}.{500 + part:03d} {number} < {text}\r\n"
                           for stamp, _, part, number, text in pieces)).encode("ascii")


def fleet(chance, first, longitude):
    lines = [("08:00:00", rig.gps((50, 0), (1, 0)))]
    for second in range(0, 1800, 10):
        stamp = f"08:{second // 60:02d}:{second % 60:02d}"
        for ship in range(5):
            if chance.random() < 0.7:
                lines.append((stamp, position(first + ship, 50.05, longitude + ship / 100)))
                lines.append((stamp, rig.levels(40 + ship, 20)))
    return lines


def without_name(answer):
    return {key: value for key, value in answer.items() if key not in ("files", "notes")}


class CaptureTest(rig.Case):
    def setUp(self):
        super().setUp()
        chance = random.Random(7)
        self.lines = [fleet(chance, 211000000, 1.05), fleet(chance, 305000000, 1.5)]
        self.records = [self.file(f"{i}.txt", record(*lines)) for i, lines in enumerate(self.lines)]
        self.capture = self.file("both.capture", capture(chance, *self.lines))

    def test_input_says_what_its_recording_says(self):
        for command in ("summary", "coverage", "ships", "signal", "range"):
            for i, file in enumerate(self.records):
                self.assertEqual(without_name(result(command, f"{self.capture}#{i + 1}")),
                                 without_name(result(command, file)), (command, i))

    def test_whole_capture_has_both(self):
        ships = {row["mmsi"] for row in result("ships", self.capture)["ships"]}
        self.assertEqual(len(ships), 10)
        one = {row["mmsi"] for row in result("ships", f"{self.capture}#1")["ships"]}
        self.assertEqual(len(one), 5)
        self.assertLess(one, ships)

    def test_inputs_are_compared(self):
        captured = program("compare", f"{self.capture}#1", f"{self.capture}#2", "--csv")
        recorded = program("compare", *self.records, "--csv")
        self.assertEqual(captured[:2], recorded[:2])
        self.assertEqual(captured[0], 0, captured[2])

    def test_events_commands_and_noise_are_no_lines(self):
        data = self.capture.read_bytes()
        extra = b"06/14/2025 09:00:00.000 1 ! 2001\r\n06/14/2025 09:00:01.000 1 > $PNMLS,x\\r\r\n"
        noisy = self.file("noisy.capture", data + extra + data[:data.index(b"\n") + 1])
        self.assertEqual(without_name(result("summary", noisy)), without_name(result("summary", self.capture)))

    def test_cut_capture_is_read_up_to_the_cut(self):
        data = self.capture.read_bytes()
        cut = self.file("cut.capture", data[:len(data) // 2])
        whole = self.file("whole.capture", data[:data.rindex(b"\n", 0, len(data) // 2) + 1])
        self.assertEqual(without_name(result("summary", cut)), without_name(result("summary", whole)))

    def test_strange_line_is_counted_as_bad(self):
        data = self.capture.read_bytes().split(b"\r\n", 5)
        strange = self.file("strange.capture", b"\r\n".join(data[:5] + [b"what is this"] + data[5:]))
        code, out, _ = program("summary", strange, "--json")
        self.assertEqual(code, 0)
        self.assertNotEqual(out, program("summary", self.capture, "--json")[1])

    def test_recording_has_no_inputs(self):
        code, _, err = program("summary", f"{self.records[0]}#1")
        self.assertEqual(code, 1)
        self.assertIn("tells no inputs apart", err)

    def test_file_that_is_called_so_is_taken_whole(self):
        odd = self.file("odd.txt#1", self.records[0].read_bytes())
        self.assertEqual(without_name(result("summary", odd)), without_name(result("summary", self.records[0])))


if __name__ == "__main__":
    rig.main()
