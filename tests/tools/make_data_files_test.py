#!/usr/bin/env python3
"""Tests of tools/make_data_files.py and the modules that it uses; run from anywhere."""

import codecs
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
from value_types import parse_type  # noqa: E402

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
    (CATEGORY + "Key\tfile:///c\tstring\tA.\n", 2, "/// in the default"),
    (CATEGORY + "Key\tc:/\tpath file\tA.\n", 2, "slash at its end"),
    (CATEGORY + f"Key\t1\tint\t{'x' * 4092}\n", 2, "4096 characters"),
    (CATEGORY + f"Key\t1\tint\t{'word ' * 33}end\n", 2, "3 lines before"),
    (CATEGORY + "+ A.\nKey\t1\tint\tA.\t\tA. | A. | A. | A. | A.\n", 3, "7 lines besides"),
    (CATEGORY + f"{'x' * 2034}{{10..11}}\t1\tint\tA.\n", 1, "4096 characters together"),
    (CATEGORY + "Key\t1\tenum 1 2\tA.\t1 = one | two\n", 2, "'two' is not"),
    (CATEGORY + "Key\t1\tenum 1\tA.\t1 = one | 1 = two\n", 2, "stands twice"),
    (CATEGORY + "Key\t1\tcolor\tA.\n", 2, "color key"),
    (CATEGORY + "a=b\t1\tint\tA.\n", 2, "cannot be the name"),
    (CATEGORY + ";Key\t1\tint\tA.\n", 2, "cannot be the name"),
    (CATEGORY + "Key\t1\tint\tCaf\u00e9.\n", 2, "outside ASCII"),
    (CATEGORY + "Key\t1\tint\tA.\r\n", 2, "CR line end"),
    (CATEGORY + "Key#\t1\tint\tA.\n", 2, "cannot be the name"),
    ("[Panels]\tLayout#\nKey\t1\tint\tA.\n", 1, "cannot be the name of a section"),
    (CATEGORY + "Key\t1\tint\tA.\n[More]\tconfiguration\nkey\t1\tstring\tA.\n", 4, "type 'int' at"),
    (CATEGORY + "Key\t\tfont Size\tA.\nSize\t\tstring\tA.\n", 2, "Size is no number"),
    (CATEGORY + "Key\t\tfont Size\tA.\n[More]\tMore\nSize\t\tint\tA.\n", 2, "Size is no number"),
    (CATEGORY + "Key{3..1}\t1\tint\tA.\n", 2, "braces of Key{3..1}"),
    (CATEGORY + "Key{n}\t1\tint\tA.\n", 2, "braces of Key{n}"),
    (CATEGORY + "Key{a, b}\t1\tint\tA.\n", 2, "braces of Key{a, b}"),
    ("[Again]\tLayout\tPanels\n", 1, "no category 'Panels' before"),
    (CATEGORY + "F{1..2+}\t\tstring\tThe 2 of {n}.\n", 2, "with another number"),
    (CATEGORY + "*_a\t{n}\tstring\tA.\n", 2, "{n} in the default"),
    ("+ A.\n", 1, "note outside a category"),
    (CATEGORY + "Key\t1\tint\tNumber {n}.\n", 2, "without braces"),
    ("".join(f"[{'x' * 50}{n}]\tLayout\nKey\t1\tint\tA.\n" for n in range(90)), 155, "too many"),
)

# A type, the default and the values of a key that do not agree, and a part of the message.
TYPE_FAULTS = (
    ("number", "", "", "unknown type 'number'"),
    ("history", "", "", "unknown type 'history'"),
    ("string history more", "", "", "unknown word 'history'"),
    ("bool", "", "0 = no", "a bool has a line"),
    ("bool", "", "0 = no | 1 = yes | 2 = maybe", "a bool has a line"),
    ("bool", "2", "0 = no | 1 = yes", "default 2 is not of"),
    ("enum", "", "", "lists its values"),
    ("enum 1 1", "", "1 = one", "each once"),
    ("enum 1 2", "", "1 = one", "no line for 2"),
    ("enum 1", "", "1 = one | 2 = two", "the line for 2"),
    ("enum 1 3..", "2", "1 = one | 3.. = more", "default 2 is not of"),
    ("enum 1 5..3", "", "1 = one | 5..3 = more", "'5..3' is no range"),
    ("flags", "", "", "lists its bits"),
    ("flags 1 3", "", "1 = one | 3 = two", "3 is more than one bit"),
    ("flags 1|2 2", "", "1 = one | 2 = two", "a bit of 2 stands twice"),
    ("flags 1 x", "", "1 = one", "'x' is no bit"),
    ("flags 1 2", "", "1 = one", "no line for 2"),
    ("flags 1", "", "0 = none | 1 = one | 2 = two", "the line for 2"),
    ("flags 1 4", "7", "1 = one | 4 = two", "default 7 is not of"),
    ("int 3..1", "", "", "'3..1' is no range"),
    ("int ..", "", "", "'..' is no range"),
    ("int miles", "", "", "unknown word 'miles'"),
    ("int 1 1", "", "1 = one", "stands twice"),
    ("int 0.. -1", "", "", "no line for -1"),
    ("int 0.. s", "", "-1 = never", "the line for -1"),
    ("int 0..9", "10", "", "default 10 is not of"),
    ("font", "", "", "names the keys"),
    ("path disk", "", "", "one of file, folder"),
    ("path folder *.txt", "", "", "'*.txt' is no pattern"),
    ("list dot", "", "", "one of blank, comma"),
)

# A type, the values of its key, and what it accepts and what not.
ACCEPTED = (
    ("bool", (), ("0", "1"), ("2", "-1", "yes", "01")),
    ("enum I -1 3.. history", (), ("I", "-1", "3", "70"), ("i", "2", "-3", "3.0")),
    ("flags 1|2|3 16 -1", ("32 = reserved",), ("0", "3", "17", "51", "-1"), ("4", "64", "-2", "x")),
    ("flags 1|2 4", (), ("5", "6"), ("3", "7")),
    ("int -5..9 px 20", (), ("-5", "9", "20"), ("-6", "10", "1.5", "$5")),
    ("int ms", (), ("-100", "4244911203"), ("soon",)),
    ("color -1", (), ("-1", "16777215", "$C04020", "#ff0000"), ("-2", "16777216", "$1C04020")),
    ("path file *.dll;*.icl", (), ("c:\\x.dll -a",), ()),
)

WRITTEN_SOURCE = r"""# comment
/Main

[Panels]	Configuration
Path	c:\	path folder	A folder.		First note. | Second note.
Tab{8..9}	{n}	int	Tab {n}.	1 = one | 8 = {n} again
Tab{8..9}Color		string	Color of tab {n}.
Key	9	flags 1 8	Last.	1 = one | 8 = two
Tab7Color		string history	Not of the family.
[Menu]	DirMenu
Editor	"a.exe" "%1"	string	Quotes at one end.
Quoted	"	string	Quotes at both "ends"
[Size]	configuration
Size	9	int 1..	Points.
[Colors]	Colors
C+{B..C}		string	Ctrl+{n}.
C+{B..C}_params		string	Parameters.
{my,the text}_8		color	Of {n}.		Since version 9. | Standard.
[More colors]	Dark	Colors
+ Of [{section}].
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
Tab7Color=///Not of the family.

[Menu]
CategoryTargetSection=DirMenu
Editor="a.exe" "%1"///Quotes at one end.
Quoted=""///Quotes at both "ends""

[Size]
CategoryTargetSection=configuration
Size=9///Points.

[Colors]
CategoryTargetSection=Colors
C+B=///Ctrl+B.
C+B_params=///Parameters.
C+C=///Ctrl+C.
C+C_params=///Parameters.
my_8=///Of my.@Standard.@COLOR@Since version 9.
the text_8=///Of the text.@Standard.@COLOR@Since version 9.

[More colors]
CategoryTargetSection=Dark
C+B=///Ctrl+B.@Of [Dark].
C+B_params=///Parameters.@Of [Dark].
C+C=///Ctrl+C.@Of [Dark].
C+C_params=///Parameters.@Of [Dark].
my_8=///Of my.@Standard.@COLOR@Of [Dark].@Since version 9.
the text_8=///Of the text.@Standard.@COLOR@Of [Dark].@Since version 9.
'''.replace(b"\n", b"\r\n").replace(b"COLOR", make_data_files.COLOR_NOTE.encode())

PATTERNS = """[Screen]	{8}x{6}
Size	1	int	At {section}.
[Tabs]	Tabs
F{1..2+}		string	Tab {n}.
*_for	7	int	Of {n}.
[Named]	X_*
G{1..3+}		string	G {n}.
"""
WRITTEN_PATTERNS = (b"\r\n[counted:]\r\n#x#=8x6\r\n\r\n[counted:Tabs]\r\nF#=F2\r\n\r\n"
                    b"[english:Tabs]\r\n*_for=7///Of {n}.\r\n\r\n"
                    b"[english:X_*]\r\nG#=///G {n}.\r\n")

WRITTEN_TYPES = b"""[Layout]
Key=int

[Configuration]
Path=path folder
Tab#=int
Tab8Color=string
Tab9Color=string
Key=flags 1 8
Tab7Color=string history
Size=int 1..

[DirMenu]
Editor=string
Quoted=string

[Colors]
C+B=string
C+B_params=string
C+C=string
C+C_params=string
my_8=color
the text_8=color

[Dark]
C+B=string
C+B_params=string
C+C=string
C+C_params=string
my_8=color
the text_8=color
""".replace(b"\n", b"\r\n")

# Rows, their translation with MARK for each mark, and what becomes of the last category.
ENGLISH = r"""[Panels]	Configuration
+ Of [{section}].
Path	9	path folder	See Tab1 or [Left].	other text = name | 9 = own	At most 12. | Since version 9.
Tab{1..2}	{n}	enum 1 2	Tab {n}.	1 = one | 2 = two	Counts while show is 1.
[Colors]	Dark	Panels
show	-1	color -1	Shown.	-1 = none	Own.
"""
TEXTS = f"""# comment\nSince version\tSeit\nTaken\tBelegt\nFtp\tFTP\nPanels\tFenster
Of [{{section}}].\tAus [{{section}}].\nother text\tText\nColors\tFarben
{make_data_files.COLOR_NOTE}\tBunt.\n"""
GERMAN = """[Configuration]
Path	MARK	Siehe Tab1 oder [Left].	Text = Name | 9 = für eigene	Höchstens 12.
Tab{1..2}	MARK	Tab {n}.	1 = eins | 2 = zwei	Gilt, wenn show 1 ist.

[Dark]
Tab{1..2}	MARK	Dunkler Tab {n}.	1 = eins | 2 = zwei	Gilt, wenn show 1 ist.
show	MARK	Gezeigt.	-1 = ohne	Eigene.
"""
TRANSLATED = """Tab2=2///Tab 2.@1 = eins@2 = zwei@Gilt, wenn show 1 ist.@Aus [Configuration].

[Farben]
CategoryTargetSection=Dark
Path=9///Siehe Tab1 oder [Left].@Text = Name@9 = für eigene@Höchstens 12.@Seit 9.
Tab1=1///Dunkler Tab 1.@1 = eins@2 = zwei@Gilt, wenn show 1 ist.
Tab2=2///Dunkler Tab 2.@1 = eins@2 = zwei@Gilt, wenn show 1 ist.
show=-1///Gezeigt.@-1 = ohne@Eigene.@Bunt.
""".replace("\n", "\r\n").encode()

# What is changed in the translation, where the fault is and a part of the message.
TRANSLATION_FAULTS = (
    ("Höchstens 12", "Höchstens 13", "wincmd/2.tsv:2", "other numbers than in 'At most 12.'"),
    ("Siehe Tab1 oder [Left]", "1", "wincmd/2.tsv:2", "Tab1, [Left] is not named as in 'See Tab1"),
    ("wenn show 1", "wenn es 1", "wincmd/2.tsv:3", "show is not named"),
    ("1 = eins | 2 = zwei", "2 = zwei | 1 = eins", "wincmd/2.tsv:3", "begin with '1 = '"),
    ("Text = Name", "other text = Name", "wincmd/2.tsv:2", "begin with 'Text = '"),
    ("\tEigene.", "", "wincmd/2.tsv:7", "0 notes, not 1"),
    ("Gezeigt.", "Wort " * 33 + "Ende", "wincmd/2.tsv:7", "3 lines before"),
    ("[Dark]\n", "[Dark]\nshow\tMARK\tNoch mal.\n", "wincmd/2.tsv:8", "neither a section nor a"),
    ("[Dark]\n", "[Dark]\nOther\tMARK\tMehr.\n", "wincmd/2.tsv:6", "[Dark] Other has no English"),
    ("show\tMARK", "shown\tMARK", "german", "no row [Dark] show, as at wincmd/2.tsv:6"),
    ("Panels\tFenster\n", "", "german/texts.tsv", "no 'Panels', as at wincmd/2.tsv:1"),
    ("Panels\tFenster\n", "Panels\tFarben\n", "wincmd/2.tsv:5", "second category 'Farben'"),
    ("Ftp\tFTP\n", "Ftp\tFTP\nNo\tNein\n", "texts.tsv:5", "'No' is used by nothing"),
)

# Tables of keywords and the file they become: [Dark] has those of the category that it repeats.
KEYWORDS = """# comment
Configuration	Tab#	page, sheet
configuration	Size	bigger text
Colors	my_8	tint
Colors	C+{B..C}	hot key
Dark	C+{B..C}	night
"""
WRITTEN_KEYWORDS = """\ufeff[english:Configuration]
Tab#=page, sheet
Size=bigger text

[english:Colors]
C+B=hot key
C+C=hot key
my_8=tint

[english:Dark]
C+B=night
C+C=night
my_8=tint
""".replace("\n", "\r\n")
GERMAN_KEYWORDS = "\ufeff[german:Layout]\r\nKey=größe\r\n"

# A line of a table of keywords and a part of what is said about it.
KEYWORD_FAULTS = (
    ("Configuration\tSize", "section, key and keywords"),
    ("Configuration\tSize\tbig\tlarge", "section, key and keywords"),
    ("Colors\tSize\tbig", "no key [Colors] Size"),
    ("Configuration\tTab{7..9}\tpage", "no key [Configuration] Tab{7..9}"),
    ("Configuration\tPath\tBig", "'Big' is no keyword"),
    ("Configuration\tPath\tbig,large", "'big,large' is no keyword"),
    ("Configuration\tPath\tbig, , large", "'' is no keyword"),
    ("Configuration\tPath\tbig, large, big", "'big' stands twice"),
    ("Configuration\tTab{8..9}Color\tcolor tab", "'color tab' stands in the name"),
    ("Layout\tKey\tbig\nlayout\tKey\tlarge", "second line of [layout] Key"),
)

TABLE = """section	key	type	seen	confidence
Main	Key	int	2	high
Main	Filter1	pattern	2	medium
Main	Unsure	int	9	low
Main	Rare	int	1	high
Menu	entry	pattern	3	high
Menu	RedirectSection	text	3	high
100x200 (8x16)	x	int	3	high
<place>	Key	pattern	2	high
Shortcuts	C+H	pattern	2	high
"""
DESCRIBED = ("[Taken]\tMain\n", "Key\t1\tint\tA.\n", "Filter7\t1\tint\tA.\n",
             "[Menu]\tMenu\nanything\t1\tint\tA.\n", "RedirectSection\t\tstring\tA.\n",
             "[Screen]\t300x100 (8x18)\nx\t1\tint\tA.\n", "[Place]\tHome\nKey\t1\tint\tA.\n",
             "Other\t1\tint\tA.\n", "[Keys]\tShortcuts\nC+{A..Z}\t\tstring\tA.\n")
# Three settings: Key, RedirectSection and a shortcut.
COMMON = ("[main]\nKEY = 1\nFilter1=\n;Off=1\nIconDll_a.bar=1\n"
          "[menu]\na=1\nredirectsection=1\n[Else]\na=1\n[Shortcuts]\nC+D=1\n")
# Two that nobody describes; the first is in no table.
UNKNOWN = "[main]\nFilters=1\n[shortcuts]\nF3=1\n"


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

    def test_a_type_and_its_key_agree(self) -> None:
        for kind, default, values, message in TYPE_FAULTS:
            with self.subTest(f"{kind}, {default}, {values}"):
                self.put("knowledge/wincmd/2-second.tsv",
                         f"{CATEGORY}Key\t{default}\t{kind}\tA.\t{values}\n")
                code, text = self.run_tool("check")
                self.assertEqual(code, 1)
                self.assertRegex(
                    text, rf"(?m)^wincmd/2-second\.tsv:2: .*{re.escape(message)}")

    def test_values_of_a_type(self) -> None:
        for text, lines, good, bad in ACCEPTED:
            one = parse_type(text, dict(line.split(" = ") for line in lines))
            self.assertEqual([[value for value in values if one.accepts(value)]
                              for values in (good, bad)], [list(good), []], text)

    def test_values_of_real_files(self) -> None:
        self.put("knowledge/wincmd/2-second.tsv", WRITTEN_SOURCE)
        known = "# comment\nwincmd\tconfiguration\tsize\t0\tHistory.\n"
        values = "[Configuration]\nKEY = 9\nTab700=7\nPath=\nSize=\"3\"\nOther=1\n"
        for outside, message in (("", "3 values checked, 0 outside their type, 0 of them unknown"),
                                 ("Size=0\n", "4 values checked, 1 outside their type, 0 of"),
                                 ("size=-1\n", "[Configuration] size=-1 is outside 'int 1..'\n"),
                                 ("tab8=0x\n", "tab8=0x is outside 'int'\n"),
                                 ("Key=2\n", "Key=2 is outside 'flags 1 8'\n")):
            self.put("files/wincmd_1.ini", values + outside, "utf-16")
            self.put("knowledge/outside_types.tsv", known)
            code, text = self.run_tool("types", str(self.folder / "files"))
            self.assertIn(message, text)
            self.assertEqual(code, 0 if "checked" in message else 1)
        for row, message in (("wincmd\tLayout\tKey\tx", "a row has"),
                             ("wincmd\tLayout\tKey2\tx\tWhy.", "Key2 has no type"),
                             ("wincmd\tLayout\tKey\t5\tWhy.", "5 is of the type 'int'")):
            self.put("knowledge/outside_types.tsv", known + row + "\n")
            code, text = self.run_tool("check")
            self.assertEqual((code, text.startswith("outside_types.tsv:3: ")), (1, True))
            self.assertIn(message, text)
        self.assertEqual(self.run_tool("types", str(self.folder / "none"))[0], 1)

    def test_families_that_go_on_and_names_of_users(self) -> None:
        self.put("knowledge/wincmd/2-second.tsv", PATTERNS)
        out = self.folder / "out"
        self.assertEqual(self.run_tool("write", str(out)), (0, ""))
        types = (out / "Wincmd.types").read_bytes()
        self.assertIn(b"[X_*]\r\nG#=string\r\n", types)
        self.assertTrue(types.endswith(WRITTEN_PATTERNS), types)
        written = (out / "tc all keys english.tmdf").read_bytes()
        self.assertIn(b"[Tabs]\r\nCategoryTargetSection=Tabs\r\nF1=///Tab 1.\r\nF2=", written)
        self.assertIn(b"CategoryTargetSection=8x6\r\nSize=1///At 8x6.\r\n", written)
        self.assertNotIn(b"_for", written)
        self.assertNotIn(b"Named", written)

    def test_written_bytes_and_their_verification(self) -> None:
        self.put("knowledge/wincmd/2-second.tsv", WRITTEN_SOURCE)
        out = str(self.folder / "out")
        self.assertEqual(self.run_tool("write", out), (0, ""))
        written = self.folder / "out" / "tc all keys english.tmdf"
        self.assertEqual(written.read_bytes(), WRITTEN)
        self.assertEqual((self.folder / "out" / "tc wcx_ftp keys english.tmdf").read_bytes(),
                         b"[TargetIniFile]\r\nWcx_ftp=1\r\n\r\n[Ftp]\r\n"
                         b"CategoryTargetSection=General\r\nKey=1///A.\r\n")
        types = self.folder / "out" / "Wincmd.types"
        self.assertEqual(types.read_bytes(), codecs.BOM_UTF8 + WRITTEN_TYPES)
        self.assertEqual((self.folder / "out" / "Wcx_ftp.types").read_bytes(),
                         codecs.BOM_UTF8 + b"[General]\r\nKey=int\r\n")
        self.assertEqual(self.run_tool("verify", out), (0, ""))
        for path in (written, types):
            path.write_bytes(path.read_bytes() + b"\r\n")
            code, text = self.run_tool("verify", out)
            self.assertEqual((code, f"{path.name} is stale" in text), (1, True))
            self.run_tool("write", out)

    def test_keywords(self) -> None:
        self.put("knowledge/wincmd/2-second.tsv", WRITTEN_SOURCE)
        table, out = "knowledge/keywords/wincmd.tsv", self.folder / "out"
        for line, message in KEYWORD_FAULTS:
            self.put(table, f"# comment\n{line}\n")
            code, text = self.run_tool("check")
            self.assertEqual((code, message in text), (1, True), f"{line}: {text}")
            self.assertRegex(text, r"(?m)^keywords/wincmd\.tsv:[23]: ")
        self.put(table, KEYWORDS)
        self.assertIn("wincmd: keys with keywords: 9 in english\n", self.run_tool("check")[1])
        self.assertEqual(self.run_tool("write", str(out)), (0, ""))
        written = out / "Wincmd.keywords"
        self.assertEqual(written.read_bytes().decode(), WRITTEN_KEYWORDS)
        written.write_bytes(written.read_bytes()[:-1])
        self.assertIn("Wincmd.keywords is stale", self.run_tool("verify", str(out))[1])

    def put_translation(self, old: str = "", new: str = "") -> None:
        """The translation with a part of it replaced; each MARK becomes the right one."""
        for name, contents in (("texts", TEXTS), ("wincmd/1", "[Layout]\nKey\tMARK\tÄ.\n"),
                               ("wincmd/2", GERMAN), ("wcx_ftp/1", "[General]\nKey\tMARK\tÖ.\n")):
            self.put(f"knowledge/german/{name}.tsv", contents.replace(old or "\r", new))
        for name, line, mark in re.findall(r"(?m)^german/(\S+):(\d+): old: .* mark (\w+)$",
                                           self.run_tool("check")[1]):
            path = self.folder / "knowledge" / "german" / name
            lines = path.read_text(encoding="utf-8").split("\n")
            lines[int(line) - 1] = lines[int(line) - 1].replace("MARK", mark)
            self.put(f"knowledge/german/{name}", "\n".join(lines))

    def test_translated_files(self) -> None:
        self.put("knowledge/wincmd/2.tsv", ENGLISH)
        self.put_translation()
        self.put("knowledge/german/keywords/wincmd.tsv", "Layout\tKey\tgröße\n")
        counts = ("german: 6 rows are translated, 0 are missing, {} are old\n"
                  "wincmd: keys with keywords: 0 in english, 1 in german\n"
                  "wcx_ftp: keys with keywords: 0 in english, 0 in german\n")
        self.assertEqual(self.run_tool("check"), (0, counts.format(0)))
        self.assertEqual(self.run_tool("write", str(self.folder)), (0, ""))
        written = (self.folder / "tc all keys german.tmdf").read_bytes()
        self.assertEqual((written[:18], written[-len(TRANSLATED):]),
                         (b"\xef\xbb\xbf[TargetIniFile]", TRANSLATED))
        self.assertEqual((self.folder / "Wincmd.keywords").read_bytes().decode(), GERMAN_KEYWORDS)
        self.put("knowledge/wincmd/2.tsv", ENGLISH.replace("Shown.", "Visible."))
        code, text = self.run_tool("check")
        self.assertEqual((code, counts.format(1) in text), (0, True))
        self.assertIn("german/wincmd/2.tsv:7: old: the text at wincmd/2.tsv:6 now", text)

    def test_a_translation_tells_the_same(self) -> None:
        self.put("knowledge/wincmd/2.tsv", ENGLISH)
        for old, new, where, message in TRANSLATION_FAULTS:
            with self.subTest(new or old):
                self.put_translation(old, new)
                code, text = self.run_tool("write", str(self.folder / "out"))
                self.assertEqual((code, (self.folder / "out").exists()), (1, False))
                self.assertRegex(
                    text, rf"(?m)^(german/)?{re.escape(where)}: .*{re.escape(message)}")

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
        coverage = ("coverage", table, "--corpus", str(self.folder / "files"))
        self.put("files/wincmd_2.ini", COMMON)
        for encoding in ("utf-16", "utf-8-sig", "cp1252"):
            self.put("files/wincmd_1.ini", COMMON + UNKNOWN, encoding)
            code, text = self.run_tool(*coverage)
            self.assertEqual(code, 0)
            for line in ("not described: [main] filters, in 1 file(s)", "50.0% of 2 shortcuts",
                         "60.0% of 5 settings", "100.0% of 3 settings in two or more"):
                self.assertIn(f"files: {line}", text)
        self.put("files/wincmd_2.ini", COMMON + UNKNOWN)
        self.assertEqual(self.run_tool(*coverage)[0], 1)


if __name__ == "__main__":
    unittest.main()
