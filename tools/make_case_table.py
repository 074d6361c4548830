#!/usr/bin/env python3
"""Writes the simple case mappings of the Basic Multilingual Plane.

    make_case_table.py upper core/text/UnicodeUpperCase.inc
    make_case_table.py lower core/text/UnicodeLowerCase.inc

The mappings come from the Unicode data that ships with Python. Neighbouring mappings with the same
distance (and a stride of one or two code points) share one row, which keeps the table short.
"""
import sys


def simple_case(code: int, kind: str) -> int:
    mapped = chr(code).upper() if kind == "upper" else chr(code).lower()
    return ord(mapped) if len(mapped) == 1 and ord(mapped) <= 0xFFFF else code


def rows(kind: str) -> list[tuple[int, int, int, int]]:
    mapped = [(c, simple_case(c, kind) - c) for c in range(0x80, 0x10000)
              if not 0xD800 <= c <= 0xDFFF and simple_case(c, kind) != c]
    result: list[list[int]] = []
    for code, delta in mapped:
        if result:
            first, last, row_delta, stride = result[-1]
            step = code - last
            if delta == row_delta and step <= 2 and stride in (0, step):
                result[-1] = [first, code, row_delta, step]
                continue
        result.append([code, code, delta, 0])
    return [(f, l, d, s or 1) for f, l, d, s in result]


def main() -> None:
    kind, path = sys.argv[1:]
    with open(path, "w", encoding="ascii", newline="\n") as out:
        out.write("// Written by tools/make_case_table.py; first, last, distance, stride.\n")
        for first, last, delta, stride in rows(kind):
            out.write(f"{{0x{first:04X}, 0x{last:04X}, {delta}, {stride}}},\n")


main()
