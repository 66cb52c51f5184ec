"""The tests of the mutation run itself."""

import contextlib
import io
import pathlib
import tempfile
import unittest

import coverage
import mutate
import points
import suite

HERE = pathlib.Path(__file__).resolve().parent
SAMPLE = HERE / "sample/sample.cpp"


def found_in(path, file="plugin/sample.cpp"):
    return points.points_of(points.parse(path, ["-std=c++20"]), path, file)


def point(file="plugin/a.cpp", code="x = 1;", old="1", new="2", line=1, nth=0, operator="constant"):
    return points.Point(file, 4, 1, operator, old, new, line, line, line, code, nth)


class Points(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.points = found_in(SAMPLE)
        cls.changes = {(each.code, each.operator, each.old, each.new) for each in cls.points}

    def changes_of(self, beginning):
        return {change[1:] for change in self.changes if change[0].startswith(beginning)}

    def test_comparisons_move_their_boundary_and_turn_round(self):
        self.assertEqual(self.changes_of("if (!wanted || row"), {
            ("negation", "!", ""), ("logic", "||", "&&"), ("comparison", ">=", ">"), ("comparison", ">=", "<"),
            ("negation", "!wanted || row >= list.count", "!(!wanted || row >= list.count)"),
            ("arithmetic", "-", ""), ("constant", "1", "2"), ("constant", "1", "0"), ("result", "return -1", "return {}")})

    def test_a_condition_that_declares_is_negated_behind_its_declaration(self):
        changes = self.changes_of("if (auto found")
        self.assertIn(("negation", "auto found = between(row, limit)", "auto found = between(row, limit); !found"), changes)
        self.assertIn(("statement", "list.clear()", ""), changes)

    def test_statements_and_jumps_are_deleted_and_loops_changed(self):
        self.assertIn(("statement", "break", ""), self.changes_of("if (list.isEmpty())"))
        self.assertEqual(self.changes_of("list.count += i"), {("statement", "list.count += i", ""), ("arithmetic", "+=", "-=")})
        self.assertIn(("arithmetic", "++", "--"), self.changes_of("for (int i"))

    def test_arguments_of_one_type_change_places_unless_their_order_is_free(self):
        self.assertIn(("arguments", "1, row", "row, 1"), self.changes_of("return name[0]"))
        self.assertNotIn("arguments", {change[0] for change in self.changes_of("int between")})

    def test_texts_are_changed_before_their_first_colon(self):
        self.assertEqual({change for change in self.changes_of("const char* name") if change[0] == "text"},
                         {("text", '"setText:"', '"setTextx:"'), ("text", '"a text"', '"a textx"')})

    def test_what_only_the_compiler_reads_is_left_alone(self):
        self.assertEqual(self.changes_of("static_assert"), set())

    def test_a_change_replaces_its_text_alone(self):
        source = SAMPLE.read_bytes()
        for each in self.points:
            changed = each.apply(source)
            self.assertEqual(len(changed), len(source) - len(each.old.encode()) + len(each.new.encode()))
            self.assertEqual(source[each.offset : each.offset + each.length].decode(), each.old)

    def test_the_identity_of_a_change_moves_with_its_line(self):
        with tempfile.TemporaryDirectory() as folder:
            moved = pathlib.Path(folder) / "sample.cpp"
            moved.write_text("// One line more.\n" + SAMPLE.read_text())
            self.assertEqual([each.identity for each in found_in(moved)], [each.identity for each in self.points])

    def test_no_two_changes_have_one_identity(self):
        self.assertEqual(len({each.identity for each in self.points}), len(self.points))

    def test_a_source_with_errors_is_refused(self):
        with tempfile.TemporaryDirectory() as folder:
            broken = pathlib.Path(folder) / "broken.cpp"
            broken.write_text("int f() { return nothing; }\n")
            with self.assertRaisesRegex(ValueError, "cannot be read as C\\+\\+"):
                found_in(broken)


class Choice(unittest.TestCase):
    def test_a_sample_is_the_same_for_a_seed(self):
        many = [point(line=line, code=str(line)) for line in range(100)]
        options = mutate.parse_options(["--sample", "10", "--seed", "3"])
        self.assertEqual(mutate.choose(many, options), mutate.choose(many, options))
        self.assertEqual(len(mutate.choose(many, options)), 10)
        self.assertNotEqual(mutate.choose(many, options),
                            mutate.choose(many, mutate.parse_options(["--sample", "10", "--seed", "4"])))

    def test_files_operators_and_lines_narrow_it(self):
        many = [point(), point(file="plugin/b.cpp"), point(operator="text"), point(line=2)]
        self.assertEqual(mutate.choose(many, mutate.parse_options(["--file", "b.cpp"])), [many[1]])
        self.assertEqual(mutate.choose(many, mutate.parse_options(["--operator", "text"])), [many[2]])
        self.assertEqual(mutate.choose(many, mutate.parse_options(["--line", "2"])), [many[3]])


class Bookkeeping(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name) / "results.jsonl"

    def test_a_run_that_was_stopped_goes_on(self):
        mutate.Results(self.path, "state", False).add(point(), {"verdict": "survived"})
        self.assertIn(point().identity, mutate.Results(self.path, "state", False).known)

    def test_other_sources_or_tests_void_the_results_but_for_kills_on_request(self):
        results = mutate.Results(self.path, "before", False)
        results.add(point(), {"verdict": "survived"})
        results.add(point(code="y = 1;"), {"verdict": "killed"})
        self.assertEqual(mutate.Results(self.path, "after", False).known, {})
        self.assertEqual(set(mutate.Results(self.path, "after", True).known), {point(code="y = 1;").identity})

    def test_the_score_counts_neither_invalid_changes_nor_those_that_change_nothing(self):
        results = mutate.Results(self.path, "state", False)
        chosen = [point(code=str(number)) for number in range(5)]
        for each, verdict in zip(chosen, ["killed", "killed", "survived", "same", "invalid"]):
            results.add(each, {"verdict": verdict})
        explanations = mutate.Explanations(pathlib.Path(self.folder.name) / "none.txt")
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            unexplained = mutate.report(chosen, results, explanations, 9)
        self.assertIn("score: 66.7 %", output.getvalue())
        self.assertIn("5 of 9 changes: 2 killed, 1 survived (1 without an explanation)", output.getvalue())
        self.assertEqual([each for each, _ in unexplained], [chosen[2]])

    def test_a_survivor_is_explained_by_its_line_and_its_change(self):
        file = pathlib.Path(self.folder.name) / "survivors.txt"
        file.write_text("# A comment.\n\nplugin/a.cpp\nx = 1;\n1 -> 2\nNobody reads x.\nNever.\n")
        explanations = mutate.Explanations(file)
        self.assertEqual(explanations.of(point(line=77)), "Nobody reads x. Never.")
        self.assertIsNone(explanations.of(point(new="3")))
        file.write_text("plugin/a.cpp\nx = 1;\n")
        with self.assertRaisesRegex(mutate.Trouble, "block 1"):
            mutate.Explanations(file)

    def test_every_explanation_of_the_tree_can_be_read(self):
        mutate.Explanations(mutate.EXPLANATIONS)


class Coverage(unittest.TestCase):
    def setUp(self):
        tests = [suite.Test("a_tests", "A.one"), suite.Test("a_tests", "A.two")]
        self.map = coverage.Map(tests, [0.5, 0.25], {"a_tests": 1.0}, {"plugin/a.cpp": {1: {0}, 5: {1}}})

    def test_a_statement_is_reached_by_the_tests_of_its_lines(self):
        self.assertEqual(self.map.reaching(point(line=1)), ({0}, True))

    def test_what_has_no_code_is_reached_by_the_tests_of_its_file_or_by_all(self):
        self.assertEqual(self.map.reaching(point(line=3)), ({0, 1}, False))
        self.assertEqual(self.map.reaching(point(file="plugin/b.h")), ({0, 1}, False))

    def test_the_start_of_a_program_is_paid_once(self):
        self.assertEqual(self.map.time_together([0, 1]), 1.75)

    def test_is_the_same_after_storing(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "map.json"
            self.map.store(path)
            self.assertEqual(vars(coverage.Map.load(path)), vars(self.map))


class Running(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def run_script(self, *lines, bound=20):
        path = pathlib.Path(self.folder.name) / "program"
        path.write_text("#!/bin/sh\n" + "\n".join(lines) + "\n")
        path.chmod(0o755)
        return suite.run(path, ["A.one"], bound, suite.environment())

    def test_a_success_says_how_long_the_tests_themselves_took(self):
        outcome = self.run_script("echo '[       OK ] A.one (250 ms)'")
        self.assertTrue(outcome.passed)
        self.assertEqual(outcome.own, 0.25)

    def test_a_failure_names_the_test(self):
        outcome = self.run_script("echo '[ RUN      ] A.one'", "echo '[  FAILED  ] A.one (1 ms)'", "exit 1")
        self.assertEqual((outcome.passed, outcome.failed, outcome.reason), (False, ["A.one"], "fails"))

    def test_a_crash_names_the_test_that_ran(self):
        outcome = self.run_script("echo '[ RUN      ] A.one'", "kill -SEGV $$")
        self.assertEqual((outcome.failed, outcome.reason), (["A.one"], "ends by signal 11"))

    def test_an_endless_test_is_ended_with_what_it_started(self):
        outcome = self.run_script("echo '[ RUN      ] A.one'", "sleep 1000", bound=1)
        self.assertEqual((outcome.failed, outcome.reason), (["A.one"], "goes on without end"))


if __name__ == "__main__":
    unittest.main()
