"""Measures what calls of the Python package cost, beside the same calls in C++.

Usage: costs.py PROGRAM, where PROGRAM is zelPythonCosts; prints a table. The two sides take turns, and
each figure is the median of its rounds.
"""

import gc
import os
import statistics
import subprocess
import sys
import time
from itertools import repeat

import zel

ROUNDS = 5
CALL = 200  # ns over C++, the goal of a bound call.
WALK = 2000  # ns for a node: 100,000 in 0.2 s.


class Document(zel.Container):
    def __init__(self):
        super().__init__()
        self.root = zel.Node(self, "Top")
        self.compound = zel.Compound(self.root)
        self.nodes = self.compound.nodes()

    def getRootNode(self):
        return self.root

    def fill(self, make, count):
        for index in range(count):
            self.nodes.add(make(self, f"Node{index}"))
        return self


class Derived(zel.Node):
    pass


class Asked(zel.Node):
    def onPortSetName(self, port, name):
        return False


def timed(count, run):
    """Nanoseconds for one of so many; run(loop) does one for each turn of the loop."""
    loop = repeat(None, count)
    start = time.process_time()
    run(loop)
    return (time.process_time() - start) / count * 1e9


def calls():
    document = Document().fill(zel.Node, 1)
    node = document.nodes[0]
    nodes = document.nodes
    port = node.inputs().addPort("In")

    def name(loop):
        for _ in loop:
            node.getName()

    def answer(loop):
        for _ in loop:
            port.isConnected()

    def length(loop):
        for _ in loop:
            len(nodes)

    def known(loop):
        for _ in loop:
            node.getParentCompound()

    def new(loop):
        for _ in loop:
            node.inputs()

    def text(loop):
        for _ in loop:
            node.setNodeTypeName("noise2d")

    yield "a call with a text as answer", CALL, timed(200000, name)
    yield "a call with a yes or no", CALL, timed(200000, answer)
    yield "the length of a list", CALL, timed(200000, length)
    yield "a call with a text as argument", CALL, timed(200000, text)
    yield "a call that gives an object, held already", CALL, timed(200000, known)
    yield "a call that gives an object, not held", None, timed(200000, new)


def lookups():
    for kind, make in (("nodes", zel.Node), ("nodes of a Python class", Derived)):
        document = Document().fill(make, 10000)
        nodes = document.nodes
        held = list(nodes)
        nodes["Node5000"]

        def named(loop):
            for _ in loop:
                nodes["Node5000"]

        def path(loop):
            for _ in loop:
                document.findNodeFromPath("Top.Node5000")

        yield f"by name in a list, of 10,000 {kind}", CALL, timed(100000, named)
        if make is zel.Node:
            # The library asks the class of the document, which is in Python, for the root node.
            yield f"by path, of 10,000 {kind}", None, timed(100000, path)
        del held


def connections():
    document = Document().fill(zel.Node, 2)
    source = document.nodes[0].outputs().addPort("Out")
    target = document.nodes[1].inputs().addPort("In")

    def connect(loop):
        for _ in loop:
            target.addConnection(source)
            target.removeConnection(source)

    yield "connect, and disconnect", 2 * CALL, timed(100000, connect)


def overrides():
    document = Document().fill(Asked, 1)
    port = document.nodes[0].inputs().addPort("In")

    def ask(loop):
        for _ in loop:
            port.setName("Other")

    yield "an override asked, and what asks it", None, timed(100000, ask)


def making():
    document = Document()

    def plain(loop):
        for _ in loop:
            zel.Node(document, "Node")

    def derived(loop):
        for _ in loop:
            Derived(document, "Node")

    yield "make a node, and drop it", None, timed(50000, plain)
    yield "make a node of a Python class, and drop it", None, timed(50000, derived)


def walking():
    for kind, make in (("nodes", zel.Node), ("nodes of a Python class", Derived)):
        document = Document().fill(make, 100000)
        nodes = document.nodes
        gc.collect()
        start = time.process_time()
        for node in nodes:
            node.getName()
        passed = (time.process_time() - start) / len(nodes) * 1e9
        yield f"walk 100,000 {kind} with getName, each", WALK, passed


def measure():
    return [row for job in (calls, lookups, connections, overrides, making, walking) for row in job()]


def measure_cpp(program):
    output = subprocess.run([program], check=True, capture_output=True, text=True).stdout
    rows = (line.split("\t") for line in output.splitlines())
    return {name: float(figure) for name, figure in rows}


def goal_of(goal, cpp):
    if goal is None:
        return ""
    return f"{goal} ns" if goal == WALK else f"{cpp + goal:.0f} ns"


def main(program):
    python, cpp, goals = {}, {}, {}
    for _ in range(ROUNDS):
        for name, figure in measure_cpp(program).items():
            cpp.setdefault(name, []).append(figure)
        for name, goal, figure in measure():
            python.setdefault(name, []).append(figure)
            goals[name] = goal
    if python.keys() != cpp.keys():
        raise SystemExit(f"not the same jobs: {python.keys() ^ cpp.keys()}")
    print("| what | C++ | Python | goal |\n|---|---|---|---|")
    for name, figures in python.items():
        plain = statistics.median(cpp[name])
        print(
            f"| {name} | {plain:.0f} ns | {statistics.median(figures):.0f} ns "
            f"| {goal_of(goals[name], plain)} |"
        )
    version = ".".join(str(part) for part in sys.version_info[:3])
    print(
        f"\nMeasured with Python {version} on {os.cpu_count()} processors, at a load of "
        f"{os.getloadavg()[0]:.1f} when it ended."
    )


if __name__ == "__main__":
    if len(sys.argv) == 2:
        main(sys.argv[1])
    else:
        for row in measure():
            print(f"{row[0]}: {row[2]:.0f} ns")
