"""The texts of the data files in another language, as in knowledge/german/.

texts.tsv there holds what more than one row shares: an English text and its translation in each
line. The tables of rows are in folders and files of the same names as the English ones; a line is
[Section], or name, mark, description, values and notes of a key between tabs. The mark stands for
the English text that was translated. docs/translations.md tells more.
"""

from __future__ import annotations

import re
import zlib
from collections import Counter
from dataclasses import dataclass, replace
from pathlib import Path
from typing import Iterator

from key_rows import COLOR_NOTE, SINCE, Category, Row
from keywords import KEYWORDS

TEXTS = "texts.tsv"
PLAIN_WORD = re.compile(r"[A-Za-z]?[a-z]+|\d+|[A-Z]")  # as a name of a key it may be a mere word
COMPARED_KEY = re.compile(r"(?<![Tt]he )\b(\w+) (?:is|contains) -?\d")
SPECIAL_WORD = re.compile(r"\{n\}\w*|\[[^\]]+\]|%\w+%|cm_\w+|\*\.\w+")


@dataclass
class TranslatedRow:
    where: str
    mark: str
    description: str
    values: list[str]
    notes: list[str]


class Translation:
    """Reads a folder of translated texts; `faults` tells what is wrong or missing, `old` which
    rows were made from another English text."""

    def __init__(self, folder: Path, key_names: set[str]) -> None:
        """Takes the names of all keys: a translation names the same ones."""
        self.folder = folder
        self.key_names = key_names
        self.faults: list[str] = []
        self.old: dict[str, str] = {}  # by the place of the row
        self.missing: set[str] = set()  # places of the English rows
        self.texts: dict[str, str] = {}
        self.rows: dict[tuple[str, str, str], TranslatedRow] = {}
        self.unused_texts: dict[str, str] = {}  # and their places
        self.unused_rows: dict[str, str] = {}  # by their places
        self._read_texts()
        for source in sorted(folder.glob("*/*.tsv")):
            if source.parent.name != KEYWORDS:
                self._read_rows(source)

    def summary(self) -> str:
        return (f"{self.folder.name}: {len(self.rows)} rows are translated, "
                f"{len(self.missing)} are missing, {len(self.old)} are old")

    def categories(self, data_file: str, english: list[Category]) -> list[Category]:
        """These categories in the other language; what is missing stays English."""
        since = self._text("", SINCE.strip())
        return [replace(one, name="/" * one.name.startswith("/")
                        + self._text(one.where, one.name.removeprefix("/")),
                        rows=[self._row(data_file, one.section, row, since) for row in one.rows],
                        notes=[self._text(one.where, note) for note in one.notes], since=since)
                for one in english]

    def check_use(self) -> None:
        """To be called when all categories are made: tells what none of them has used."""
        self.faults += [f"{where}: '{text}' is used by nothing"
                        for text, where in self.unused_texts.items()]
        self.faults += [f"{where}: {row} has no English row"
                        for where, row in self.unused_rows.items()]

    def _lines(self, source: Path) -> Iterator[tuple[str, list[str]]]:
        """Place and fields of every line that has any."""
        shown_name = source.relative_to(self.folder.parent).as_posix()
        for number, line in enumerate(source.read_text(encoding="utf-8").split("\n"), 1):
            where, fields = f"{shown_name}:{number}", line.split("\t")
            if not line or line.startswith("#"):
                continue
            if any(one != one.strip() or not one.isprintable() for one in fields):
                self.faults.append(f"{where}: blanks at the edge of a field, or control characters")
            if "@" in line or "///" in line:
                self.faults.append(f"{where}: @ or ///")
            yield where, fields

    def _read_texts(self) -> None:
        source = self.folder / TEXTS
        for where, fields in self._lines(source) if source.is_file() else ():
            if len(fields) != 2 or not all(fields) or fields[0] in self.texts:
                self.faults.append(f"{where}: no new English text with its translation")
                continue
            self.texts[fields[0]] = fields[1]
            self.unused_texts[fields[0]] = where

    def _read_rows(self, source: Path) -> None:
        section = ""
        for where, fields in self._lines(source):
            if len(fields) == 1 and re.fullmatch(r"\[.+\]", fields[0]):
                section = fields[0][1:-1]
                continue
            name, mark, description, values, notes = (fields + [""] * 4)[:5]
            place = (source.parent.name, section.lower(), name)
            if not section or not 3 <= len(fields) <= 5 or not description or place in self.rows:
                self.faults.append(f"{where}: neither a section nor a new row with 3 to 5 fields")
                continue
            self.rows[place] = TranslatedRow(where, mark, description, split(values), split(notes))
            self.unused_rows[where] = f"[{section}] {name}"

    def _text(self, where: str, english: str) -> str:
        self.unused_texts.pop(english, None)
        if english not in self.texts:
            self.faults.append(f"{self.folder.name}/{TEXTS}: no '{english}', as at {where}")
        return self.texts.get(english, english)

    def _row(self, data_file: str, section: str, english: Row, since: str) -> Row:
        """The translated row. In a category that repeats another one, the rows of its own section
        go before those of the other."""
        places = ((data_file, one.lower(), english.name) for one in (section, english.section))
        row = next((self.rows[place] for place in places if place in self.rows), None)
        if not row:
            self.missing.add(english.where)
            self.faults.append(f"{self.folder.name}: no row [{english.section}] {english.name}, as "
                               f"at {english.where}, mark {mark_of(english)}")
            return english
        self.unused_rows.pop(row.where, None)
        if row.mark != mark_of(english):
            self.old[row.where] = f"the text at {english.where} now has the mark {mark_of(english)}"
        self.faults += (f"{row.where}: {fault}" for fault in self._differences(english, row))
        own = iter(row.notes)
        notes = [since + " " + note.removeprefix(SINCE) if note.startswith(SINCE)
                 else self._text(english.where, note) if note == COLOR_NOTE
                 else next(own, note) for note in english.notes]
        return replace(english, where=row.where, description=row.description, values=row.values,
                       notes=notes)

    def _differences(self, english: Row, row: TranslatedRow) -> Iterator[str]:
        """What the translated row tells otherwise than the English one."""
        own = own_notes(english)
        for what, one, other in (("values", english.values, row.values), ("notes", own, row.notes)):
            if len(one) != len(other):
                yield f"{len(other)} {what}, not {len(one)}"
        for one, other in zip(english.values, row.values):
            wanted = self._value(english, one.partition(" = ")[0])
            if other.partition(" = ")[0] != wanted:
                yield f"'{other}' does not begin with '{wanted} = '"
        for one, other in zip([english.description, *english.values, *own],
                              [row.description, *row.values, *row.notes]):
            if Counter(re.findall(r"\d+", one)) != Counter(re.findall(r"\d+", other)):
                yield f"other numbers than in '{one}'"
            lacking = self._names_in(one) ^ self._names_in(other)
            lacking |= self._compared_keys(one) - set(re.findall(r"\w+", other))
            if lacking:
                yield f"{', '.join(sorted(lacking))} is not named as in '{one}'"

    def _value(self, english: Row, value: str) -> str:
        """How the translation writes a value: words about values are translated, values never."""
        is_text = re.search("[a-z]", value) and len(value) > 2  # %p and 4i are none
        is_own = english.kind.startswith("enum")
        return self._text(english.where, value) if is_text and not is_own else value

    def _names_in(self, text: str) -> set[str]:
        """The names in the text that are no mere words."""
        return {word for word in re.findall(r"\w+", text)
                if word in self.key_names and not PLAIN_WORD.fullmatch(word)} | set(
                    SPECIAL_WORD.findall(text))

    def _compared_keys(self, text: str) -> set[str]:
        """The keys that the English text compares with a number, also if their names are words."""
        return self.key_names & set(COMPARED_KEY.findall(text))


def split(field: str) -> list[str]:
    return field.split(" | ") if field else []


def own_notes(row: Row) -> list[str]:
    """The notes that stand in the row, not those that all rows of a kind share."""
    return [note for note in row.notes if note != COLOR_NOTE and not note.startswith(SINCE)]


def mark_of(row: Row) -> str:
    """Eight characters that stand for the English text of the row."""
    text = "\t".join([row.description, " | ".join(row.values), " | ".join(own_notes(row))])
    return f"{zlib.crc32(text.encode()):08x}"
