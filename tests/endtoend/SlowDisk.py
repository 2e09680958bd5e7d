"""A recording onto a disk that takes seconds to store it: both inputs at the full rate of 38400 baud, every line forwarded.
Each sentence must stand in the record file and be forwarded, once, and lines must be forwarded while the disk works: the
system keeps one second's characters for a reader that does not come, and the rest would be lost on a real line (a
pseudo-terminal waits). Prints how late lines and ticks were."""

import collections
import os
import sys
import tempfile
import time

import rig
from Soak import BYTES_PER_SECOND, QUIET, Soak

TICK = 0.005  # seconds between two portions to each input


class Feed:
    """Sends whole sentences to one input, at its line rate on the average."""

    def __init__(self, line, sentences):
        self.line = line
        self.sentences = sentences
        self.credit = 0.0
        self.count = 0

    def send(self, seconds, note):
        self.credit = min(self.credit + seconds * BYTES_PER_SECOND, 0.1 * BYTES_PER_SECOND)
        while self.credit > 0:
            sentence = self.sentences[self.count % len(self.sentences)]
            self.line.write(sentence + b"\r\n")
            self.credit -= len(sentence) + 2
            self.count += 1
            note(sentence)


class Run:
    def __init__(self, lines, samples):
        self.feeds = [Feed(line, Soak.usable(samples, name)) for line, name in zip(lines, ("harbour.txt", "night.txt"))]
        self.output = lines[2]
        self.got = b""
        self.waiting = collections.defaultdict(collections.deque)  # when each sentence was sent
        self.sent = collections.Counter()
        self.forwarded = collections.Counter()
        self.delays = []
        self.seen = []  # when lines came out

    def note(self, sentence):
        self.sent[sentence] += 1
        self.waiting[sentence].append(time.monotonic())

    def read_output(self):
        self.got += self.output.read()
        *lines, self.got = self.got.split(b"\r\n")
        for line in lines:
            rig.check(self.waiting[line], f"forwarded, but not sent: {line!r}")
            self.delays.append(time.monotonic() - self.waiting[line].popleft())
            self.seen.append(time.monotonic())
            self.forwarded[line] += 1

    def feed(self, seconds):
        began = last = time.monotonic()
        while (now := time.monotonic()) < began + seconds:
            for feed in self.feeds:
                feed.send(now - last, self.note)
            last = now
            self.read_output()
            time.sleep(TICK)

    def all_forwarded(self):
        self.read_output()
        return self.forwarded == self.sent


def judge(run, record, ticks, syncs):
    with open(record, "rb") as file:
        recorded = collections.Counter(line.rstrip(b"\r\n")[20:] for line in file)
    lost, strange = run.sent - recorded, recorded - run.sent
    steps = [later - earlier for (earlier, _), (later, _) in zip(ticks, ticks[1:])]
    rig.check(syncs, "the disk was never asked")
    least = min(sum(first < at < last for at in run.seen) for first, last in syncs)
    print(f"{sum(run.sent.values())} sentences, {sum(lost.values())} lost; most delay {1000 * max(run.delays):.1f} ms; "
          f"{len(steps)} ticks, {1000 * min(steps):.1f} to {1000 * max(steps):.1f} ms apart; "
          f"{len(syncs)} times the disk worked, at least {least} lines forwarded meanwhile")
    rig.check(not lost, f"sentences lost, such as {list(lost)[:3]}")
    rig.check(least > 0, "nothing was forwarded while the disk worked")
    rig.check(run.forwarded == run.sent, f"only {sum(run.forwarded.values())} were forwarded")
    rig.check(not strange, f"sentences recorded that nobody sent, such as {list(strange)[:3]}")


def main():
    parser = rig.arguments()
    parser.add_argument("--slow-disk", required=True, help="the built library that makes the disk slow")
    parser.add_argument("--sync-seconds", type=float, default=2.5)
    parser.add_argument("--seconds", type=float, default=15)
    options = parser.parse_args()
    options.minutes = 0
    rig.skip_without("Xvfb", "xdotool")
    with tempfile.TemporaryDirectory() as folder, rig.display():
        lines = [rig.SerialLine(os.path.join(folder, name)) for name in ("receiver", "second", "plotter")]
        profile = rig.profile(*(line.link for line in lines), output_settings="115200,n,8,1")
        with rig.WatchedProgram(options.program, folder, profile, [options.slow_disk],
                                **rig.slow_disk(folder, options.sync_seconds)) as program:
            window = Soak(options, folder, program, lines)
            window.start()
            record = window.record()
            time.sleep(QUIET)  # what comes before a port is ready belongs to no run
            run = Run(lines, options.samples)
            began = time.monotonic()
            run.feed(options.seconds)
            ended = time.monotonic()
            while not run.all_forwarded() and time.monotonic() < ended + rig.PATIENCE:
                time.sleep(TICK)
            window.press_stop()
            rig.check(program.close() == 0, "the program ends with an error")
        judge(run, record, rig.noted(folder, "write", began, ended), rig.noted(folder, "sync", began, ended))


if __name__ == "__main__":
    sys.exit(rig.run(main))
