#!/usr/bin/env python3
"""Checks that Windows 7 can start a program of ours, and what else its file header promises.

    check_imports.py PROGRAM...

Every function that a program imports must stand in packaging/imports.txt, the list of those that were looked up and
are part of Windows 7. A function that is not there stops Windows from starting the program, whether or not it is ever
called. The file must also be small, made for Windows 7 or older, protected by ASLR and DEP, and marked as knowing the
versions of Windows from 7 to 10.

The libraries that our sources name to load them at run time must stand in the same list. No call may look for one by
its bare name wherever Windows looks, which includes folders that others may write to.
"""

import re
import struct
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
LIST = ROOT / "packaging" / "imports.txt"
LOADED_BY_NAME = "loaded by name"  # the list's heading
SOURCE_FOLDERS = ("app", "core", "model", "ui")
# A call that loads a library, with its arguments; and what says there that it comes from the system's folder, or
# that the name is a whole path.
LOAD_CALL = re.compile(r"\bLoad(?:Packaged)?Library(?:Ex)?[AW]?\s*\([^;]*")
SAFE_LOADS = ("LOAD_LIBRARY_SEARCH_SYSTEM32", "LOAD_WITH_ALTERED_SEARCH_PATH")
MAX_BYTES = 1_000_000
WINDOWS_7 = (6, 1)

MACHINES = {0x014C: "x86", 0x8664: "x64"}
IMPORTS, RESOURCES, DELAY_LOADED, MANAGED = 1, 2, 13, 14  # data directories
MANIFEST = 24  # type of a resource
FLAGS = {0x0040: "DYNAMIC_BASE", 0x0100: "NX_COMPAT"}
FLAGS_64_BIT = {0x0020: "HIGH_ENTROPY_VA"}
SUPPORTED_SYSTEMS = {
    "Windows 7": b"{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",
    "Windows 8": b"{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",
    "Windows 8.1": b"{1f676c76-80e1-4239-95bb-83d0f6d0da78}",
    "Windows 10": b"{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}",
}


class BadProgram(Exception):
    """The file is no program for Windows."""


class Program:
    """A program's header, and what it leads to."""

    def __init__(self, data):
        self.data = data
        pe, = struct.unpack_from("<I", data, 0x3C)
        if data[:2] != b"MZ" or data[pe:pe + 4] != b"PE\0\0":
            raise BadProgram("is no program for Windows")
        machine, section_count = struct.unpack_from("<HH", data, pe + 4)
        optional_size, = struct.unpack_from("<H", data, pe + 20)
        optional = pe + 24
        self.machine = MACHINES.get(machine, hex(machine))
        self.is_64_bit = struct.unpack_from("<H", data, optional)[0] == 0x20B
        self.system_version = struct.unpack_from("<HH", data, optional + 40)
        self.subsystem_version = struct.unpack_from("<HH", data, optional + 48)
        self.flags, = struct.unpack_from("<H", data, optional + 70)
        self.directories = optional + (112 if self.is_64_bit else 96)
        self.directory_count, = struct.unpack_from("<I", data, self.directories - 4)
        self.sections = [struct.unpack_from("<IIII", data, optional + optional_size + 40 * number + 8)
                         for number in range(section_count)]

    def directory(self, number):
        """Address and size; zeros where there is none."""
        if number >= self.directory_count:
            return 0, 0
        return struct.unpack_from("<II", self.data, self.directories + 8 * number)

    def offset(self, address):
        """The place in the file of what is loaded at an address."""
        for size, start, raw_size, raw in self.sections:
            if start <= address < start + min(size, raw_size):
                return raw + address - start
        raise BadProgram(f"has nothing at address {address:#x}")

    def text(self, address):
        start = self.offset(address)
        return self.data[start:self.data.index(b"\0", start)].decode("ascii")

    def imports(self):
        """(library in small letters, function); a function without a name is "#" and its number."""
        address, _ = self.directory(IMPORTS)
        if not address:
            return
        at = self.offset(address)
        while True:
            lookup, _, _, name, table = struct.unpack_from("<5I", self.data, at)
            if not name:
                return
            library = self.text(name).lower()
            for function in self.functions(lookup or table):
                yield library, function
            at += 20

    def functions(self, lookup):
        size, form, is_number = (8, "<Q", 1 << 63) if self.is_64_bit else (4, "<I", 1 << 31)
        at = self.offset(lookup)
        while True:
            entry, = struct.unpack_from(form, self.data, at)
            if not entry:
                return
            yield f"#{entry & 0xFFFF}" if entry & is_number else self.text(entry + 2)
            at += size

    def resource(self, kind):
        """The first resource of a type given by its number; empty without one."""
        address, _ = self.directory(RESOURCES)
        if not address:
            return b""
        root = self.offset(address)
        place = self.resource_entry(root, 0, kind)
        while place is not None and place & 1 << 31:  # a table of names, then one of languages
            place = self.resource_entry(root, place & 0x7FFFFFFF, None)
        if place is None:
            return b""
        start, size = struct.unpack_from("<II", self.data, root + place)
        return self.data[self.offset(start):][:size]

    def resource_entry(self, root, table, number):
        named, numbered = struct.unpack_from("<HH", self.data, root + table + 12)
        for index in range(named + numbered):
            name, place = struct.unpack_from("<II", self.data, root + table + 16 + 8 * index)
            if number is None or name == number:
                return place
        return None


def read_list(path):
    """The functions that may be imported, by library: library names in brackets, then a function a line."""
    allowed = {}
    library = None
    for line in path.read_text(encoding="utf-8").splitlines():
        entry = line.partition(";")[0].strip()
        if entry.startswith("["):
            library = entry.strip("[]")
            allowed[library] = set()
        elif entry:
            allowed[library].add(entry)
    return allowed


def import_faults(program, allowed):
    count = 0
    for library, function in program.imports():
        count += 1
        if library not in allowed:
            yield f"imports {function} of {library}, which is not known to be part of Windows 7"
        elif function not in allowed[library]:
            yield f"imports {function} of {library}, which is not known to be in Windows 7's {library}"
    if count == 0:
        yield "imports nothing"
    for directory, what in ((DELAY_LOADED, "loads libraries late"), (MANAGED, "is managed code")):
        if program.directory(directory) != (0, 0):
            yield what


def header_faults(program):
    if program.machine not in MACHINES.values():
        yield f"is made for the processor {program.machine}"
    if len(program.data) > MAX_BYTES:
        yield f"has {len(program.data)} bytes, more than {MAX_BYTES}"
    for what, version in (("system", program.system_version), ("subsystem", program.subsystem_version)):
        if version > WINDOWS_7:
            yield f"wants {what} version {version[0]}.{version[1]}"
    wanted = FLAGS | FLAGS_64_BIT if program.is_64_bit else FLAGS
    for flag, name in wanted.items():
        if not program.flags & flag:
            yield f"lacks the flag {name}"
    manifest = program.resource(MANIFEST)
    for name, identifier in SUPPORTED_SYSTEMS.items():
        if identifier not in manifest:
            yield f"does not name {name} in its manifest"


def read_sources():
    """The text of each source by its name in the tree, without comments."""
    return {str(path.relative_to(ROOT)): re.sub(r"//.*", "", path.read_text(encoding="utf-8"))
            for folder in SOURCE_FOLDERS for path in sorted((ROOT / folder).rglob("*"))
            if path.suffix in (".cpp", ".h")}


def named_libraries(sources):
    return {name.lower() for source in sources.values() for name in re.findall(r'"([\w.-]+\.dll)"', source, re.I)}


def load_faults(sources, allowed):
    for name, source in sources.items():
        for call in LOAD_CALL.findall(source):
            if not any(flag in call for flag in SAFE_LOADS):
                yield f"{name}: {' '.join(call.split())} looks for the library in unsafe folders, too"
    named, listed = named_libraries(sources), allowed.get(LOADED_BY_NAME, set())
    for library in sorted(named - listed):
        yield f"the sources name {library}, which is not listed as {LOADED_BY_NAME}"
    for library in sorted(listed - named):
        yield f"no source names {library}, which is listed as {LOADED_BY_NAME}"


def main():
    if len(sys.argv) < 2:
        print("usage: check_imports.py PROGRAM...", file=sys.stderr)
        return 2
    allowed = read_list(LIST)
    status = 0
    sources = read_sources()
    for fault in load_faults(sources, allowed):
        print(fault, file=sys.stderr)
        status = 1
    if not status:
        print(f"loaded by name, from the system's folder alone: {', '.join(sorted(named_libraries(sources)))}")
    for name in sys.argv[1:]:
        try:
            program = Program(Path(name).read_bytes())
            faults = [*header_faults(program), *import_faults(program, allowed)]
        except (BadProgram, struct.error, ValueError) as error:
            program, faults = None, [str(error)]
        for fault in faults:
            print(f"{name}: {fault}", file=sys.stderr)
            status = 1
        if not faults:
            libraries = {library for library, _ in program.imports()}
            print(f"{name}: {program.machine}, {len(program.data)} bytes, "
                  f"{len(list(program.imports()))} functions of {len(libraries)} libraries, all in Windows 7")
    return status


if __name__ == "__main__":
    sys.exit(main())
