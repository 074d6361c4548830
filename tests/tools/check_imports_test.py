#!/usr/bin/env python3
"""Tests of tools/check_imports.py; run from anywhere."""

import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True  # the tools folder stays as it is
ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import check_imports  # noqa: E402  (the folder of the tool is known only now)

# Two functions of one library, one of them newer than Windows 7.
SOURCE = """
#include <windows.h>
void start(void) {
    FILETIME now;
    GetSystemTimePreciseAsFileTime(&now);
    ExitProcess(now.dwLowDateTime);
}
"""
OPTIONAL = 24  # from the mark of the header to its second part

# What is written where in that part, and the fault that it is.
HEADER_FAULTS = (
    (40, "<HH", (6, 2), "wants system version 6.2"),
    (48, "<HH", (10, 0), "wants subsystem version 10.0"),
    (70, "<H", (0x0160 & ~0x0040,), "lacks the flag DYNAMIC_BASE"),
    (70, "<H", (0x0160 & ~0x0100,), "lacks the flag NX_COMPAT"),
    (70, "<H", (0x0160 & ~0x0020,), "lacks the flag HIGH_ENTROPY_VA"),
    (112 + 8 * 13, "<II", (0x1000, 64), "loads libraries late"),
)


def built(folder):
    """The bytes of a program of a few lines."""
    (folder / "x.c").write_text(SOURCE)
    subprocess.run(["x86_64-w64-mingw32-gcc-posix", "-nostdlib", "-Wl,-e,start", "-D_WIN32_WINNT=0x0A00", "x.c", "-o",
                    "x.exe", "-lkernel32"], cwd=folder, check=True)
    return bytearray((folder / "x.exe").read_bytes())


def faults(data, functions):
    program = check_imports.Program(bytes(data))
    return [*check_imports.header_faults(program),
            *check_imports.import_faults(program, {"kernel32.dll": functions})]


class CheckImportsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            cls.data = built(Path(folder))

    def test_a_function_that_was_not_looked_up_is_named(self):
        both = {"ExitProcess", "GetSystemTimePreciseAsFileTime"}
        self.assertFalse([fault for fault in faults(self.data, both) if "imports" in fault])
        self.assertIn("imports GetSystemTimePreciseAsFileTime of kernel32.dll, which is not known to be in "
                      "Windows 7's kernel32.dll", faults(self.data, {"ExitProcess"}))
        self.assertNotIn("GetSystemTimePreciseAsFileTime", check_imports.read_list(check_imports.LIST)["kernel32.dll"])

    def test_every_promise_of_the_header_is_looked_at(self):
        pe, = struct.unpack_from("<I", self.data, 0x3C)
        for place, form, values, fault in HEADER_FAULTS:
            with self.subTest(fault):
                data = bytearray(self.data)
                self.assertNotIn(fault, faults(data, set()))
                struct.pack_into(form, data, pe + OPTIONAL + place, *values)
                self.assertIn(fault, faults(data, set()))
        self.assertIn("does not name Windows 7 in its manifest", faults(self.data, set()))
        large = self.data + bytes(check_imports.MAX_BYTES)
        self.assertIn(f"has {len(large)} bytes, more than {check_imports.MAX_BYTES}", faults(large, set()))

    def test_libraries_are_loaded_from_the_systems_folder(self):
        for call, is_fault in (('LoadLibraryW(L"x.dll");', True),
                               ('LoadLibraryA(\n    name);', True),
                               ('LoadLibraryExW(L"x.dll", nullptr, 0);', True),
                               ('LoadLibraryExW(L"x.dll", nullptr,\n    LOAD_LIBRARY_SEARCH_SYSTEM32);', False),
                               ('LoadLibraryExW(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);', False)):
            with self.subTest(call):
                found = [*check_imports.load_faults({"a.cpp": call}, {check_imports.LOADED_BY_NAME: {"x.dll"}})]
                self.assertEqual(any("unsafe" in fault for fault in found), is_fault)
        self.assertEqual([*check_imports.load_faults({"a.cpp": 'Late(L"New.DLL")'}, {"loaded by name": {"old.dll"}})],
                         ["the sources name new.dll, which is not listed as loaded by name",
                          "no source names old.dll, which is listed as loaded by name"])
        sources = check_imports.read_sources()
        self.assertTrue(check_imports.LOAD_CALL.search(sources["ui/toolkit/LateFunction.cpp"]))

    def test_other_files_are_refused(self):
        for data in (b"MZ" + bytes(200), self.data[:0x80], b""):
            with self.assertRaises((check_imports.BadProgram, struct.error)):
                check_imports.Program(bytes(data))


if __name__ == "__main__":
    unittest.main()
