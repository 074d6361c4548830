"""What people call a settings key: the tables of keywords in knowledge/, and the files of keywords.

The table of a data file is keywords/NAME.tsv, beside the tables of keys in English and in the
folder of a language for that language. A line is section, key and keywords between tabs; the key
is written as in the tables of keys, or with # for the numbers of a family. docs/data_files.md
tells more.
"""

from __future__ import annotations

import re
from dataclasses import dataclass
from pathlib import Path
from typing import Iterable

from key_rows import Row
from value_types import entries_of

KEYWORDS = "keywords"  # the folder of the tables
SEPARATOR = ", "

KEYWORD = re.compile(r"[\w.:+/$&-]+( [\w.:+/$&-]+)*")
WORD_OF_NAME = re.compile(r"[A-Z]+(?![a-z])|[A-Z]?[a-z]+|\d+")


@dataclass
class KeywordLine:
    where: str
    key: str  # with its section
    text: str


class KeywordTable:
    """The keywords of one data file in one language; `faults` tells what is wrong in them."""

    def __init__(self, folder: Path, table: str, keys: Iterable[tuple[str, str, Row]]) -> None:
        """Takes the table as a path in the folder, and section, name and row of all keys."""
        self.faults: list[str] = []
        self.lines: dict[tuple[str, str], KeywordLine] = {}
        self.count = 0  # of the keys that have keywords
        source = folder / table
        contents = source.read_text(encoding="utf-8") if source.is_file() else ""
        for number, line in enumerate(contents.split("\n"), 1):
            if line and not line.startswith("#"):
                self._read_line(f"{table}:{number}", line)
        self.sections = self._sections(list(keys))

    def contents(self, language: str) -> str:
        """The sections of this language in the file of keywords."""
        return "".join(
            f"[{language}:{section}]\r\n" + "".join(f"{key}={text}\r\n" for key, text in entries)
            + "\r\n" for section, entries in self.sections)

    def _read_line(self, where: str, line: str) -> None:
        section, name, text, *others = (line.split("\t") + ["", ""])[:4]
        words = text.split(SEPARATOR)
        if not section or not name or not text or any(others):
            self.faults.append(f"{where}: a line has section, key and keywords")
        elif (section.lower(), name) in self.lines:
            self.faults.append(f"{where}: second line of [{section}] {name}")
        else:
            self.lines[section.lower(), name] = KeywordLine(where, f"[{section}] {name}", text)
            of_name = {word.lower() for word in WORD_OF_NAME.findall(re.sub(r"\{.*\}", "", name))}
            self.faults += [f"{where}: {fault}" for fault in faults_of(words, of_name)]

    def _sections(self, keys: list[tuple[str, str, Row]]) -> list[tuple[str, list[tuple[str, str]]]]:
        """The sections of the settings file, each with its entries."""
        sections: dict[str, tuple[str, list[tuple[str, str, KeywordLine]]]] = {}
        unused = dict(self.lines)
        none = KeywordLine("", "", "")
        for section, name, row in keys:
            # A category that repeats another one has the keywords of that, too.
            pattern = row.pattern(name)
            places = [(one.lower(), key) for one in (section, row.section)
                      for key in (row.name, pattern)]
            place = next((one for one in places if one in self.lines), None)
            unused.pop(place or ("", ""), None)
            line = self.lines[place] if place else none
            self.count += place is not None
            sections.setdefault(section.lower(), (section, []))[1].append((name, pattern, line))
        self.faults += [f"{line.where}: no key {line.key}" for line in unused.values()]
        entries = ((section, [(key, line.text) for key, line in entries_of(rows).items()
                              if line.text]) for section, rows in sections.values())
        return [(section, rows) for section, rows in entries if rows]


def faults_of(words: list[str], of_name: set[str]) -> list[str]:
    """What is wrong with the keywords of a key whose name has these words."""
    faults = [f"'{word}' is no keyword in small letters" for word in words
              if not KEYWORD.fullmatch(word) or word != word.lower()]
    faults += [f"'{word}' stands twice" for word in dict.fromkeys(words) if words.count(word) > 1]
    return faults + [f"'{word}' stands in the name" for word in words
                     if of_name.issuperset(word.split())]


def file_of_keywords(tables: dict[str, KeywordTable]) -> bytes:
    """The file of keywords, from a table for each language: an INI file with a section for each
    language and section of the settings file."""
    contents = "".join(table.contents(language) for language, table in tables.items())
    return contents.removesuffix("\r\n").encode("utf-8-sig")
