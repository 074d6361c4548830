"""What the value of a settings key may be: the types in knowledge/ and in the files of types.

A type is a line of words: its name, its arguments, and "history" if Total Commander writes the
value by itself. docs/data_files.md lists them. What the values mean stands in the description of
the key, a line "value = meaning" for each; a type and these lines must agree.
"""

from __future__ import annotations

import re
from itertools import chain
from pathlib import Path
from typing import Iterable, Iterator

UNITS = ("px", "percent", "bytes", "KB", "MB", "ms", "s", "min", "days", "lines", "chars")
SEPARATORS = ("blank", "comma", "bar", "semicolon")
PATHS = ("file", "folder", "program", "command")
HISTORY = "history"
RESERVED = "reserved"  # what the line of a bit says that must be kept but is not offered

NUMBER = re.compile(r"-?\d+")
RANGE = re.compile(r"(-?\d+)?\.\.(-?\d+)?")
PATTERN = re.compile(r"\*\.[\w*]+(;\*\.[\w*]+)*")
PLAIN_COLOR = re.compile(r"\$[0-9a-f]{1,6}|#[0-9a-f]{6}", re.IGNORECASE)
MAX_COLOR = 0xFFFFFF


class BadType(ValueError):
    """The words of a type make no sense; its text tells which."""


class ValueType:
    """A type, with the meanings that the lines of the description give to single values."""

    def __init__(self, text: str, words: list[str], lines: dict[str, str]) -> None:
        """Raises BadType if the words, which are its arguments in the text, are none."""
        self.text = text
        self.lines = lines
        self.read(words)

    def read(self, words: list[str]) -> None:
        if words:
            raise BadType(f"unknown word '{words[0]}'")

    def accepts(self, value: str) -> bool:
        """Whether this value, which is not empty, is of the type."""
        return True

    def faults(self) -> Iterator[str]:
        """What the lines of the description say against the type."""
        return iter(())

    def companions(self) -> list[str]:
        """Names of the keys that go with this one."""
        return []

    def numbers_in_lines(self) -> list[str]:
        return [value for value in self.lines if NUMBER.fullmatch(value)]

    def faults_of_single_values(self, singles: Iterable[str]) -> Iterator[str]:
        """For types that have lines for some of their values only."""
        for value in singles:
            if value not in self.lines:
                yield f"no line for {value}"
        for value in self.numbers_in_lines():
            if not self.accepts(value):
                yield f"the line for {value}, which is outside the type"


class BoolType(ValueType):
    def accepts(self, value: str) -> bool:
        return value in ("0", "1")

    def faults(self) -> Iterator[str]:
        if set(self.lines) != {"0", "1"}:
            yield "a bool has a line for 0, one for 1 and no other"


class EnumType(ValueType):
    """One of the listed values. An open one, such as 3.., stands for all numbers from it on."""

    def read(self, words: list[str]) -> None:
        if not words or len(set(words)) < len(words):
            raise BadType("an enum lists its values, each once")
        self.values = words
        self.open = [read_range(word) for word in words if ".." in word]

    def accepts(self, value: str) -> bool:
        return value in self.values or any(holds(one, value) for one in self.open)

    def faults(self) -> Iterator[str]:
        for value in self.values:
            if value not in self.lines:
                yield f"no line for {value}"
        for value in self.lines:
            if value not in self.values:
                yield f"the line for {value}, which is no value of the type"


class FlagsType(ValueType):
    """A sum of bits. Of those joined by bars at most one is in the sum, and they may share bits, as
    in 1|2|3: then it is the part of the sum with all their bits. A negative number is no sum."""

    def read(self, words: list[str]) -> None:
        self.singles = [word for word in words if NUMBER.fullmatch(word) and int(word) < 0]
        self.groups: list[list[int]] = []
        self.bits = 0
        for word in words:
            if word not in self.singles:
                self.read_group(word)
        if not self.groups:
            raise BadType("flags lists its bits")

    def read_group(self, word: str) -> None:
        if not re.fullmatch(r"[1-9]\d*(\|[1-9]\d*)*", word):
            raise BadType(f"'{word}' is no bit")
        group = [int(one) for one in word.split("|")]
        if len(group) == 1 and group[0] & (group[0] - 1):
            raise BadType(f"{word} is more than one bit")
        if self.bits & mask_of(group):
            raise BadType(f"a bit of {word} stands twice")
        self.groups.append(group)
        self.bits |= mask_of(group)

    def accepts(self, value: str) -> bool:
        if not NUMBER.fullmatch(value) or int(value) < 0:
            return value in self.singles
        number = int(value)
        return not number & ~(self.bits | self.reserved()) and all(
            number & mask_of(group) in (0, *group) for group in self.groups)

    def reserved(self) -> int:
        return mask_of(int(value) for value, text in self.lines.items()
                       if text == RESERVED and NUMBER.fullmatch(value))

    def faults(self) -> Iterator[str]:
        offered = [str(number) for group in self.groups for number in group] + self.singles
        for value in offered:
            if value not in self.lines:
                yield f"no line for {value}"
        for value, text in self.lines.items():
            if value not in offered and value != "0" and text != RESERVED:
                yield f"the line for {value}, which is neither 0 nor a bit of the type"


class IntType(ValueType):
    """A whole number: its range, its unit and single values with a meaning of their own."""

    def read(self, words: list[str]) -> None:
        self.range = read_range(words.pop(0)) if words and ".." in words[0] else (None, None)
        if words and words[0] in UNITS:
            words.pop(0)
        self.singles = words
        read_singles(words)

    def accepts(self, value: str) -> bool:
        return value in self.singles or holds(self.range, value)

    def faults(self) -> Iterator[str]:
        return self.faults_of_single_values(self.singles)


class ColorType(ValueType):
    """A color, or one of the single values that are none."""

    def read(self, words: list[str]) -> None:
        self.singles = words
        read_singles(words)

    def accepts(self, value: str) -> bool:
        return (value in self.singles or holds((0, MAX_COLOR), value)
                or PLAIN_COLOR.fullmatch(value) is not None)

    def faults(self) -> Iterator[str]:
        return self.faults_of_single_values(self.singles)


class FontType(ValueType):
    """The name of a font, with the keys for its size, weight and character set."""

    def read(self, words: list[str]) -> None:
        if not 1 <= len(words) <= 3:
            raise BadType("a font names the keys of its size, weight and character set")
        self.keys = words

    def companions(self) -> list[str]:
        return self.keys


class PathType(ValueType):
    def read(self, words: list[str]) -> None:
        if not words or words[0] not in PATHS:
            raise BadType(f"a path is one of {', '.join(PATHS)}")
        if words[1:] and (words[0] not in ("file", "program") or not PATTERN.fullmatch(words[1])):
            raise BadType(f"'{words[1]}' is no pattern of a file or program")
        super().read(words[2:])


class ListType(ValueType):
    def read(self, words: list[str]) -> None:
        if not words or words[0] not in SEPARATORS:
            raise BadType(f"the separator of a list is one of {', '.join(SEPARATORS)}")
        super().read(words[1:])


TYPES: dict[str, type[ValueType]] = {
    "bool": BoolType, "enum": EnumType, "flags": FlagsType, "int": IntType, "color": ColorType,
    "font": FontType, "path": PathType, "list": ListType, "string": ValueType}


def parse_type(text: str, lines: dict[str, str]) -> ValueType:
    """The type that these words name. Raises BadType if there is none."""
    name, *words = text.split(" ")
    if words and words[-1] == HISTORY:
        words.pop()
    if name not in TYPES:
        raise BadType(f"unknown type '{name}'")
    return TYPES[name](text, words, lines)


def read_range(word: str) -> tuple[int | None, int | None]:
    match = RANGE.fullmatch(word)
    low, high = (one and int(one) for one in match.groups()) if match else (None, None)
    if low is None and high is None or low is not None and high is not None and low >= high:
        raise BadType(f"'{word}' is no range")
    return low, high


def holds(limits: tuple[int | None, int | None], value: str) -> bool:
    """Whether the value is a whole number within the limits."""
    low, high = limits
    return (NUMBER.fullmatch(value) is not None and (low is None or low <= int(value))
            and (high is None or int(value) <= high))


def read_singles(words: list[str]) -> None:
    for word in words:
        if not NUMBER.fullmatch(word):
            raise BadType(f"unknown word '{word}'")
    if len(set(words)) < len(words):
        raise BadType("a single value stands twice")


def mask_of(numbers: Iterable[int]) -> int:
    """The number that has every bit of these."""
    mask = 0
    for number in numbers:
        mask |= number
    return mask


def fits(pattern: str, name: str) -> bool:
    """Whether the name is the pattern with a number for every # and any text for every *."""
    expression = "".join({"#": r"\d+", "*": ".+"}.get(part, re.escape(part))
                         for part in re.split("([#*])", pattern))
    return re.fullmatch(expression, name, re.IGNORECASE) is not None


class TypeTable:
    """The types of all keys of a settings file. A family is one entry, with # for its numbers,
    where every key of the section that fits this has the same type."""

    def __init__(self, keys: Iterable[tuple[str, str, str, ValueType]]) -> None:
        """Takes section, name, name with # if it is one of a family, and type of each key."""
        sections: dict[str, tuple[str, list[tuple[str, str, ValueType]]]] = {}
        for section, *key in keys:
            sections.setdefault(section.lower(), (section, []))[1].append((key[0], key[1], key[2]))
        self.sections = {lower: (section, entries_of(rows))
                         for lower, (section, rows) in sections.items()}

    def find(self, section: str, key: str) -> ValueType | None:
        """The type of this key: an exact name goes before one with #, that before one with *."""
        like = (one for one in self.sections.values() if "*" in one[0] and fits(one[0], section))
        _, entries = self.sections.get(section.lower()) or next(like, ("", {}))
        exact, numbered, named = (
            [one for name, one in entries.items()
             if (name.lower() == key.lower() if not mark else mark in name and fits(name, key))]
            for mark in ("", "#", "*"))
        return next(chain(exact, numbered, named), None)

    def contents(self) -> str:
        """The file of types: an INI file with the sections and keys of the settings file."""
        return "\r\n".join(
            f"[{section}]\r\n" + "".join(f"{name}={one.text}\r\n" for name, one in entries.items())
            for section, entries in self.sections.values())


def entries_of(keys: list[tuple[str, str, ValueType]]) -> dict[str, ValueType]:
    """The entries of a section, from name, name with # and type of its keys."""
    families = {pattern for name, pattern, _ in keys if pattern != name and len(
        {one.text for other, _, one in keys if fits(pattern, other)}) == 1}
    entries: dict[str, ValueType] = {}
    for name, pattern, one in keys:
        entries.setdefault(pattern if pattern in families else name, one)
    return entries


class KnownOutside:
    """The values in real files that are known to be outside their type, each with its reason: rows
    of settings file, section, key, value and reason. `faults` tells what is wrong in them."""

    def __init__(self, source: Path, tables: dict[str, TypeTable]) -> None:
        self.values: set[tuple[str, str, str, str]] = set()
        self.faults: list[str] = []
        lines = source.read_text(encoding="ascii").splitlines() if source.is_file() else []
        for number, line in enumerate(lines, 1):
            fault = "" if line.startswith("#") else self._read_row(line.split("\t"), tables)
            self.faults += [f"{source.name}:{number}: {fault}"] if fault else []

    def _read_row(self, fields: list[str], tables: dict[str, TypeTable]) -> str:
        """What is wrong with the row."""
        if len(fields) != 5 or not all(fields):
            return "a row has settings file, section, key, value and reason"
        settings, section, key, value = fields[:4]
        wanted = tables[settings].find(section, key) if settings in tables else None
        if not wanted:
            return f"[{section}] {key} has no type"
        if wanted.accepts(value):
            return f"{value} is of the type '{wanted.text}'"
        self.values.add((settings, section.lower(), key.lower(), value))
        return ""
