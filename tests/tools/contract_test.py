"""tools/run_contract: which lines lose their process id, and when a script passes."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import tempfile
import unittest
import unittest.mock

sys.dont_write_bytecode = True
TOOL = pathlib.Path(__file__).parent.parent.parent / "tools" / "run_contract"
loader = importlib.machinery.SourceFileLoader("run_contract", str(TOOL))
contract = importlib.util.module_from_spec(importlib.util.spec_from_loader("run_contract", loader))
loader.exec_module(contract)

LINES = [
    ("cache call", '{"called":"A.CacheFacade","method":"GetItem","args":[4711,"IsOuterLogin"]}',
     '{"called":"A.CacheFacade","method":"GetItem","args":["PID","IsOuterLogin"]}'),
    ("property read", '{"got":"A.ShareProps","property":"GetProperty","args":[12,"x"]}',
     '{"got":"A.ShareProps","property":"GetProperty","args":["PID","x"]}'),
    ("another method", '{"called":"A.CacheFacade","method":"Clear","args":[4711]}', None),
    ("another class", '{"called":"A.Other","method":"GetItem","args":[4711]}', None),
    ("no integer", '{"called":"A.CacheFacade","method":"GetItem","args":["a"]}', None),
    ("no arguments", '{"called":"A.CacheFacade","method":"GetItem","args":[]}', None),
    ("spelling of numbers stays", '{"step":0,"value":1.50}', None),
    ("no JSON", "Segmentation fault", None),
]

# A stand-in for the program: prints what the script holds, fails when the script says so.
PROGRAM = """#!/bin/sh
case $1 in
demo) echo made > "$2" ;;
play) cat "$2"; grep -q broken "$2" && exit 2; grep -q book "$2" && cat tiny.db; exit 0 ;;
esac
"""


class LinesTest(unittest.TestCase):
    def test_lines(self):
        for name, line, expected in LINES:
            with self.subTest(name):
                self.assertEqual(contract.without_pid(line), expected or line)


class ScriptsTest(unittest.TestCase):
    def setUp(self):
        self.enterContext(unittest.mock.patch("builtins.print"))
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.program, self.books, self.script = folder / "stockrpt", folder / "books", folder / "a.json"
        self.program.write_text(PROGRAM, encoding="utf-8")
        self.program.chmod(0o755)

    def passes(self, script, expected, update=False):
        self.script.write_text(script, encoding="utf-8")
        if expected is not None:
            self.script.with_suffix(".expected").write_text(expected, encoding="utf-8")
        return contract.check(self.program, self.books, self.script, update)

    def test_scripts(self):
        for name, script, expected, passes in [
                ("same", '{"step":0}\n', '{"step":0}\n', True),
                ("with the book", '["tiny.db"] book\n', '["tiny.db"] book\nmade\n', True),
                ("different", '{"step":0}\n', '{"step":1}\n', False),
                ("more than expected", '{"step":0}\n', "", False),
                ("failed", "broken\n", "broken\n", False)]:
            with self.subTest(name):
                self.assertEqual(self.passes(script, expected), passes)

    def test_nothing_expected_is_a_failure(self):
        self.assertFalse(self.passes("{}\n", None))

    def test_update_writes_what_was_played(self):
        self.assertTrue(self.passes('{"step":0}\n', "old\n", update=True))
        self.assertEqual(self.script.with_suffix(".expected").read_text(encoding="utf-8"), '{"step":0}\n')


if __name__ == "__main__":
    unittest.main()
