"""The file of types: besides the types it tells which keys of a settings file are described by others.

Its sections and keys are those of the settings file, with patterns among them; see value_types.py.
Behind them stand sections with a colon in their names:

  [counted:]          the section of the data file that tells what others that differ from it in
                      their numbers hold: #x# (#x#)=1920x1080 (8x16)
  [counted:Colors]    the same for the keys of a section: ColorFilter#=ColorFilter30
  [english:searches]  the entries, as in a data file, of keys with a name of the user's, in each
                      language: *_SearchFor=///File masks of ...
"""

from __future__ import annotations

import re

from key_rows import Category, Row, is_pattern
from value_types import TypeTable


class Companion:
    """What goes into the file, from the categories of the data file in each language."""

    def __init__(self, languages: dict[str, list[Category]], types: TypeTable) -> None:
        self.languages = languages
        self.types = types

    def contents(self) -> bytes:
        sections = {"counted:": self._counted_sections(), **self._counted_keys(),
                    **self._entries()}
        text = "".join(f"\r\n[{section}]\r\n" + "".join(f"{key}={value}\r\n"
                       for key, value in entries.items())
                       for section, entries in sections.items() if entries)
        return (self.types.contents() + text).encode("utf-8-sig")

    def _counted_sections(self) -> dict[str, str]:
        return {one.section_pattern: one.section for one in self.languages["english"]
                if one.section_pattern}

    def _counted_keys(self) -> dict[str, dict[str, str]]:
        """The first category of a section that has a family is the one that goes on."""
        sections: dict[str, dict[str, str]] = {}
        for category in self.languages["english"]:
            for row in category.rows:
                if row.is_open and not is_pattern(category, row):
                    last, _ = row.key(max(row.members, key=int), category)
                    sections.setdefault(f"counted:{category.section}", {}).setdefault(
                        row.pattern(last), last)
        return sections

    def _entries(self) -> dict[str, dict[str, str]]:
        sections: dict[str, dict[str, str]] = {}
        for language, categories in self.languages.items():
            for category in categories:
                for row in category.rows:
                    if is_pattern(category, row):
                        sections.setdefault(f"{language}:{category.section}", {}).setdefault(
                            row.pattern(row.name), row.entry(category))
        return sections


def faults_of_family(row: Row, category: Category) -> str:
    """What is wrong with a family that goes on: the text for a further number is made from that for
    the last one, by putting one number for the other."""
    if not row.is_open or not all(member.isdigit() for member in row.members):
        return "only numbers can go on" if row.is_open else ""
    if is_pattern(category, row):
        return ""
    last = max(row.members, key=int)
    _, entry = row.key(last, category)
    for other in (*row.members, "1234"):
        if re.sub(rf"(?<![0-9]){last}(?![0-9])", other, entry) != row.key(other, category)[1]:
            return f"the entry for {other} is not that for {last} with another number"
    return ""

