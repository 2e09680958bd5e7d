#!/usr/bin/python3
"""clang-tidy over every program source; prints what it finds and ends with 1 where there is anything.

    ClangTidy.py ROOT BUILD [FILE...]

BUILD is any configured build: definitions and include folders are taken from there. Nearly all the time goes into Qt's
and the library's headers, so sources of a folder are read as one, and only those that do not go together (two helpers of
one name) apart.
"""

import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

OUTSIDE = ("build", "tests")
TOGETHER = 12  # sources that are read as one at the most
CHECKED = ["-std=c++20", "-Wall", "-Wextra", "-Wconversion", "-Wshadow", "-Wold-style-cast"]


def flags_of(command):
    """What of a compiler's command line says how the source reads."""
    words = iter(shlex.split(command))
    for word in words:
        if word == "-isystem":
            yield from (word, next(words))
        elif word[:2] in ("-D", "-I"):
            yield word


def sources(root, build):
    """Each program source with its flags, in the order of the build."""
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        path = pathlib.Path(entry["file"])
        inside = path.is_relative_to(root) and not path.is_relative_to(build)
        if inside and not path.relative_to(root).parts[0].startswith(OUTSIDE):
            yield path, tuple(flags_of(entry["command"]))


def batches(found):
    """Lists of sources that are built alike."""
    groups = {}
    for path, flags in found:
        groups.setdefault((path.parent, flags), []).append(path)
    for (_, flags), paths in groups.items():
        for i in range(0, len(paths), TOGETHER):
            yield paths[i:i + TOGETHER], flags


def run(paths, flags, *options):
    with tempfile.NamedTemporaryFile("w", suffix=".cpp") as joined:
        joined.writelines(f'#include "{path}"  // NOLINT\n' for path in paths)
        joined.flush()
        source = joined.name if len(paths) > 1 else str(paths[0])
        done = subprocess.run(["clang-tidy", "--quiet", *options, source, "--", *flags, *CHECKED],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    return done.stdout + (done.stderr if done.returncode and not done.stdout else "")


def check(root, paths, flags):
    """What is found in these; halves them until they can be read as one."""
    config = f"--config-file={root}/.clang-tidy"
    if len(paths) > 1 and "error:" in run(paths, flags, "--checks=-*,readability-delete-null-pointer", "--config={}"):
        middle = len(paths) // 2
        return check(root, paths[:middle], flags) + check(root, paths[middle:], flags)
    return run(paths, flags, config, "--warnings-as-errors=*")


def main():
    root, build = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    only = [pathlib.Path(word).resolve() for word in sys.argv[3:]]
    found = [(path, flags) for path, flags in sources(root, build) if not only or path in only]
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        told = list(pool.map(lambda batch: check(root, *batch), batches(found)))
    print("".join(dict.fromkeys(told)) or f"{len(found)} sources, nothing found")
    return 1 if any(told) or not found else 0


sys.exit(main())
