"""./run, ./run demo, ./test and ./fuzz with stand-ins for everything that they start: each step is made to fail in turn, and
each time the last line says in words what failed."""

import os
import pathlib
import shutil
import unittest

from machine import Machine

STAY = "exec tail -f /dev/null"  # until it is killed
BUILD = """
[[ "$1" == --build ]] || exit 0
mkdir -p build/release/app build/release/tools
cp "$STAND_INS/tidewatch" build/release/app/
cp "$STAND_INS/tidewatch-sim" build/release/tools/"""
PROGRAM = f'echo $$ >> "$STAND_INS/started"\n{STAY} 3< "$(dirname "$0")/receiver"'
SIMULATOR = f'echo $$ >> "$STAND_INS/started"\ntouch "$2" "$4"\n{STAY}'
DISPLAY = f'echo $$ >> "$STAND_INS/started"\necho 99 >&3\n{STAY}'
SOURCES = ("app", "debian", "decoders", "docs", "nav", "nmea", "packaging", "platform", "report", "targets", "tools", "ui")


class Commands(unittest.TestCase):
    def setUp(self):
        self.machine = Machine("run", "test", "fuzz", "scripts/coverage", "scripts/demo", "scripts/two-antennas", "CMakeLists.txt", "CMakePresets.json", "packages.txt")
        self.addCleanup(self.machine.remove)
        self.stand_ins = self.machine.folder / "stand-ins"
        for folder in SOURCES:
            (self.machine.tree / folder).mkdir()
        self.shorten_patience()
        self.packages(f'echo "$*" >> "{self.machine.folder}/asked"')
        self.machine.script(self.stand_ins / "tidewatch", PROGRAM)
        self.machine.script(self.stand_ins / "tidewatch-sim", SIMULATOR)
        for name, body in (("cmake", BUILD), ("ctest", "exit 0"), ("Xvfb", DISPLAY), ("sleep", "exit 0"),
                           ("xdotool", '[[ "$1" != search ]] || echo 77'), ("identify", "echo 1000"),
                           ("import", 'echo picture > "$3"')):
            self.machine.stand_in(name, body)

    def shorten_patience(self):
        """A second's tries are as good as a minute's where nobody really sleeps."""
        demo = self.machine.tree / "scripts/demo"
        text = demo.read_text()
        self.assertIn("\niPatience=60 ", text)
        demo.write_text(text.replace("\niPatience=60 ", "\niPatience=1 "))

    def run_it(self, script, *words, **variables):
        return self.machine.run(script, *words, STAND_INS=str(self.stand_ins), **variables)

    def check_failure(self, outcome, speaker, *words):
        code, _, errors = outcome
        self.assertEqual(code, 1, outcome)
        self.assertTrue(errors and errors[-1].startswith(speaker + ": "), outcome)
        for word in words:
            self.assertIn(word, errors[-1])

    def packages(self, body):
        self.machine.script(self.machine.tree / "scripts/install-packages", body)

    def refuse_packages(self):
        self.packages('echo "install-packages: no" >&2\nexit 1')

    def asked_for(self):
        return (self.machine.folder / "asked").read_text().splitlines()


class Run(Commands):
    def test_builds_and_starts(self):
        self.machine.script(self.stand_ins / "tidewatch", 'echo "the program"')
        self.assertEqual(self.run_it("run", DISPLAY=":1"), (0, ["the program"], []))
        self.assertEqual(self.asked_for(), ["build"])
        self.assertEqual(len(self.machine.calls("cmake")), 2)
        # Nothing has changed: nothing is built.
        self.assertEqual(self.run_it("run", DISPLAY=":1"), (0, ["the program"], []))
        self.assertEqual(len(self.machine.calls("cmake")), 2)

    def test_builds_again_after_a_change(self):
        self.machine.script(self.stand_ins / "tidewatch", "exit 0")
        self.run_it("run", DISPLAY=":1")
        stamp = os.stat(self.machine.tree / "build/release/.built").st_mtime
        os.utime(self.machine.tree / "app", (stamp + 1, stamp + 1))
        self.run_it("run", DISPLAY=":1")
        self.assertEqual(len(self.machine.calls("cmake")), 4)

    def test_failed_build_is_not_taken_for_done(self):
        self.machine.stand_in("cmake", BUILD + "\nexit 1")
        self.check_failure(self.run_it("run", DISPLAY=":1"), "run", "build failed")
        self.check_failure(self.run_it("run", DISPLAY=":1"), "run", "build failed")

    def test_packages_are_refused(self):
        self.refuse_packages()
        self.check_failure(self.run_it("run", DISPLAY=":1"), "install-packages")

    def test_cannot_be_configured(self):
        self.machine.stand_in("cmake", "exit 1")
        self.check_failure(self.run_it("run", DISPLAY=":1"), "run", "could not be configured")

    def test_no_display(self):
        self.check_failure(self.run_it("run"), "run", "no display", "./run demo")

    def test_unknown_word(self):
        usage = (2, [], ["Usage: ./run [demo [two-antennas [FOLDER]]]"])
        for words in (("fast",), ("demo", "fast"), ("two-antennas",), ("demo", "two-antennas", "here", "there"), ("",)):
            self.assertEqual(self.run_it("run", *words), usage, words)


class TwoAntennas(Commands):
    SAMPLES = """while [[ $# -gt 0 && "$1" != --out ]]; do shift; done
echo recording > "$2"
"""

    def two_antennas(self, *words, samples=SAMPLES):
        self.machine.script(self.stand_ins / "tidewatch", "exit 0")
        self.machine.stand_in("cmake", BUILD + '\ncp "$STAND_INS/tidewatch-samples" build/release/tools/')
        self.machine.script(self.stand_ins / "tidewatch-samples", samples)
        return self.run_it("run", "demo", "two-antennas", *words)

    def test_writes_two_files_into_the_folder(self):
        folder = self.machine.folder / "my antennas"
        nearby = pathlib.Path(os.path.relpath(self.machine.folder / "nearby"))  # from where the caller is
        for words, where in (((), self.machine.tree / "build/two-antennas"), ((str(folder),), folder), ((str(nearby),), nearby)):
            code, output, errors = self.two_antennas(*words)
            self.assertEqual((code, errors), (0, []))
            self.assertEqual(sorted(path.name for path in where.iterdir()), ["balcony.txt", "mast.txt"])
            self.assertIn("mast.txt and ", output[0])

    def test_a_file_cannot_be_written(self):
        self.check_failure(self.two_antennas(samples="exit 2"), "two-antennas", "mast.txt", "could not be written")

    def test_the_folder_cannot_be_made(self):
        (self.machine.folder / "file").write_text("")
        self.check_failure(self.two_antennas(str(self.machine.folder / "file/folder")), "two-antennas", "could not be made")


class Test(Commands):
    def test_both_builds(self):
        code, output, errors = self.run_it("test")
        self.assertEqual((code, errors), (0, []))
        self.assertEqual(self.asked_for(), ["build test"])
        self.assertEqual([words.split()[1] for words in self.machine.calls("ctest")], ["release", "asan"])

    def test_packages_are_refused(self):
        self.refuse_packages()
        self.check_failure(self.run_it("test"), "install-packages")

    def test_cannot_be_configured(self):
        self.machine.stand_in("cmake", '[[ "$1 $2" != "--preset asan" ]]')
        self.check_failure(self.run_it("test"), "test", "asan build could not be configured")

    def test_build_fails(self):
        self.machine.stand_in("cmake", '[[ "$1 $3" != "--build release" ]]')
        self.check_failure(self.run_it("test"), "test", "release build failed")
        self.assertEqual(self.machine.calls("ctest"), [])

    def test_tests_fail_in_one_build(self):
        for preset in ("release", "asan"):
            with self.subTest(preset):
                self.machine.stand_in("ctest", f'[[ "$2" != {preset} ]]')
                self.check_failure(self.run_it("test"), "test", "tests failed", "builds: " + preset)
        self.assertEqual(len(self.machine.calls("ctest")), 4)

    def test_quick(self):
        self.assertEqual(self.run_it("test", "--quick")[0], 0)
        self.assertEqual([words.split()[1] for words in self.machine.calls("cmake")], ["release", "--preset"])
        self.assertEqual(self.machine.calls("ctest"), ["--preset release -j2 --no-tests=error --label-exclude endtoend"])

    def test_quick_fails(self):
        self.machine.stand_in("ctest", "exit 8")
        self.check_failure(self.run_it("test", "--quick"), "test", "tests failed")

    def test_static(self):
        self.assertEqual(self.run_it("test", "--static")[0], 0)
        self.assertEqual(self.asked_for(), ["build test develop"])
        self.assertEqual(self.machine.calls("cmake"), ["--preset release"])
        self.assertEqual(self.machine.calls("ctest"),
                         ["--preset release -j2 --no-tests=error -C static --label-regex static"])

    def test_thread_sanitizer(self):
        self.assertEqual(self.run_it("test", "--tsan")[0], 0)
        self.assertEqual(self.machine.calls("cmake"), ["--preset tsan", "--build --preset tsan --target thread_tests"])
        self.assertEqual(self.machine.calls("ctest"), ["--preset tsan -j2 --no-tests=error --label-regex threads"])

    def test_static_and_thread_sanitizer_fail(self):
        for word, what in (("--static", "checks failed"), ("--tsan", "tests failed")):
            self.machine.stand_in("ctest", "exit 8")
            self.machine.stand_in("cmake")
            self.check_failure(self.run_it("test", word), "test", what)
            self.machine.stand_in("cmake", "exit 1")
            self.check_failure(self.run_it("test", word), "test", "could not be configured")
        self.machine.stand_in("cmake", '[[ "$1" != --build ]]')
        self.check_failure(self.run_it("test", "--tsan"), "test", "tsan build failed")

    def coverage(self, gcovr="exit 0"):
        (self.machine.tree / "build/coverage").mkdir(parents=True, exist_ok=True)
        self.machine.stand_in("gcovr", gcovr)
        return self.run_it("test", "--coverage")

    def test_coverage(self):
        earlier = self.machine.tree / "build/coverage/report/earlier.gcda"
        earlier.parent.mkdir(parents=True)
        earlier.write_text("")
        built = earlier.with_suffix(".o")
        built.write_text("")
        code, output, errors = self.coverage()
        self.assertEqual((code, errors), (0, []))
        self.assertEqual(self.asked_for(), ["build test coverage"])
        self.assertEqual(self.machine.calls("ctest"), ["--preset coverage -j2 --no-tests=error --label-exclude endtoend"])
        self.assertFalse(earlier.exists())
        self.assertTrue(built.exists())
        self.assertTrue(output[-1].startswith("Pages: "), output)
        # The tests are judged by gcovr, whose words hold the limits.
        calls = self.machine.calls("gcovr")
        self.assertEqual([words.split("--fail")[1:] for words in calls],
                         [[], [], ["-under-line 95"], ["-under-line 100 ", "-under-branch 100"]])

    def test_coverage_fails(self):
        self.check_failure(self.coverage("[[ $* != *--json* ]]"), "coverage", "could not be read")
        self.check_failure(self.coverage('[[ "$*" != *-under-branch* ]] || exit 4'), "coverage", "promised, see above: lines or branches of the logic")
        self.check_failure(self.coverage('[[ "$*" != *-under-line* ]] || exit 2'), "coverage", "the window's lines below 95 %, lines or branches of the logic")
        self.machine.stand_in("ctest", "exit 8")
        self.check_failure(self.coverage(), "test", "tests failed")

    def test_unknown_words(self):
        for words in (("--fast",), ("--quick", "again"), ("--coverage", "--quick"), ("",), ("quick",)):
            code, output, errors = self.run_it("test", *words)
            self.assertEqual((code, output), (2, []), words)
            self.assertIn("Usage: ./test ", errors[0])
            self.assertEqual(errors[-1], "test: unknown words: " + " ".join(words))
        self.assertEqual(self.machine.calls("cmake"), [])


class Fuzz(Commands):
    """Two targets, whose runs are told as the fuzzer tells them."""

    TARGET = """
        echo "$(basename "$0") $*" >> "$STAND_INS/ran"
        for s in "$@"; do case "$s" in
            -artifact_prefix=*) sFinding="${s#*=}" ;;
            */build/*|build/*) sCorpus="$s" ;;
        esac; done
        touch "$sCorpus/new input"
        echo "stat::number_of_executed_units: 1234" >&2
        """

    def setUp(self):
        super().setUp()
        for tool in ("basename", "sed"):
            (self.machine.programs / tool).unlink(missing_ok=True)
            (self.machine.programs / tool).symlink_to(shutil.which(tool))
        for target in ("FuzzOne", "FuzzTwo"):
            (self.machine.tree / f"tests/fuzz/corpus/{target}").mkdir(parents=True)
            (self.machine.tree / f"tests/fuzz/{target}.cpp").touch()
            self.target(target)
        self.machine.stand_in("clang++")
        self.machine.stand_in("ninja")
        self.machine.stand_in("cmake", """
            [[ "$1" == --build ]] || exit 0
            mkdir -p build/fuzz/tests/fuzz
            cp "$STAND_INS"/Fuzz* build/fuzz/tests/fuzz/""")

    def target(self, name, more=""):
        self.machine.script(self.stand_ins / name, self.TARGET + more)

    def ran(self):
        return (self.stand_ins / "ran").read_text().splitlines()

    def table(self, output):
        return [line.split() for line in output[output.index("") + 1:]]

    def test_table(self):
        code, output, errors = self.run_it("fuzz", "3")
        self.assertEqual((code, errors), (0, []), output)
        self.assertEqual(self.table(output), [["Target", "Runs", "New", "inputs", "Findings"],
                                              ["FuzzOne", "1234", "1", "0"], ["FuzzTwo", "1234", "1", "0"]])
        self.assertEqual([words.split()[0] for words in self.ran()], ["FuzzOne", "FuzzTwo"])

    def test_time_is_shared_out(self):
        self.run_it("fuzz", "3")
        for words in self.ran():
            self.assertIn("-max_total_time=90 ", words)

    def test_corpora_kept_and_new(self):
        self.run_it("fuzz", "1")
        self.assertTrue(self.ran()[0].endswith(" build/fuzz/corpus/FuzzOne tests/fuzz/corpus/FuzzOne"), self.ran())
        # What is there already is not new.
        self.assertEqual(self.table(self.run_it("fuzz", "1")[1])[1], ["FuzzOne", "1234", "0", "0"])

    def test_finding(self):
        self.target("FuzzOne", 'touch "${sFinding}crash-1"; exit 77')
        outcome = self.run_it("fuzz", "1")
        self.check_failure(outcome, "fuzz", "findings: 1", "build/fuzz/findings", "FuzzOne")
        self.assertEqual(self.table(outcome[1])[1:], [["FuzzOne", "1234", "1", "1"], ["FuzzTwo", "1234", "1", "0"]])
        # One that was there before is no new one.
        self.target("FuzzOne")
        self.assertEqual(self.run_it("fuzz", "1")[0], 0)

    def test_target_that_does_not_run(self):
        self.target("FuzzTwo", "exit 1")
        self.check_failure(self.run_it("fuzz", "1"), "fuzz", "did not run", "logs", "FuzzTwo")

    def test_compiler_is_missing(self):
        (self.machine.programs / "clang++").unlink()
        self.check_failure(self.run_it("fuzz", "1"), "fuzz", "clang++", "scripts/install-packages", "develop")
        self.assertEqual(self.machine.calls("cmake"), [])

    def test_configure_fails(self):
        self.machine.stand_in("cmake", '[[ "$1" == --build ]]')
        self.check_failure(self.run_it("fuzz", "1"), "fuzz", "configured")

    def test_build_fails(self):
        self.machine.stand_in("cmake", '[[ "$1" != --build ]]')
        self.check_failure(self.run_it("fuzz", "1"), "fuzz", "build failed")

    def test_without_a_number_of_minutes(self):
        for words in ([], ["0"], ["x"], ["1", "2"], ["-1"]):
            with self.subTest(words):
                self.check_failure(self.run_it("fuzz", *words), "fuzz", "minutes")


class Demo(Commands):
    def demo(self, **variables):
        """Whatever it comes to, nothing that was started goes on and no folder stays."""
        outcome = self.run_it("run", "demo", TMPDIR=str(self.machine.folder), **variables)
        for number in (self.stand_ins / "started").read_text().split():
            self.assertFalse(pathlib.Path("/proc", number).exists(), f"process {number} goes on")
        self.assertEqual(list(self.machine.folder.glob("tidewatch-demo.*")), [])
        return outcome

    def test_without_a_display(self):
        code, output, errors = self.demo()
        self.assertEqual((code, errors), (0, []))
        picture = self.machine.tree / "build/demo.png"
        self.assertEqual(output[-1], f"Screenshot: {picture}")
        self.assertTrue(picture.exists())
        self.assertEqual(self.asked_for(), ["build", "demo"])

    def test_on_a_display(self):
        self.machine.script(self.stand_ins / "tidewatch", "exit 0")
        code, output, errors = self.demo(DISPLAY=":1")
        self.assertEqual((code, errors), (0, []))
        self.assertTrue(output[-1].startswith("Press Start: "), output)
        self.assertEqual(self.machine.calls("Xvfb"), [])

    def test_program_fails_on_a_display(self):
        self.machine.script(self.stand_ins / "tidewatch", "exit 7")
        self.check_failure(self.demo(DISPLAY=":1"), "demo", "program ended", "7")

    def test_earlier_screenshot_is_no_success(self):
        self.demo()
        self.machine.stand_in("import", "exit 0")
        self.machine.stand_in("identify", '[[ -e "$3" ]] && echo 1000')
        self.check_failure(self.demo(), "demo", "screenshot")

    def test_simulator_ends(self):
        self.machine.script(self.stand_ins / "tidewatch-sim", 'echo $$ >> "$STAND_INS/started"\nexit 1')
        self.check_failure(self.demo(), "demo", "simulated receiver")

    def test_program_ends(self):
        self.machine.script(self.stand_ins / "tidewatch", "exit 1")
        self.machine.stand_in("xdotool", "exit 1")
        self.check_failure(self.demo(), "demo", "window", "ended")

    def test_window_never_comes(self):
        self.machine.stand_in("xdotool", '[[ "$1" != search ]]')
        self.check_failure(self.demo(), "demo", "window", "after 1 s")

    def test_port_is_not_opened(self):
        self.machine.script(self.stand_ins / "tidewatch", f'echo $$ >> "$STAND_INS/started"\n{STAY}')
        self.check_failure(self.demo(), "demo", "port", "after 1 s")

    def test_start_cannot_be_pressed(self):
        self.machine.stand_in("xdotool", '[[ "$1" == search ]] && echo 77')
        self.check_failure(self.demo(), "demo", "Start")

    def test_tab_cannot_be_turned(self):
        self.machine.stand_in("xdotool", '[[ "$1" != search ]] || echo 77\n[[ "$*" != *--repeat* ]]')
        self.check_failure(self.demo(), "demo", "tab")

    def test_program_ends_while_it_runs(self):
        self.machine.stand_in("sleep", """
            [[ "$1" == 15 ]] || exit 0
            iProgram="$(tail -n 1 "$STAND_INS/started")"
            kill "$iProgram"
            while grep -q '^State:.[^Z]' "/proc/$iProgram/status" 2>/dev/null; do :; done""")
        self.check_failure(self.demo(), "demo", "program ended")

    def test_display_does_not_start(self):
        self.machine.stand_in("Xvfb", "exit 1")
        self.check_failure(self.demo(), "demo", "virtual display", "ended")

    def test_packages_of_the_demo_are_refused(self):
        self.packages('[[ "$1" != demo ]] || { echo "install-packages: no" >&2; exit 1; }')
        self.check_failure(self.demo(), "install-packages")

    def test_no_screenshot(self):
        self.machine.stand_in("import", "exit 1")
        self.check_failure(self.demo(), "demo", "no screenshot")

    def test_screenshot_cannot_be_read(self):
        self.machine.stand_in("identify", "exit 1")
        self.check_failure(self.demo(), "demo", "cannot be read")

    def test_blank_screenshot(self):
        self.machine.stand_in("identify", "echo 2")
        self.check_failure(self.demo(), "demo", "blank")


if __name__ == "__main__":
    unittest.main()
