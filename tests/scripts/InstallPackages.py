"""scripts/install-packages on machines that know none, some or all of the packages, with and without the right and the
means to install them: what would be installed, the exit code, and one line that says why it failed."""

import unittest

from machine import Machine

PACKAGES = """# Words about the list.

# build:
cmake
g++

# test:
xvfb
cmake

# demo:
xdotool
"""
INSTALL = "install -q -y --no-install-recommends "


class InstallPackages(unittest.TestCase):
    def setUp(self):
        self.machine = Machine("scripts/install-packages")
        self.addCleanup(self.machine.remove)
        (self.machine.tree / "packages.txt").write_text(PACKAGES)
        self.known()
        self.machine.stand_in("id", "echo 0")
        self.machine.stand_in("apt-get")

    def known(self, *lines):
        """What dpkg tells: a status and a package a line. It answers with 1 when it was asked about any other."""
        told = "".join(f"echo '{line}'\n" for line in lines)
        names = " ".join(line.split()[1] for line in lines)
        self.machine.stand_in("dpkg-query", f"""{told}
            for s in "$@"; do case " {names} " in *" $s "*) ;; *) [[ $s == -* ]] || exit 1 ;; esac; done""")

    def ordinary_user(self):
        self.machine.stand_in("id", "echo 1000")

    def install(self, *sections):
        return self.machine.run("scripts/install-packages", *sections)

    def check_failure(self, outcome, *words):
        """Exit code 1, and one line with these words in it."""
        code, _, errors = outcome
        self.assertEqual((code, len(errors)), (1, 1), outcome)
        self.assertTrue(errors[0].startswith("install-packages: "), errors)
        for word in words:
            self.assertIn(word, errors[0])

    def test_nothing_known(self):
        code, output, errors = self.install("build")
        self.assertEqual((code, errors), (0, []))
        self.assertEqual(output, ["Installing: cmake g++"])
        self.assertEqual(self.machine.calls("apt-get"), ["update -q", INSTALL + "cmake g++"])

    def test_some_known(self):
        self.known("installed cmake")
        self.assertEqual(self.install("build")[0], 0)
        self.assertEqual(self.machine.calls("apt-get")[1:], [INSTALL + "g++"])

    def test_removed_but_still_known(self):
        self.known("installed cmake", "config-files g++")
        self.assertEqual(self.install("build")[0], 0)
        self.assertEqual(self.machine.calls("apt-get")[1:], [INSTALL + "g++"])

    def test_name_that_begins_like_another(self):
        self.known("installed cmake", "installed g++-12")
        self.assertEqual(self.install("build")[0], 0)
        self.assertEqual(self.machine.calls("apt-get")[1:], [INSTALL + "g++"])

    def test_all_installed(self):
        self.known("installed cmake", "installed g++")
        self.assertEqual(self.install("build"), (0, [], []))
        self.assertEqual(self.machine.calls("apt-get"), [])

    def test_all_installed_and_an_ordinary_user(self):
        self.ordinary_user()
        self.known("installed cmake", "installed g++")
        self.assertEqual(self.install("build"), (0, [], []))

    def test_several_sections_name_a_package_once(self):
        self.assertEqual(self.install("build", "test")[0], 0)
        self.assertEqual(self.machine.calls("apt-get")[1:], [INSTALL + "cmake g++ xvfb"])

    def test_no_section_named_means_all(self):
        self.assertEqual(self.install()[0], 0)
        self.assertEqual(self.machine.calls("apt-get")[1:], [INSTALL + "cmake g++ xdotool xvfb"])

    def test_no_section_of_that_name(self):
        for sections in (["nosuch"], ["build", "nosuch"], ["buil"], ["build test"], [""]):
            with self.subTest(sections):
                self.check_failure(self.install(*sections), f'no section "{sections[-1]}"')
        self.assertEqual(self.machine.calls("apt-get"), [])

    def test_no_list(self):
        (self.machine.tree / "packages.txt").unlink()
        self.check_failure(self.install("build"), "packages.txt")

    def test_update_fails(self):
        self.machine.stand_in("apt-get", '[[ "$1" != update ]] || exit 100')
        self.check_failure(self.install("build"), "update failed")
        self.assertEqual(self.machine.calls("apt-get"), ["update -q"])

    def test_installation_fails(self):
        self.machine.stand_in("apt-get", '[[ "$1" != install ]] || exit 100')
        self.check_failure(self.install("build"), "could not install: cmake g++")

    def test_machine_without_apt(self):
        (self.machine.programs / "apt-get").unlink()
        self.check_failure(self.install("build"), "no apt-get", "cmake g++")

    def test_ordinary_user_with_sudo(self):
        self.ordinary_user()
        # As strict as sudo: no variable is handed on but the path.
        self.machine.stand_in("sudo", 'exec env -i PATH="$PATH" "$@"')
        self.machine.stand_in("apt-get", '[[ "$DEBIAN_FRONTEND" == noninteractive ]]')
        self.assertEqual(self.install("build")[0], 0)
        self.assertEqual(self.machine.calls("apt-get"), ["update -q", INSTALL + "cmake g++"])
        self.assertEqual(len(self.machine.calls("sudo")), 2)

    def test_ordinary_user_without_sudo(self):
        self.ordinary_user()
        self.check_failure(self.install("build"), "only root", "cmake g++")
        self.assertEqual(self.machine.calls("apt-get"), [])

    def test_sudo_refuses(self):
        self.ordinary_user()
        self.machine.stand_in("sudo", "exit 1")
        self.check_failure(self.install("build"), "update failed")
        self.assertEqual(self.machine.calls("apt-get"), [])

    def test_root_needs_no_sudo(self):
        self.machine.stand_in("sudo")
        self.assertEqual(self.install("build")[0], 0)
        self.assertEqual(self.machine.calls("sudo"), [])


class ProjectsOwnList(unittest.TestCase):
    """packages.txt as it is, with the sections that the commands ask for."""

    def test_sections_of_the_commands(self):
        for sections, package in ((["build"], "qt6-base-dev"), (["build", "test"], "xvfb"), (["demo"], "xdotool"),
                                  (["coverage"], "gcovr")):
            with self.subTest(sections):
                machine = Machine("scripts/install-packages", "packages.txt")
                self.addCleanup(machine.remove)
                machine.stand_in("dpkg-query", "exit 1")
                machine.stand_in("id", "echo 0")
                machine.stand_in("apt-get")
                self.assertEqual(machine.run("scripts/install-packages", *sections)[0], 0)
                self.assertIn(package, machine.calls("apt-get")[1].split())


if __name__ == "__main__":
    unittest.main()
