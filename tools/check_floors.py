#!/usr/bin/env python3
"""Checks that folders include only what stands below them. A call in the wrong direction does not link either; this
also finds constants and types that are taken from above.

    check_floors.py        prints each wrong line; 1 if there is one
"""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

CORE = ["core/ini", "core/files", "core/system", "core/text"]  # each may include what follows it
KEYS = ["model/keys", *CORE]
FILES = ["model/files", *KEYS]
PROGRAM = ["model/program", *KEYS]
SESSION = ["model/session", *FILES, *PROGRAM]
WINDOWS = ["ui/toolkit", *SESSION]
MAIN = ["ui/main", "ui/changes", "ui/favorites", "ui/keys", "ui/search", "ui/shell", *WINDOWS]

ALLOWED = {
    **{folder: CORE[place:] for place, folder in enumerate(CORE)},
    "model/keys": KEYS,
    "model/files": FILES,
    "model/program": PROGRAM,
    "model/session": SESSION,
    "ui/toolkit": ["ui/toolkit", *CORE],
    **{folder: [folder, *WINDOWS] for folder in ("ui/changes", "ui/favorites", "ui/keys", "ui/search", "ui/shell")},
    "ui/main": MAIN,
    "app": ["app", *MAIN],
}


def wrong_lines(root: Path) -> list[str]:
    found = []
    for top in ("app", "core", "model", "ui"):
        for source in sorted((root / top).rglob("*")):
            if source.suffix not in (".h", ".cpp", ".rc"):
                continue
            folder = source.parent.relative_to(root).as_posix()
            for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), 1):
                match = re.match(r'#include "((?:app|core|model|ui)(?:/[a-z]+)?)/\w+\.\w+"', line)
                if match and match.group(1) not in ALLOWED.get(folder, []):
                    found.append(f"{source.relative_to(root)}:{number}: {folder} must not include {match.group(1)}")
    return found


def main() -> int:
    found = wrong_lines(ROOT)
    print("\n".join(found) or "all folders include only what is below them")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
