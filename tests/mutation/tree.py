"""A copy of the sources with a separate build, in which changes are made and tested."""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import time

# Flags for a short build time. Warnings are off, since tests should detect the changes.
FLAGS = "-O1 -DNDEBUG -w"
MEMORY = 6 << 30
# This test needs a separate process: only the first module that is looked up is used for the string table.
ALL_TESTS = "-MessageTable.*"
TEST_NAME = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+),", re.MULTILINE)


def is_for_windows(file):
    return file.endswith("_windows.cpp") or file.startswith(
        ("src/integration/", "src/host/automation/", "src/host/xlcall32/")
    )


def run_in_group(command, seconds, **options):
    """Runs a command with all its children. Returns the exit status, or None at a timeout."""
    with subprocess.Popen(command, start_new_session=True, stdin=subprocess.DEVNULL, **options) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return None
        except BaseException:
            os.killpg(process.pid, signal.SIGKILL)
            raise


class Tree:
    def __init__(self, checkout, folder, windows, test_folders="", checked=False, cmake_options=(), unit_tests=False):
        self.checkout = checkout
        self.folder = folder
        self.windows = windows
        self.test_folders = test_folders  # all if empty
        self.flags = FLAGS + (" -D_GLIBCXX_ASSERTIONS" if checked else "")
        self.cmake_options = cmake_options
        self.runs_other_tests = not (windows or test_folders or unit_tests)  # those of ctest besides the programs
        self.build = folder / "build" / ("win64" if windows else "native")
        self.temporary = folder.with_name(folder.name + "-tmp")
        self.log = folder.with_name(folder.name + ".log")
        self.seconds = {}  # of each test suite of each program
        self.programs = ["metrify-integration-tests", "metrify-tests"] if windows else ["metrify-tests"]

    def copy_sources(self):
        """Updates the copy; files that have not changed keep their modification time."""
        listed = subprocess.run(
            ["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=self.checkout, capture_output=True, check=True
        ).stdout.decode()
        present = [file for file in listed.split("\0") if file and (self.checkout / file).is_file()]
        for file in present:
            source, copy = self.checkout / file, self.folder / file
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(source, copy)
                shutil.copymode(source, copy)
        for copy in [*self.folder.glob("src/**/*"), *self.folder.glob("tests/**/*")]:
            if copy.is_file() and str(copy.relative_to(self.folder)) not in set(present):
                copy.unlink()
        shutil.rmtree(self.temporary, ignore_errors=True)
        self.temporary.mkdir(parents=True)

    def environment(self, **more):
        values = {**os.environ, "TMPDIR": str(self.temporary), **more}
        if self.windows:
            values |= {"WINEDEBUG": "-all", "WINEPREFIX": str(self.folder.with_name(self.folder.name + "-wine"))}
        return values

    def configure(self):
        preset = "win64" if self.windows else "release"
        command = ["cmake", "--preset", preset, "-B", str(self.build), "-DMETRIFY_BENCH=OFF",
                   f"-DCMAKE_CXX_FLAGS_RELEASE={self.flags}", f"-DMETRIFY_TEST_FOLDERS={self.test_folders}"]
        if shutil.which("ccache"):
            command += ["-DCMAKE_C_COMPILER_LAUNCHER=ccache", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"]
        if shutil.which("ld.lld") and not self.windows:
            command += ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DCMAKE_MODULE_LINKER_FLAGS=-fuse-ld=lld"]
        return self.logged([*command, *self.cmake_options], None) == 0

    def compile(self, jobs, seconds=None, **environment):
        return self.make(self.programs, jobs, seconds, **environment)

    def make(self, targets, jobs, seconds, **environment):
        return self.logged(["ninja", "-C", str(self.build), f"-j{jobs}", *targets], seconds, **environment) == 0

    def logged(self, command, seconds, **environment):
        with open(self.log, "wb") as log:
            return run_in_group(command, seconds, cwd=self.folder, stdout=log, stderr=log,
                                env=self.environment(**environment))

    def test(self, program, tests, seconds, *options):
        """True if the tests of a program pass, None at a timeout."""
        command = [f"{self.build}/{program}", "--gtest_brief=1", f"--gtest_filter={tests}", *options]
        if self.windows:
            command[0] += ".exe"
            command = ["xvfb-run", "-a", "wine", *command]
        else:
            command = ["prlimit", f"--as={MEMORY}", *command]
        status = self.logged(command, seconds)
        return None if status is None else status == 0

    def prepare_wine(self):
        """Without this setting, Wine waits two seconds for each window that is closed. False if it fails."""
        command = ["xvfb-run", "-a", "ctest", "--test-dir", str(self.build), "-R", "^unmanaged-windows"]
        return not self.windows or self.logged(command, None) == 0

    def measure(self):
        """Runs every test of the unchanged sources and keeps their seconds. False if one fails."""
        for program in self.programs:
            report = self.temporary / f"{program}.json"
            # For a Windows program, an absolute path needs a drive.
            drive = "Z:" if self.windows else ""
            if not self.test(program, ALL_TESTS, None, f"--gtest_output=json:{drive}{report}"):
                return False
            suites = json.loads(report.read_text())["testsuites"]
            self.seconds[program] = {suite["name"]: float(suite["time"].rstrip("s")) for suite in suites}
        if not self.runs_other_tests:
            return True
        if not self.make(["all"], 2, None):
            return False
        started = time.monotonic()
        passed = self.other_tests(None)
        self.seconds["ctest"] = {"": time.monotonic() - started}
        return passed is True

    def other_tests(self, seconds):
        command = ["ctest", "--test-dir", str(self.build), "-E", "^metrify-tests$", "--stop-on-failure"]
        status = self.logged(command, seconds)
        return None if status is None else status == 0

    def limit(self, program, suites=None):
        """The time limit of tests in seconds."""
        known = self.seconds[program]
        usual = sum(seconds for name, seconds in known.items() if suites is None or suites & set(name.split("/")))
        return 5 * usual + 15

    def near_suites(self, file):
        """The test suites that probably detect a change of a source: those of the tests that include its header or
        have its name, and those of its whole folder."""
        stem = re.sub(r"(_posix|_windows)?\.(cpp|h)$", "", file.removeprefix("src/"))
        near, folder = set(), set()
        for test in sorted((self.folder / "tests").glob("**/*_test.cpp")):
            text = test.read_text()
            suites = set(TEST_NAME.findall(text))
            where = str(test.relative_to(self.folder / "tests"))
            if f'#include "{stem}.h"' in text or where.startswith(stem):
                near |= suites
            if where.split("/")[0] == stem.split("/")[0]:
                folder |= suites
        return [near, folder]

    def notices(self, file):
        """The result of the tests for the current sources: "survived", "noticed" or "hung"."""
        for program in self.programs:
            for suites in [*self.near_suites(file), None]:
                known = {part for name in self.seconds[program] for part in name.split("/")}
                if suites is not None and not suites & known:
                    continue
                tests = ALL_TESTS
                if suites is not None:
                    tests = ":".join(f"{name}.*:*/{name}.*:{name}/*" for name in sorted(suites))
                passed = self.test(program, tests, self.limit(program, suites), "--gtest_fail_fast")
                if not passed:
                    return "hung" if passed is None else "noticed"
        if not self.runs_other_tests:
            return "survived"
        # What these tests need besides the programs is built only for them. No build is a difference, too.
        if not self.make(["all"], 2, 600, CCACHE_READONLY="1"):
            return "noticed"
        passed = self.other_tests(self.limit("ctest"))
        return "survived" if passed else "hung" if passed is None else "noticed"

    def try_change(self, change):
        """Makes a change, runs the tests and reverts it. "refused" if it does not compile."""
        source = self.folder / change.file
        original = source.read_text()
        source.write_text(change.apply(original))
        try:
            # Compilations of changed sources are not cached, since they are never repeated.
            if not self.compile(2, 600, CCACHE_READONLY="1"):
                return "refused"
            return self.notices(change.file)
        finally:
            source.write_text(original)
