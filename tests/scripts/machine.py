"""A machine of the test's own: a copy of the project's scripts in a temporary folder, and a PATH that holds nothing but
the system's plain tools and stand-ins that write down how they were called."""

import os
import pathlib
import shutil
import subprocess
import tempfile

PROJECT = pathlib.Path(__file__).resolve().parents[2]
# What the smallest Debian has, as far as the scripts use it.
TOOLS = ("bash", "cat", "chmod", "cp", "dirname", "env", "find", "grep", "head", "mkdir", "mktemp", "mv", "readlink",
         "rm", "sed", "sort", "tail", "touch")


class Machine:
    """stand_in() adds programs, run() runs a script of the project, calls() tells what was called."""

    def __init__(self, *files):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tidewatch-machine."))
        self.tree = self.folder / "tree"
        self.programs = self.folder / "bin"
        self.log = self.folder / "calls"
        self.programs.mkdir()
        for tool in TOOLS:
            (self.programs / tool).symlink_to(shutil.which(tool))
        for file in files:
            (self.tree / file).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(PROJECT / file, self.tree / file)

    def remove(self):
        shutil.rmtree(self.folder)

    def script(self, path, body):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(f"#!/bin/bash\n{body}\n")
        path.chmod(0o755)

    def stand_in(self, name, body="exit 0"):
        """A program first and alone on PATH; it writes its name and words down, then does what body says."""
        self.script(self.programs / name, f'echo "{name} $*" >> "{self.log}"\n{body}')

    def calls(self, name=""):
        """The words of each call of that program, in order; of all programs with their names."""
        lines = self.log.read_text().splitlines() if self.log.exists() else []
        return [line[len(name) + 1:] for line in lines if line.startswith(name + " ")] if name else lines

    def run(self, script, *words, **variables):
        """Ends with exit code, output and error lines."""
        environment = {"PATH": str(self.programs), "HOME": str(self.folder), "LC_ALL": "C.UTF-8", **variables}
        done = subprocess.run([self.tree / script, *words], env=environment, cwd=self.folder, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True)
        return done.returncode, done.stdout.splitlines(), done.stderr.splitlines()
