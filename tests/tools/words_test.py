"""tools/check_words on single files: each row is a file name, a text, and what must be said about it."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
TOOL = pathlib.Path(__file__).parent.parent.parent / "tools" / "check_words"
loader = importlib.machinery.SourceFileLoader("check_words", str(TOOL))
words = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_words", loader))
loader.exec_module(words)

# The words looked for are written in halves, so that this file passes the check itself.
SILENCED = "NOLI" "NT"
OPEN = "TO" "DO"

ACCEPTED = [
    ("plain", "a.cpp", "int a;"),
    ("silenced with a reason", "a.cpp", f"f();  // {SILENCED}(bugprone-x): the contract wants it"),
    ("reason on the next line", "a.cpp", f"f();  // {SILENCED}(bugprone-x):\n      // the contract wants it"),
    ("a word that only holds one", "a.cpp", f"int k{OPEN}List;"),
    ("relative path", "a.md", "see build/ho" "me/x and docs/architecture.md"),
    ("web address", "a.md", "http://example.org/ho" "me/x"),
    ("500 lines", "a.cpp", "x\n" * 500),
    ("long expectation", "a.expected", "x\n" * 900),
    ("once", "a.h", "#pragma once"),
    ("name brought in and used", "a.cpp", "using a::b::Name;\nName name;"),
    ("alias", "a.cpp", "using Name = int;"),
    ("namespace", "a.cpp", "using namespace a::b;"),
    ("tidy with reason", ".clang-tidy", "# misc-x: because.\nChecks: >\n  misc-*,\n  -misc-x"),
]

REFUSED = [
    ("open end", "a.cpp", f"// {OPEN}: later", "an open end"),
    ("open end in a script", "a.py", f"# {OPEN} later", "an open end"),
    ("silenced without reason", "a.cpp", f"f();  // {SILENCED}(bugprone-x)", "without a reason"),
    ("silenced without reason but colon", "a.cpp", f"f();  // {SILENCED}(bugprone-x):\nint a;", "without a reason"),
    ("silenced without name", "a.cpp", f"f();  // {SILENCED}: because", "without its name"),
    ("silenced bare", "a.cpp", f"// {SILENCED}NEXTLINE", "without a reason"),
    ("switched-off test", "a.cpp", "TEST(A, DISABLED" "_B) {}", "switched off"),
    ("machine path", "a.cpp", 'Open("/ho' 'me/me/book.db");', "a path of one machine"),
    ("501 lines", "a.cpp", "x\n" * 501, "more than 500 lines"),
    ("header twice", "a.h", "int a;", "no #pragma once"),
    ("name brought in only", "a.cpp", "// Name\nint a;\nusing a::b::Name;", "a.cpp:3: Name is brought in and not used"),
    ("name of the outermost brought in only", "a.cpp", "using ::testing::Name;", "Name is brought in"),
    ("tidy without reason", ".clang-tidy", "# misc-y: because.\nChecks: >\n  misc-*,\n  -misc-x", "misc-x is off"),
]


def findings(file, text):
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / file).write_text(text, encoding="utf-8")
        return words.check(pathlib.Path(folder))


class WordsTest(unittest.TestCase):
    def test_accepted(self):
        for name, file, text in ACCEPTED:
            with self.subTest(name):
                self.assertEqual(findings(file, text), [])

    def test_refused(self):
        for name, file, text, said in REFUSED:
            with self.subTest(name):
                found = findings(file, text)
                self.assertEqual(len(found), 1, found)
                self.assertTrue(found[0].startswith(f"{file}:"), found[0])
                self.assertIn(said, found[0])


if __name__ == "__main__":
    unittest.main()
