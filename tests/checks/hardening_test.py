#!/usr/bin/env python3
"""hardening_test.py CHECK: builds small files that lack one property each, and compares what the check prints."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(sys.argv.pop(1)).resolve()

# Of each, a function with a buffer, and a copy whose size the compiler doesn't know.
LIBRARY = """#include <string.h>
int copied(const char* text, unsigned long size) { char buffer[64]; memcpy(buffer, text, size); return buffer[size / 2]; }
"""
LINUX_OPTIONS = ["-shared", "-fPIC", "-O2", "-fstack-protector-strong", "-D_FORTIFY_SOURCE=2",
                 "-Wl,-z,relro,-z,now,-z,noexecstack"]
WINDOWS_OPTIONS = ["-shared", "-static", "-O2", "-Wl,--dynamicbase,--nxcompat,--high-entropy-va,--no-insert-timestamp"]


WINDOWS_COMPILER = "x86_64-w64-mingw32-gcc-posix"
for_windows = unittest.skipUnless(shutil.which(WINDOWS_COMPILER), "there is no compiler for Windows")

# A complete version resource.
VERSION = """1 VERSIONINFO FILEVERSION 1,2,3,4 PRODUCTVERSION 1,2,3,4 BEGIN
BLOCK "StringFileInfo" BEGIN BLOCK "040904B0" BEGIN
VALUE "CompanyName", "a"
VALUE "FileDescription", "ab"
VALUE "FileVersion", "abc"
VALUE "InternalName", "abcd"
VALUE "LegalCopyright", "a"
VALUE "OriginalFilename", "ab"
VALUE "ProductName", "abc"
VALUE "ProductVersion", "abcd"
END END
BLOCK "VarFileInfo" BEGIN VALUE "Translation", 0x409, 1200 END
END
"""


class Hardening(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def problems_of(self, compiler, options, name, *, source=LIBRARY, arguments=()):
        """What the check prints about a file made with the options, without the file's name."""
        (self.folder / "source.c").write_text(source)
        file = self.folder / name
        subprocess.run([compiler, "-x", "c", self.folder / "source.c", "-x", "none", "-o", file, *options], check=True)
        done = subprocess.run([CHECK, *arguments, "readelf", file], capture_output=True, text=True, check=False)
        problems = [line.removeprefix(f"{name} lacks ") for line in done.stderr.splitlines()]
        self.assertEqual(done.returncode, 1 if problems else 0)
        return problems

    def linux(self, *changed, source=LIBRARY, arguments=()):
        return self.problems_of("gcc", [*LINUX_OPTIONS, *changed], "small.so", source=source, arguments=arguments)

    def windows(self, *changed, name="small.dll", source=LIBRARY):
        return self.problems_of(WINDOWS_COMPILER, [*WINDOWS_OPTIONS, *changed], name, source=source)

    def add_in(self, version):
        """What the check prints about an add-in with this version resource."""
        (self.folder / "version.rc").write_text(version)
        resource = self.folder / "version.o"
        subprocess.run(["x86_64-w64-mingw32-windres", self.folder / "version.rc", resource], check=True)
        return self.windows(resource, name="small.xll")

    def test_a_hardened_file_lacks_nothing(self):
        self.assertEqual(self.linux(), [])

    @for_windows
    def test_a_hardened_file_of_windows_lacks_nothing(self):
        self.assertEqual(self.windows(), [])
        self.assertEqual(self.add_in(VERSION), [])

    def test_each_missing_property_of_a_linux_file_is_named(self):
        self.assertEqual(self.linux("-Wl,-z,norelro"), ["a read-only table of imports (RELRO)"])
        self.assertEqual(self.linux("-Wl,-z,lazy"), ["imports resolved at the start (BIND_NOW)"])
        self.assertEqual(self.linux("-fno-stack-protector"), ["the stack protector"])
        self.assertEqual(self.linux("-U_FORTIFY_SOURCE"), ["calls with checked sizes (FORTIFY)"])
        self.assertEqual(self.linux("-Wl,-rpath,/tmp"), ["the system's search of libraries"])
        self.assertEqual(self.linux("-Wl,--disable-new-dtags,-rpath,/tmp"), ["the system's search of libraries"])

    def test_written_and_executed_memory_is_named(self):
        self.assertEqual(
            self.linux("-Wl,-z,execstack"),
            ["a stack that is not executed", "separation of written and executed segments"],
        )
        source = LIBRARY + '__asm__(".section .both,\\"awx\\"\\n.byte 1\\n");\n'
        self.assertEqual(self.linux(source=source), ["separation of written and executed segments"])

    def test_code_with_relocations_is_named(self):
        source = LIBRARY + '__asm__(".text\\n.quad outside\\n");\n'
        self.assertEqual(self.linux("-Wl,-z,notext", source=source), ["code without relocations"])

    def test_a_program_at_a_fixed_address_is_named(self):
        options = ["-no-pie", "-O2", "-fstack-protector-all", "-Wl,-z,relro,-z,now"]
        problems = self.problems_of("gcc", options, "small", source="int main(void) { return 0; }",
                                    arguments=["--without-checked-calls"])
        self.assertEqual(problems, ["a position-independent file"])

    def test_the_folder_of_the_sources_is_found(self):
        arguments = ["--source", str(self.folder)]
        self.assertEqual(self.linux(arguments=arguments), [])
        self.assertEqual(self.linux("-g", arguments=arguments), ["independence of the folder of the sources"])

    def test_programs_call_with_checked_sizes_too(self):
        source = LIBRARY + 'int main(int count, char** texts) { return copied(texts[0], (unsigned long)count); }\n'
        options = ["-pie", "-fPIE", *LINUX_OPTIONS[2:]]
        self.assertEqual(self.problems_of("gcc", options, "small", source=source), [])
        problems = self.problems_of("gcc", [*options, "-U_FORTIFY_SOURCE"], "small", source=source)
        self.assertEqual(problems, ["calls with checked sizes (FORTIFY)"])

    def test_checked_calls_may_be_left_out_of_the_check(self):
        self.assertEqual(self.linux("-U_FORTIFY_SOURCE", arguments=["--without-checked-calls"]), [])

    @for_windows
    def test_each_missing_property_of_a_windows_file_is_named(self):
        self.assertEqual(self.windows("-Wl,--disable-high-entropy-va"), ["an address of 64 random bits"])
        self.assertEqual(
            self.windows("-Wl,--disable-dynamicbase"), ["a random address (ASLR)", "an address of 64 random bits"]
        )
        self.assertEqual(self.windows("-Wl,--disable-nxcompat"), ["data that is not executed (DEP)"])
        self.assertEqual(self.windows("-Wl,--insert-timestamp"), ["a header without the time of the build"])
        source = LIBRARY + '__asm__(".section .both,\\"wx\\"\\n.byte 1\\n");\n'
        self.assertEqual(self.windows(source=source), ["separation of written and executed sections"])

    @for_windows
    def test_a_foreign_library_is_named(self):
        options = ["-Wl,--undefined=WinHttpOpen", "-lwinhttp"]
        self.assertEqual(self.windows(*options), ["freedom from winhttp.dll, which could come from another folder"])
        options = ["-Wl,--undefined=AccessibleChildren", "-loleacc"]
        self.assertEqual(self.windows(*options), ["freedom from oleacc.dll, which could come from another folder"])

    @for_windows
    def test_an_add_in_without_a_version_is_named(self):
        keys = ["CompanyName", "FileDescription", "FileVersion", "InternalName", "LegalCopyright", "OriginalFilename",
                "ProductName", "ProductVersion"]
        numbers = ["numbers in its version", "a language in its version"]
        self.assertEqual(self.windows(name="small.xll"), [f"{key} in its version" for key in keys] + numbers)

    @for_windows
    def test_each_missing_part_of_a_version_is_named(self):
        for key, value in (("FileVersion", "abc"), ("InternalName", "abcd"), ("ProductVersion", "abcd")):
            empty = VERSION.replace(f'"{key}", "{value}"', f'"{key}", ""')
            self.assertEqual(self.add_in(empty), [f"{key} in its version"])
        for numbers in ("FILEVERSION", "PRODUCTVERSION"):
            zeros = VERSION.replace(f"{numbers} 1,2,3,4", f"{numbers} 0,0,0,0")
            self.assertEqual(self.add_in(zeros), ["numbers in its version"])
        self.assertEqual(self.add_in(VERSION.replace("0x409, 1200", "0, 0")), ["a language in its version"])

    def test_a_file_that_is_not_built_has_a_status_of_its_own(self):
        done = subprocess.run([CHECK, "readelf", self.folder / "none"], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (77, f"{self.folder / 'none'} is not built\n"))


if __name__ == "__main__":
    unittest.main()
