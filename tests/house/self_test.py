#!/usr/bin/env python3
"""Proves that each house test finds its fault, on small sample trees."""
import subprocess
import tempfile
import unittest
from pathlib import Path

import docs
import layers
import no_host_calls
import quirks
import test_files
import traps


class MadeTree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")


class Layers(MadeTree):
    def faults_of(self, path, line):
        self.write(path, line + "\n")
        return list(layers.faults(self.root))

    def assert_refused(self, path, line):
        self.assertEqual(1, len(self.faults_of(path, line)), f"{path} with {line}")

    def assert_allowed(self, path, line):
        self.assertEqual([], self.faults_of(path, line))

    def test_what_both_programs_share_knows_neither(self):
        self.assert_refused("common/hosts.cpp", '#include "feed/hosts.h"')

    def test_what_both_programs_share_does_not_know_qt(self):
        self.assert_refused("common/hosts.h", "#include <QString>")

    def test_the_transfer_knows_qt_and_no_program(self):
        self.assert_allowed("transfer/curl_loop.h", "#include <QTimer>")
        self.assert_refused("transfer/http_fetcher.h", '#include "platform/http_transfer.h"')

    def test_both_programs_know_what_they_share(self):
        self.assert_allowed("common/hosts.cpp", '#include "common/letters.h"')
        self.assert_allowed("src/feed/hosts.h", '#include "common/hosts.h"')
        self.assert_allowed("mirror/pages/areas.h", '#include "common/hosts.h"')

    def test_basic_knows_nothing(self):
        self.assert_refused("src/basic/text.cpp", '#include "controls/label.h"')

    def test_the_controls_do_not_know_the_platform(self):
        self.assert_refused("src/controls/label.cpp", '#include "platform/clock.h"')

    def test_the_platform_does_not_know_the_program(self):
        self.assert_refused("src/platform/clock.h", '#  include "core/program.h"')

    def test_the_program_does_not_know_the_desktop(self):
        self.assert_refused("src/feed/refresh.cpp", '#include "desktop/services/store.h"')

    def test_the_program_folders_know_one_another(self):
        self.assert_allowed("src/feed/refresh.cpp", '#include "scan/quakes_list.h"')

    def test_a_folder_knows_itself(self):
        self.assert_allowed("src/basic/text.cpp", '#include "basic/text.h"')
        self.assert_allowed("mirror/http/server.cpp", '#include "limits.h"')

    def test_the_program_does_not_know_qt(self):
        self.assert_refused("src/records/frmRecords.cpp", "#include <QString>")

    def test_the_program_does_not_know_the_system(self):
        self.assert_refused("src/feed/refresh.cpp", "#include <sys/socket.h>")

    def test_the_desktop_and_the_mirror_know_qt(self):
        self.assert_allowed("src/desktop/widgets/label.cpp", "#include <QLabel>")
        self.assert_allowed("mirror/http/server.cpp", "#include <QTcpServer>")

    def test_a_window_header_includes_no_other_window(self):
        self.assert_refused("src/records/frmRecords.h", '#include "settings/conffrm.h"')

    def test_a_window_source_includes_the_windows_that_it_touches(self):
        self.assert_allowed("src/records/frmRecords.cpp", '#include "settings/conffrm.h"')

    def test_a_window_header_may_hold_the_http_client(self):
        self.assert_allowed("src/settings/conffrm.h", '#include "feed/inet.h"')

    def test_the_mirror_does_not_know_the_program(self):
        self.assert_refused("mirror/pages/quakes_list.cpp", '#include "feed/hosts.h"')

    def test_a_folder_without_a_row_is_a_fault(self):
        self.assert_refused("src/utils/x.h", "#include <string>")

    def test_a_source_file_includes_its_own_header_first(self):
        self.write("src/scan/region_table.h", "#include <string>\n")
        self.assert_allowed("src/scan/region_table.cpp", '#include "region_table.h"\n#include <string>')
        self.assert_refused("src/scan/region_table.cpp", '#include <string>\n#include "region_table.h"')

    def test_an_empty_tree_is_a_fault(self):
        self.assertEqual(1, len(list(layers.faults(self.root))))

    def test_what_is_permitted_and_not_done_is_a_fault(self):
        fault = "the table allows src/platform to include controls, which no file does"
        self.assertIn(fault, list(layers.unneeded(self.root)))
        self.write("src/platform/clock.h", '#include "controls/label.h"\n')
        self.assertNotIn(fault, list(layers.unneeded(self.root)))

    def test_the_desktop_uses_each_folder_of_the_program_that_it_may(self):
        self.write("src/core/start.cpp", '#include "settings/values.h"\n')
        fault = "the table allows src/desktop to include settings, which no file does"
        self.assertIn(fault, list(layers.unneeded(self.root)))
        self.write("src/desktop/windows/x.cpp", '#include "settings/conffrm.h"\n')
        self.assertNotIn(fault, list(layers.unneeded(self.root)))

    def test_one_folder_of_the_program_speaks_for_all_among_themselves(self):
        fault = "the table allows the program's folders to include one another, which no file does"
        self.assertIn(fault, list(layers.unneeded(self.root)))
        self.write("src/core/start.cpp", '#include "settings/values.h"\n')
        self.assertNotIn(fault, list(layers.unneeded(self.root)))

    def test_a_window_in_the_table_exists(self):
        fault = "the table names the window conffrm, which does not exist"
        self.assertIn(fault, list(layers.unneeded(self.root)))
        self.write("src/settings/conffrm.h", "")
        self.assertNotIn(fault, list(layers.unneeded(self.root)))

    def test_the_host_permitted_and_not_used_is_a_fault(self):
        fault = "the table allows mirror/http to use the host, which it does not"
        self.assertIn(fault, list(layers.unneeded(self.root)))
        self.write("mirror/http/server.h", "#include <QTcpServer>\n")
        self.assertNotIn(fault, list(layers.unneeded(self.root)))


class NoHostCalls(MadeTree):
    def faults_of(self, text, exceptions=()):
        self.write("it.cpp", text)
        subprocess.run(["c++", "-c", "it.cpp", "-o", "it.o"], cwd=self.root, check=True)
        return list(no_host_calls.faults([str(self.root / "it.o")], exceptions))

    def test_plain_computing_is_no_fault(self):
        self.assertEqual([], self.faults_of("#include <string>\nstd::string F(std::string a) { return a + a; }"))

    def test_each_kind_of_call_is_a_fault(self):
        for header, call in (
            ("cstdlib", 'std::getenv("X")'),
            ("cstdlib", 'std::strtod("1", nullptr)'),
            ("cstdlib", "std::rand()"),
            ("cstdlib", 'std::system("x")'),
            ("cstdlib", "std::exit(1)"),
            ("ctime", "std::time(nullptr)"),
            ("chrono", "std::chrono::system_clock::now()"),
            ("clocale", 'std::setlocale(LC_ALL, "")'),
            ("cctype", "c = std::toupper(c)"),
            ("cstdio", 'std::fopen("x", "r")'),
            ("cstdio", 'std::snprintf(nullptr, 0, "%g", 1.5 * c)'),
            ("string", 'std::stod("1")'),
            ("string", "std::to_string(1.5 * c)"),
            ("fstream", 'std::ifstream("x")'),
            ("sstream", "std::ostringstream()"),
            ("iostream", "std::cout << c"),
            ("filesystem", 'std::filesystem::exists("x")'),
            ("random", "std::random_device()()"),
            ("thread", "std::thread([] {}).join()"),
        ):
            with self.subTest(call):
                self.assertNotEqual([], self.faults_of(f"#include <{header}>\nvoid F(int c) {{ (void)c; (void)({call}); }}"))

    def test_a_named_exception_is_no_fault(self):
        text = '#include <cstdlib>\nchar *F() { return std::getenv("X"); }'
        self.assertEqual([], self.faults_of(text, {("it.o", "getenv"): "why"}))

    def test_an_exception_that_is_not_needed_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of("int F() { return 1; }", {("it.o", "getenv"): "why"})))

    def test_no_object_files_is_a_fault(self):
        self.assertEqual(1, len(list(no_host_calls.faults([], {}))))


class Quirks(MadeTree):
    ROW = "| key | what is seen | cause | what depends on it | test |\n| --- | --- | --- | --- | --- |\n| `a-key` | x | y | z | `S.T` |\n"
    COMMENT = "// Meant (a-key): it would be mended, but a thing depends on it.\n"
    TEST = 'TEST(S, T) {\n  RecordProperty("quirk", "a-key");\n}\nTEST(S, Other) {}\n'

    HELP = '<h3 id="ends">What ends it</h3>\n<ul>\n  <li data-quirks="LINE">Something.</li>\n</ul>\n'

    def faults_of(self, code=COMMENT, test=TEST, table=ROW, help_text=""):
        self.write("src/feed/it.cpp", code)
        self.write("tests/feed/it_test.cpp", test)
        self.write("docs/quirks.md", table)
        self.write("assets/help.html", help_text)
        return list(quirks.faults(self.root))

    def test_three_places_in_sync_are_no_fault(self):
        self.assertEqual([], self.faults_of())

    def test_rows_may_be_in_tables_below_headings(self):
        tables = "## Some\n\n" + self.ROW + "\n## Others\n\n" + self.ROW.replace("a-key", "b-key")
        self.assertEqual([], self.faults_of(self.COMMENT + self.COMMENT.replace("a-key", "b-key"),
                                            self.TEST + self.TEST.replace("a-key", "b-key"), tables))
        self.assertNotEqual([], self.faults_of(table=tables))

    def test_each_missing_place_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(code=""))
        self.assertNotEqual([], self.faults_of(test="TEST(S, T) {}\n"))
        self.assertNotEqual([], self.faults_of(table=self.ROW.replace("a-key", "another-key")))

    def test_a_row_without_code_and_test_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(table=self.ROW + "| `b-key` | x | y | z | `S.T` |\n"))

    def test_a_row_that_names_another_test_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(table=self.ROW.replace("S.T", "S.Other")))

    def test_a_row_with_an_empty_column_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(table=self.ROW.replace("| y |", "|  |")))

    def test_a_key_with_two_rows_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(table=self.ROW + "| `a-key` | x | y | z | `S.T` |\n"))

    def test_a_comment_without_a_key_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(code=self.COMMENT + "// Meant: no key.\n"))

    def test_a_comment_without_a_reason_is_a_fault(self):
        self.assertNotEqual([], self.faults_of(code="// Meant (a-key):\n"))

    def faults_of_an_end(self, key, help_text):
        """The faults of a quirk with that key, which has its three places."""
        code, test, table = (text.replace("a-key", key) for text in (self.COMMENT, self.TEST, self.ROW))
        return self.faults_of(code, test, table, help_text)

    def test_what_ends_the_program_needs_a_line_in_the_helps_list(self):
        for key in ("it-ends-the-program", "they-end-the-program"):
            self.assertEqual([], self.faults_of_an_end(key, self.HELP.replace("LINE", key)))
            self.assertEqual(1, len(self.faults_of_an_end(key, "")))
            self.assertEqual(1, len(self.faults_of_an_end(key, f'<ul><li data-quirks="{key}">Elsewhere.</li></ul>')))
            after_the_list = self.HELP.replace("</ul>\n", "").replace("  <li", "</ul>\n  <li").replace("LINE", key)
            self.assertEqual(1, len(self.faults_of_an_end(key, after_the_list)))

    def test_a_line_of_the_help_without_code_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of(help_text=self.HELP.replace("LINE", "b-key"))))


class Docs(MadeTree):
    STORED = 'StoredSetting{Setting::Grid, "Grid"},\nStoredSetting{Setting::EdgeOffset, "EdgeOffset", "900"},\n'
    VALUES = "## Values\n| Name | What | Without |\n| --- | --- | --- |\n| `Grid` | x | none |\n| `EdgeOffset` | y | `900` |\n"
    AREAS = '    {"North", Endpoint::Alaska, "/n"},\n    {"South, the far one", Endpoint::Utah, "/s"},\n'

    def setUp(self):
        super().setUp()
        for document in ("README.md", "CONTRIBUTING.md", "CHANGELOG.md"):
            self.write(document, "Nothing.\n")
        self.write("docs/architecture.md", "`common/`\n`transfer/`\n`feed/`\n`settings/`\n`http/`\n`pages/`\n")
        self.write("docs/settings.md", self.VALUES)
        self.write("docs/live.md", 'The areas are "North" and "South,\nthe far one".\n')
        self.write("src/settings/values.h", self.STORED)
        self.write("mirror/pages/areas.cpp", self.AREAS)
        self.write("CMakePresets.json", '{"configurePresets": [{"name": "release"}]}')
        self.write("src/feed/hosts.h", "")
        self.write("mirror/http/server.h", "")
        self.write("common/x.h", "")
        self.write("transfer/x.h", "")

    def faults_with(self, text):
        self.write("README.md", text)
        return list(docs.faults(self.root))

    def test_what_exists_may_be_named(self):
        self.assertEqual([], self.faults_with("`feed/hosts.h`, `src/feed/*.h`, `src/`, [a](docs/architecture.md), `--preset release`"))

    def test_what_a_run_leaves_may_be_named(self):
        self.assertEqual([], self.faults_with("`build/run/rows.txt`"))

    def test_a_file_that_is_gone_is_a_fault(self):
        self.assertEqual(1, len(self.faults_with("`feed/gone.h`")))

    def test_a_link_to_nothing_is_a_fault(self):
        self.assertEqual(1, len(self.faults_with("[a](docs/gone.md)")))

    def test_a_command_that_is_gone_is_a_fault(self):
        self.assertEqual(1, len(self.faults_with("```sh\n./gone now\n```\n")))
        self.assertEqual(1, len(self.faults_with("`./gone now`")))

    def test_a_preset_that_is_gone_is_a_fault(self):
        self.assertEqual(1, len(self.faults_with("`cmake --preset gone`")))

    def test_each_kind_of_test_may_be_named(self):
        self.write("tests/feed/hosts_test.cpp", "TEST(Hosts, AreNamed) {}\nTEST_P(EachHost,\n       IsNamed) {}\n")
        self.write("tests/house/CMakeLists.txt", "borvane_house_test(DocsHold docs.py)\n")
        self.write("tests/system/log_test.py", "class Log(Base):\n    def test_is_kept(self):\n        pass\n")
        self.assertEqual([], self.faults_with("`Hosts.AreNamed` `EachHost.IsNamed` `House.DocsHold` `System.Log` `System.Log.is_kept`"))

    def test_a_test_that_is_gone_is_a_fault(self):
        self.write("tests/feed/hosts_test.cpp", "TEST(Hosts, AreNamed) {}\nTEST(Others, AreGone) {}\n")
        self.write("tests/system/log_test.py", "class Log(Base):\n    def test_is_kept(self):\n        pass\n\n\nclass Base:\n")
        for name in ("Hosts.AreGone", "House.DocsHold", "System.Log.is_gone", "System.Base"):
            self.assertEqual([f"README.md: there is no test {name}"], self.faults_with(f"`{name}`"))

    def test_a_folder_without_a_line_is_a_fault(self):
        self.write("src/scan/x.cpp", "")
        self.assertEqual(1, len(self.faults_with("")))

    def test_what_both_programs_share_without_a_line_is_a_fault(self):
        self.write("docs/architecture.md", "`transfer/`\n`feed/`\n`settings/`\n`http/`\n`pages/`\n")
        self.assertEqual(["docs/architecture.md: says nothing about `common/`"], self.faults_with(""))

    def faults_of_values(self, table, stored=STORED):
        self.write("docs/settings.md", table)
        self.write("src/settings/values.h", stored)
        return self.faults_with("")

    def test_a_stored_value_without_a_row_is_a_fault(self):
        missing = ["docs/settings.md: there is no row for Grid"]
        self.assertEqual(missing, self.faults_of_values(self.VALUES.replace("| `Grid` | x | none |\n", "")))
        self.assertEqual(missing, self.faults_of_values("| `Grid` | x | none |\n" + self.VALUES.replace("| `Grid` | x | none |\n", "")))

    def test_a_row_for_several_values_is_no_fault(self):
        row = "| `Grid` | x | none |"
        stored = self.STORED + 'StoredSetting{Setting::Area, "Area"},\n'
        self.assertEqual([], self.faults_of_values(self.VALUES.replace(row, "| `Grid` `Area` | x | none |"), stored))

    def test_a_row_without_a_stored_value_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of_values(self.VALUES + "| `Gone` | x | none |\n")))
        self.assertEqual(1, len(self.faults_of_values(self.VALUES + "| `Grid` | x | none |\n")))

    def test_another_default_is_a_fault(self):
        for default in ("800", "90", "none"):
            self.assertEqual(1, len(self.faults_of_values(self.VALUES.replace("900", default))), default)

    def test_an_area_of_the_mirror_that_live_md_does_not_name_is_a_fault(self):
        self.write("docs/live.md", 'The area is "North", and the south.\n')
        self.assertEqual(1, len(self.faults_with("")))

    def test_areas_that_are_not_found_are_a_fault(self):
        self.write("mirror/pages/areas.cpp", "nothing\n")
        self.assertEqual(1, len(self.faults_with("")))

    def test_a_procedure_that_does_nothing_is_a_fault(self):
        for procedure in ("void Later(Integer & /*mode*/) {}", "void SomeForm::mnuLater_Click() {}", "Integer Later() {\n}"):
            self.write("src/feed/x.cpp", procedure + "\n")
            self.assertEqual(1, len(self.faults_with("")), procedure)
        self.write("src/feed/x.cpp", "void Now() { Later(); }\nSomeForm::SomeForm() {}\n")
        self.assertEqual([], self.faults_with(""))

    def test_a_missing_document_is_a_fault(self):
        (self.root / "CHANGELOG.md").unlink()
        self.assertEqual(1, len(self.faults_with("")))


class TestFiles(MadeTree):
    ROWS = "## Tests\n| `feed/` `mirror/` | x |\n## Next\n"

    def faults_of(self, *files, rows=ROWS):
        self.write("docs/architecture.md", rows)
        self.write("src/feed/refresh.cpp", "")
        self.write("mirror/http/server.h", "")
        for file in ("tests/feed/refresh_test.cpp", "tests/mirror/http/server_test.cpp", *files):
            self.write(file, "")
        whole, test_files.WHOLE = test_files.WHOLE, {}
        try:
            return list(test_files.faults(self.root))
        finally:
            test_files.WHOLE = whole

    def test_a_test_in_the_folder_of_its_source_is_no_fault(self):
        self.assertEqual([], self.faults_of("tests/feed/refresh_takeover_test.cpp"))

    def test_a_folder_without_sources_is_a_fault(self):
        self.assertIn("tests/mirror/gone/x_test.cpp: mirror/gone/ does not exist", self.faults_of("tests/mirror/gone/x_test.cpp"))

    def test_a_test_of_no_source_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of("tests/feed/gone_test.cpp")))

    def test_another_file_among_the_tests_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of("tests/feed/refresh.h")))

    def test_a_row_of_the_table_without_its_file_is_a_fault(self):
        self.faults_of()
        self.assertIn("tests/scan/scanners_cases_test.cpp: is in the table and does not exist", list(test_files.faults(self.root)))

    def test_the_docs_name_each_folder_of_tests_and_no_other(self):
        self.write("tests/system/x.py", "")
        self.assertEqual(["docs/architecture.md: says nothing about tests/system/"], self.faults_of())
        rows = "## Tests\n| `feed/` `mirror/` | x |\n| `system/` `gone/` | y |\n"
        self.assertEqual(["docs/architecture.md: tests/gone/ does not exist"], self.faults_of(rows=rows))


class Traps(MadeTree):
    TABLE = {"Fetch": "src/feed/x.cpp"}
    DOOR = ("Dispatch", "src/core/dispatch.cpp")
    TRAP = "std::string Fetch(int number) {\n  try {\n    Work();\n  } catch (const RuntimeError &) {\n  }\n}\n"
    DISPATCH = ("void Dispatch() {\n  try {\n  } catch (const RuntimeError &error) {\n"
                "  } catch (const std::exception &error) {\n  }\n}\n")
    ROW = 'Trap{"Fetch", Run}\n'

    def faults_of(self, code=TRAP, row=ROW, door=DISPATCH, table=None):
        self.write("src/feed/x.cpp", code)
        self.write("src/core/dispatch.cpp", door)
        self.write("tests/core/traps_test.cpp", row)
        return list(traps.faults(self.root, self.TABLE if table is None else table, self.DOOR))

    def test_a_trap_of_the_table_with_its_test_is_no_fault(self):
        self.assertEqual([], self.faults_of())

    def test_a_catch_elsewhere_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of(self.TRAP + self.TRAP.replace("Fetch", "Scan"))))
        self.write("src/scan/x.h", "inline " + self.TRAP)
        self.assertEqual(1, len(self.faults_of()))

    def test_a_catch_in_a_class_after_a_trap_is_a_fault(self):
        code = "struct Other {\n" + "".join("  " + line + "\n" for line in self.TRAP.splitlines()) + "};\n"
        self.assertEqual(1, len(self.faults_of(self.TRAP + code)))

    def test_the_desktop_may_catch(self):
        self.write("src/desktop/x.cpp", self.TRAP)
        self.assertEqual([], self.faults_of())

    def test_a_procedure_is_known_by_its_first_line(self):
        self.assertEqual([], self.faults_of(self.TRAP.replace("int number)", "int number,\n                  int other)")))

    def test_a_member_is_known_with_its_window(self):
        code, row = self.TRAP.replace("Fetch", "SomeForm::Fetch"), self.ROW.replace("Fetch", "SomeForm::Fetch")
        self.assertEqual([], self.faults_of(code, row, table={"SomeForm::Fetch": "src/feed/x.cpp"}))
        self.assertNotEqual([], self.faults_of(code))

    def test_a_trap_for_more_than_failures_is_a_fault(self):
        for caught in ("...", "const std::exception &", "RuntimeError &", "int"):
            self.assertEqual(1, len(self.faults_of(self.TRAP.replace("const RuntimeError &", caught))), caught)

    def test_a_door_that_catches_anything_else_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of(door=self.DISPATCH.replace("const std::exception &error", "..."))))

    def test_a_trap_of_the_table_that_is_gone_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of("std::string Fetch(int number) { return Work(); }\n")))
        self.assertEqual(1, len(self.faults_of(door="")))

    def test_a_trap_without_its_test_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of(row="")))

    def test_a_test_of_no_trap_is_a_fault(self):
        self.assertEqual(1, len(self.faults_of(row=self.ROW + self.ROW.replace("Fetch", "Scan"))))

    def test_another_way_to_see_a_failure_is_a_fault(self):
        for line in ("const auto failure = std::current_exception();", "void Scan() noexcept;"):
            self.assertEqual(1, len(self.faults_of(self.TRAP + line + "\n")), line)


if __name__ == "__main__":
    unittest.main()
