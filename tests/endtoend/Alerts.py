"""The status bar's alerts, raised where a screen reader listens: runs AlertEvents with a display and the bus."""

import subprocess
import sys

import rig


def main():
    parser = rig.arguments()
    parser.add_argument("--alert-events", required=True, help="the built AlertEvents")
    options = parser.parse_args()
    rig.skip_without("Xvfb", "dbus-send", rig.AT_SPI_LAUNCHER)
    with rig.display(), rig.accessibility():
        outcome = subprocess.run([options.alert_events])
        rig.check(outcome.returncode == 0, f"AlertEvents: {outcome.returncode}")


if __name__ == "__main__":
    sys.exit(rig.run(main))
