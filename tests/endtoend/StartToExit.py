"""The main job, as a person does it: the program is started, Start is pressed with the mouse, the simulated receiver's
ships fill the table, Stop, the window is closed; the program ends well and has written its profile."""

import os
import re
import sys
import tempfile
import time

import rig

ENOUGH_ROWS = 20
MMSI = 1  # columns of the table
TIME = 6


def profile_values(file):
    with open(file, encoding="latin-1", newline="") as ini:
        text = ini.read()
    return dict(line.split("=", 1) for line in text.split("\r\n") if "=" in line), text


def main():
    options = rig.arguments().parse_args()
    rig.skip_without("Xvfb", "xdotool", "dbus-send", rig.AT_SPI_LAUNCHER)
    with tempfile.TemporaryDirectory() as folder, rig.display(), rig.accessibility(), \
            rig.simulator(options.simulator, folder, "--rate", "5", "--damaged", "0") as links:
        devices = [os.path.realpath(link) for link in links]
        with rig.Program(options.program, folder, rig.profile(*links) + "Reader=kept\n") as program:
            eyes = rig.Eyes(program)
            rig.await_that(lambda: eyes.panels()[0] == "Stopped", "the program is stopped at first")
            rig.check(not any(map(program.has_open, devices)), "a port is open before Start")

            eyes.click(eyes.find("push button", "Start"))
            rig.await_that(lambda: eyes.panels()[0] == "Running", "Start has been pressed")
            rig.check(all(map(program.has_open, devices)), "not both ports are open")

            eyes.show_tab("Targets")
            rig.await_that(lambda: len(eyes.rows("Targets")) > ENOUGH_ROWS, f"the table has {ENOUGH_ROWS} rows")

            eyes.click(eyes.find("push button", "Stop"))
            rig.await_that(lambda: eyes.panels()[0] == "Stopped", "Stop has been pressed")
            rig.check(not any(map(program.has_open, devices)), "a port is open after Stop")
            time.sleep(0.2)  # the views take over what came last
            rows = eyes.rows("Targets")[1:]
            rig.check(len(rows) >= ENOUGH_ROWS, "the table was emptied by Stop")
            for row in rows:
                rig.check(re.fullmatch(r"\d{6,9}", row[MMSI]), f"no MMSI in {row}")
                rig.check(re.fullmatch(r"\d\d:\d\d:\d\d", row[TIME]), f"no time in {row}")
            rig.check([int(row[MMSI]) for row in rows] == sorted(int(row[MMSI]) for row in rows), "not sorted by MMSI")
            rig.check(len({row[MMSI] for row in rows}) > 5, "hardly any ship has been heard")
            rig.check(re.fullmatch(r"\d+ Targets, >?\d+ Messages", eyes.panels()[1]), f"summary: {eyes.panels()[1]}")

            rig.check(program.close() == 0, f"exit code {program.process.returncode}")
            values, text = profile_values(program.profile)
            rig.check(values["Comm Port #0"] == links[0] and values["Comm Port #1"] == links[1], "ports in the profile")
            rig.check(values["Enabled #0"] == "1" and values["Nasa Power"] == "0", "check states in the profile")
            # The simulated GPS has moved the own position away from where it is at first.
            rig.check(re.fullmatch(r"\d\d\xb0?.\d\d\.\d\d.?[NS]", values["Latitude"]), f"latitude {values['Latitude']!r}")
            rig.check(values["Latitude"] != "00 00.00 N", "no own position in the profile")
            rig.check(values["Reader"] == "kept", "a key that others put into the profile is gone")
            rig.check("\n" not in text.replace("\r\n", ""), "line ends in the profile")


if __name__ == "__main__":
    sys.exit(rig.run(main))
