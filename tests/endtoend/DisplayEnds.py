"""The display goes while the program records: its server is killed, or ends. The program cannot live on, but every
sentence that it has taken in is in the recording and the settings are saved, under a desktop's theme as well."""

import glob
import os
import signal
import sys
import tempfile

import DesktopDialogs
import rig

SENTENCES = 60  # fewer than a second of them fill no buffer: without care they are lost


def sentences(folder):
    good = []
    for line in rig.sample_sentences(folder, "harbour.txt"):
        if line.startswith(b"!AIVDM") and line[-3:-2] == b"*" and rig.checksum(line[:-3]) == line[-2:]:
            good.append(line)
    return good[:SENTENCES]


def settings_of(file):
    with open(file, "rb") as profile:
        return profile.read().split(b"\r\n")


def display_ends(options, how):
    sent = sentences(options.samples)
    rig.check(len(sent) == SENTENCES, "too few sentences in the sample")
    with tempfile.TemporaryDirectory() as folder, rig.display() as server:
        receiver, plotter = (rig.SerialLine(os.path.join(folder, name)) for name in ("receiver", "plotter"))
        file = os.path.join(folder, "recorded.txt")
        with rig.Program(options.program, folder, rig.profile(receiver.link, output=plotter.link)) as program:
            program.press_start((receiver, plotter))
            program.record(file)
            for line in sent:
                receiver.write(line + b"\r\n")
            # What has been forwarded has been recorded before, in the same turn.
            forwarded = bytearray()
            whole = b"".join(line + b"\r\n" for line in sent)

            def all_out():
                forwarded.extend(plotter.read())
                return len(forwarded) >= len(whole)

            rig.await_that(all_out, "every sentence is forwarded", pause=0.001)
            server.send_signal(how)
            program.process.wait(rig.PATIENCE)
        with open(file, "rb") as recording:
            recorded = [line.rstrip(b"\r\n")[20:] for line in recording]
        rig.check(recorded == sent, f"{len(recorded)} of {len(sent)} sentences are in the recording")
        settings = settings_of(program.profile)
        for key in (b"Nasa Power=0", b"Height=12000", b"Width=18000", b"Detail=All"):
            rig.check(key in settings, f"not in the saved settings: {key}")


def main():
    options = rig.arguments().parse_args()
    rig.skip_without("Xvfb", "xdotool")
    for how in (signal.SIGKILL, signal.SIGTERM):
        display_ends(options, how)
    if not glob.glob(DesktopDialogs.THEME):
        print("not tried: GTK's theme is not installed")
        return
    with tempfile.TemporaryDirectory() as home:
        DesktopDialogs.use_gtk(home)
        for how in (signal.SIGKILL, signal.SIGTERM):
            display_ends(options, how)


if __name__ == "__main__":
    sys.exit(rig.run(main))
