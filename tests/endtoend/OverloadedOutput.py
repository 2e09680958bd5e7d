"""An output at 4800 baud that gets two and a half times what it carries: how old is what comes out? The oldest waiting
sentences are dropped, whole, so that its reader hears of the present. Prints the ages second by second."""

import os
import sys
import tempfile
import time

import rig

BYTES_PER_SECOND = 480  # 4800 baud, ten bits a character
OVERLOAD = 2.5
LENGTH = 48  # characters of a line, with its end
TICK = 0.02
MOST_AGE = 6.0  # seconds: ten of the line's rate, filled two and a half times as fast, and what the system was given


def line_of(number):
    return (b"$PXYZ,%08d," % number).ljust(LENGTH - 2, b"x") + b"\r\n"


class Far:
    """Reads as slowly as the line is, and notes how old each sentence is when its last character is there."""

    def __init__(self, line):
        self.line = line
        self.credit = 0.0
        self.rest = b""
        self.numbers = []
        self.ages = []

    def take(self, seconds, sent):
        self.credit = min(self.credit + seconds * BYTES_PER_SECOND, 64)
        if self.credit < 1:
            return
        data = self.line.read(int(self.credit))
        self.credit -= len(data)
        *whole, self.rest = (self.rest + data).split(b"\r\n")
        for text in whole:
            number = int(text.split(b",")[1])
            rig.check(text + b"\r\n" == line_of(number), f"a damaged sentence: {text!r}")
            self.numbers.append(number)
            self.ages.append(time.monotonic() - sent[number])


def overload(receiver, plotter, seconds):
    far, sent, credit = Far(plotter), [], 0.0
    began = last = time.monotonic()
    told = 0
    while (now := time.monotonic()) < began + seconds:
        elapsed, last = now - last, now
        credit += elapsed * BYTES_PER_SECOND * OVERLOAD
        while credit >= LENGTH:
            receiver.write(line_of(len(sent)))
            sent.append(time.monotonic())
            credit -= LENGTH
        far.take(elapsed, sent)
        if now - began > told and far.ages:
            told += max(1, int(seconds / 12))
            print(f"{now - began:5.1f} s  what comes out is {far.ages[-1]:.1f} s old", flush=True)
        time.sleep(TICK)
    return far, len(sent)


def main():
    parser = rig.arguments()
    parser.add_argument("--seconds", type=float, default=12)
    options = parser.parse_args()
    rig.skip_without("Xvfb", "xdotool")
    with tempfile.TemporaryDirectory() as folder, rig.display():
        receiver, plotter = (rig.SerialLine(os.path.join(folder, name)) for name in ("receiver", "plotter"))
        profile = rig.profile(receiver.link, output=plotter.link, output_settings="4800,n,8,1")
        with rig.Program(options.program, folder, profile) as program:
            program.press_start((receiver, plotter))
            far, sent = overload(receiver, plotter, options.seconds)
            rig.check(program.close() == 0, "the program ends with an error")
    carried = len(far.numbers) * LENGTH / options.seconds
    print(f"{sent} sentences in, {len(far.numbers)} out ({carried:.0f} characters a second); the oldest was "
          f"{max(far.ages):.1f} s old, the last {far.ages[-1]:.1f} s")
    rig.check(far.numbers == sorted(set(far.numbers)), "out of order, or twice")
    rig.check(carried > 0.9 * BYTES_PER_SECOND, "the line was not used")
    rig.check(max(far.ages) < MOST_AGE, f"what came out was {max(far.ages):.1f} s old")


if __name__ == "__main__":
    sys.exit(rig.run(main))
