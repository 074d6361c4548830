#!/usr/bin/env python3
"""Tests of tools/check_help.py; run from anywhere."""

import contextlib
import io
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True  # the tools folder stays as it is
ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import check_help  # noqa: E402  (the folder of the tool is known only now)

# A text of one file of the help, what it becomes (None: the file goes), and a part of the message.
FAULTS = (
    ("save.html", None, "", "index.html: save.html does not exist"),
    ("main-window.png", None, "", "index.html: main-window.png does not exist"),
    ("contents.hhc", None, "", "contents.hhc: does not exist"),
    ("contents.hhc", "save.html", "find-keys.html", "contents.hhc: save.html is missing"),
    ("contents.hhc", "save.html", "find-keys.html", "contents.hhc: find-keys.html stands twice"),
    ("index.hhk", "save.html#closing", "save.html#end", "index.hhk: save.html has no place 'end'"),
    ("Readme.hhp", "\nsave.html", "", "Readme.hhp: save.html is missing"),
    ("Readme.hhp", "\nstyle.css", "\nstyle.css\nother.css", "other.css does not exist"),
    ("Readme.hhp", "\nstyle.css", "\nstyle.css\ncontents.hhc", "contents.hhc is there without"),
    ("save.html", "restart.html", "Restart.html", "Restart.html does not exist"),
    ("save.html", "restart.html", "http://localhost/", "leads out of the help"),
    ("save.html", "</ul>", "", "</body> does not close what is open"),
    ("save.html", "<h1>Save the changes</h1>", "", "needs one h1"),
    ("save.html", 'id="what"', 'id="how"', "second id 'how'"),
    ("save.html", ' lang="en"', "", "tells no language"),
    ("save.html", "<title>Save the changes", "<title>Edit descriptions", "has the title of"),
    ("index.html", "alt=", "title=", "without a description"),
    ("save.html", "File &gt; Save<", "File &gt; Store<", "the program has no text 'Store'"),
    ("translations.html", "<td>No Recent Files</td>", "<td>None</td>", "text 108 is"),
    ("keyboard.html", "<kbd>F3</kbd>", "F3", "F3 is missing"),
    ("own-settings.html", "<code>FontStyle</code>", "", "FontStyle is missing"),
)


class CheckHelpTest(unittest.TestCase):
    def check(self, folder: Path) -> tuple[int, str]:
        text = io.StringIO()
        with contextlib.redirect_stdout(text):
            code = check_help.main([str(folder), "--program", str(ROOT)])
        return code, text.getvalue()

    def test_the_help_is_without_fault(self) -> None:
        self.assertEqual(self.check(ROOT / "help"), (0, ""))

    def test_faults_are_told(self) -> None:
        for name, old, new, message in FAULTS:
            with self.subTest(message), tempfile.TemporaryDirectory() as scratch:
                folder = Path(scratch, "help")
                shutil.copytree(ROOT / "help", folder)
                path = folder / name
                if old is None:
                    path.unlink()
                else:
                    source = path.read_text(encoding="utf-8")
                    self.assertIn(old, source)
                    path.write_text(source.replace(old, new, 1), encoding="utf-8")
                code, text = self.check(folder)
                self.assertEqual(code, 1)
                self.assertIn(message, text)


if __name__ == "__main__":
    unittest.main()
