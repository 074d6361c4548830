#!/usr/bin/env python3
"""Puts single faults into the program, one after the other, and tells which of them the tests find.

    seed_faults.py [--seed N] [--count N] [--minutes N] [--floor core|model|ui]

For a checkout of its own that has been built by ./test: files are changed and put back. A seed always chooses the same
faults of the same sources: in turn a condition turned round, a bound moved by one, a call left out, an error ignored,
in core, model and ui. Each runs against the test program of its floor, and a survivor against those of the floors above.
What does not compile, or warns, is no fault and is replaced by the next one.
"""
import argparse
import pathlib
import random
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
SECONDS = 240  # for one run of a test program

# Kind of fault: what it looks for in a line, and what it makes of it.
KINDS = {
    "condition": [(r"\bif \((?!const|auto)(.+)\) \{$", r"if (!(\1)) {"), (r" && ", " || "), (r" == ", " != ")],
    "bound": [(r" < ", " <= "), (r" > (?!=)", " >= "), (r" \+ 1\b", " + 2"), (r" - 1\b", " - 2")],
    "call": [(r"^(\s+)(?!return|throw|delete|const|auto|static|case|else)[\w.:>()-]+\(.*\);$", r"\1;")],
    "error": [(r"\breturn false;", "return true;"), (r"\bif \(!(.+)\) \{$", r"if (false && !(\1)) {")],
}
# Floor: its build folder and its test programs, those of the floors above last.
FLOORS = {
    "core": [("native", "core_tests"), ("native", "model_tests")],
    "model": [("native", "model_tests"), ("windows", "ui_tests")],
    "ui": [("windows", "ui_tests"), ("windows", "app_tests")],
}


def sources(floor: str) -> list[pathlib.Path]:
    foreign = ("_win32.cpp",) if floor != "ui" else ("_posix.cpp",)
    return [path for path in sorted((ROOT / floor).rglob("*.cpp")) if not path.name.endswith(foreign)]


def faults(floor: str, seed: int):
    """Endless: a file, the number of a line, what stands there then, and the kind."""
    choice = random.Random(f"{seed} {floor}")
    files = {path: path.read_text(encoding="utf-8").split("\n") for path in sources(floor)}
    sites = {kind: [(path, at, pattern, made) for path, lines in files.items() for at, line in enumerate(lines)
                    for pattern, made in rules if re.search(pattern, line) and not line.lstrip().startswith("//")]
             for kind, rules in KINDS.items()}
    while True:
        for kind in KINDS:
            path, at, pattern, made = choice.choice(sites[kind])
            yield path, at, re.sub(pattern, made, files[path][at], count=1), kind


def run(command: list[str], seconds: int = SECONDS) -> bool:
    try:
        return subprocess.run(command, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=seconds, check=False).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def build(preset: str, program: str) -> bool:
    return run(["cmake", "--build", f"build/{preset}", "--parallel", "2", "--target", program], 900)


def passes(preset: str, program: str) -> bool:
    if preset == "native":
        return run([f"build/native/tests/{program}", "--gtest_fail_fast"])
    return run(["env", "TAMARIND_WINE=display", "tools/wine_run.sh", f"build/windows/tests/{program}.exe",
                "--gtest_fail_fast"])


def who_finds(floor: str) -> str | None:
    """The test program that finds the fault; empty if none does. None: it does not compile."""
    if not build(*FLOORS[floor][0]):
        return None
    for preset, program in FLOORS[floor]:
        if build(preset, program) and not passes(preset, program):
            return program
    return ""


def main() -> int:
    options = argparse.ArgumentParser()
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--count", type=int, default=20, help="for each floor")
    options.add_argument("--minutes", type=float, default=240)
    options.add_argument("--floor", choices=FLOORS)
    chosen = options.parse_args()
    end = time.monotonic() + 60 * chosen.minutes
    tried = found = 0
    for floor in [chosen.floor] if chosen.floor else FLOORS:
        count = 0
        for path, at, line, kind in faults(floor, chosen.seed):
            if count == chosen.count or time.monotonic() > end:
                break
            whole = path.read_bytes()
            lines = whole.decode("utf-8").split("\n")
            former, lines[at] = lines[at], line
            try:
                path.write_text("\n".join(lines), encoding="utf-8")
                finder = who_finds(floor)
            finally:
                path.write_bytes(whole)
            if finder is None:
                continue
            count += 1
            found += finder != ""
            print(f"{finder or 'SURVIVES'}: {path.relative_to(ROOT)}:{at + 1} ({kind})\n    {former.strip()}\n"
                  f"    {line.strip()}", flush=True)
        tried += count
    print(f"{found} of {tried} faults found")
    return 0


sys.exit(main())
