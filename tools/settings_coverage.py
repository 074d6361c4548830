"""How many of the keys that are known, and of those in real settings files, are described.

Tables of known keys and real files are named after the settings file they are about, as in
wincmd_keys.tsv and wincmd_01.ini. What is described comes as section and name in lower case, for
each kind of settings file.
"""

from __future__ import annotations

import re
from pathlib import Path
from typing import Iterator

from value_types import fits

SETTINGS_FILES = ("wincmd", "wcx_ftp")
GOAL = 0.99  # of the settings that two or more real files have


class Described:
    """The keys that are described, and the patterns of those with a name of the user's."""

    def __init__(self, names: set[tuple[str, str]], patterns: list[tuple[str, str]]) -> None:
        self.names = names | {(section.lower(), name.lower()) for section, name in patterns}
        self.patterns = [(section.lower(), name.lower()) for section, name in patterns]

    def has(self, section: str, key: str) -> bool:
        return (section, key) in self.names or any(
            fits(one, section) and fits(name, key) for one, name in self.patterns)


class KnownKeys:
    """A table of the keys of a settings file, in tab-separated columns: section, key, type, seen
    (in how many real files) and confidence, and maybe more.

    Rows of type pattern stand for more than one key: a number in their key stands for any number
    and <...> for any text. Screens, plugins and connections have sections of their own, whose names
    have such places too. Any other section that has nothing but patterns, apart from what the
    program keeps there for itself, is a list: any key may stand in it.
    """

    OWN_KEYS = ("redirectsection", "$checksum$")
    CACHE = "icondll_"  # a line for each button bar, in [ButtonbarCache] and often in [Buttonbar]
    PLACE = re.compile(r"(<[^<>]+>|-?\d+)")
    SHORTCUTS = ("shortcuts", "shortcutswin")  # lists whose keys a user looks for all the same
    SECTION_PLACE = re.compile(r"(<[^<>]+>|PluginName|\d+(?=x)|(?<=x)\d+)")

    def __init__(self, table: Path) -> None:
        head, *lines = table.read_text(encoding="utf-8").splitlines()
        self.name, self.settings = table.name, settings_of(table)
        self.rows = [dict(zip(head.split("\t"), line.split("\t"))) for line in lines if line]
        self.sections = {row["section"].lower() for row in self.rows}
        self.patterns = [row for row in self.rows if row["type"] == "pattern"]
        self.lists = {row["section"].lower() for row in self.patterns
                      if not self.SECTION_PLACE.search(row["section"])} - {
            row["section"].lower() for row in self.rows
            if row["type"] != "pattern" and row["key"].lower() not in self.OWN_KEYS}

    def fits(self, row: dict[str, str], section: str, key: str) -> bool:
        """Whether the row speaks of this key; section and key are in lower case."""
        own = row["section"].lower()
        if own != section and (section in self.sections
                               or not matches(self.SECTION_PLACE, row["section"], section)):
            return False
        if row["type"] != "pattern":
            return row["key"].lower() == key
        if own in self.lists and not self.PLACE.search(row["key"]):
            return key not in self.OWN_KEYS
        return matches(self.PLACE, row["key"], key)

    def is_setting(self, section: str, key: str) -> bool:
        """Whether the key stands for itself in a section of the table, even if no row has it."""
        if section in self.SHORTCUTS and section in self.sections:
            return True
        if section not in self.sections or section in self.lists and key not in self.OWN_KEYS:
            return False
        if key.startswith(self.CACHE):
            return False
        return not any(self.fits(row, section, key) for row in self.patterns)


def settings_of(path: Path) -> str:
    """Which settings file a table or a real file is about: its name begins with that name."""
    return next(name for name in SETTINGS_FILES if path.name.startswith(name))


def matches(place: re.Pattern[str], example: str, name: str) -> bool:
    """Whether the name is the example with other numbers and texts in its places."""
    parts = place.split(example)  # every second part is a place
    parts[::2] = map(re.escape, parts[::2])
    parts[1::2] = [r"-?\d+" if part[-1].isdigit() else ".+" for part in parts[1::2]]
    return re.fullmatch("".join(parts), name, re.IGNORECASE) is not None


def check_table(known: KnownKeys, described: Described) -> bool:
    """Prints how many rows are described; must be those of keys that two real files have."""
    counts = {True: [0, 0], False: [0, 0]}
    for row in known.rows:
        required = int(row["seen"]) >= 2 and row["confidence"] in ("high", "medium")
        covered = described.has(row["section"].lower(), row["key"].lower()) or any(
            known.fits(row, section, key) for section, key in described.names)
        counts[required][covered] += 1
        if required and not covered:
            print(f"{known.name}: not described: [{row['section']}] {row['key']}")
    print(f"{known.name}: {counts[True][1]} required rows are described, {counts[True][0]} not; "
          f"of the others {counts[False][1]} are, {counts[False][0]} not")
    return not counts[True][0]


def settings_in(path: Path) -> Iterator[tuple[str, str, str]]:
    """Section, key and value of every line in a settings file that has them."""
    data = path.read_bytes()
    encoding = {b"\xff\xfe": "utf-16", b"\xef\xbb": "utf-8-sig"}.get(data[:2], "latin-1")
    section = ""
    for line in map(str.strip, re.split("[\r\n]", data.decode(encoding))):
        if line.startswith("["):
            section = line[1:].split("]")[0].strip()
        elif "=" in line and not line.startswith(";"):
            key, _, value = map(str.strip, line.partition("="))
            quoted_value = len(value) > 1 and value[0] == value[-1] and value[0] in "\"'"
            yield section, key, value[1:-1] if quoted_value else value


def check_corpus(folder: Path, tables: list[KnownKeys],
                 described: dict[str, Described]) -> bool:
    """Prints how many of the settings in real files are described.

    A setting is a key in a section of the tables that is no entry of a list and no member of a
    numbered family: of histories, plugins, menus, caches or filters nobody can describe all. One
    that no table has counts too, since its user would look for it. Sections of the user's own
    screens, plugins and connections are in no table: a category has one section.
    """
    found: dict[tuple[str, str, str], int] = {}
    for path in sorted(folder.glob("*.ini")):
        settings = settings_of(path)
        keys = {(section.lower(), key.lower()) for section, key, _ in settings_in(path)}
        for section, key in keys:
            if any(known.settings == settings and known.is_setting(section, key)
                   for known in tables):
                found[settings, section, key] = found.get((settings, section, key), 0) + 1
    for one, files in sorted(found.items()):
        if not described[one[0]].has(*one[1:]):
            print(f"{folder.name}: not described: [{one[1]}] {one[2]}, in {files} file(s)")
    shortcuts = [one for one in found if one[1] in KnownKeys.SHORTCUTS]
    common = [one for one, files in found.items() if files > 1]
    for what, keys in (("shortcuts", shortcuts), ("settings, shortcuts among them,", [*found]),
                       ("settings in two or more files", common)):
        share = share_of(described, keys)
        print(f"{folder.name}: {share:.1%} of {len(keys)} {what} are described")
    return share_of(described, common) >= GOAL


def share_of(described: dict[str, Described], keys: list[tuple[str, str, str]]) -> float:
    """Which part of these keys is described; none is, of no keys."""
    return sum(described[one].has(*key) for one, *key in keys) / len(keys) if keys else 0


def check_coverage(described: dict[str, Described], tables: list[Path],
                   corpus: Path | None) -> bool:
    """Whether enough is described of what the tables know and, if there are any, of real files."""
    known = [KnownKeys(table) for table in tables]
    succeeded = all([check_table(one, described[one.settings]) for one in known])
    return (corpus is None or check_corpus(corpus, known, described)) and succeeded
