"""The programs as built: loaded anywhere, their tables not written to once they run, the stack and the library's copying
functions guarded."""

import subprocess
import sys


def readelf(option, program):
    return subprocess.run(["readelf", "-W", option, program], stdout=subprocess.PIPE, check=True, text=True).stdout


def lacks(program):
    dynamic = readelf("--dynamic", program)
    symbols = readelf("--dyn-syms", program)
    if "DYN (Position-Independent Executable file)" not in readelf("--file-header", program):
        yield "is not loaded anywhere (PIE)"
    if "GNU_RELRO" not in readelf("--program-headers", program):
        yield "can write to its tables (relro)"
    if "BIND_NOW" not in dynamic and " NOW" not in dynamic:
        yield "looks names up as it runs (now)"
    if "__stack_chk_fail" not in symbols:
        yield "does not guard its stack"


def fortified(program):
    """Whether a copying function is called by its guarded name; a program may have none that needs it."""
    return "_chk@" in readelf("--dyn-syms", program).replace("__stack_chk_fail@", "")


def main():
    faults = [f"{program} {fault}" for program in sys.argv[1:] for fault in lacks(program)]
    if not any(map(fortified, sys.argv[1:])):
        faults.append("no program calls a copying function by its guarded name (fortify)")
    print("\n".join(faults) or f"{len(sys.argv) - 1} programs are hardened")
    return 1 if faults or len(sys.argv) < 2 else 0


sys.exit(main())
