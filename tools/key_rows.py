"""Keys and categories of a data file, as the tables in knowledge/ have them."""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from itertools import groupby
from typing import Iterator

from value_types import ValueType, parse_type

# What every color key says about its value.
COLOR_NOTE = ("A color is red + 256 x green + 65536 x blue (each 0 to 255), or $BBGGRR in "
              "hexadecimal.")
SINCE = "Since version "  # begins the last note of a key
NAME_OF_USER = "*"


@dataclass
class Row:
    """A key or a family of keys, as it stands in its source file."""

    where: str
    section: str
    name: str
    default: str
    kind: str
    description: str
    values: list[str]
    notes: list[str]
    members: list[str] = field(default_factory=list)  # of a family: what stands for its braces
    is_open: bool = False  # a family of numbers that goes on in settings files
    type: ValueType = field(default_factory=lambda: parse_type("string", {}))

    def pattern(self, name: str) -> str:
        """The name of a member, with # for its number if all members are numbers."""
        is_numbered = self.members and all(member.isdigit() for member in self.members)
        return re.sub(r"\{.*\}", "#", self.name) if is_numbered else name

    def key(self, member: str | None, category: Category) -> tuple[str, str]:
        """The name and the entry of the key, or of this member of the family, in the category."""
        entry = self.entry(category).replace("{section}", category.section)
        if member is None:
            return self.name, entry
        return re.sub(r"\{.*\}", lambda _: member, self.name), entry.replace("{n}", member)

    def entry(self, category: Category) -> str:
        """The entry with {n} and {section} as they are."""
        lines = [self.description, *self.values, *self.all_notes(category)]
        return f"{self.default}///{'@'.join(lines)}"

    def all_notes(self, category: Category) -> list[str]:
        """Its own notes and those of the category; the one on versions is last."""
        return sorted([*self.notes, *category.notes],
                      key=lambda note: note.startswith(category.since))


@dataclass
class Category:
    """A category, or a heading: that has no section and no keys."""

    where: str
    name: str
    section: str = ""
    rows: list[Row] = field(default_factory=list)
    notes: list[str] = field(default_factory=list)  # of every key
    since: str = SINCE
    section_pattern: str = ""  # with # for its numbers, if other sections are like this one

    def keys(self) -> Iterator[tuple[Row, str, str]]:
        """Row, name and entry of every key that the data file has; neighbouring families of the
        same members take turns."""
        described = [row for row in self.rows if not is_pattern(self, row)]
        for members, group in groupby(described, key=lambda row: row.members):
            rows = list(group)
            for member in members or [None]:
                for row in rows:
                    yield row, *row.key(member, self)


def is_pattern(category: Category, row: Row) -> bool:
    """Whether the row stands for keys with a name of the user's, or in sections with one. The data
    file does not have it: there a * means itself."""
    return NAME_OF_USER in category.section or (NAME_OF_USER in row.name and not row.members)


def members_of(braces: str) -> list[str]:
    """What may stand for the braces of a name: numbers or capital letters from first to last, or
    the names of a list; nothing if they hold none of these."""
    match = re.fullmatch(r"(?:(\d+)\.\.(\d+)|([A-Z])\.\.([A-Z]))", braces)
    if match and match[1]:
        return [str(number) for number in range(int(match[1]), int(match[2]) + 1)]
    if match:
        return [chr(code) for code in range(ord(match[3]), ord(match[4]) + 1)]
    members = braces.split(",")
    is_list = len(members) > 1 and ".." not in braces and all(one.strip() == one for one in members)
    return members if is_list and all(members) else []
