#!/usr/bin/env python3
"""Makes the data files, which tell the editor what every settings key does, from knowledge/.

Beside each it makes a file of types, which tells what the values of these keys may be, and a file
of keywords, which tells what people call them.

Usage: make_data_files.py [--knowledge FOLDER] COMMAND ...

  check                   prints what is wrong in knowledge/, each with file and line, and counts
                          the translated rows and the keys with keywords; rows made from an older
                          English text are no fault
  write [FOLDER]          writes these files into FOLDER, by default "Data Files"
  verify [FOLDER]         fails unless the files in FOLDER are what write would make
  coverage TABLE... [--corpus FOLDER]
                          fails unless the keys of these tables of known keys are described, and
                          99 % of the settings that two or more settings files of FOLDER have
  types CORPUS_FOLDER     fails unless every value in the settings files of CORPUS_FOLDER is of its
                          type or stands with a reason in knowledge/outside_types.tsv

Every command checks first and writes nothing when something is wrong. The exit code is then 1.

The folders wincmd and wcx_ftp of knowledge/ make one data file each, out of their *.tsv files in
the order of their names; the folder keywords has the English keywords of both. Every other folder
there holds the texts of both in the language that it is named after; see translations.py and
keywords.py. What the lines of a table are and what a family of keys is stands in
docs/data_files.md, the types there and in value_types.py.
"""

from __future__ import annotations

import argparse
import re
import sys
import textwrap
from pathlib import Path
from typing import Iterable, Iterator

from companion import Companion, faults_of_family
from key_rows import COLOR_NOTE, Category, Row, is_pattern, members_of
from keywords import KEYWORDS, KeywordTable, file_of_keywords
from settings_coverage import Described, check_coverage, settings_in, settings_of
from translations import Translation, split
from value_types import BadType, IntType, KnownOutside, TypeTable, parse_type

ROOT = Path(__file__).resolve().parent.parent

# The folders in knowledge/, the data file each makes with {} for its language, the settings file
# this is about, and the files of types and keywords for that.
DATA_FILES = {
    "wincmd": ("tc all keys {}.tmdf", "Wcx_ftp=0", "Wincmd.types", "Wincmd.keywords"),
    "wcx_ftp": ("tc wcx_ftp keys {}.tmdf", "Wcx_ftp=1", "Wcx_ftp.types", "Wcx_ftp.keywords"),
}
OUTSIDE_TYPES = "outside_types.tsv"
TARGET_SECTION = "TargetIniFile"
CATEGORY_TARGET = "CategoryTargetSection"

# A description is read in a small pane: so many lines of so many characters may stand before the
# values, and so many besides them in all.
LINE_LENGTH = 80
MAX_LINES_BEFORE = 2
MAX_LINES_BESIDES = 6

# The editor reads a data file through buffers of 4096 characters.
MAX_VALUE = 4095
MAX_NAMES = 4094  # of all keys of a category, or of all categories; each name is followed by a null


class Knowledge:
    """Reads and checks the source files of one data file; `faults` tells what is wrong in them."""

    def __init__(self, folder: Path) -> None:
        self.categories: list[Category] = []
        self.faults: list[str] = []
        sources = sorted(folder.glob("*.tsv"))
        if not sources:
            self._fault(str(folder), "no source files")
        for source in sources:
            self._read_file(source, f"{folder.name}/{source.name}")
        self._check_categories()
        self._check_sections()

    def described(self) -> set[tuple[str, str]]:
        """Section and name of every key, in lower case."""
        return {(section.lower(), name.lower()) for section, name, _ in self.keys()}

    def keys(self) -> Iterator[tuple[str, str, Row]]:
        """Section, name and row of every key."""
        for category in self.categories:
            for row, name, _ in category.keys():
                yield category.section, name, row

    def patterns(self) -> Iterator[tuple[str, str, Row]]:
        """Section, name and row of every pattern with a name of the user's."""
        for category in self.categories:
            for row in category.rows:
                if is_pattern(category, row):
                    yield category.section, row.pattern(row.name), row

    def types(self) -> TypeTable:
        return TypeTable((section, name, row.pattern(name), row.type)
                         for section, name, row in (*self.keys(), *self.patterns()))

    def _fault(self, where: str, message: str) -> None:
        self.faults.append(f"{where}: {message}")

    def _read_file(self, source: Path, shown_name: str) -> None:
        first = len(self.categories)  # a category does not go on in the next file
        for number, data in enumerate(source.read_bytes().split(b"\n"), 1):
            where = f"{shown_name}:{number}"
            try:
                line = data.decode("ascii")
            except UnicodeDecodeError:
                self._fault(where, "character outside ASCII")
                continue
            if re.search(r"[^\t -~]", line):
                self._fault(where, "control character or CR line end")
            elif line.startswith(("/", "[")):
                self._read_category(where, line)
            elif line.startswith("+ "):
                self._read_note(where, line[2:], self.categories[first:])
            elif line and not line.startswith("#"):
                self._read_row(where, line, self.categories[first:])

    def _read_category(self, where: str, line: str) -> None:
        match = re.fullmatch(r"(/[^\t\]]+)|\[([^]/\t][^]\t]*)\]\t([^\t]+)(?:\t([^\t]+))?", line)
        if not match:
            self._fault(where, "neither a heading nor a category, and no key begins with / or [")
            return
        heading, name, section, repeated = match.groups(default="")
        if any(text != text.strip() for text in (heading, name, section)):
            self._fault(where, "blanks at the edge of a name")
        rows = [row for one in self.categories if one.name == repeated for row in one.rows]
        if repeated and not rows:
            self._fault(where, f"no category '{repeated}' before this one")
        pattern = re.sub(r"\{\d+\}", "#", section)
        self.categories.append(Category(where, heading or name, re.sub("[{}]", "", section), rows,
                                        section_pattern=pattern if "#" in pattern else ""))

    def _read_note(self, where: str, text: str, categories: list[Category]) -> None:
        if not categories or not categories[-1].section:
            self._fault(where, "note outside a category")
        elif "@" in text or "///" in text or text != text.strip(" "):
            self._fault(where, f"@, /// or blanks at the edge in '{text}'")
        else:
            categories[-1].notes.append(text)

    def _read_row(self, where: str, line: str, categories: list[Category]) -> None:
        fields = line.split("\t")
        if not 4 <= len(fields) <= 6:
            self._fault(where, f"a key has 4 to 6 fields, not {len(fields)}")
            return
        if any(text != text.strip(" ") for text in fields):
            self._fault(where, "blanks at the edge of a field")
            return
        if not categories or not categories[-1].section:
            self._fault(where, "key outside a category")
            return
        name, default, kind, description, values, notes = (fields + ["", ""])[:6]
        of_type = [COLOR_NOTE] if kind.startswith("color") else []
        row = Row(where, categories[-1].section, name, default, kind, description,
                  split(values), split(notes) + of_type)
        self._read_members(row)
        self._check_row(row, categories[-1])
        categories[-1].rows.append(row)

    def _read_members(self, row: Row) -> None:
        row.name, marks = re.subn(r"(?<=\d)\+\}", "}", row.name)
        row.is_open = marks > 0
        match = re.fullmatch(r"[^{}]*\{([^{}]*)\}[^{}]*", row.name)
        if match:
            row.members = members_of(match[1])
        if re.search(r"[{}]", row.name) and not row.members:
            self._fault(row.where, f"the braces of {row.name} hold neither first..last nor a list")
        elif not match and "*" not in row.name and "{n}" in "".join([row.default, row.description, *row.values, *row.notes]):
            self._fault(row.where, "{n} without braces in the name")

    def _check_row(self, row: Row, category: Category) -> None:
        if not row.name or re.search("[=#]", row.name) or row.name.startswith(";"):
            self._fault(row.where, f"'{row.name}' cannot be the name of a key")
        if not row.description:
            self._fault(row.where, "no description")
        # A slash before the three that separate the default would be taken for one of them.
        if "///" in row.default or row.default.endswith("/"):
            self._fault(row.where, "/// in the default, or a slash at its end")
        for text in (row.description, *row.values, *row.notes):
            if "@" in text or "///" in text:
                self._fault(row.where, f"@ or /// in '{text}'")
        if fault := faults_of_family(row, category):
            self._fault(row.where, fault)
        self._check_type(row, category)

    def _check_type(self, row: Row, category: Category) -> None:
        if row.kind.startswith("color") and "color" not in category.name.lower():
            self._fault(row.where, "color key in a category without Color in its name")
        lines: dict[str, str] = {}
        for text in row.values:
            value, separator, meaning = text.partition(" = ")
            if not value or not separator or not meaning:
                self._fault(row.where, f"'{text}' is not 'value = meaning'")
            if value in lines:
                self._fault(row.where, "a value stands twice")
            lines[value] = meaning
        try:
            row.type = parse_type(row.kind, lines)
        except BadType as reason:
            self._fault(row.where, f"type '{row.kind}': {reason}")
            return
        for fault in row.type.faults():
            self._fault(row.where, f"{fault}, type '{row.kind}'")
        default = row.default.replace("{n}", row.members[0] if row.members else "")
        if default and not row.type.accepts(default):
            self._fault(row.where, f"the default {default} is not of the type '{row.kind}'")

    def _check_categories(self) -> None:
        seen = {TARGET_SECTION.lower()}
        total = len(TARGET_SECTION) + 1
        for category in self.categories:
            if category.name.lower() in seen:
                self._fault(category.where, f"second category '{category.name}'")
            seen.add(category.name.lower())
            before, total = total, total + len(category.name) + 1
            if before <= MAX_NAMES < total:
                self._fault(category.where, "too many categories: their names fill the buffer")
            if category.section:
                self._check_keys(category)

    def _check_keys(self, category: Category) -> None:
        for row in category.rows:
            self._check_lines(row, category)
        names = {CATEGORY_TARGET.lower()}
        total = len(CATEGORY_TARGET) + 1
        for row, name, entry in category.keys():
            if name.lower() in names:
                self._fault(row.where, f"second key {name} in the category")
            names.add(name.lower())
            total += len(name) + 1
            if len(entry) > MAX_VALUE:
                self._fault(row.where, f"entry of {name} has {len(entry)} characters")
        if "#" in category.section:
            self._fault(category.where, f"'{category.section}' cannot be the name of a section")
        for row in category.rows:
            self._check_pattern(row, category, names)
        if not category.rows:
            self._fault(category.where, "category without keys")
        if total > MAX_NAMES:
            self._fault(category.where, f"names of the keys have {total} characters together")

    def _check_pattern(self, row: Row, category: Category, names: set[str]) -> None:
        if is_pattern(category, row):
            if row.name.lower() in names:
                self._fault(row.where, f"second key {row.name} in the category")
            names.add(row.name.lower())
            if "{n}" in row.default or len(row.entry(category)) > MAX_VALUE:
                self._fault(row.where, f"{{n}} in the default of {row.name}, or too long an entry")

    def _check_lines(self, row: Row, category: Category) -> None:
        _, entry = row.key(max(row.members, key=len, default=None), category)
        description, *others = entry.partition("///")[2].split("@")
        before = lines_of(description)
        besides = before + sum(map(lines_of, others[len(row.values):]))
        if before > MAX_LINES_BEFORE:
            self._fault(row.where, f"{before} lines before the values")
        if besides > MAX_LINES_BESIDES:
            self._fault(row.where, f"{besides} lines besides the values")

    def _check_sections(self) -> None:
        sections: dict[str, dict[str, Row]] = {}
        for section, name, row in self.keys():
            rows = sections.setdefault(section.lower(), {})
            other = rows.setdefault(name.lower(), row)
            if other.kind != row.kind:
                self._fault(row.where, f"{name} has the type '{other.kind}' at {other.where}")
        for rows in sections.values():
            for row in rows.values():
                for companion in row.type.companions():
                    other = rows.get(companion.lower(), row)
                    if not isinstance(other.type, IntType):
                        self._fault(row.where, f"{companion} is no number of this section")


class TranslatedKnowledge(Knowledge):
    """Checks the categories of a data file in another language: their names and their lengths."""

    def __init__(self, categories: list[Category]) -> None:
        self.categories = categories
        self.faults: list[str] = []
        self._check_categories()


def lines_of(text: str) -> int:
    """How many lines of the description pane the text takes."""
    return len(textwrap.wrap(text, LINE_LENGTH))


def quoted(entry: str) -> str:
    """The entry as it must be written: reading takes one pair of equal outer quotes away."""
    return f'"{entry}"' if len(entry) > 1 and entry[0] == entry[-1] and entry[0] in "\"'" else entry


def data_file(knowledge: Knowledge, target: str, encoding: str) -> bytes:
    """The contents of the data file: its sections with empty lines between, CRLF line ends."""
    sections = [f"[{TARGET_SECTION}]\r\n{target}\r\n"]
    for category in knowledge.categories:
        lines = [f"[{category.name}]"]
        keys = [f"{name}={quoted(entry)}" for _, name, entry in category.keys()]
        if category.section and not keys:
            continue  # all of its rows are patterns
        if category.section:
            lines += [f"{CATEGORY_TARGET}={category.section}", *keys]
        sections.append("".join(line + "\r\n" for line in lines))
    return "\r\n".join(sections).encode(encoding)


def read_translations(folder: Path, english: dict[str, Knowledge]
                      ) -> dict[str, tuple[Translation, dict[str, Knowledge]]]:
    """The translation and the data files of every language that has a folder in this one."""
    names = {name for one in english.values() for _, name, _ in one.keys()}
    languages: dict[str, tuple[Translation, dict[str, Knowledge]]] = {}
    for source in sorted(folder.iterdir()):
        if source.is_dir() and source.name not in (*DATA_FILES, KEYWORDS):
            translation = Translation(source, names)
            files: dict[str, Knowledge] = {
                name: TranslatedKnowledge(translation.categories(name, one.categories))
                for name, one in english.items()}
            translation.check_use()
            languages[source.name] = translation, files
    return languages


def read_keywords(folder: Path, languages: Iterable[str], knowledge: dict[str, Knowledge]
                  ) -> dict[str, dict[str, KeywordTable]]:
    """The tables of keywords of every data file, each in English and in these languages."""
    folders = {"english": KEYWORDS} | {one: f"{one}/{KEYWORDS}" for one in languages}
    return {name: {language: KeywordTable(folder, f"{place}/{name}.tsv",
                                          [*one.keys(), *one.patterns()])
                   for language, place in folders.items()} for name, one in knowledge.items()}


def check_values(folder: Path, tables: dict[str, TypeTable], known: KnownOutside) -> bool:
    """Prints the values of real files that are outside their type; an empty one is in all types."""
    checked = outside = unknown = 0
    for path in sorted(folder.glob("*.ini")):
        settings = settings_of(path)
        for section, key, value in settings_in(path):
            wanted = tables[settings].find(section, key) if value else None
            checked += wanted is not None
            if wanted and not wanted.accepts(value):
                is_known = (settings, section.lower(), key.lower(), value) in known.values
                outside, unknown = outside + 1, unknown + (not is_known)
                print(f"{path.name}: [{section}] {key}={value} is outside '{wanted.text}'"
                      f"{', as is known' if is_known else ''}")
    print(f"{folder.name}: {checked} values checked, {outside} outside their type, "
          f"{unknown} of them unknown")
    return checked > 0 and not unknown


def parse_arguments(arguments: list[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=(__doc__ or "").splitlines()[0])
    parser.add_argument("--knowledge", type=Path, default=ROOT / "knowledge", metavar="FOLDER")
    commands = parser.add_subparsers(dest="command", required=True)
    commands.add_parser("check")
    for name in ("write", "verify"):
        command = commands.add_parser(name)
        command.add_argument("folder", type=Path, nargs="?", default=ROOT / "Data Files")
    coverage = commands.add_parser("coverage")
    coverage.add_argument("tables", type=Path, nargs="+", metavar="TABLE")
    coverage.add_argument("--corpus", type=Path, metavar="FOLDER")
    commands.add_parser("types").add_argument("corpus", type=Path, metavar="CORPUS_FOLDER")
    return parser.parse_args(arguments)


def contents_of_files(languages: dict[str, dict[str, Knowledge]], types: dict[str, TypeTable],
                      keywords: dict[str, dict[str, KeywordTable]]) -> dict[str, bytes]:
    """All files that are made, by their names."""
    files = {}
    for name, (_, _, types_name, keywords_name) in DATA_FILES.items():
        files[types_name] = Companion(
            {language: one[name].categories for language, one in languages.items()}, types[name]
        ).contents()
        files[keywords_name] = file_of_keywords(keywords[name])
    for language, knowledge in languages.items():
        encoding = "ascii" if language == "english" else "utf-8-sig"
        for name, (file_name, target, _, _) in DATA_FILES.items():
            files[file_name.format(language)] = data_file(knowledge[name], target, encoding)
    return files


def write_files(files: dict[str, bytes], folder: Path, only_verify: bool) -> bool:
    """Writes the files, or tells which of them are stale."""
    succeeded = True
    for file_name, contents in files.items():
        path = folder / file_name
        if not only_verify:
            folder.mkdir(parents=True, exist_ok=True)
            path.write_bytes(contents)
        elif not path.is_file() or path.read_bytes() != contents:
            print(f"{path} is stale: run tools/make_data_files.py write", file=sys.stderr)
            succeeded = False
    return succeeded


def main(arguments: list[str]) -> int:
    options = parse_arguments(arguments)
    knowledge = {name: Knowledge(options.knowledge / name) for name in DATA_FILES}
    types = {name: one.types() for name, one in knowledge.items()}
    outside = KnownOutside(options.knowledge / OUTSIDE_TYPES, types)
    faults = [fault for one in (*knowledge.values(), outside) for fault in one.faults]
    # A translation would tell the faults of the English rows again.
    languages = read_translations(options.knowledge, knowledge) if not faults else {}
    for translation, files in languages.values():
        faults += dict.fromkeys(
            fault for one in (translation, *files.values()) for fault in one.faults)
        for where, what in translation.old.items():
            print(f"{where}: old: {what}", file=sys.stderr)
        if options.command == "check":
            print(translation.summary())
    keywords = read_keywords(options.knowledge, languages, knowledge) if not faults else {}
    for name, tables in keywords.items():
        faults += [fault for one in tables.values() for fault in one.faults]
        if options.command == "check":
            print(f"{name}: keys with keywords:",
                  ", ".join(f"{one.count} in {language}" for language, one in tables.items()))
    print(*faults, sep="\n", end="\n" if faults else "", file=sys.stderr)
    succeeded = not faults
    if options.command == "coverage":
        described = {name: Described(one.described(), [key[:2] for key in one.patterns()])
                     for name, one in knowledge.items()}
        succeeded &= check_coverage(described, options.tables, options.corpus)
    elif options.command == "types":
        succeeded &= check_values(options.corpus, types, outside)
    elif options.command != "check" and not faults:
        all_files = {"english": knowledge} | {name: files for name, (_, files) in languages.items()}
        succeeded = write_files(contents_of_files(all_files, types, keywords), options.folder,
                                options.command == "verify")
    return 0 if succeeded else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
