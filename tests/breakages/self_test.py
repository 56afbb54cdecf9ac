#!/usr/bin/env python3
"""Proves on small made trees that a breakage or a fault that no test notices is reported, and one that is noticed is not."""
import contextlib
import io
import random
import re
import tempfile
import time
import unittest
from pathlib import Path

import breakages
import mutate
from clone import TIMED_OUT, Clone
from mutants import chosen, mutants_of

CMAKE = """\
cmake_minimum_required(VERSION 3.25)
project(made LANGUAGES CXX)
enable_testing()
foreach(program test_basic test_program)
  add_executable(${program} src/basic/it.cpp tests/${program}.cpp)
endforeach()
add_test(NAME Doubled.IsTwice COMMAND test_basic)
"""
PRESETS = """\
{"version": 6, "configurePresets": [{"name": "release", "generator": "Ninja", "binaryDir": "${sourceDir}/build/release"}]}
"""
CODE = """\
int Doubled(int a) {
  return a + a;
}
int Tripled(int a) {
  return a * 3;
}
"""
BASIC_TEST = """\
#include <cstdio>
int Doubled(int a);
int main() {
  if (Doubled(2) == 4)
    return 0;
  std::puts("[  FAILED  ] Doubled.IsTwice (0 ms)");
  return 1;
}
"""
PROGRAM_TEST = "int main() { return 0; }\n"
BREAKAGE = """\
[[breakage]]
name = "{name}"
file = "{file}"
old = "{old}"
new = "{new}"
test = "{test}"
build = "test_basic"
why = "It is a test."
"""


# A test program of tests/CMakeLists.txt with its folders, or one of a folder's own CMakeLists.txt.
PROGRAM = re.compile(r"^ *borvane_test\((\w+) FOLDERS ([\w/\s]+?) OBJECTS|^add_executable\((test_\w+) ", re.M)
GLOB = re.compile(r'"([\w./]*)\*\.cpp"')


def programs_of_tests(root):
    """The folders of code that have tests, each with the test program that has them."""
    for file in sorted((root / "tests").rglob("CMakeLists.txt")):
        text = file.read_text(encoding="utf-8")
        for listed, folders, alone in PROGRAM.findall(text):
            for folder in GLOB.findall(text) if alone else folders.split():
                tests = (file.parent / folder).resolve().relative_to((root / "tests").resolve())
                code = tests if tests.parts[0] in ("common", "transfer", "mirror") else "src" / tests
                if (root / code).is_dir():
                    yield code.as_posix(), listed or alone


def faults_of_judges(root):
    """The folders of code whose own tests do not judge it, and the rows of the table for folders that do not exist."""
    programs = list(programs_of_tests(root))
    if not programs:
        yield "there are no test programs"
    for folder, program in programs:
        if program not in mutate.judges_of(folder + "/it.cpp"):
            yield f"{folder}: {program} does not judge it"
    for folder in mutate.JUDGES:
        if not (root / folder).is_dir():
            yield f"{folder}: does not exist"


class MadeTree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.write("CMakeLists.txt", CMAKE)
        self.write("CMakePresets.json", PRESETS)
        self.write("src/basic/it.cpp", CODE)
        self.write("tests/test_basic.cpp", BASIC_TEST)
        self.write("tests/test_program.cpp", PROGRAM_TEST)
        self.write("tests/names.cpp", "TEST(Doubled, IsTwice) {}\n")

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def write_breakages(self, *changes):
        good = {"name": "n", "file": "src/basic/it.cpp", "old": "a + a", "new": "a", "test": "Doubled.IsTwice"}
        self.write("tests/breakages/it.toml", "".join(BREAKAGE.format(**{**good, **change}) for change in changes))

    def run_main(self, main, *arguments):
        """What the script printed, and how it ended."""
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            outcome = main(["--root", str(self.root), *arguments])
        return output.getvalue(), outcome


class Breakages(MadeTree):
    def test_a_breakage_that_is_noticed_passes_and_one_that_survives_fails(self):
        self.write_breakages({"name": "noticed"}, {"name": "survivor", "old": "a * 3", "new": "a * 4"})
        output, outcome = self.run_main(breakages.main)
        lines = ["noticed: noticed by Doubled.IsTwice", "survivor: Doubled.IsTwice does not notice it", "1 noticed, 1 not"]
        self.assertEqual(lines, output.splitlines())
        self.assertEqual(1, outcome)
        output, outcome = self.run_main(breakages.main, "--only", "noticed")
        self.assertEqual("noticed: noticed by Doubled.IsTwice\n1 noticed, 0 not\n", output)
        self.assertEqual(0, outcome)
        self.assertEqual(CODE, (self.root / "src/basic/it.cpp").read_text(), "the checkout is left alone")
        self.assertFalse((self.root / "build").exists())

    def test_what_the_compiler_refuses_is_no_breakage(self):
        self.write_breakages({"new": "b"})
        output, outcome = self.run_main(breakages.main)
        self.assertIn("n: does not build", output)
        self.assertEqual(1, outcome)

    def test_a_test_that_fails_already_shows_nothing(self):
        self.write_breakages({})
        self.write("src/basic/it.cpp", CODE.replace("a + a", "a + a + 1"))
        with self.assertRaisesRegex(SystemExit, "fails on the unbroken code"):
            self.run_main(breakages.main)

    def assert_refused(self, fault, *changes):
        self.write_breakages(*changes)
        output, outcome = self.run_main(breakages.main, "--check")
        self.assertEqual((fault + "\n", 1), (output, outcome))

    def test_one_that_applies_passes_the_check(self):
        self.write_breakages({})
        self.assertEqual(("", 0), self.run_main(breakages.main, "--check"))

    def test_one_that_no_longer_applies_is_refused(self):
        self.assert_refused("n: its text is in src/basic/it.cpp 0 times, not once", {"old": "a + b"})
        self.assert_refused("n: its text is in src/basic/it.cpp 2 times, not once", {"old": "return"})
        self.assert_refused("n: src/basic/gone.cpp does not exist", {"file": "src/basic/gone.cpp"})
        self.assert_refused("n: there is no test Doubled.IsGone", {"test": "Doubled.IsGone"})
        self.assert_refused("n: it changes nothing", {"new": "a + a"})
        self.assert_refused("n: two breakages have this name", {}, {})

    def test_a_key_that_is_missing_or_misspelt_is_refused(self):
        self.write("tests/breakages/it.toml", '[[breakage]]\nname = "n"\n')
        with self.assertRaisesRegex(SystemExit, "it.toml: n has other keys"):
            self.run_main(breakages.main, "--check")

    def test_a_name_that_there_is_not_is_refused(self):
        self.write_breakages({})
        with self.assertRaisesRegex(SystemExit, "no breakage gone"):
            self.run_main(breakages.main, "--only", "gone")

    def test_tests_of_all_kinds_are_known_by_their_names(self):
        self.write("tests/system/x_test.py", "class Desk(Base):\n    def test_it_stays(self):\n")
        self.write("tests/house/CMakeLists.txt", "borvane_house_test(Docs docs.py)\nadd_test(NAME on_postgresql COMMAND x)\n")
        self.assertEqual({"Doubled.IsTwice", "System.Desk.it_stays", "House.Docs", "on_postgresql"}, breakages.tests_in(self.root))
        self.assertEqual("Suite.Test", breakages.source_name("All/Suite.Test/7"))


class Mutation(MadeTree):
    def test_reports_each_fault_that_survives_and_counts_the_others(self):
        self.write("src/basic/it.cpp", CODE + "int Quiet(int a) {\n  for (; a > 0; --a)\n    Doubled(a);\n  return 0;\n}\n")
        output, _ = self.run_main(mutate.main, "--count", "99", "src/basic")
        self.assertRegex(output, r"caught by Doubled\.IsTwice: src/basic/it\.cpp:2: \+ {2}-> {2}-\n")
        self.assertRegex(output, r"survived: src/basic/it\.cpp:5: ")
        self.assertRegex(output, r"seed 1, \d of \d+ possible faults: 0 not built, 1 of \d caught, \d survived\n$")
        self.assertFalse((self.root / "build").exists())

    def test_what_the_compiler_refuses_is_counted_apart(self):
        self.write("src/basic/it.cpp", CODE + "static_assert(sizeof(int) == 4);\n")
        output, _ = self.run_main(mutate.main, "--count", "99", "src/basic")
        self.assertRegex(output, r"not built: src/basic/it\.cpp:7: ")
        self.assertIn(" 1 not built, 1 of 2 caught, 1 survived", output)

    def test_the_same_seed_gives_the_same_faults(self):
        first, second, other = (self.run_main(mutate.main, "--list", "--count", "1", "--seed", seed)[0] for seed in "225")
        self.assertEqual(first, second)
        self.assertNotEqual(first, other)

    def test_broken_code_is_refused(self):
        self.write("src/basic/it.cpp", CODE.replace("a + a", "a - a"))
        with self.assertRaisesRegex(SystemExit, "test_basic fails on the unbroken code"):
            self.run_main(mutate.main, "src/basic")

    def test_says_how_a_program_ended_without_a_failed_test(self):
        self.assertEqual("test_basic, which crashes", mutate.noticed_by("test_basic", -11, "[ RUN      ] A.B\n"))
        self.assertEqual("test_basic, which hangs", mutate.noticed_by("test_basic", TIMED_OUT, ""))
        self.assertEqual("A/B.C/0", mutate.noticed_by("test_basic", 1, "[  FAILED  ] A/B.C/0, where GetParam() = 1 (0 ms)\n"))

    def test_the_longest_folder_chooses_the_judges(self):
        self.assertEqual(["test_basic", "test_program"], mutate.judges_of("src/basic/it.cpp"))
        self.assertEqual(["test_program", "test_desktop"], mutate.judges_of("src/feed/it.cpp"))

    def test_each_folder_is_judged_by_its_own_tests(self):
        project = Path(__file__).resolve().parents[2]
        self.assertLess({("src/basic", "test_basic"), ("mirror/live", "test_live"), ("mirror/store", "test_service")},
                        set(programs_of_tests(project)))
        self.assertEqual([], list(faults_of_judges(project)))

    def test_a_folder_that_its_own_tests_do_not_judge_is_found(self):
        for folder in mutate.JUDGES:
            (self.root / folder).mkdir(parents=True, exist_ok=True)
        self.assertEqual(["there are no test programs"], list(faults_of_judges(self.root)))
        self.write("tests/CMakeLists.txt", "borvane_test(test_basic FOLDERS basic support\n  OBJECTS basic LABELS quick)\n")
        self.assertEqual([], list(faults_of_judges(self.root)))
        self.write("tests/mirror/live/CMakeLists.txt", 'file(GLOB t "*.cpp" "../store/*.cpp")\nadd_executable(test_live ${t})\n')
        self.assertEqual(["mirror/store: test_live does not judge it"], list(faults_of_judges(self.root)))
        (self.root / "mirror/feeds").rmdir()
        self.assertIn("mirror/feeds: does not exist", list(faults_of_judges(self.root)))


class Mutants(unittest.TestCase):
    def faults_of(self, line):
        """All texts that the line may become."""
        text = f"void F() {{\n{line}\n}}\n"
        return {mutant.applied_to(text).split("\n")[1].strip() for mutant in mutants_of("it.cpp", text)}

    def test_operators(self):
        self.assertEqual({"return a <= b;", "return a >= b;"}, self.faults_of("  return a < b;"))
        self.assertEqual({"return a || b;"}, self.faults_of("  return a && b;"))
        self.assertEqual({"return --a;"}, self.faults_of("  return ++a;"))

    def test_numbers_and_words(self):
        self.assertEqual({"return 8;", "return 6;"}, self.faults_of("  return 7;"))
        self.assertEqual({"return 1;"}, self.faults_of("  return 0;"))
        self.assertEqual({"return 2.5;", "return 0.5;"}, self.faults_of("  return 1.5;"))
        self.assertEqual({"return false;"}, self.faults_of("  return true;"))

    def test_texts(self):
        self.assertEqual({'return "Are";'}, self.faults_of('  return "Area";'))

    def test_conditions(self):
        self.assertIn("if (!(a))", self.faults_of("  if (a)"))
        self.assertIn("while (!(a)) {", self.faults_of("  while (a) {"))

    def test_statements_and_arguments(self):
        self.assertEqual({"{}", "Move(b, a);"}, self.faults_of("  Move(a, b);"))
        self.assertEqual({"{}"}, self.faults_of("  a.Text = b;"))
        self.assertEqual({"{}"}, self.faults_of("  return;"))

    def test_types_comments_and_includes_stay(self):
        for line in ("  // a < b, 7", "  const T &a = b;", "  std::vector<int> a;", "#include <a>", '#include "a"', "  T &&a;",
                     "  int *a;", "  char c = '7';"):
            with self.subTest(line):
                self.assertEqual(set(), self.faults_of(line))

    def test_says_file_and_line_and_the_change(self):
        self.assertEqual(["it.cpp:2: 0  ->  1"], [str(mutant) for mutant in mutants_of("it.cpp", "int a() {\n  return 0;\n}\n")])

    def test_takes_at_most_one_of_a_line(self):
        mutants = mutants_of("it.cpp", "int a = 1 + 2 + 3;\nint b = 4;\n")
        self.assertEqual({1, 2}, {mutant.line for mutant in chosen(mutants, 99, random.Random(1))})
        self.assertEqual(2, len(chosen(mutants, 99, random.Random(1))))


class Clones(MadeTree):
    def test_a_command_ends_with_all_that_it_started_when_its_time_is_over(self):
        with Clone(self.root, 1) as clone:
            self.assertEqual((TIMED_OUT, "begun\n"), clone.run(["sh", "-c", "echo begun; (sleep 4; touch late) & wait"], 2))
            time.sleep(3)
            self.assertFalse((clone.root / "late").exists())

    def test_is_gone_after_its_use(self):
        with Clone(self.root, 1) as clone:
            self.assertTrue((clone.root / "src/basic/it.cpp").exists())
        self.assertFalse(clone.root.exists())


if __name__ == "__main__":
    unittest.main()
