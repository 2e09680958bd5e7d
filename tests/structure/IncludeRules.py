#!/usr/bin/python3
"""The direction of includes: who may see whom. Prints every include that breaks a rule, and every circle of headers."""

import pathlib
import re
import sys

# A file may include what stands in the folders behind its rule; the first rule that fits its path counts. Files of the
# window see everything below them.
RULES = [
    (r"platform/runtime/", ["platform/runtime"]),
    (r"platform/toolkit/", ["platform/runtime", "platform/toolkit"]),
    (r"(\w+/frmMain|ui/FormDesign|app/main\.cpp)", ["app", "decoders", "nav", "nmea", "platform", "targets", "ui"]),
    (r"nmea/", ["platform/runtime", "nmea"]),
    (r"nav/", ["platform/runtime", "nav"]),
    (r"decoders/", ["platform/runtime", "nmea", "nav", "decoders"]),
    (r"targets/", ["platform/runtime", "nav", "targets"]),
    (r"ui/", ["platform/runtime", "nav", "ui"]),
    (r"app/", ["platform/runtime", "nav", "app"]),
    (r"report/", ["platform/runtime", "nmea", "decoders", "nav", "targets", "app/CaptureLine.h", "app/RecordLine.h",
                  "report"]),
    (r"tools/", ["platform/runtime", "nmea", "nav", "app/RecordLine.h", "tools"]),
]
# Tests see everything; what a build makes and hidden folders are no sources of ours.
OUTSIDE = (".", "build", "tests")
# The window itself is for its own operations alone.
WINDOW = ("app/frmMain.h", r"(\w+/frmMain\w*\.cpp|app/main\.cpp)$")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def includes_of(root):
    """Path of each source, as written in an include, to what it includes."""
    found = {}
    for folder in sorted(root.iterdir()):
        if not folder.is_dir() or folder.name.startswith(OUTSIDE):
            continue
        for path in sorted(folder.rglob("*")):
            if path.suffix in (".h", ".cpp"):
                found[path.relative_to(root).as_posix()] = INCLUDE.findall(path.read_text(encoding="utf-8"))
    return found


def is_below(include, place):
    return include == place or include.startswith(place + "/")


def breaches(found):
    for source, included in found.items():
        rule = next((allowed for pattern, allowed in RULES if re.match(pattern, source)), None)
        if rule is None:
            yield f"{source}: no rule says what it may include"
            continue
        for include in included:
            if include.endswith(".moc"):
                continue
            if not any(is_below(include, place) for place in rule):
                yield f"{source} includes {include}, which it may not see"
            if include == WINDOW[0] and not re.match(WINDOW[1], source):
                yield f"{source} includes the window"


def circle(found):
    """The headers of a circle, in order, or nothing."""
    done = set()

    def walk(header, road):
        if header in road:
            return road[road.index(header):] + [header]
        if header in done:
            return None
        for include in found.get(header, []):
            if ring := walk(include, road + [header]):
                return ring
        done.add(header)
        return None

    return next((ring for header in found if header.endswith(".h") and (ring := walk(header, []))), None)


def main():
    found = includes_of(pathlib.Path(sys.argv[1]))
    faults = list(breaches(found))
    if ring := circle(found):
        faults.append("a circle of headers: " + " -> ".join(ring))
    print("\n".join(faults) or f"{len(found)} sources keep to the rules")
    return 1 if faults or not found else 0


sys.exit(main())
