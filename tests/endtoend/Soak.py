"""The program over a long time: both inputs at the full rate of 38400 baud, the output at 4800, recording on, the device
of input #1 vanishing and coming back, tabs being changed. Counts at both ends: every sentence that was sent while its
device was there must stand in the record file once. Prints memory, descriptors and processor share as it goes.

With --in-lines the plug is pulled in the middle of lines, without a silence before it. What the system had not handed to
the program by then it throws away: --handed-over keeps what it did hand over. With --slow-disk every tenth
synchronisation of the disk takes two seconds. With --capture every byte is counted as well."""

import collections
import os
import random
import re
import statistics
import sys
import tempfile
import time

import rig

TICK = 0.01  # seconds between two portions to each input
BYTES_PER_SECOND = 3840  # 38400 baud, ten bits a character
OUTPUT_BYTES_PER_SECOND = 480
QUIET = 0.4  # seconds without a character before a plug is pulled, and after it is back
AWAY = 1.3  # seconds that the device is away
PULL_EVERY = 6.0  # seconds that it is there
BEGUN = 3  # seconds after which recording and capture have their files
SETTLED = 0.5  # share of the time after which memory has to stay level
MOST_GROWTH = 2048  # kilobytes from then on
LONG_RUN = 180  # seconds: from this length on memory is judged, not only printed
TARGETS_TAB = 4
SLOW_SECONDS = 2  # that a slow disk takes longer
SLOW_EVERY = 10  # of that many synchronisations one


class Plug:
    """A time for which a device was there, and the bytes of its feed from when on."""

    def __init__(self, start, device, since):
        self.start = start
        self.device = device
        self.since = since
        self.pulled = float("inf")
        self.handed = b""
        self.thrown = 0

    def read(self, folder):
        """What the program was handed of it, as HandedOver kept it: a file for each open."""
        number = os.path.basename(self.device)
        opens = [(float(name.rpartition("-")[0]), name) for name in os.listdir(folder) if name.endswith("-" + number)]
        data = b""
        for when, name in sorted(opens):
            if self.since <= when < self.pulled:
                with open(os.path.join(folder, name), "rb") as file:
                    data += file.read()
        return data


class Feed:
    """Sends sentences to one input at its line rate, round and round, and knows which ones went out whole."""

    def __init__(self, line, sentences):
        self.line = line
        self.sentences = sentences
        self.next = 0
        self.pending = b""
        self.credit = 0.0
        self.sent = []
        self.times = []  # when each was sent
        self.ends = []  # where each ends among the bytes written
        self.begun = []  # while which plug was in each was begun
        self.written = bytearray()
        self.plugs = [Plug(0, line.device, time.monotonic())]
        self.thrown = set()  # indices of those that the program never had wholly
        self.quiet = False

    def send(self, seconds):
        """Gives out what the line carries in that time."""
        self.credit = min(self.credit + seconds * BYTES_PER_SECOND, 0.1 * BYTES_PER_SECOND)
        while self.credit >= 1:
            if not self.pending and not self.take():
                return
            portion = self.pending[: int(self.credit)]
            self.write(portion)
            self.credit -= len(portion)
            self.pending = self.pending[len(portion):]

    def take(self):
        self.pending = self.sentences[self.next] + b"\r\n"
        self.sent.append(self.sentences[self.next])
        self.times.append(time.monotonic())
        self.ends.append(len(self.written) + len(self.pending))
        self.begun.append(self.plugs[-1])
        self.next = (self.next + 1) % len(self.sentences)
        return True

    def write(self, data):
        self.line.write(data)
        self.written += data

    def finish_line(self):
        self.write(self.pending)
        self.pending = b""

    def pull(self, tail):
        """What has not been written of the line comes first when the device is back, or not at all."""
        self.line.hang_up()
        self.plugs[-1].pulled = time.monotonic()
        if not tail:
            self.pending = b""

    def plug_in(self):
        self.line.create()
        self.plugs.append(Plug(len(self.written), self.line.device, time.monotonic()))

    def hear(self, folder):
        """Takes in what the system handed to the program while each plug was in; gives all of it. What was written
        behind that, the system has thrown away with the plug."""
        for plug, after in zip(self.plugs, self.plugs[1:] + [None]):
            plug.handed = plug.read(folder)
            written = self.written[plug.start:after.start if after else len(self.written)]
            rig.check(written.startswith(plug.handed), f"{plug.device} handed over what nobody wrote")
            plug.thrown = len(written) - len(plug.handed)
        for index, (end, plug) in enumerate(zip(self.ends, self.begun)):
            if end > plug.start + len(plug.handed):
                self.thrown.add(index)
        return b"".join(plug.handed for plug in self.plugs)

    def kept(self):
        return [line for index, line in enumerate(self.sent) if index not in self.thrown]


class Output:
    """Takes what the output port says, as slowly as 4800 baud."""

    def __init__(self, line):
        self.line = line
        self.credit = 0.0
        self.data = b""

    def take(self, seconds):
        self.credit = min(self.credit + seconds * OUTPUT_BYTES_PER_SECOND, 512)
        if self.credit >= 1:
            data = self.line.read(int(self.credit))
            self.credit -= len(data)
            self.data += data


class Soak:
    def __init__(self, options, folder, program, lines):
        self.seconds = options.minutes * 60
        self.in_lines = getattr(options, "in_lines", False)
        self.chance = random.Random(1)
        self.folder = folder
        self.program = program
        self.lines = lines
        samples = options.samples
        names = ("harbour.txt", "night.txt")
        self.feeds = [Feed(line, self.usable(samples, name)) for line, name in zip(lines, names)]
        self.output = Output(lines[2])
        self.window = 0
        self.tab = 0
        self.vanished = 0
        self.handed = []  # of each feed, what the program was handed
        self.plug = "in"
        self.plug_since = 0.0
        self.next_pull = float("inf")
        self.story = []  # what happened to the device: (time, text)
        self.samples = []  # (second, kilobytes, descriptors, devices all there)
        self.shares = []  # processor share while the Targets tab showed

    @staticmethod
    def usable(folder, name):
        """Those that the program accepts and decodes, by their first characters and their checksum."""
        good = []
        for line in rig.sample_sentences(folder, name):
            kind = line.startswith((b"!AIVDM", b"$PNMLS")) or line[3:6] in (b"GLL", b"RMC")
            if kind and line[-3:-2] == b"*" and rig.checksum(line[:-3]) == line[-2:]:
                good.append(line)
        rig.check(good, f"no sentences in {name}")
        return good

    # Mouse and keyboard. The toolbar is the top of the window, the tabs follow.

    def start(self):
        self.window = self.program.window()
        self.program.press_start(self.lines)

    def press_stop(self):
        self.program.press_stop()
        rig.await_that(lambda: not self.lines[1].listened(), "Stop has closed the ports")

    def record(self):
        file = os.path.join(self.folder, "soak.txt")
        self.program.record(file)
        return file

    def show_tab(self, tab):
        """The wheel over the first tab turns the tabs."""
        if tab == self.tab:
            return
        button = 5 if tab > self.tab else 4
        rig.xdotool("mousemove", "--window", self.window, 34, 57, "click", "--repeat", abs(tab - self.tab), button)
        self.tab = tab

    # The run

    def run(self):
        self.start()
        record = self.record()
        time.sleep(QUIET)  # what comes before a port is ready belongs to no run
        began = last = time.monotonic()
        plan = self.events()
        event_at, event = next(plan)
        sample_at = 0.0
        while (now := time.monotonic() - began) < self.seconds:
            elapsed, last = time.monotonic() - last, time.monotonic()
            for feed in self.feeds:
                if not feed.quiet:
                    feed.send(elapsed)
            self.handle_plug(now)
            self.output.take(elapsed)
            if now >= sample_at:
                self.sample(now)
                sample_at += max(1.0, self.seconds / 120)
            if now >= event_at:
                event()
                event_at, event = next(plan)
            time.sleep(TICK)
        self.end(began)
        return record

    def events(self):
        """When what happens: the first part shows the Targets tab, undisturbed; then other tabs all the time."""
        share = min(60.0, self.seconds * 0.3)
        yield 0.0, lambda: self.show_tab(TARGETS_TAB)
        yield 2.0, self.mark_share
        yield 2.0 + share, lambda: self.take_share(share)
        second, tab = 2.0 + share, TARGETS_TAB
        self.next_pull = second + 3
        while True:
            second += 2.1
            tab = (tab + 1) % len(rig.TABS)
            yield second, lambda tab=tab: self.show_tab(tab)

    def handle_plug(self, now):
        """Pulls the plug of input #1 and puts it in again. Each step waits for the one before by the clock, so that a
        stall of this process cannot shorten it."""
        feed, line = self.feeds[0], self.lines[0]
        if self.plug == "in" and now >= self.next_pull:
            if not self.in_lines:
                feed.finish_line()
            feed.quiet = True
            self.turn_plug("silent", now)
        elif self.plug == "silent" and now >= self.plug_since + (0 if self.in_lines else QUIET):
            feed.pull(tail=self.vanished % 2 == 0)
            self.vanished += 1
            self.turn_plug("pulled", now)
        elif self.plug == "pulled" and now >= self.plug_since + AWAY:
            feed.plug_in()
            self.turn_plug("plugged in", now)
        elif self.plug == "plugged in" and line.listened():
            self.turn_plug("seen open", now)
        elif self.plug == "seen open" and now >= self.plug_since + QUIET:
            feed.quiet = False
            self.next_pull = now + PULL_EVERY + self.chance.random()
            self.turn_plug("in", now)

    def turn_plug(self, state, now):
        self.plug = state
        self.plug_since = now
        self.story.append((time.monotonic(), state))

    def mark_share(self):
        self.mark = (time.monotonic(), self.program.processor_seconds())

    def take_share(self, _):
        seconds = time.monotonic() - self.mark[0]
        self.shares.append(100 * (self.program.processor_seconds() - self.mark[1]) / seconds)

    def sample(self, now):
        rig.check(self.program.running(), "the program ended")
        there = self.lines[0].master >= 0 and self.lines[0].listened()
        targets = self.program.descriptors()
        row = (now, self.program.resident_kilobytes(), len(targets), there and self.lines[0].device in targets)
        self.samples.append(row)
        if len(self.samples) % 10 == 1:
            print(f"{now:6.0f} s  {row[1]} kB  {row[2]} descriptors", flush=True)

    def end(self, began):
        """What was sent is let arrive; the output's queue is read to its end."""
        if self.lines[0].master < 0:
            self.feeds[0].plug_in()
        rig.await_that(self.lines[0].listened, "the device is back")
        for feed in self.feeds:
            feed.finish_line()
        deadline = time.monotonic() + 3
        while time.monotonic() < deadline:
            self.output.take(TICK)
            time.sleep(TICK)
        self.took = time.monotonic() - began
        self.processor = self.program.processor_seconds()
        self.press_stop()
        self.output.credit = 512
        while data := self.lines[2].read():
            self.output.data += data


def gaps(feed, other, lines):
    """Where sentences of a feed are missing: (index, count). Looks at those that the other feed does not send."""
    own = set(feed.sent) - set(other.sent)
    recorded = [line for line in lines if line in own]
    at = 0
    for index, line in enumerate(feed.sent):
        if line not in own:
            continue
        if at < len(recorded) and recorded[at] == line:
            at += 1
        else:
            yield index


def tell_gaps(soak, lines):
    began = soak.feeds[1].times[0]
    for number, feed in enumerate(soak.feeds):
        missing = [index for index in gaps(feed, soak.feeds[1 - number], lines) if index not in feed.thrown]
        for index in missing[:20]:
            when = feed.times[index]
            before = [event for event in soak.story if event[0] < when][-1:]
            after = [event for event in soak.story if event[0] >= when][:1]
            near = ", ".join(f"{text} at {at - began:.2f}" for at, text in before + after)
            print(f"lost on #{number + 1}: {feed.sent[index]!r} of second {when - began:.2f}; {near}")


def judge(soak, record):
    """The figures, and what has to hold of them."""
    sent = collections.Counter()
    thrown = collections.Counter()
    for feed in soak.feeds:
        sent.update(feed.kept())
        thrown.update(feed.sent[index] for index in feed.thrown)
    with open(record, "rb") as file:
        lines = [line.rstrip(b"\r\n")[20:] for line in file]
    recorded = collections.Counter(lines)
    lost = sent - recorded
    strange = recorded - sent - thrown  # of those thrown away some were whole but for their line feed
    forwarded, unfinished = soak.output.data.split(b"\r\n")[:-1], soak.output.data.split(b"\r\n")[-1]
    known = set(sent)
    damaged = [line for line in forwarded if line not in known]

    kilobytes = [row[1] for row in soak.samples]
    settled = [row[1] for row in soak.samples if row[0] >= soak.seconds * SETTLED]
    descriptors = sorted({row[2] for row in soak.samples if row[3]})  # while all three devices are open
    growth = statistics.mean(settled[-5:]) - statistics.mean(settled[:5])
    print(f"time                 {soak.seconds:.0f} s")
    print(f"device vanished      {soak.vanished} times")
    print(f"sentences sent       {len(soak.feeds[0].sent)} + {len(soak.feeds[1].sent)}")
    print(f"sentences recorded   {len(lines)}")
    if soak.handed:
        thrown_bytes = [plug.thrown for plug in soak.feeds[0].plugs]
        print(f"cut by the plug      {len(soak.feeds[0].thrown)} sentences")
        print(f"never handed over    {sum(thrown_bytes)} bytes, of {sum(map(bool, thrown_bytes))} plugs, "
              f"{max(thrown_bytes)} of one at the most")
    print(f"lost, not sent       {sum(lost.values())}, {sum(strange.values())}")
    print(f"lines at the output  {len(forwarded)}, of them damaged {len(damaged)}")
    print(f"resident memory      first {kilobytes[0]} kB, most {max(kilobytes)} kB, last {kilobytes[-1]} kB, "
          f"second half {growth:+.0f} kB")
    print(f"descriptors          {descriptors}")
    print(f"processor share      {soak.shares[0]:.1f} % of a core with the Targets tab shown, "
          f"{100 * soak.processor / soak.took:.1f} % over all")

    if lost:
        tell_gaps(soak, lines)
    rig.check(not lost, f"sentences lost, such as {list(lost)[:3]}")
    rig.check(not strange, f"sentences recorded that nobody sent, such as {list(strange)[:3]}")
    rig.check(forwarded and not damaged, f"damaged lines at the output, such as {damaged[:3]}")
    cut = unfinished.rstrip(b"\r")  # Stop may come anywhere in a line
    rig.check(not cut or any(line.startswith(cut) for line in known), f"rubbish at the output's end: {unfinished!r}")
    first = next(row[2] for row in soak.samples if row[3] and row[0] >= BEGUN)
    rig.check(descriptors[-1] <= first, "more descriptors than at the beginning")
    rig.check(soak.vanished > 0, "the device never vanished")
    if soak.seconds >= LONG_RUN:
        rig.check(growth <= MOST_GROWTH, "memory grows")


def captured(file, number):
    """The bytes of an input that a capture holds."""
    pieces = []
    with open(file, "rb") as capture:
        for line in capture:
            if line[24:27] == b"%d <" % number:
                pieces.append(line[28:].rstrip(b"\r\n"))
    escapes = {b"\\\\": b"\\", b"\\r": b"\r", b"\\n": b"\n"}
    return re.sub(rb"\\(?:x(..)|.)", lambda m: bytes([int(m[1], 16)]) if m[1] else escapes[m[0]], b"".join(pieces))


def judge_handed(soak, folder):
    """Only a pulled plug may keep bytes from the program, and only its last ones."""
    soak.handed = [feed.hear(folder) for feed in soak.feeds]
    rig.check(soak.handed[1] == soak.feeds[1].written, "bytes of input #2 were not handed over")
    rig.check(soak.feeds[0].plugs[-1].thrown == 0, "bytes of input #1 were not handed over before Stop")


def judge_capture(soak, file):
    for number, handed in enumerate(soak.handed):
        data = captured(file, number + 1)
        print(f"bytes captured, #{number + 1}  {len(data)} of {len(handed)} handed over, {len(soak.feeds[number].written)} sent")
        rig.check(data == handed, f"the capture of input #{number + 1} is not what the program was handed")


def program_for(options, folder, profile):
    libraries, told = [], {}
    if options.slow_disk:
        libraries.append(options.slow_disk)
        told.update(rig.slow_disk(folder, SLOW_SECONDS, SLOW_EVERY))
    if options.handed_over:
        libraries.append(options.handed_over)
        told["HANDED_OVER"] = os.path.join(folder, "handed")
        os.mkdir(told["HANDED_OVER"])
    if not libraries:
        return rig.Program(options.program, folder, profile)
    return rig.WatchedProgram(options.program, folder, profile, libraries, **told)


def main():
    parser = rig.arguments()
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--handed-over", help="the built library that keeps what the system hands over")
    parser.add_argument("--in-lines", action="store_true", help="pull the plug in the middle of lines (needs --handed-over)")
    parser.add_argument("--slow-disk", help="the built library that makes the disk slow")
    parser.add_argument("--capture", action="store_true", help="capture beside the recording (needs --handed-over)")
    options = parser.parse_args()
    if (options.in_lines or options.capture) and not options.handed_over:
        parser.error("--in-lines and --capture need --handed-over")
    rig.skip_without("Xvfb", "xdotool")
    with tempfile.TemporaryDirectory() as folder, rig.display():
        lines = [rig.SerialLine(os.path.join(folder, name)) for name in ("receiver", "second", "plotter")]
        profile = rig.profile(*(line.link for line in lines), output_settings="4800,n,8,1")
        if options.capture:
            profile += "[Unattended]\nCapture=1\n"
        with program_for(options, folder, profile) as program:
            soak = Soak(options, folder, program, lines)
            record = soak.run()
            rig.check(program.close() == 0, "the program ends with an error")
        if options.handed_over:
            judge_handed(soak, os.path.join(folder, "handed"))
        if options.capture:
            judge_capture(soak, record.replace(".txt", ".capture"))
        judge(soak, record)


if __name__ == "__main__":
    sys.exit(rig.run(main))
