#!/usr/bin/env python3
"""Tests of tools/make_data_files.py; run from anywhere."""

import contextlib
import io
import re
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True  # the tools folder stays as it is
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
import make_data_files  # noqa: E402  (the folder of the tool is known only now)

CATEGORY = "[Panels]\tConfiguration\n"

# What the second source file holds, the line that is at fault in it and a part of the message.
FAULTS = (
    (CATEGORY + "Key\t1\tint\n", 2, "4 to 6 fields"),
    (CATEGORY + "Key\t1\tint\tA.\t\t\tmore\n", 2, "4 to 6 fields"),
    (CATEGORY + "Key\t1\tint\t\n", 2, "no description"),
    (CATEGORY + "Key\t 1\tint\tA.\n", 2, "blanks at the edge"),
    ("Key\t1\tint\tA.\n", 1, "outside a category"),
    ("/Heading\nKey\t1\tint\tA.\n", 2, "outside a category"),
    ("[Panels]\nKey\t1\tint\tA.\n", 1, "neither a heading nor a category"),
    (CATEGORY + "[Key\t1\tint\tA.\n", 2, "neither a heading nor a category"),
    (CATEGORY + "Key\t1\tint\tA.\nkEY\t1\tint\tA.\n", 3, "second key kEY"),
    (CATEGORY + "Key2\t1\tint\tA.\nKey{1..3}\t1\tint\tA.\n", 3, "second key Key2"),
    (CATEGORY + "categorytargetsection\t1\tint\tA.\n", 2, "second key"),
    ("[taken]\tLayout\nKey\t1\tint\tA.\n", 1, "second category 'taken'"),
    ("[targetinifile]\tLayout\nKey\t1\tint\tA.\n", 1, "second category"),
    ("[Empty]\tLayout\n" + CATEGORY + "Key\t1\tint\tA.\n", 1, "category without keys"),
    (CATEGORY + "Key\t1\tint\tMail me@home.\n", 2, "@ or ///"),
    (CATEGORY + "Key\t1\tint\tA.\t1 = see file:///c\n", 2, "@ or ///"),
    (CATEGORY + "Key\t1\tint\tA.\t\tA. | me@home.\n", 2, "@ or ///"),
    (CATEGORY + "Key\tfile:///c\ttext\tA.\n", 2, "/// in the default"),
    (CATEGORY + "Key\tc:/\tpath\tA.\n", 2, "slash at its end"),
    (CATEGORY + f"Key\t1\tint\t{'x' * 4092}\n", 2, "4096 characters"),
    (CATEGORY + f"{'x' * 2034}{{10..11}}\t1\tint\tA.\n", 1, "4096 characters together"),
    (CATEGORY + "Key\t2\tbool\tA.\t0 = no | 1 = yes\n", 2, "default 2 is not among"),
    (CATEGORY + "Key\t1\tbool\tA.\n", 2, "default 1 is not among"),
    (CATEGORY + "Key\t3\tenum\tA.\t1 = one | 2 = two\n", 2, "default 3 is not among"),
    (CATEGORY + "Key\t7\tflags\tA.\t1 = one | 4 = two\n", 2, "default 7 is not among"),
    (CATEGORY + "Key\t1\tenum\tA.\t1 = one | two\n", 2, "'two' is not"),
    (CATEGORY + "Key\t1\tenum\tA.\t1 = one | 1 = two\n", 2, "stands twice"),
    (CATEGORY + "Key\t1\tcolor\tA.\n", 2, "color key"),
    (CATEGORY + "a=b\t1\tint\tA.\n", 2, "cannot be the name"),
    (CATEGORY + ";Key\t1\tint\tA.\n", 2, "cannot be the name"),
    (CATEGORY + "Key\t1\tint\tCaf\u00e9.\n", 2, "outside ASCII"),
    (CATEGORY + "Key\t1\tint\tA.\r\n", 2, "CR line end"),
    (CATEGORY + "Key\t1\tnumber\tA.\n", 2, "unknown type 'number'"),
    (CATEGORY + "Key{3..1}\t1\tint\tA.\n", 2, "range of Key{3..1}"),
    (CATEGORY + "Key{n}\t1\tint\tA.\n", 2, "range of Key{n}"),
    (CATEGORY + "Key\t1\tint\tNumber {n}.\n", 2, "without a range"),
    ("".join(f"[{'x' * 50}{n}]\tLayout\nKey\t1\tint\tA.\n" for n in range(90)), 155, "too many"),
)

WRITTEN_SOURCE = r"""# comment
/Main

[Panels]	Configuration
Path	c:\	path	A folder.		First note. | Second note.
Tab{8..9}	{n}	int	Tab {n}.	1 = one | 8 = {n} again
Tab{8..9}Color		text	Color of tab {n}.
Key	9	flags	Last.	1 = one | 8 = two
[Menu]	DirMenu
Editor	"a.exe" "%1"	text	Quotes at one end.
Quoted	"	text	Quotes at both "ends"
"""

WRITTEN = rb'''[TargetIniFile]
Wcx_ftp=0

[Taken]
CategoryTargetSection=Layout
Key=1///A.

[/Main]

[Panels]
CategoryTargetSection=Configuration
Path=c:\///A folder.@First note.@Second note.
Tab8=8///Tab 8.@1 = one@8 = 8 again
Tab8Color=///Color of tab 8.
Tab9=9///Tab 9.@1 = one@8 = 9 again
Tab9Color=///Color of tab 9.
Key=9///Last.@1 = one@8 = two

[Menu]
CategoryTargetSection=DirMenu
Editor="a.exe" "%1"///Quotes at one end.
Quoted=""///Quotes at both "ends""
'''.replace(b"\n", b"\r\n")

TABLE = """section	key	type	seen	confidence
Main	Key	int	2	high
Main	Filter1	pattern	2	medium
Main	Unsure	int	9	low
Main	Rare	int	1	high
Menu	entry	pattern	3	high
Menu	RedirectSection	text	3	high
100x200 (8x16)	x	int	3	high
<place>	Key	pattern	2	high
"""
DESCRIBED = ("[Taken]\tMain\n", "Key\t1\tint\tA.\n", "Filter7\t1\tint\tA.\n",
             "[Menu]\tMenu\nanything\t1\tint\tA.\n", "RedirectSection\t\ttext\tA.\n",
             "[Screen]\t300x100 (8x18)\nx\t1\tint\tA.\n", "[Place]\tHome\nKey\t1\tint\tA.\n",
             "Other\t1\tint\tA.\n")
# Three settings: Key, RedirectSection and Filters, which is in no table.
SETTINGS = ("[main]\nKEY = 1\nFilter1=\n;Off=1\nFilters=1\nIconDll_a.bar=1\n"
            "[menu]\na=1\nredirectsection=1\n[Else]\na=1\n")


class MakeDataFilesTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.put("knowledge/wincmd/1-first.tsv", "[Taken]\tLayout\nKey\t1\tint\tA.\n")
        self.put("knowledge/wcx_ftp/1.tsv", "[Ftp]\tGeneral\nKey\t1\tint\tA.\n")

    def put(self, name: str, contents: str, encoding: str = "utf-8") -> None:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(contents.encode(encoding))

    def run_tool(self, *arguments: str) -> tuple[int, str]:
        """The exit code and all that was printed."""
        text = io.StringIO()
        with contextlib.redirect_stdout(text), contextlib.redirect_stderr(text):
            code = make_data_files.main(
                ["--knowledge", str(self.folder / "knowledge"), *arguments])
        return code, text.getvalue()

    def test_faults_are_told_by_line_and_nothing_is_written(self) -> None:
        for contents, line, message in FAULTS:
            with self.subTest(contents[:80]):
                self.put("knowledge/wincmd/2-second.tsv", contents)
                code, text = self.run_tool("write", str(self.folder / "out"))
                self.assertEqual(code, 1)
                self.assertRegex(
                    text, rf"(?m)^wincmd/2-second\.tsv:{line}: .*{re.escape(message)}")
                self.assertFalse((self.folder / "out").exists())

    def test_written_bytes_and_their_verification(self) -> None:
        self.put("knowledge/wincmd/2-second.tsv", WRITTEN_SOURCE)
        out = str(self.folder / "out")
        self.assertEqual(self.run_tool("write", out), (0, ""))
        written = self.folder / "out" / "tc all keys english.tmdf"
        self.assertEqual(written.read_bytes(), WRITTEN)
        self.assertEqual((self.folder / "out" / "tc wcx_ftp keys english.tmdf").read_bytes(),
                         b"[TargetIniFile]\r\nWcx_ftp=1\r\n\r\n[Ftp]\r\n"
                         b"CategoryTargetSection=General\r\nKey=1///A.\r\n")
        self.assertEqual(self.run_tool("verify", out), (0, ""))
        written.write_bytes(WRITTEN + b"\r\n")
        code, text = self.run_tool("verify", out)
        self.assertEqual((code, "keys english.tmdf is stale" in text), (1, True))

    def test_coverage_of_tables_and_of_real_files(self) -> None:
        self.put("wincmd_keys.tsv", TABLE)
        table = str(self.folder / "wincmd_keys.tsv")
        for left_out, expected in ((None, []), (1, ["[Main] Key"]), (2, ["[Main] Filter1"]),
                                   (4, ["[Menu] RedirectSection"]), (5, ["[100x200 (8x16)] x"]),
                                   (6, ["[<place>] Key"])):
            rows = [row for i, row in enumerate(DESCRIBED) if i != left_out]
            self.put("knowledge/wincmd/1-first.tsv", "".join(rows))
            code, text = self.run_tool("coverage", table)
            missing = [one.split("described: ")[1] for one in text.splitlines()[:-1]]
            self.assertEqual((code, missing), (1 if expected else 0, expected))
        self.put("knowledge/wincmd/1-first.tsv", "".join(DESCRIBED))
        for encoding in ("utf-16", "utf-8-sig", "cp1252"):
            self.put("files/wincmd_1.ini", SETTINGS, encoding)
            code, text = self.run_tool("coverage", table, "--corpus", str(self.folder / "files"))
            self.assertEqual(code, 1)
            self.assertIn("[main] filters, in 1 file(s)\nfiles: 2 of 3 settings", text)


if __name__ == "__main__":
    unittest.main()
