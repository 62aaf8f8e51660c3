"""Documents: opened, made, looked at and saved."""

import os
import pathlib
import shutil

import pytest

import zel
import zel.shading
from shading_support import DOCUMENTS, GATE, WALL, reasonOf, runShell

LIBRARY = """<?xml version="1.0"?>
<materialx version="1.38">
  <nodedef name="ND_own_float" node="own" nodegroup="test">
    <input name="in" type="float" value="{value}"/>
    <output name="out" type="float"/>
  </nodedef>
</materialx>
"""


@pytest.fixture
def gate(tmp_path):
    """A document in a file that may be changed."""
    path = tmp_path / "gate.mtlx"
    shutil.copy(GATE, path)
    return zel.shading.open(path)


def test_a_document_shows_its_network():
    doc = zel.shading.open(GATE)
    assert isinstance(doc.root, zel.Node)
    assert doc.root.getName() == "Top"
    assert doc.root is doc.root
    assert doc.path == str(GATE)
    assert doc.messages == []
    assert doc.node("Top.NG_gate").getAsCompound() is doc.compound("Top.NG_gate")
    assert doc.node("Top.NG_gate") in doc.root.getAsCompound().nodes()
    assert reasonOf(lambda: doc.node("Top.none")) == "Top.none: no such node"
    assert reasonOf(lambda: doc.compound("Top.SR_gate")) == "Top.SR_gate: not a compound"
    assert reasonOf(lambda: doc.port("Top.none.a")) == "Top.none.a: no such input"


@pytest.mark.parametrize("path", sorted(DOCUMENTS.glob("*.mtlx")), ids=lambda path: path.stem)
def test_the_views_say_what_the_shell_prints(path):
    doc = zel.shading.open(path)
    views = {
        "connections": "".join(f"{c.source} -> {c.target}\n" for c in doc.connections()),
        "stats": "".join(f"{name} {count}\n" for name, count in doc.stats()._asdict().items()),
        "tree": doc.tree(),
        "ls": "".join(
            f"{n.name} {n.type}{' compound' * n.isCompound}\n" for n in doc.ls()
        ),
        "types": "".join(f"{name}\n" for name in doc.types()),
        "library": doc.library(),
        "library math": doc.library("math"),
        "check": "".join(f"{f.path}: {f.reason}\n" for f in doc.check(notes=True)),
    }
    for command, text in views.items():
        assert runShell(path, command)[0] == text, command
    assert doc.check() == []


def test_walk_gives_every_node_outer_ones_first():
    doc = zel.shading.open(GATE)
    paths = [node.getFullPathName() for node in doc.walk()]
    assert len(paths) == len(set(paths)) == doc.stats().nodes
    for index, path in enumerate(paths):
        around = path.rpartition(".")[0]
        assert around == "Top" or around in paths[:index]
    inside = [node.getFullPathName() for node in doc.walk("Top.NG_gate.rust")]
    assert inside == [path for path in paths if path.startswith("Top.NG_gate.rust.")]
    assert list(doc.walk(doc.compound("Top.NG_gate.rust"))) == [doc.node(p) for p in inside]


def test_walk_goes_on_while_the_document_is_edited():
    doc = zel.shading.open(GATE)
    seen = []
    for node in doc.walk():
        seen.append(node.getFullPathName())
        if node.isCompound() and node.getName() != "NG_gate":
            doc.delete(node)  # What is inside does not come.
        else:
            doc.rename(node, node.getName() + "_x")
            doc.create("nodegraph", f"new{len(seen)}")
    assert not any(".rust." in path or "new" in path for path in seen)
    assert {path for path in seen if ".rust" in path} == {"Top.NG_gate_x.rust"}
    doc.undo(doc.undoCount())
    assert doc.stats().nodes == 24


def test_a_file_that_cannot_be_opened(tmp_path):
    with pytest.raises(FileNotFoundError) as missing:
        zel.shading.open(tmp_path / "none.mtlx")
    assert missing.value.filename == str(tmp_path / "none.mtlx")
    assert missing.value.errno == 2
    assert missing.value.strerror == os.strerror(2)
    with pytest.raises(IsADirectoryError):
        zel.shading.open(tmp_path)
    odd = os.fsencode(tmp_path) + b"/\xff.mtlx"
    with pytest.raises(FileNotFoundError) as missing:
        zel.shading.open(odd)
    assert missing.value.filename == os.fsdecode(odd)
    with pytest.raises(NotADirectoryError):
        zel.shading.open(f"{GATE}/in")
    with pytest.raises(ValueError):
        zel.shading.open("a\0b")
    with pytest.raises(TypeError):
        zel.shading.open(3)


def test_what_is_no_document(tmp_path):
    path = tmp_path / "bad.mtlx"
    path.write_text("<?xml version='1.0'?>\n<materialx>\n  <a\n")
    assert reasonOf(lambda: zel.shading.open(path)).startswith(f"{path}: line 3, column ")
    os.mkfifo(tmp_path / "pipe")
    assert "Not a regular file" in reasonOf(lambda: zel.shading.open(tmp_path / "pipe"))


def test_warnings_are_messages_or_strictly_errors(tmp_path):
    path = tmp_path / "odd.mtlx"
    path.write_text(
        '<?xml version="1.0"?>\n<materialx version="1.38">\n'
        '  <add name="a" type="float">\n    <input name="in1" type="float" nodename="gone"/>\n'
        '    <input name="in2" type="float" nodename="gone2"/>\n'
        "  </add>\n</materialx>\n"
    )
    doc = zel.shading.open(path)
    assert [str(message) + "\n" for message in doc.messages] == runShell(path, "types")[
        1
    ].splitlines(keepends=True)
    message = doc.messages[0]
    assert (message.file, message.line, message.isError) == (str(path), 4, False)
    assert message.text in str(message)
    reason = reasonOf(lambda: zel.shading.open(path, strict=True))
    assert all(m.text in reason and f"line {m.line}" in reason for m in doc.messages)


def test_an_odd_name_passes_through(tmp_path):
    path = tmp_path / "latin.mtlx"
    path.write_bytes(
        '<?xml version="1.0"?>\n<materialx version="1.38">\n'
        '  <add name="a" type="float" doc="é…"/>\n</materialx>\n'.encode()
    )
    doc = zel.shading.open(path)
    assert doc.attribute("Top.a", "doc") == "é…"
    doc.attribute("Top.a", "doc", "ü")
    odd = os.fsdecode(os.fsencode(tmp_path) + b"/\xfc.mtlx")
    doc.save(odd)
    assert doc.path == odd
    assert "ü" in pathlib.Path(odd).read_text()
    assert zel.shading.open(odd).attribute("Top.a", "doc") == "ü"


def test_a_new_document(tmp_path):
    doc = zel.shading.new()
    assert doc.path is None
    assert doc.stats()[:5] == (0, 0, 0, 0, 0)
    assert not doc.isModified()
    with pytest.raises(ValueError):
        doc.save()
    doc.create("constant", "c", type="color3")
    path = tmp_path / "new.mtlx"
    doc.save(path)
    assert doc.path == str(path)
    assert not doc.isModified()
    assert zel.shading.open(path, strict=True).node("Top.c").getNodeTypeName() == "constant"
    with pytest.raises(FileExistsError) as there:
        zel.shading.new(path)
    assert there.value.filename == str(path)
    later = zel.shading.new(tmp_path / "later.mtlx")
    (tmp_path / "later.mtlx").write_text("somebody")
    assert "came up since" in reasonOf(later.save)
    assert (tmp_path / "later.mtlx").read_text() == "somebody"


def test_a_document_is_saved_where_it_was_opened_or_elsewhere(gate, tmp_path):
    before = pathlib.Path(gate.path).read_bytes()
    gate.save()
    assert pathlib.Path(gate.path).read_bytes() == before
    gate.rename("Top.NG_gate", "other")
    assert gate.isModified()
    gate.save(tmp_path / "other.mtlx", dryRun=True)
    assert not (tmp_path / "other.mtlx").exists()
    gate.save(tmp_path / "other.mtlx")
    assert not gate.isModified()
    assert gate.path == str(tmp_path / "other.mtlx")
    assert b'"other"' in (tmp_path / "other.mtlx").read_bytes()
    gate.undo()
    assert gate.isModified()
    assert (tmp_path / "gate.mtlx").read_bytes() == before


def test_a_save_that_the_system_refuses(gate, tmp_path):
    gate.rename("Top.NG_gate", "other")
    with pytest.raises(FileNotFoundError) as missing:
        gate.save(tmp_path / "none" / "a.mtlx")
    assert missing.value.filename == str(tmp_path / "none" / "a.mtlx")
    with pytest.raises(IsADirectoryError):
        gate.save(tmp_path)
    assert gate.isModified()
    assert gate.path == str(tmp_path / "gate.mtlx")


@pytest.mark.skipif(os.geteuid() == 0, reason="nothing is protected from root")
def test_a_file_that_is_protected(gate, tmp_path):
    os.chmod(gate.path, 0o400)
    gate.rename("Top.NG_gate", "other")
    with pytest.raises(PermissionError) as refused:
        gate.save()
    assert refused.value.filename == gate.path
    os.chmod(gate.path, 0)
    with pytest.raises(PermissionError):
        zel.shading.open(gate.path)


def test_a_link_into_the_kernel_is_protected_from_everybody():
    doc = zel.shading.new()
    with pytest.raises(OSError) as refused:
        doc.save("/proc/self/new.mtlx")
    assert refused.value.errno in (1, 2, 13, 30)


def test_a_file_that_somebody_changed_stays(gate):
    path = pathlib.Path(gate.path)
    gate.rename("Top.NG_gate", "other")
    path.write_text("somebody")
    reason = reasonOf(gate.save)
    assert reason == f"{path}: somebody changed it since it was read or saved last"
    assert path.read_text() == "somebody"
    gate.save(force=True)
    assert b'"other"' in path.read_bytes()


def test_what_the_format_cannot_say_is_not_saved(gate):
    # Past the edits a name can be anything.
    gate.node("Top.NG_gate").setName("a b")
    reason = reasonOf(gate.save)
    assert "a b" in reason
    assert pathlib.Path(gate.path).read_bytes() == GATE.read_bytes()
    assert gate.check()


def test_libraries_are_for_the_documents_that_are_opened_with_them(tmp_path):
    one = tmp_path / "one.mtlx"
    other = tmp_path / "other.mtlx"
    one.write_text(LIBRARY.format(value=1))
    other.write_text(LIBRARY.format(value=2))
    assert zel.shading.open(WALL, libraries=[one]).create("own", "o").inputs()["in"] is not None
    with_one = zel.shading.new(libraries=[one])
    with_other = zel.shading.new(libraries=(str(other),))
    without = zel.shading.new()
    for doc, value in ((with_one, 1), (with_other, 2)):
        doc.create("own", "o")
        assert doc.value("Top.o.in") == value
        assert "ND_own_float" in doc.library("test")
        assert "ND_add_float" in doc.library("math")
    assert "no definition" in reasonOf(lambda: without.create("own", "o"))
    # A library that was changed is read anew.
    one.write_text(LIBRARY.format(value=31))
    changed = zel.shading.new(libraries=[one])
    changed.create("own", "o")
    assert changed.value("Top.o.in") == 31
    with pytest.raises(FileNotFoundError) as missing:
        zel.shading.new(libraries=[one, tmp_path / "none.mtlx"])
    assert missing.value.filename == str(tmp_path / "none.mtlx")
    one.write_text("nothing")
    assert "not XML" in reasonOf(lambda: zel.shading.new(libraries=[one]))


def test_what_is_wrong_with_a_library_is_said_with_each_document(tmp_path):
    library = tmp_path / "library.mtlx"
    library.write_text('<materialx version="1.38">\n<nodedef name="ND_x" node="x"/>\n</materialx>')
    for _ in range(2):
        doc = zel.shading.new(libraries=[library])
        assert [(m.file, m.line) for m in doc.messages] == [(str(library), 2)]


def test_plugins(tmp_path):
    plain = zel.shading.new(plugin=False)
    assert "no definition" in reasonOf(lambda: plain.create("add", "a"))
    from zel.shading import _paths

    zel.shading.new(plugin=_paths.plugin).create("add", "a")
    with pytest.raises(FileNotFoundError):
        zel.shading.new(plugin=tmp_path / "none.so")
    other = tmp_path / "other.so"
    shutil.copy(_paths.plugin, other)
    assert "another plugin is loaded" in reasonOf(lambda: zel.shading.new(plugin=other))
    with pytest.raises(TypeError):
        zel.shading.new(plugin=None)


def test_documents_are_made_by_functions_only():
    import copy
    import pickle

    doc = zel.shading.new()
    for call in (
        zel.shading.Document,
        lambda: zel.shading.Document.__new__(zel.shading.Document),
        lambda: object.__new__(zel.shading.Document),
        lambda: type("Own", (zel.shading.Document,), {}),
        lambda: zel.shading.Walk.__new__(zel.shading.Walk),
        lambda: zel.shading.Change(),
        lambda: copy.copy(doc),
        lambda: copy.deepcopy(doc),
        lambda: pickle.dumps(doc),
    ):
        with pytest.raises(TypeError):
            call()


def test_the_definitions_of_a_node_type():
    doc = zel.shading.new()
    found = {definition.name: definition for definition in doc.definitions("mix")}
    assert found["ND_mix_color3"].inputs["fg"] == "color3"
    assert found["ND_mix_color3"].outputs == {"out": "color3"}
    assert list(found) == sorted(found)
    assert doc.definitions("none_such") == []
    assert doc.create("ND_mix_color3", "m").outputs()[0].getDataType().getName() == "color3"
