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
    type: ValueType = field(default_factory=lambda: parse_type("string", {}))

    def pattern(self, name: str) -> str:
        """The name of a member, with # for its number if all members are numbers."""
        is_numbered = self.members and all(member.isdigit() for member in self.members)
        return re.sub(r"\{.*\}", "#", self.name) if is_numbered else name

    def key(self, member: str | None, category: Category) -> tuple[str, str]:
        """The name and the entry of the key, or of this member of the family, in the category."""
        lines = [self.description, *self.values, *self.all_notes(category)]
        entry = f"{self.default}///{'@'.join(lines)}".replace("{section}", category.section)
        if member is None:
            return self.name, entry
        return re.sub(r"\{.*\}", lambda _: member, self.name), entry.replace("{n}", member)

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

    def keys(self) -> Iterator[tuple[Row, str, str]]:
        """Row, name and entry of every key; neighbouring families of the same members take turns."""
        for members, group in groupby(self.rows, key=lambda row: row.members):
            rows = list(group)
            for member in members or [None]:
                for row in rows:
                    yield row, *row.key(member, self)


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
