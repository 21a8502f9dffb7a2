"""tools/check_layers on small trees: each row is a file, a line in it, and what must be said about it."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
TOOL = pathlib.Path(__file__).parent.parent.parent / "tools" / "check_layers"
loader = importlib.machinery.SourceFileLoader("check_layers", str(TOOL))
layers = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_layers", loader))
loader.exec_module(layers)

ACCEPTED = [
    ("platform within itself", "platform/rows/Recordset.cpp", '#include "platform/value/Variant.h"'),
    ("standard library", "component/frame/MRpt.cpp", "#include <string_view>"),
    ("operating system in its folder", "platform/system/Posix.cpp", "#include <dlfcn.h>"),
    ("component on platform", "component/frame/MRpt.h", '#include "platform/rows/Dictionary.h"'),
    ("filter on frame", "component/filter/MFirter.cpp", '#include "component/frame/MRpt.h"'),
    ("stock on filter", "component/stock/Rpt10414.cpp", '#include "component/filter/MFirter.h"'),
    ("server on all", "component/server/ClassTable.cpp", '#include "component/tracking/Rpt10421.h"'),
    ("books on platform", "books/reports/Data10414.cpp", '#include "platform/rows/Recordset.h"'),
    ("sqlite in its folder", "books/database/sqlite/SqliteConnection.cpp", "#include <sqlite3.h>"),
    ("player through the opening", "player/Script.cpp", '#include "books/Book.h"'),
    ("cli through the opening", "cli/RunCommand.cpp", '#include "books/Book.h"'),
    ("cli on player", "cli/PlayCommand.cpp", '#include "player/Player.h"'),
    ("cli on browser", "cli/ServeCommand.cpp", '#include "browser/server/Serve.h"'),
    ("beast in the server", "browser/server/Server.cpp", "#include <boost/beast/http.hpp>"),
    ("player on desk", "player/Player.cpp", '#include "desk/Desk.h"'),
    ("json in player", "player/Json.cpp", "#include <nlohmann/json.hpp>"),
    ("tests look inside their room", "tests/books/ClauseTest.cpp", '#include "books/database/Clause.h"'),
    ("commented out", "platform/value/Date.cpp", '// #include "component/frame/MRpt.h"'),
    ("link downward", "cli/CMakeLists.txt", "target_link_libraries(stockrpt PRIVATE player desk books platform)"),
    ("tests link objects", "tests/CMakeLists.txt", "target_link_libraries(component_tests PRIVATE component_objects)"),
]

REFUSED = [
    ("platform upward", "platform/rows/Vector.cpp", '#include "component/frame/MRpt.h"', "platform includes the component"),
    ("component to books", "component/stock/Rpt302.cpp", '#include "books/Book.h"', "must not know books"),
    ("books to component", "books/Book.cpp", '#include "component/frame/MRpt.h"', "books includes the component"),
    ("books to desk", "books/Book.cpp", '#include "desk/Desk.h"', "books must not know desk"),
    ("desk to books", "desk/Lookup.cpp", '#include "books/Book.h"', "must not know books"),
    ("player past the opening", "player/Script.cpp", '#include "books/schema/Tables.h"', "reaches into books"),
    ("browser to player", "browser/worker/Session.cpp", '#include "player/Player.h"', "browser must not know player"),
    ("player to browser", "player/Player.cpp", '#include "browser/wire/Wire.h"', "player must not know browser"),
    ("beast in a worker", "browser/worker/Session.cpp", "#include <boost/beast/http.hpp>", "outside browser/server/"),
    ("desk to player", "desk/Desk.cpp", '#include "player/Player.h"', "desk must not know player"),
    ("host to component", "cli/main.cpp", '#include "component/server/ClassTable.h"', "cli includes the component"),
    ("frame upward", "component/frame/MRpt.cpp", '#include "component/filter/MFirter.h"',
     "component/frame must not know component/filter"),
    ("reports apart", "component/stock/Rpt302.cpp", '#include "component/ledger/Rpt402.h"',
     "component/stock must not know component/ledger"),
    ("seventh folder", "component/common/Helper.cpp", '#include "component/frame/MRpt.h"', "is no folder"),
    ("third party below", "platform/value/Json.cpp", "#include <nlohmann/json.hpp>", "outside player/"),
    ("system header", "component/frame/MRpt.cpp", "#include <unistd.h>", "use the standard library only"),
    ("system header in a header", "platform/system/Process.h", "#include <unistd.h>", "use the standard library only"),
    ("sqlite outside", "books/database/Statement.cpp", "#include <sqlite3.h>", "outside books/database/sqlite/"),
    ("no room", "cli/main.cpp", '#include "Player.h"', "is in no room"),
    ("angle brackets", "cli/main.cpp", "#include <player/Player.h>", "include it with quotes"),
    ("test code in a room", "books/Book.cpp", '#include "tests/books/Fake.h"', "includes test code"),
    ("test library in a room", "desk/Desk.cpp", "#include <gtest/gtest.h>", "outside tests"),
    ("link the component", "cli/CMakeLists.txt", "target_link_libraries(stockrpt PRIVATE TOVStockRpt)",
     "stockrpt links TOVStockRpt"),
    ("link upward", "desk/CMakeLists.txt", "target_link_libraries(\n  desk\n  PUBLIC platform books)", "desk links books"),
    ("unknown target links the component", "player/CMakeLists.txt", "target_link_libraries(worker PRIVATE TOVStockRpt)",
     "links the component"),
]


def findings(file, text):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / file
        path.parent.mkdir(parents=True)
        path.write_text("\n" + text + "\n", encoding="utf-8")
        return layers.check(pathlib.Path(folder))


class LayersTest(unittest.TestCase):
    def test_accepted(self):
        for name, file, text in ACCEPTED:
            with self.subTest(name):
                self.assertEqual(findings(file, text), [])

    def test_refused(self):
        for name, file, text, said in REFUSED:
            with self.subTest(name):
                found = findings(file, text)
                self.assertEqual(len(found), 1, found)
                self.assertTrue(found[0].startswith(f"{file}:2: "), found[0])
                self.assertIn(said, found[0])


if __name__ == "__main__":
    unittest.main()
