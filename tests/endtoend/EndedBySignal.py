#!/usr/bin/env python3
"""A logout or a kill ends the program as closing its window does: exit code 0 and the settings saved."""
import argparse
import os
import shutil
import signal
import subprocess
import tempfile
import time


def end_by(program, number):
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, "tidewatch")
        shutil.copy(program, copy)
        process = subprocess.Popen([copy], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
        deadline = time.monotonic() + 30
        while "SigBlk:\t0000000000000000" in open(f"/proc/{process.pid}/status").read():
            assert time.monotonic() < deadline, "the program did not start"
            time.sleep(0.02)
        process.send_signal(number)
        assert process.wait(30) == 0, f"exit code {process.returncode} after signal {number}"
        with open(os.path.join(folder, "tidewatch.Ini"), "rb") as profile:
            assert b"Settings #0=38400,n,8,1\r\n" in profile.read(), "the settings were not saved"


parser = argparse.ArgumentParser()
parser.add_argument("--program", required=True)
parser.add_argument("--samples")
options = parser.parse_args()
for signal_number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
    end_by(options.program, signal_number)
