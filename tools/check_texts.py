#!/usr/bin/env python3
"""Checks the program's visible texts.

    check_texts.py

Every number that the sources, menus and dialogs use has a built-in text, and every text is used; every language file
in Languages/ has all of them and no others, with "&", "%1" and "%2" where English has them; and no menu or dialog page
has two equal access keys in any language.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Texts that the file format promises to translators although no window shows them.
UNUSED = {1502, 1505, 1506, 1507}
# Two of the built-in texts share an access key on one page of the options.
EXEMPT_IN_ENGLISH = {1010, 1120}
# Menus that open at a button or a node, beside those of the menu bar.
OTHER_MENUS = {"tree": [112, 113, 4090], "recent files": []}


def read(path: str) -> str:
    return (ROOT / path).read_text(encoding="utf-8")


def built_in_texts() -> dict[int, str]:
    rows = re.findall(r'\{(\d+),\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\}', read("model/program/StringTable.cpp"))
    return {int(number): "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', text)) for number, text in rows}


def menus() -> dict[str, list[int]]:
    source = read("model/program/Commands.cpp")
    numbers = dict(re.findall(r"\{Command::(\w+),\s*(\d+),", source))
    found = {"menu bar": []}
    for name, body in re.findall(r"constexpr Command (k\w+Menu)\[\] = \{(.*?)\};", source, re.S):
        found[name] = [int(numbers[c]) for c in re.findall(r"Command::(\w+)", body) if c != "None"]
    bar = re.search(r"kMenuBar\[\] = \{(.*?)\};", source, re.S).group(1)
    found["menu bar"] = [int(number) for number in re.findall(r"\{(\d+),", bar)]
    return {**found, **OTHER_MENUS}


def dialogs() -> dict[str, list[int]]:
    """The text numbers of each dialog template. A page of a dialog is a template of its own, whose keys share the
    window with those of the dialog around it: IDD_OPTIONS_LAYOUT is a page of IDD_FRMOPTIONS."""
    found: dict[str, list[int]] = {}
    for script in sorted(ROOT.glob("ui/*/*.rc")):
        for name, body in re.findall(r"^(IDD_\w+) DIALOGEX.*?^BEGIN\n(.*?)^END", script.read_text(), re.S | re.M):
            found[name] = [int(number) for number in re.findall(r'"(\d+)"', body)]
    for name, numbers in found.items():
        numbers += found.get("IDD_FRM" + name.split("_")[1], []) if name.count("_") > 1 else []
    return found


def used_numbers(groups: dict[str, list[int]]) -> set[int]:
    used = {number for numbers in groups.values() for number in numbers}
    used.update(int(n) for n in re.findall(r"\{Command::\w+,\s*(\d+),", read("model/program/Commands.cpp")))
    used.update(int(n) for n in re.search(r'kToolbarIds = "([\d,]+)"', read("model/program/ToolbarSpec.h")).group(1).split(","))
    for script in ROOT.glob("ui/*/*.rc"):
        used.update(int(n) for n in re.findall(r'CAPTION "(\d+)"', script.read_text()))
    sources = "".join(path.read_text(encoding="utf-8") for folder in ("model", "ui", "app")
                      for path in (ROOT / folder).rglob("*.cpp"))
    for name, number in re.findall(r"(k\w+) = (\d+);", read("model/program/StringTable.h")):
        if re.search(rf"\b{name}\b", sources):
            used.add(int(number))
    # Windows name what they put together themselves in constants or lists of their own.
    used.update(int(n) for n in re.findall(r"\bk\w*(?:Text|Caption)s?\w*(?:\[\])? = (\d{3,4});", sources))
    for numbers in re.findall(r"\bk\w*(?:Text|Caption)s?\w*\[\] = \{([\d, ]+)\};", sources):
        used.update(int(n) for n in numbers.split(","))
    return used


def language_texts(path: pathlib.Path) -> dict[int, str]:
    data = path.read_bytes()
    if not data.startswith(b"\xef\xbb\xbf"):
        raise ValueError("no byte order mark")
    texts = {}
    for line in data.decode("utf-8-sig").splitlines():
        match = re.fullmatch(r'(\d+)=(.*)', line)
        if match:
            texts[int(match.group(1))] = re.sub(r'^"(.*)"$', r"\1", match.group(2))
        elif line and line not in ("[UserLanguage]", "RightToLeftLanguage=1"):
            raise ValueError(f"what is this: {line}")
    return texts


def access_key(text: str) -> str:
    match = re.search(r"&(.)", text.replace("&&", ""))
    return match.group(1).casefold() if match else ""


def key_faults(language: str, texts: dict[int, str], groups: dict[str, list[int]]) -> list[str]:
    faults = []
    for group, numbers in groups.items():
        owners: dict[str, int] = {}
        for number in numbers:
            key = access_key(texts.get(number, ""))
            if not key or owners.get(key) == number:
                continue
            if key in owners and not (language == "English" and {number, owners[key]} <= EXEMPT_IN_ENGLISH):
                faults.append(f"{language}, {group}: {owners[key]} and {number} share the access key {key}")
            owners.setdefault(key, number)
    return faults


def language_faults(language: str, texts: dict[int, str], english: dict[int, str]) -> list[str]:
    faults = [f"{language}: {number} is missing" for number in english if not texts.get(number)]
    faults += [f"{language}: {number} is no text of the program" for number in texts if number not in english]
    for number in english.keys() & texts.keys():
        if ("&" in english[number]) != ("&" in texts[number]):
            faults.append(f"{language}: {number} has or lacks an access key unlike English")
        if english[number].endswith("...") != texts[number].rstrip(")&ABCDEFGHIJKLMNOPQRSTUVWXYZ(").endswith("..."):
            faults.append(f"{language}: {number} has or lacks the dots of English")
        if sorted(re.findall(r"%\d", english[number])) != sorted(re.findall(r"%\d", texts[number])):
            faults.append(f"{language}: {number} has other places for numbers and names than English")
    return faults


def main() -> int:
    english = built_in_texts()
    groups = {**menus(), **dialogs()}
    used = used_numbers(groups)
    faults = [f"{number} is used and has no text" for number in sorted(used - english.keys())]
    faults += [f"{number} is used by nothing" for number in sorted(english.keys() - used - UNUSED)]
    faults += key_faults("English", english, groups)
    files = sorted(ROOT.glob("Languages/*.lng"))
    for path in files:
        try:
            texts = language_texts(path)
        except (ValueError, UnicodeDecodeError) as error:
            faults.append(f"{path.name}: {error}")
            continue
        faults += language_faults(path.stem, texts, english) + key_faults(path.stem, texts, groups)
    print("\n".join(faults) or f"{len(english)} texts, {len(files)} languages, {len(groups)} menus and dialog pages")
    return 1 if faults else 0


sys.exit(main())
