"""Every edit of the shell, with its name, what it does and why it refuses."""

import re

import pytest

import zel
import zel.shading
from shading_support import GATE, WALL, reasonOf, runShell, shellReason, stateOf


@pytest.fixture
def gate():
    return zel.shading.open(GATE)


def camel(words):
    first, *rest = re.split(r"[ -]", words)
    return first + "".join(word.capitalize() for word in rest)


def test_each_command_of_the_shell_has_a_method():
    help_ = runShell(GATE, "help")[0]
    groups = dict(re.findall(r"^(\w[\w ]*)\n((?:  .*\n)+)", help_, re.MULTILINE))
    commands = [
        line.split()[0]
        for title in ("Editing", "Files", "Definitions")
        for line in groups[title].splitlines()
    ]
    assert "connect" in commands and "save" in commands
    for command in commands:
        usage = runShell(GATE, f"help {command}")[0].splitlines()[0]
        verbs = re.findall(r"(?:^\w+|\|) (\w+) ", usage) if "|" in usage else []
        names = [f"{command} {verb}" for verb in verbs if verb.islower()] or [command]
        for name in names:
            # The registry of runtimes is that of zel.Host.
            if name != "runtimes":
                assert callable(getattr(zel.shading.Document, camel(name))), name
    assert camel("port add") == "portAdd" and camel("disconnect-all") == "disconnectAll"


# A call that is refused, and the line of the shell that is refused likewise.
REFUSED = [
    (lambda d: d.connect("Top.none", "Top.NG_gate.age"), "connect Top.none Top.NG_gate.age"),
    (lambda d: d.connect("Top.NG_gate.age", "Top.NG_gate.age"),
     "connect Top.NG_gate.age Top.NG_gate.age"),
    (lambda d: d.disconnect("Top.NG_gate.age", "Top.SR_gate.base_color"),
     "disconnect Top.NG_gate.age Top.SR_gate.base_color"),
    (lambda d: d.disconnectAll("Top.none.x"), "disconnect-all Top.none.x"),
    (lambda d: d.reroute("Top.NG_gate.age", "Top.none.x", inside=True),
     "reroute Top.NG_gate.age Top.none.x --inside"),
    (lambda d: d.insert("Top.NG_gate", "Top.NG_gate.age", "Top.NG_gate.chipping.amount"),
     "insert Top.NG_gate Top.NG_gate.age Top.NG_gate.chipping.amount"),
    (lambda d: d.collapse("Top", "x", ["NG_gate", "none"]), "collapse Top x NG_gate none"),
    (lambda d: d.collapse("Top", "a b", ["NG_gate"]), 'collapse Top "a b" NG_gate'),
    (lambda d: d.collapse("Top.SR_gate", "x", "a"), "collapse Top.SR_gate x a"),
    (lambda d: d.expand("Top"), "expand Top"),
    (lambda d: d.expand("Top.SR_gate"), "expand Top.SR_gate"),
    (lambda d: d.portAdd("Top.NG_gate", "both", "x", "float"), "port add Top.NG_gate both x float"),
    (lambda d: d.portAdd("Top.NG_gate", "input", "age", "float"),
     "port add Top.NG_gate input age float"),
    (lambda d: d.portDelete("Top.NG_gate", "none"), "port delete Top.NG_gate none"),
    (lambda d: d.portRename("Top.NG_gate", "age", "0"), "port rename Top.NG_gate age 0"),
    (lambda d: d.portMove("Top.NG_gate", "age", 99), "port move Top.NG_gate age 99"),
    (lambda d: d.portType("Top.NG_gate", "age", "none_such"),
     "port type Top.NG_gate age none_such"),
    (lambda d: d.portType("Top.NG_gate", "age", "color3"), "port type Top.NG_gate age color3"),
    (lambda d: d.set("Top.NG_gate.age", "old"), "set Top.NG_gate.age old"),
    (lambda d: d.set("Top.none.age", 1), "set Top.none.age 1"),
    (lambda d: d.attribute("Top.NG_gate", "name", "x"), "attribute Top.NG_gate name x"),
    (lambda d: d.attribute("Top.NG_gate", "none"), "attribute Top.NG_gate none"),
    (lambda d: d.attribute("Top.none"), "attribute Top.none"),
    (lambda d: d.reparent("Top.NG_gate.rust", "Top.NG_gate"),
     "reparent Top.NG_gate.rust Top.NG_gate"),
    (lambda d: d.move([("Top.NG_gate", 1, 1), ("Top.NG_gate", 2, 2)]),
     "move Top.NG_gate 1 1 Top.NG_gate 2 2"),
    (lambda d: d.copy(["Top.NG_gate", "Top.NG_gate.rust"]), "copy Top.NG_gate Top.NG_gate.rust"),
    (lambda d: d.paste(), "paste"),
    (lambda d: d.paste("Top", "<nothing"), "paste Top <nothing"),
    (lambda d: d.duplicate("Top"), "duplicate Top"),
    (lambda d: d.delete("Top"), "delete Top"),
    (lambda d: d.delete(["Top.NG_gate", "Top.none"], heal=True),
     "delete Top.NG_gate Top.none --heal"),
    (lambda d: d.rename("Top.NG_gate", "SR_gate"), "rename Top.NG_gate SR_gate"),
    (lambda d: d.rename("Top.none", "x"), "rename Top.none x"),
    (lambda d: d.arrange("Top.NG_gate", ["none"]), "arrange Top.NG_gate none"),
    (lambda d: d.create("none_such", "x"), "create none_such x"),
    (lambda d: d.create("add", "x", type="none_such"), "create add x --type none_such"),
    (lambda d: d.create("nodegraph", "x", type="float"), "create nodegraph x --type float"),
    (lambda d: d.create("add", "x", "Top.SR_gate"), "create add x Top.SR_gate"),
    (lambda d: d.backdropAdd("Top", "x", ["none"]), "backdrop add Top x none"),
    (lambda d: d.backdropAdd("Top", "x", frame=(0, 0, -1, 1)),
     "backdrop add Top x --frame 0,0,-1,1"),
    (lambda d: d.backdropMove("Top", "none", 1, 2), "backdrop move Top none 1 2"),
    (lambda d: d.backdropText("Top", "none", "x"), "backdrop text Top none x"),
    (lambda d: d.undo(), "undo"),
    (lambda d: d.redo(3), "redo 3"),
    (lambda d: d.draw("gate.mtlx"), "draw gate.mtlx"),
    (lambda d: d.library("none"), "library none"),
]


@pytest.mark.parametrize("call, line", REFUSED, ids=[line for _, line in REFUSED])
def test_a_refusal_is_that_of_the_shell_and_changes_nothing(gate, call, line):
    before = stateOf(gate)
    assert reasonOf(lambda: call(gate)) == shellReason(GATE, line)
    assert stateOf(gate) == before
    assert not gate.isModified()
    assert gate.undoCount() == 0


# Edits, and lines of the shell that do the same.
DONE = [
    (lambda d: d.rename("Top.NG_gate", "g"), "rename Top.NG_gate g"),
    (lambda d: d.set("Top.NG_gate.age", 0.25), "set Top.NG_gate.age 0.25"),
    (lambda d: d.create("nodegraph", "n"), "create nodegraph n"),
    (lambda d: d.create("add", "s", "Top.NG_gate", type="color3"),
     "create add s Top.NG_gate --type color3"),
    (lambda d: d.delete("Top.NG_gate.rust", heal=True), "delete Top.NG_gate.rust --heal"),
    (lambda d: d.expand("Top.NG_gate.rust"), "expand Top.NG_gate.rust"),
    (lambda d: d.collapse("Top", "c", ["NG_gate"]), "collapse Top c NG_gate"),
    (lambda d: d.disconnect("Top.NG_gate.age", "Top.NG_gate.chipping.amount"),
     "disconnect Top.NG_gate.age Top.NG_gate.chipping.amount"),
    (lambda d: d.disconnectAll("Top.NG_gate.age"), "disconnect-all Top.NG_gate.age"),
    (lambda d: d.portAdd("Top.NG_gate", zel.PortOutput, "o", "float"),
     "port add Top.NG_gate output o float"),
    (lambda d: d.portDelete("Top.NG_gate", "age"), "port delete Top.NG_gate age"),
    (lambda d: d.portRename("Top.NG_gate", "age", "old"), "port rename Top.NG_gate age old"),
    (lambda d: d.portMove("Top.NG_gate.chipping", "amount", 1),
     "port move Top.NG_gate.chipping amount 1"),
    (lambda d: d.attribute("Top.NG_gate", "doc", "a b"), 'attribute Top.NG_gate doc "a b"'),
    (lambda d: d.move("Top.NG_gate", 1, -2.5), "move Top.NG_gate 1 -2.5"),
    (lambda d: d.arrange("Top.NG_gate"), "arrange Top.NG_gate"),
    (lambda d: d.reparent("Top", "Top.NG_gate.rust"), "reparent Top Top.NG_gate.rust"),
    (lambda d: d.duplicate("Top.NG_gate.rust", at=(1, 2)), "duplicate Top.NG_gate.rust --at 1,2"),
    (lambda d: d.backdropAdd("Top", "b", ["NG_gate"], frame=(0, 1, 2, 3), text="why"),
     "backdrop add Top b NG_gate --frame 0,1,2,3 --text why"),
]


@pytest.mark.parametrize("call, line", DONE, ids=[line for _, line in DONE])
def test_an_edit_is_that_of_the_shell_and_is_undone(call, line, tmp_path):
    doc = zel.shading.open(GATE)
    before = stateOf(doc)
    call(doc)
    after = stateOf(doc)
    assert after != before or "attribute" in line or "move" in line or "arrange" in line
    assert doc.isModified()
    doc.save(tmp_path / "mine.mtlx")
    assert "error" not in runShell(GATE, line, f"save {tmp_path}/shells.mtlx")[1]
    assert (tmp_path / "mine.mtlx").read_bytes() == (tmp_path / "shells.mtlx").read_bytes()
    doc.undo()
    assert stateOf(doc) == before
    doc.redo()
    assert stateOf(doc) == after


def test_paths_and_objects_are_one_thing(gate):
    node = gate.node("Top.NG_gate")
    compound = node.getAsCompound()
    gate.rename(node, "a")
    gate.rename(compound, "b")
    assert node.getName() == "b"
    inner = compound.innerInputs()["age"]
    target = gate.port("Top.b.chipping.amount")
    gate.disconnect(target, inner)
    assert not target.isConnected()
    gate.connect("Top.b.age", target)
    assert target.connectedTo() == (inner,)
    gate.portRename(inner, "old")
    gate.portRename(node.inputs()["old"], "older")
    gate.portMove(inner, 2)
    assert compound.innerInputs()[1] is inner
    gate.portDelete(inner)
    assert reasonOf(lambda: gate.portDelete(inner)).endswith("no such port")
    gate.attribute(target, "doc", "why")
    assert gate.attribute("Top.b.chipping.amount") == {"doc": "why"}
    gate.undo(gate.undoCount())
    assert not gate.isModified()


def test_what_is_made_is_given(gate):
    node = gate.create("image", "i", type="color3")
    assert gate.history()[-1].commands == ["create ND_image_color3 i"]
    graph = gate.collapse("Top", "g", [node])
    assert graph.getAsCompound().nodes()[0] is node
    assert gate.reparent("Top", node) == [node]
    text = gate.copy([node])
    assert text.startswith("<") and "\n" not in text
    pasted = gate.paste(graph, middle=(3, 4))
    assert [n.getFullPathName() for n in pasted] == ["Top.g.i"]
    assert gate.paste("Top", text)[0].getName() == "i2"
    assert gate.expand("Top.g") == [("Top.g.i", "Top.i3")]
    assert [n.getName() for n in gate.duplicate([node, "Top.i2"])] == ["i4", "i22"]


def test_objects_of_another_document_are_refused(gate):
    other = zel.shading.open(WALL)
    node = next(other.walk())
    port = node.outputs()[0]
    deleted = gate.create("add", "a")
    gate.delete(deleted)
    for strange in (node, deleted):
        for call in (
            lambda: gate.rename(strange, "x"),
            lambda: gate.delete(strange),
            lambda: gate.move(strange, 1, 1),
            lambda: gate.ports(strange),
            lambda: gate.attribute(strange, "doc", "x"),
            lambda: gate.duplicate(strange),
            lambda: gate.reparent("Top.NG_gate", strange),
        ):
            assert "no such node" in reasonOf(call)
    for call in (
        lambda: gate.connect(port, "Top.SR_gate.base_color"),
        lambda: gate.set(node.inputs()[0], 1) if len(node.inputs()) else gate.value(port),
        lambda: gate.disconnectAll(port),
    ):
        assert "no such" in reasonOf(call)
    assert "another compound" in reasonOf(
        lambda: gate.backdropAdd("Top", "b", gate.compound("Top.NG_gate").nodes()[0])
    )


def test_what_is_no_argument(gate):
    for call in (
        lambda: gate.rename(None, "x"),
        lambda: gate.rename("Top.NG_gate", None),
        lambda: gate.rename(b"Top.NG_gate", "x"),
        lambda: gate.delete([None]),
        lambda: gate.delete(3),
        lambda: gate.connect(gate.root, gate.root),
        lambda: gate.portAdd("Top.NG_gate", None, "x", "float"),
        lambda: gate.portDelete(None),
        lambda: gate.attribute(3),
        lambda: gate.move("Top.NG_gate", "1", 2),
        lambda: gate.edit(3),
        lambda: gate.walk(3),
    ):
        with pytest.raises(TypeError):
            call()
    for call in (
        lambda: gate.rename("Top.NG_gate", "a\0b"),
        lambda: gate.portAdd("Top.NG_gate", 7, "x", "float"),
        lambda: gate.paste("Top", "<a/>", at=(1, 2), middle=(1, 2)),
        lambda: gate.create("add", "x", type=""),
        lambda: gate.arrange("Top", []),
        lambda: gate.undo(-1),
    ):
        with pytest.raises(ValueError):
            call()
    assert not gate.isModified()


def test_backdrops(gate):
    gate.backdropAdd("Top", "b", ["NG_gate"], frame=(0, 0, 2, 2), text="why")
    gate.backdropFrame("Top", "b", 1, 2, 3, 4)
    gate.backdropMove("Top", "b", 5, 6)
    gate.backdropNodes("Top", "b", [gate.node("Top.SR_gate")])
    gate.backdropText("Top", "b", "other")
    gate.backdropRename("Top", "b", "c")
    backdrop = gate.backdropList()[-1]
    assert backdrop == ("c", (5, 6, 3, 4), [gate.node("Top.SR_gate")], "other")
    gate.backdropDelete("Top", "c")
    assert len(gate.backdropList()) == 0
    gate.undo(gate.undoCount())
    assert not gate.isModified()
