"""Tests of what measures the costs. The variable BUILD names a build with zelBench and zelMemory."""

import os
import pathlib
import runpy
import tempfile
import unittest

from goals import met
from rows import KINDS, Bench, Row, measure_memory, measure_row
from tables import amount, memory_table, replace_part, time_table

BUILD = os.environ["BUILD"]


def row(goal, after, job="job", size=1000, **others):
    return Row(job, size, str(size), goal, {"after": after, **others})


class Goals(unittest.TestCase):
    def test_are_held_against_what_they_name(self):
        for goal, others, most in (
            ("1.5x", {"baseline": 10}, 15.04),
            ("500 ns", {}, 500),
            ("1.2 us", {}, 1200),
            ("2 blocks", {}, 2),
            ("as before", {"before": 100}, 105),
            ("1.3x of 100", {}, 65),
            ("flat", {}, 200),
        ):
            smaller = row("", 50, size=100)
            for after, expected in ((most, True), (most * 1.01, False)):
                with self.subTest(goal=goal, after=after):
                    judged = row(goal, after, **others)
                    self.assertIs(met(judged, [smaller, judged]), expected)

    def test_stay_open_without_what_they_name(self):
        for goal in ("", "1.5x", "as before", "1.3x of 7"):
            with self.subTest(goal=goal):
                judged = row(goal, 1)
                self.assertIsNone(met(judged, [judged]))


class Tables(unittest.TestCase):
    def test_show_a_decimal_below_ten(self):
        shown = [amount(figure, " ns") for figure in (9.94, 9.96, 10.4, 1234.5)]
        self.assertEqual(shown, ["9.9 ns", "10 ns", "10 ns", "1234 ns"])
        self.assertEqual([amount(2.0), amount(12.0), amount(None)], ["2", "12", ""])

    def test_have_a_column_before_when_that_was_measured(self):
        rows = [row("1.5x", 30, baseline=10, before=60), row("20 ns", 12.5, size=10)]
        self.assertEqual(list(time_table(rows, rows, True)), [
            "| job | size | before | after | baseline | ratio | goal | met |",
            "|---|---|---|---|---|---|---|---|",
            "| job | 1000 | 60 ns | 30 ns | 10 ns | 3.00x | 1.5x | **no** |",
            "| job | 10 |  | 12 ns |  |  | 20 ns | yes |",
        ])
        self.assertEqual(list(time_table(rows, rows, False))[::2], [
            "| job | size | library | baseline | ratio | goal | met |",
            "| job | 1000 | 30 ns | 10 ns | 3.00x | 1.5x | **no** |",
        ])

    def test_stand_where_the_page_has_their_comments(self):
        with tempfile.TemporaryDirectory() as folder:
            page = pathlib.Path(folder, "page.md")
            begin, end = "<!-- part: written by scripts/draw-costs -->", "<!-- end of part -->"
            page.write_text(f"above\n{begin}\nold\n{end}\nbelow\n", encoding="utf-8")
            replace_part(page, "part", ["one", "two"])
            self.assertEqual(page.read_text(encoding="utf-8"),
                             f"above\n{begin}\none\ntwo\n{end}\nbelow\n")
            with self.assertRaises(SystemExit):
                replace_part(page, "other", [])


class Programs(unittest.TestCase):
    def test_measure_the_rows_they_list(self):
        bench = Bench(BUILD)
        rows = {(row.job, row.shown): row for row in bench.rows()}
        for job in ("10 nodes: create a node with 6 ports", "fan-out: remove, shuffled"):
            measured = rows[job, "10"]
            measure_row(measured, bench, bench)
            self.assertEqual(set(measured.figures), {"after", "baseline", "before"})
            self.assertTrue(all(figure > 0 for figure in measured.figures.values()))
        with self.assertRaises(SystemExit):
            bench.measure(Row("no such job", 10, "10", ""))
        bench.close()

    def test_know_every_row_that_the_readme_shows(self):
        path = pathlib.Path(__file__).with_name("__main__.py")
        rows_of_readme = runpy.run_path(str(path))["rows_of_readme"]
        bench = Bench(BUILD)
        self.assertGreater(len(list(rows_of_readme(list(bench.rows())))), 20)
        bench.close()

    @unittest.skipUnless(os.path.exists(f"{BUILD}/bench/zelMemory"), "not built here")
    def test_count_memory_that_meets_the_goals(self):
        memory = measure_memory(BUILD, None, largest=1000)
        for kind in KINDS:
            for counted in memory.rows[kind]:
                if ("block" in counted.goal) == (kind == "blocks"):
                    self.assertIn(met(counted, memory.rows[kind]), (True, None), counted)
        figures = {counted.job: counted.figures for counted in memory.rows["taken"]}
        self.assertGreater(figures["a node with 6 ports"]["after"], figures["a bare node"]["after"])
        self.assertEqual(len(list(memory_table(memory, False))), 2 + len(memory.rows["taken"]))


if __name__ == "__main__":
    unittest.main()
