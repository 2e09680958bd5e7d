#!/usr/bin/env python3
"""A logout or a kill ends the program as closing its window does: exit code 0 and the settings saved. A limit on the size
of files does not end it, and costs no settings."""
import argparse
import os
import resource
import shutil
import signal
import subprocess
import tempfile
import time


def settings_after(program, number, before=b"", most=resource.RLIM_INFINITY):
    """The program starts with these settings, may make files of that size at most, and is ended by that signal."""
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, "tidewatch")
        shutil.copy(program, copy)
        with open(os.path.join(folder, "tidewatch.Ini"), "wb") as profile:
            profile.write(before)
        process = subprocess.Popen([copy], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"),
                                   preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (most, most)))
        deadline = time.monotonic() + 30
        while "SigBlk:\t0000000000000000" in open(f"/proc/{process.pid}/status").read():
            assert time.monotonic() < deadline, "the program did not start"
            time.sleep(0.02)
        process.send_signal(number)
        assert process.wait(30) == 0, f"exit code {process.returncode} after signal {number}"
        with open(os.path.join(folder, "tidewatch.Ini"), "rb") as profile:
            return profile.read()


parser = argparse.ArgumentParser()
parser.add_argument("--program", required=True)
parser.add_argument("--samples")
options = parser.parse_args()
for signal_number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
    saved = settings_after(options.program, signal_number)
    assert b"Settings #0=38400,n,8,1\r\n" in saved, "the settings were not saved"
old = b"[Nmea Data]\r\nSettings #0=4800,n,8,1\r\n"
assert settings_after(options.program, signal.SIGTERM, old, most=100) == old, "the settings were damaged"
