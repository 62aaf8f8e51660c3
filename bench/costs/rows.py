"""The rows that the programs measure: times from zelBench, memory from zelMemory."""

import subprocess
import time
from dataclasses import dataclass, field

PASSES = 3  # Over all rows: a machine that others share is slow for seconds, or minutes.
MAX_ROUNDS = 8  # Of a row in one pass.
SECONDS = 0.7  # For a row in one pass; one that takes longer gets one round.


@dataclass
class Row:
    """A job at one size, and the figures of one operation by whose they are."""

    job: str
    size: int
    shown: str  # The size for readers: "8 x 10000" is levels x siblings.
    goal: str
    figures: dict = field(default_factory=dict)  # "before", "after", "baseline"; some lack.

    @property
    def nodes(self):
        levels, _, siblings = self.shown.rpartition(" x ")
        return int(levels or 1) * int(siblings)

    def note(self, whose, figure):
        """Keeps the lowest one."""
        self.figures[whose] = min(figure, self.figures.get(whose, figure))


class Bench:
    """A zelBench that measures the rows it is asked for; its heap stays warm."""

    def __init__(self, folder):
        self.path = f"{folder}/bench/zelBench"
        self.process = subprocess.Popen(
            [self.path, "--serve"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        )

    def rows(self):
        """All rows that it knows, without figures."""
        listed = subprocess.run([self.path, "--list"], check=True, capture_output=True, text=True)
        for line in listed.stdout.splitlines():
            job, size, shown, goal = line.split("\t")
            yield Row(job, int(size), shown, goal)

    def measure(self, row):
        """Nanoseconds of the library and of the baseline, which is 0 when it has no such job."""
        self.process.stdin.write(f"{row.job}\t{row.size}\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().split()
        if len(answer) != 2:
            raise SystemExit(f"{self.path} gave no figures for {row.job} at {row.shown}")
        return tuple(float(figure) for figure in answer)

    def close(self):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait()


def measure_row(row, after, before):
    """Both programs in turn, some rounds; the baseline is that of the program after."""
    begin = time.monotonic()
    for done in range(MAX_ROUNDS):
        if done > 0 and time.monotonic() - begin > SECONDS:
            break
        library, baseline = after.measure(row)
        row.note("after", library)
        if baseline:
            row.note("baseline", baseline)
        if before:
            row.note("before", before.measure(row)[0])


def measure_times(rows, after, before, progress):
    """Gives the rows their figures; before, which measures the library before, may be none."""
    # Small networks first: they find the heap as they would in a program that has no large one.
    in_order = sorted(rows, key=lambda row: row.nodes)
    for number in range(1, PASSES + 1):
        for place, row in enumerate(in_order, 1):
            progress(f"{number} of {PASSES}, {place} of {len(rows)}: {row.job}, {row.shown}")
            measure_row(row, after, before)


@dataclass
class Memory:
    """What zelMemory counted: rows by kind ("blocks", "asked", "taken"), and sizes of classes."""

    rows: dict
    classes: dict  # By name: bytes, by whose they are.


KINDS = ("blocks", "asked", "taken")


def measure_memory(after_folder, before_folder, largest=1000000):
    """Networks of so many nodes at most are counted."""
    memory = Memory({kind: [] for kind in KINDS}, {})
    count_memory(memory, after_folder, "after", largest)
    if before_folder:
        count_memory(memory, before_folder, "before", largest)
    return memory


def count_memory(memory, folder, whose, largest):
    """Adds the figures of one program; the rows are those of the first."""
    command = [f"{folder}/bench/zelMemory", str(largest)]
    output = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    known = {kind: {(row.job, row.size): row for row in memory.rows[kind]} for kind in KINDS}
    for line in output.splitlines():
        sort, *rest = line.split("\t")
        if sort == "sizeof":
            name, size = rest
            memory.classes.setdefault(name, {})[whose] = int(size)
            continue
        job, size, goal, *figures = rest
        for place, kind in enumerate(KINDS):
            row = known[kind].get((job, int(size)))
            if not row:
                row = Row(job, int(size), size, goal)
                memory.rows[kind].append(row)
            row.figures[whose] = float(figures[place])
            if whose == "after" and figures[place + 3] != "-":
                row.figures["baseline"] = float(figures[place + 3])
