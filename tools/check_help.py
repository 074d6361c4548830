#!/usr/bin/env python3
"""Checks the help pages. Prints every fault with its file and exits with 1 if there is any.

Usage: check_help.py FOLDER [--program ROOT]

Checked are the form of the pages, all links and pictures, the list of files of the help project and
whether contents and index lead to every page. With --program the names of menu entries, buttons and
messages in the pages (class "ui"), the list of texts for translators, the shortcuts and the keys of
the program's own settings are compared with the sources below ROOT as well.
"""

from __future__ import annotations

import argparse
import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from typing import Iterator

PROJECT = "Readme.hhp"
# Each leads to pages by entries of a name and a target.
CONTENTS = "contents.hhc"
INDEX = "index.hhk"
VOID_ELEMENTS = {"br", "hr", "img", "link", "meta", "param"}

Fault = tuple[str, str]  # the file and what is wrong there


class Page(HTMLParser):
    """What the checks need to know of one page, contents or index file."""

    def __init__(self, path: Path) -> None:
        super().__init__()
        self.name = path.name
        self.faults: list[str] = []
        self.targets: list[str] = []  # of links, pictures, style sheets and entries
        self.entries: list[str] = []
        self.ids: list[str] = []
        self.texts: dict[str, list[str]] = {"title": [], "h1": [], "ui": [], "code": [], "kbd": []}
        self.cells: list[list[str]] = []  # of each row of the tables with texts to translate
        self.language = ""
        self._open: list[tuple[str, list[list[str]]]] = []
        self._in_texts = False
        data = path.read_bytes()
        try:
            source = data.decode("utf-8")
        except UnicodeDecodeError:
            self.faults.append("is not UTF-8")
            source = data.decode("latin-1")
        self.feed(source)
        self.close()
        for tag, _ in self._open:
            self.faults.append(f"<{tag}> is not closed")

    def handle_starttag(self, tag: str, attributes: list[tuple[str, str | None]]) -> None:
        values = {name: value or "" for name, value in attributes}
        if tag == "html":
            self.language = values.get("lang", "")
        if "id" in values:
            if values["id"] in self.ids:
                self.faults.append(f"second id '{values['id']}'")
            self.ids.append(values["id"])
        for name in ("href", "src"):
            if name in values:
                self.targets.append(values[name])
        if tag == "img" and not values.get("alt"):
            self.faults.append(f"picture {values.get('src')} without a description")
        if tag == "param" and values.get("name") == "Local":
            self.targets.append(values.get("value", ""))
            self.entries.append(values.get("value", ""))
        if tag == "table":
            self._in_texts = values.get("class") == "texts"
        if tag not in VOID_ELEMENTS:
            self._open.append((tag, self._start_texts(tag, values.get("class", ""))))

    def _start_texts(self, tag: str, classes: str) -> list[list[str]]:
        """The lists that the text of this element goes to."""
        lists = [self.texts[kind] for kind in (tag, *classes.split()) if kind in self.texts]
        if self._in_texts and tag == "tr":
            self.cells.append([])
        if self._in_texts and tag == "td":
            lists.append(self.cells[-1])
        for texts in lists:
            texts.append("")
        return lists

    def handle_endtag(self, tag: str) -> None:
        if not self._open or self._open[-1][0] != tag:
            self.faults.append(f"</{tag}> does not close what is open, line {self.getpos()[0]}")
        if any(name == tag for name, _ in self._open):
            while self._open.pop()[0] != tag:
                pass

    def handle_data(self, data: str) -> None:
        for _, lists in self._open:
            for texts in lists:
                texts[-1] += data


def check_page(page: Page) -> Iterator[str]:
    yield from page.faults
    if page.name.endswith(".html"):
        if not page.language:
            yield "tells no language"
        for kind in ("title", "h1"):
            if len(page.texts[kind]) != 1 or not page.texts[kind][0].strip():
                yield f"needs one {kind}"


def check_targets(page: Page, pages: dict[str, Page], folder: Path) -> Iterator[str]:
    present = {path.name for path in folder.iterdir()}  # in their letter case
    for target in page.targets:
        if not target or ":" in target:
            yield f"'{target}' leads out of the help"
            continue
        name, _, anchor = target.partition("#")
        name = name or page.name
        if name not in present:
            yield f"{name} does not exist"
        elif anchor and (name not in pages or anchor not in pages[name].ids):
            yield f"{name} has no place '{anchor}'"


def project_files(folder: Path) -> list[str]:
    lines = (folder / PROJECT).read_text(encoding="ascii").splitlines()
    return [line for line in lines[lines.index("[FILES]") + 1:] if line]


def check_lists(pages: dict[str, Page], folder: Path) -> Iterator[Fault]:
    """Every page is in the contents, and every file in the project."""
    html = {name for name in pages if name.endswith(".html")}
    for listing in (CONTENTS, INDEX):
        if listing not in pages:
            yield listing, "does not exist"
    if CONTENTS in pages:
        entries = pages[CONTENTS].entries
        for name in sorted(html - set(entries)):
            yield CONTENTS, f"{name} is missing"
        for name in sorted({entry for entry in entries if entries.count(entry) > 1}):
            yield CONTENTS, f"{name} stands twice"
    linked = {target.partition("#")[0] for page in pages.values() for target in page.targets}
    listed = set(project_files(folder))
    needed = html | {name for name in linked if name and (folder / name).is_file()}
    for name in sorted(needed - listed):
        yield PROJECT, f"{name} is missing"
    for name in sorted(listed - needed):
        exists = (folder / name).is_file()
        yield PROJECT, f"{name} " + ("is there without need" if exists else "does not exist")


def check_titles(pages: dict[str, Page]) -> Iterator[Fault]:
    seen: dict[str, str] = {}
    for name, page in pages.items():
        for title in page.texts["title"]:
            if title in seen:
                yield name, f"has the title of {seen[title]}"
            seen[title] = name


def program_texts(root: Path) -> dict[int, str]:
    source = (root / "model/program/StringTable.cpp").read_text(encoding="utf-8")
    rows = re.findall(r'\{(\d+),\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\}', source)
    return {int(number): "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', parts)).replace('\\"', '"')
            for number, parts in rows}


def plain(text: str) -> str:
    """A text of the program without access key and what may stand behind it."""
    return " ".join(text.split()).replace("&", "").rstrip(" .:")


def check_names(pages: dict[str, Page], texts: dict[int, str]) -> Iterator[Fault]:
    known = {plain(text) for text in texts.values()}
    for name, page in pages.items():
        for shown in page.texts["ui"]:
            for part in re.split(r"\s>\s", shown):
                if plain(part) not in known:
                    yield name, f"the program has no text '{' '.join(part.split())}'"


def check_program(pages: dict[str, Page], root: Path) -> Iterator[Fault]:
    texts = program_texts(root)
    yield from check_names(pages, texts)

    name = "translations.html"
    listed = {int(row[0]): row[1] for row in pages[name].cells if row and row[0].isdigit()}
    for number in sorted(texts.keys() | listed.keys()):
        if texts.get(number) != listed.get(number):
            yield name, f"text {number} is '{texts.get(number)}', not '{listed.get(number)}'"

    source = (root / "model/program/Commands.cpp").read_text(encoding="utf-8")
    shortcuts = re.findall(r'(?:true|false|\'\w\'), "([^"]+)"[)}]', source)
    source = (root / "model/program/OwnSettingsStore.cpp").read_text(encoding="utf-8")
    settings = re.findall(r'\{"(\w+)", k(?:Editor|Common),', source)
    for name, kind, wanted in (("keyboard.html", "kbd", shortcuts),
                               ("own-settings.html", "code", settings)):
        if not wanted:
            yield name, "nothing was found in the sources to compare it with"
        for word in wanted:
            if word not in pages[name].texts[kind]:
                yield name, f"{word} is missing"


def check(folder: Path, root: Path | None) -> list[Fault]:
    paths = sorted(path for path in folder.iterdir() if path.suffix in (".html", ".hhc", ".hhk"))
    pages = {path.name: Page(path) for path in paths}
    faults = [(name, fault) for name, page in pages.items() for fault in check_page(page)]
    faults += [(name, fault) for name, page in pages.items()
               for fault in check_targets(page, pages, folder)]
    faults += check_lists(pages, folder)
    faults += check_titles(pages)
    if root is not None:
        faults += check_program(pages, root)
    return faults


def main(arguments: list[str]) -> int:
    parser = argparse.ArgumentParser(description="Checks the help pages.")
    parser.add_argument("folder", type=Path)
    parser.add_argument("--program", type=Path, metavar="ROOT")
    options = parser.parse_args(arguments)
    faults = check(options.folder, options.program)
    for name, fault in faults:
        print(f"{options.folder / name}: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
