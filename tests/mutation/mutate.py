#!/usr/bin/python3
"""Small faults in the program's sources, one at a time, in a copy of the tree: does a test notice?

    tests/mutation/mutate.py --seed 1 --count 100 [--folder report]    # again: goes on where it was broken off
    tests/mutation/mutate.py --seed 1 --survivors                      # the present tests against what survived

Libraries are shared here, so that a fault costs one compilation and one link. Which tests run code of a file is told by
the system's loader (LD_DEBUG), once. They run by likeness of their names to the file's, then by what they found before,
until one fails or gets no further. The results are lines of JSON below the folder that --work names.
"""

import argparse
import collections
import concurrent.futures
import contextlib
import itertools
import json
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import threading
import time

import operators

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ["platform/runtime", "platform/toolkit", "nmea", "decoders", "nav", "targets", "ui", "app", "report", "tools"]
CONFIGURE = ["cmake", "--preset", "dev", "-DBUILD_SHARED_LIBS=ON", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -D_GLIBCXX_ASSERTIONS", "-DTIDEWATCH_WERROR=OFF"]
DEAR = 30  # seconds: such tests, and those on a display, run only where nothing else covers the place
OBJECT = re.compile(r"(.*/)?CMakeFiles/([^/]+)\.dir/(.*)\.o")


def folder_of(file):
    return next(folder for folder in FOLDERS if file.startswith(folder + "/"))


def subject_of(name):
    return re.sub(r"frmMain_|FormDesign_|Window|Test|Report|\W|_", "", name).lower()


class Copy:
    """The tree that faults are placed in, and its build."""

    def __init__(self, work):
        self.tree, self.build = work / "tree", work / "build"

    def refresh(self):
        """The sources as they are now; what is unchanged keeps its time."""
        listed = subprocess.check_output(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, text=True)
        files = {name for name in listed.splitlines() if (ROOT / name).is_file()}
        for path in [path for path in self.tree.rglob("*") if path.is_file()]:
            if path.relative_to(self.tree).as_posix() not in files:
                path.unlink()
        for name in files:
            source, target = ROOT / name, self.tree / name
            target.parent.mkdir(parents=True, exist_ok=True)
            if not target.exists() or target.read_bytes() != source.read_bytes():
                shutil.copy(source, target)

    def configure(self):
        subprocess.run([*CONFIGURE, "-B", self.build], cwd=self.tree, check=True, stdout=subprocess.DEVNULL)

    def made(self, targets=()):
        command = ["ninja", "-C", self.build, "-j2", *targets]
        return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def objects(self):
        """(source, target, object) of all that is compiled."""
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            name = re.search(r" -o (\S+)", entry["command"])[1]
            if match := OBJECT.fullmatch(name):
                yield (match[1] or "") + match[3], match[2], self.build / name

    def prepare_aside(self):
        """What is needed to build one library anew beside the build: its sources' compilers, its linker."""
        entries = json.loads((self.build / "compile_commands.json").read_text())
        self.compilers = {one["file"].removeprefix(f"{self.tree}/"): one["command"] for one in entries}
        self.libraries = {}
        for source, target, path in self.objects():
            if library := next(self.build.rglob(f"lib{target}.so"), None):
                self.libraries[source] = (path.relative_to(self.build), library.relative_to(self.build))
        self.linkers = {library: subprocess.check_output(["ninja", "-C", self.build, "-t", "commands", library],
                                                         text=True).splitlines()[-1]
                        for library in {library for path, library in self.libraries.values()}}

    def made_aside(self, fault, folder):
        """The fault's library in that folder, from which the loader takes it in front of the build's."""
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        path, library = self.libraries[fault["file"]]
        source, made = folder / path.name.removesuffix(".o"), folder / path.name
        source.write_text(with_fault((self.tree / fault["file"]).read_text(), fault))
        compiler = self.compilers[fault["file"]].replace(f" -o {path} ", f" -o {made} ")
        compiler = compiler.replace(f" -c {self.tree / fault['file']}", f" -c {source}")
        linker = self.linkers[library].replace(f" {path} ", f" {made} ")
        linker = linker.replace(f" -o {library} ", f" -o {folder / library.name} ")
        return all(subprocess.run(command, shell=True, cwd=self.build, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL).returncode == 0 for command in (compiler, linker))

    def included(self):
        """Each header of ours to the objects that were made with it."""
        found = collections.defaultdict(set)
        for line in subprocess.check_output(["ninja", "-C", self.build, "-t", "deps"], text=True).splitlines():
            if line.startswith("    "):
                path = line.strip().removeprefix(f"{self.tree}/")
                if not path.startswith("/"):
                    found[path].add(name)
            elif line:
                name = line.split(": #deps")[0]
        return found

    @contextlib.contextmanager
    def faulty(self, fault):
        """The fault is in its file; afterwards the file is as before."""
        path = self.tree / fault["file"]
        text = path.read_text()
        path.write_text(with_fault(text, fault))
        try:
            yield
        finally:
            path.write_text(text)


class Test:
    def __init__(self, entry, build):
        properties = {one["name"]: one["value"] for one in entry["properties"]}
        self.name, self.command = entry["name"], entry["command"]
        self.folder = pathlib.Path(properties["WORKING_DIRECTORY"])
        self.environment = dict(one.split("=", 1) for one in properties.get("ENVIRONMENT", []))
        self.skipped = properties.get("SKIP_RETURN_CODE", 0)
        self.programs = [one.removeprefix(f"{build}/") for one in self.command if one.startswith(f"{build}/")]
        self.on_terminals = "RESOURCE_LOCK" in properties
        self.on_display = "dbus-run-session" in self.command[0]

    def is_green(self, seconds, **environment):
        """Within that time of the processor, and ten times as long by the clock, because the machine may be busy."""
        def limit():
            resource.setrlimit(resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 2))
            resource.setrlimit(resource.RLIMIT_AS, (1 << 33, 1 << 33))
        process = subprocess.Popen(self.command, cwd=self.folder, start_new_session=True, preexec_fn=limit,
                                   env={**os.environ, **self.environment, **environment}, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            return process.wait(10 * seconds) in (0, self.skipped)
        except subprocess.TimeoutExpired:
            return False
        finally:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)
            process.wait()


class Coverage:
    """Which test enters which files, how long it takes and whether it passes without a fault."""

    def __init__(self, work, copy):
        self.copy, self.file, self.traces = copy, work / "coverage.json", work / "traces"
        self.entries = json.loads(self.file.read_text()) if self.file.exists() else {}
        listed = subprocess.check_output(["ctest", "--show-only=json-v1"], cwd=copy.build)
        self.tests = [Test(one, str(copy.build)) for one in json.loads(listed)["tests"] if "command" in one]

    def measure(self, fresh):
        """The tests that are new and, in a fresh build, those that were built anew."""
        self.files = self.files_of_symbols()
        for test in self.tests:
            if test.on_display or not test.programs:
                continue
            stamp = max((self.copy.build / one).stat().st_mtime for one in test.programs)
            known = self.entries.get(test.name)
            if known is None or (fresh and known["stamp"] != stamp):
                self.entries[test.name] = {"stamp": stamp, **self.measured(test)}
                self.file.write_text(json.dumps(self.entries, indent=1))

    def files_of_symbols(self):
        found = {}
        for source, target, path in self.copy.objects():
            if source.startswith(tuple(FOLDERS)) and path.exists():
                for line in subprocess.check_output(["nm", "--defined-only", path], text=True).splitlines():
                    kind, symbol = line.split()[-2:]
                    if kind == "T":
                        found[symbol] = source
        return found

    def measured(self, test):
        shutil.rmtree(self.traces, ignore_errors=True)
        self.traces.mkdir()
        used = resource.getrusage(resource.RUSAGE_CHILDREN)
        green = test.is_green(300, LD_DEBUG="bindings,libs", LD_DEBUG_OUTPUT=str(self.traces / "trace"))
        now = resource.getrusage(resource.RUSAGE_CHILDREN)
        files = set()
        for trace in self.traces.iterdir():
            files |= self.entered(trace)
        print(f"{test.name}: {'green' if green else 'RED'}, {len(files)} files", flush=True)
        seconds = now.ru_utime + now.ru_stime - used.ru_utime - used.ru_stime
        return {"seconds": seconds, "green": green, "files": sorted(files)}

    def entered(self, trace):
        """A function is bound when it is first called; those bound before main are only mentioned."""
        found, begun = set(), False
        with trace.open(errors="replace") as lines:
            for line in lines:
                begun = begun or "transferring control" in line
                if begun and "libtidewatch_" in line and (match := re.search(r"symbol `([^']+)'", line)):
                    found.add(self.files.get(match[1]))
        return found - {None}

    def covering(self, file):
        """The tests that enter the file, or a file that includes it; where none is known, those of the same library."""
        sources = {file}
        names = set()
        if file.endswith(".h"):
            for name in self.copy.included()[file]:
                if match := OBJECT.fullmatch(name):
                    sources.add((match[1] or "") + match[3])
                    names.add(match[2])
        usable = [test for test in self.tests if self.entries.get(test.name, {}).get("green")]
        found = [test for test in usable if test.name in names or sources & set(self.entries[test.name]["files"])]
        folder = folder_of(file) + "/"
        found = found or [test for test in usable if any(one.startswith(folder) for one in test.programs)] \
            or [test for test in usable if any(one.startswith(folder) for one in self.entries[test.name]["files"])]
        cheap = [test for test in found if self.entries[test.name]["seconds"] < DEAR]
        return cheap or found or [test for test in self.tests if test.on_display]

    def limit(self, test):
        return 3 + 4 * self.entries.get(test.name, {"seconds": DEAR})["seconds"]


def with_fault(text, fault):
    """The text with the fault at its place, or at the like one nearest to where that was."""
    at = sum(len(line) for line in text.splitlines(keepends=True)[:fault["line"] - 1])
    places = [match.start() for match in re.finditer(re.escape(fault["before"]), text)]
    place = min(places, key=lambda one: abs(one - at), default=None)
    if place is None:
        raise LookupError(f"{fault['file']}:{fault['line']} is there no more: {fault['before']}")
    return text[:place] + fault["after"] + text[place + len(fault["before"]):]


def faults(tree, folders, seed):
    """Without end: every line is drawn equally often, and on it every fault."""
    texts = {path.relative_to(tree).as_posix(): path.read_text() for folder in folders
             for path in sorted((tree / folder).rglob("*")) if path.suffix in (".h", ".cpp")}
    places = [(file, line) for file, text in texts.items() for line in range(text.count("\n"))]
    changes = {file: operators.changes(text) for file, text in texts.items()}
    generator, seen = random.Random(seed), set()
    while True:
        file, line = generator.choice(places)
        text = texts[file]
        change = generator.choice(changes[file].get(line, [None]))
        if change is None or (file, change) in seen:
            continue
        seen.add((file, change))
        begin = text.rfind("\n", 0, change.start) + 1
        end = text.find("\n", change.end)
        after = text[begin:change.start] + change.new + text[change.end:end]
        yield {"file": file, "line": line + 1, "operator": change.operator, "before": text[begin:end], "after": after}


class Run:
    def __init__(self, work, seed, patience):
        self.work, self.copy, self.patience = work, Copy(work), patience
        self.results_file = work / f"results-{seed}.jsonl"
        lines = self.results_file.read_text().splitlines() if self.results_file.exists() else []
        self.results = {one["number"]: one for one in map(json.loads, lines)}
        self.found = collections.Counter()
        self.terminals, self.one_writes = threading.Lock(), threading.Lock()
        for result in self.results.values():
            self.count(result)

    def prepare(self, fresh):
        if fresh:
            self.copy.refresh()
            self.copy.configure()
            if not self.copy.made():
                raise SystemExit("the sources do not build without a fault")
        self.coverage = Coverage(self.work, self.copy)
        self.coverage.measure(fresh)
        self.copy.prepare_aside()

    def order(self, file):
        """Most promising first."""
        subject, folder = subject_of(pathlib.Path(file).stem), folder_of(file)

        def rank(test):
            name = subject_of(test.name)
            like = 2 * (name == subject) + (name.startswith(subject) or subject.startswith(name))
            like += any(one.startswith(f"tests/{folder}/") for one in test.programs)
            seconds = self.coverage.entries.get(test.name, {"seconds": DEAR})["seconds"]
            return -like, -self.found[file, test.name], -self.found[folder, test.name] / (1 + seconds), seconds
        return sorted(self.coverage.covering(file), key=rank)

    def judge(self, fault):
        if fault["file"] in self.copy.libraries:
            return self.judge_aside(fault)
        tests = self.order(fault["file"])
        with self.copy.faulty(fault):
            for test in tests:  # built one by one: a header's fault may concern all of them
                if not self.copy.made(test.programs):
                    return {"result": "not compiling"}
                if self.is_red(test):
                    return {"result": "killed", "by": test.name}
        return {"result": "survived", "of": len(tests)}

    def judge_aside(self, fault):
        folder = self.work / f"aside-{threading.get_ident()}"
        if not self.copy.made_aside(fault, folder):
            return {"result": "not compiling"}
        tests = self.affordable(self.order(fault["file"]))
        red = next((test for test in tests if self.is_red(test, LD_LIBRARY_PATH=str(folder))), None)
        return {"result": "killed", "by": red.name} if red else {"result": "survived", "of": len(tests)}

    def affordable(self, tests):
        """Of the tests, in their order, what the patience is enough for."""
        chosen, left = [], self.patience
        for test in tests:
            seconds = self.coverage.entries.get(test.name, {"seconds": DEAR})["seconds"]
            if seconds <= left:
                chosen.append(test)
                left -= seconds
        return chosen

    def is_red(self, test, **environment):
        """Of those on terminals one at a time, as in ctest, and twice: a busy machine may turn them red by chance."""
        limit = self.coverage.limit(test)
        if not test.on_terminals:
            return not test.is_green(limit, **environment)
        with self.terminals:
            return not any(test.is_green(limit, **environment) for _ in range(2))

    def count(self, result):
        if result["result"] == "killed":
            self.found[result["file"], result["by"]] += 1
            self.found[folder_of(result["file"]), result["by"]] += 1

    def keep(self, number, fault):
        begun = time.monotonic()
        verdict = self.judge(fault)
        result = {"number": number, **fault, **verdict, "seconds": round(time.monotonic() - begun)}
        with self.one_writes:
            self.results[number] = result
            self.count(result)
            with self.results_file.open("a") as file:
                file.write(json.dumps(result) + "\n")
            print(f"{number}: {fault['file']}:{fault['line']}, {fault['operator']}: {result['result']} "
                  f"{result.get('by', '')} ({result['seconds']} s)", flush=True)

    def judge_all(self, numbered):
        """Two at a time; what concerns more than one library goes into the tree itself, alone and at the end."""
        pool = concurrent.futures.ThreadPoolExecutor(2)
        try:
            aside = [one for one in numbered if one[1]["file"] in self.copy.libraries]
            for judged in [pool.submit(self.keep, *one) for one in aside]:
                judged.result()
        finally:
            pool.shutdown(cancel_futures=True)
        for number, fault in numbered:
            if fault["file"] not in self.copy.libraries:
                self.keep(number, fault)

    def go_on(self, folders, seed, count):
        drawn = enumerate(faults(self.copy.tree, folders, seed))
        taken = list(itertools.islice(drawn, count))
        while taken:
            self.judge_all([one for one in taken if one[0] not in self.results])
            valid = sum(one["result"] != "not compiling" for one in self.results.values())
            taken = list(itertools.islice(drawn, max(0, count - valid)))

    def judge_survivors(self):
        fields = ("file", "line", "operator", "before", "after")
        self.judge_all([(number, {field: one[field] for field in fields}) for number, one in self.results.items()
                        if one["result"] == "survived"])

    def print_summary(self):
        print(f"{'folder':18}{'killed':>8}{'survived':>10}{'not compiling':>15}")
        for folder in [*FOLDERS, ""]:
            kinds = collections.Counter(one["result"] for one in self.results.values()
                                        if one["file"].startswith(folder))
            print(f"{folder or 'all':18}{kinds['killed']:8}{kinds['survived']:10}{kinds['not compiling']:15}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, required=True)
    parser.add_argument("--count", type=int, default=100, help="faults that compile")
    parser.add_argument("--folder", action="append", choices=FOLDERS, help="this one only; may be repeated")
    parser.add_argument("--survivors", action="store_true", help="judge those anew, by the sources and tests of now")
    parser.add_argument("--patience", type=float, default=float("inf"),
                        help="seconds of tests for a fault; what survives so few is judged by all with --survivors")
    parser.add_argument("--work", type=pathlib.Path, default=ROOT / "build/mutation", help="copy, build and results")
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # as at Ctrl-C, the sources are put back first
    work = arguments.work.resolve()
    (work / "tree").mkdir(parents=True, exist_ok=True)
    run = Run(work, arguments.seed, arguments.patience)
    run.prepare(fresh=arguments.survivors or not run.results)
    if arguments.survivors:
        run.judge_survivors()
    else:
        run.go_on(arguments.folder or FOLDERS, arguments.seed, arguments.count)
    run.print_summary()


if __name__ == "__main__":
    main()
