"""Measures what operations cost and what objects take, and prints or writes the tables.

Usage: python3 bench/costs FOLDER [--before FOLDER] [--rows REGEX] [--write NAME [--before-name NAME]]

A folder is a build that has zelBench and zelMemory. Without --write the times of the rows whose
"job/size" has a match are printed. With it docs/costs-table.md, the tables of docs/costs.md and of
README.md, and the figures for curves in the first folder, costs.tsv, are written; the names say what
was measured.
"""

import argparse
import os
import re
import sys

from rows import Bench, measure_memory, measure_times
from tables import class_table, memory_table, replace_part, time_table

# What README shows: jobs, and the sizes of them.
CHOSEN = (
    ("create a node with 6 ports", "1000", "10000", "100000", "1000000"),
    ("create a node with 6 ports, cold heap", "1000", "100000"),
    ("10 nodes: create a node with 6 ports", "10"),
    ("10 nodes: connect, ports at hand", "10"),
    ("10 nodes: findPortFromPath", "10"),
    ("10 nodes: removeConnection", "10"),
    ("10 nodes: destroy a connected node", "10"),
    ("connect, ports at hand", "1000", "10000", "100000", "1000000"),
    ("connect, both ends by name", "1000", "100000"),
    ("findPortFromPath", "1 x 10", "8 x 10", "8 x 10000", "1 x 100000", "1 x 1000000"),
    ("full path name, depth", "8"),
    ("rename, then look up", "10000"),
    ("fan-out: connect", "100000"),
    ("fan-out: remove, first to last", "10", "1000", "100000"),
    ("fan-out: remove, shuffled", "10", "1000", "100000"),
    ("fan-out: removeAllConnections", "10", "1000", "100000"),
    ("fan-out: remove the source node", "100000"),
    ("destroy a connected node", "1000", "10000", "100000", "1000000"),
    ("ConnectCommand: connect", "1000"),
    ("ConnectCommand: undo", "1000"),
    ("ConnectCommand: redo", "1000"),
    ("CreateCompoundCommand, a node", "10", "100", "1000", "10000"),
    ("CreateCompoundCommand, scattered", "10", "10000"),
    ("collapse a tenth of so many nodes", "100000", "1000000"),
    ("one editor: a notification", "100000"),
    ("one editor: a node dies", "10", "1000", "100000", "1000000"),
)

# And what of memory.
CHOSEN_MEMORY = (
    "a port",
    "a bare node",
    "a node with 6 ports, 4 inputs fed and each output feeding 2",
    "a network of 10 connected nodes, all of it",
)

TEXT = """# Measured costs

`scripts/draw-costs` writes this page; [costs.md](costs.md) says what the operations cost and why.
{names}

A figure is for one operation: the lowest of at least three rounds, in which the programs take turns.
Library and baseline run in one process, on memory that it has touched before, but for the rows "cold
heap": there each figure comes from a process that has used no memory yet. Sizes are nodes,
connections of one output (fan-out), moved nodes (CreateCompoundCommand), watched nodes (one editor) or
levels x siblings on each level. The ratio is that of the library{after} to the baseline.

A goal "1.5x" is held against the baseline, "1.3x of 100000" against the same job at that size, "flat"
against four times the smallest size, and "as before" allows the five per cent by which two runs differ.
"""


def measured_names(name, before_name):
    load = f"at a load of {os.getloadavg()[0]:.1f} when it ended"
    lines = [f"Measured on {os.cpu_count()} processors, {load}.", f"Library: {name}."]
    if before_name:
        lines[1:] = [f"Before: {before_name}.", f"After: {name}."]
    return "\n".join(lines)


def rows_of_readme(rows):
    """In the order of CHOSEN; a row that the program does not know any more is an error."""
    known = {(row.job, row.shown): row for row in rows}
    for job, *sizes in CHOSEN:
        for size in sizes:
            if (job, size) not in known:
                raise SystemExit(f"README is to show a row that is not measured: {job}, {size}")
            yield known[job, size]


def write_pages(options, rows, in_readme, memory):
    before = options.before is not None
    names = measured_names(options.write, options.before_name)
    with open("docs/costs-table.md", "w", encoding="utf-8") as page:
        page.write(TEXT.format(names=names, after=" after" if before else "") + "\n")
        page.write("\n".join(time_table(rows, rows, before)) + "\n")
    replace_part("README.md", "costs", [names, "", *time_table(in_readme, rows, before)])
    replace_part("README.md", "memory", memory_table(memory, before, CHOSEN_MEMORY))
    replace_part("docs/costs.md", "memory", memory_table(memory, before))
    replace_part("docs/costs.md", "classes", class_table(memory, before))


def write_curves(folder, rows):
    with open(f"{folder}/costs.tsv", "w", encoding="utf-8") as curves:
        for row in rows:
            figures = (row.figures.get(whose, "") for whose in ("before", "after", "baseline"))
            print(row.job, row.shown, *figures, sep="\t", file=curves)


def progress(text):
    print(text, file=sys.stderr, flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n", maxsplit=1)[0])
    parser.add_argument("folder")
    parser.add_argument("--before", metavar="FOLDER")
    parser.add_argument("--rows", metavar="REGEX", default="")
    parser.add_argument("--write", metavar="NAME")
    parser.add_argument("--before-name", metavar="NAME")
    options = parser.parse_args()
    if options.write and options.rows:
        parser.error("the pages are written with all rows")

    chosen = re.compile(options.rows)
    after = Bench(options.folder)
    before = Bench(options.before) if options.before else None
    rows = [row for row in after.rows() if chosen.search(f"{row.job}/{row.shown}")]
    in_readme = list(rows_of_readme(rows)) if options.write else []
    measure_times(rows, after, before, progress)
    for bench in filter(None, (after, before)):
        bench.close()
    if not options.write:
        print("\n".join(time_table(rows, rows, options.before is not None)))
        return
    progress("memory")
    write_pages(options, rows, in_readme, measure_memory(options.folder, options.before))
    write_curves(options.folder, rows)


if __name__ == "__main__":
    main()
