"""The scripts of examples/python, on copies of the documents."""

import pathlib
import shutil
import subprocess
import sys

import pytest

import zel.shading
from shading_support import DOCUMENTS

SCRIPTS = pathlib.Path(__file__).parents[2] / "examples" / "python"


@pytest.fixture
def folder(tmp_path):
    """The documents, one of them further down."""
    copy = tmp_path / "documents"
    shutil.copytree(DOCUMENTS, copy)
    (copy / "more").mkdir()
    shutil.copy(copy / "rusty_painted_gate.mtlx", copy / "more" / "gate2.mtlx")
    return copy


def run(script, *arguments):
    """The status, and what the script prints on standard output and standard error."""
    done = subprocess.run(
        [sys.executable, SCRIPTS / script, *map(str, arguments)],
        capture_output=True,
        text=True,
        check=False,
    )
    assert "Traceback" not in done.stderr, done.stderr
    return done.returncode, done.stdout, done.stderr


def bytesOf(folder):
    return {path: path.read_bytes() for path in sorted(folder.rglob("*.mtlx"))}


@pytest.mark.parametrize("script", sorted(path.name for path in SCRIPTS.glob("[ru]*_*.py")))
def test_each_says_what_it_takes_and_what_is_wrong(script, tmp_path):
    status, out, _ = run(script, "--help")
    assert status == 0 and "--dry-run" in out
    assert run(script)[0] == 2
    words = {"rename_nodes.py": ["a", "b"], "replace_type.py": [], "unused_nodes.py": []}[script]
    first = ["multiply", "add"] if script == "replace_type.py" else []
    missing = tmp_path / "none.mtlx"
    status, out, errors = run(script, *first, missing, *words)
    assert (status, out) == (1, "") and str(missing) in errors
    bad = tmp_path / "bad.mtlx"
    bad.write_text("no document")
    status, out, errors = run(script, *first, tmp_path, *words)
    assert (status, out) == (1, "") and f"{bad}: line 1" in errors
    bad.unlink()
    status, out, errors = run(script, *first, tmp_path, *words)
    assert (status, out) == (1, "") and "no document" in errors


def test_rename_nodes(folder):
    before = bytesOf(folder)
    arguments = [folder, r"^(\w+)_noise$", r"noise_\1"]
    planned = run("rename_nodes.py", *arguments, "--dry-run")
    assert planned[0] == 0 and bytesOf(folder) == before
    assert run("rename_nodes.py", *arguments) == planned
    assert "Top.NG_gate.chipping.chip_noise -> noise_chip" in planned[1]
    assert str(folder / "more" / "gate2.mtlx") in planned[1]
    for path in before:
        old = zel.shading.open(DOCUMENTS / path.name.replace("gate2", "rusty_painted_gate"))
        new = zel.shading.open(path, strict=True)
        assert new.stats()[:5] == old.stats()[:5]
        assert new.check() == []
        assert not any(node.getName().endswith("_noise") for node in new.walk())
    assert run("rename_nodes.py", *arguments) == (0, "", "")


def test_rename_nodes_of_a_type_and_into_a_taken_name(folder):
    status, out, _ = run("rename_nodes.py", folder, "^", "m_", "--type", "mix")
    docs = [zel.shading.open(path) for path in bytesOf(folder)]
    mixes = [node for doc in docs for node in doc.walk() if node.getNodeTypeName() == "mix"]
    assert status == 0 and out.count("\n") == len(mixes) > 0
    assert all(node.getName().startswith("m_") for node in mixes)
    before = bytesOf(folder)
    status, out, errors = run("rename_nodes.py", folder, ".*", "same")
    assert status == 1
    assert errors.count("\n") == len(before)
    assert all(str(path) in errors for path in before)
    assert bytesOf(folder) == before
    assert run("rename_nodes.py", folder, "(", "x")[0] == 2


def test_replace_type(folder):
    before = {path: zel.shading.open(path) for path in bytesOf(folder)}
    assert run("replace_type.py", "multiply", "divide", folder, "-n")[0] == 0
    status, out, errors = run("replace_type.py", "multiply", "divide", folder)
    assert (status, errors) == (0, "")
    replaced = 0
    for path, old in before.items():
        new = zel.shading.open(path, strict=True)
        assert new.connections() == old.connections()
        assert new.check() == []
        for node in old.walk():
            other = new.node(node.getFullPathName())
            isReplaced = node.getNodeTypeName() == "multiply"
            replaced += isReplaced
            wanted = "divide" if isReplaced else node.getNodeTypeName()
            assert other.getNodeTypeName() == wanted
            assert new.attribute(other) == old.attribute(node)
            for port in node.inputs():
                if not port.isConnected():
                    assert new.value(other.inputs()[port.getName()]) == old.value(port)
    assert replaced == out.count("\n") > 0


def test_replace_type_loses_no_connection(folder):
    before = bytesOf(folder)
    status, _, errors = run("replace_type.py", "mix", "add", folder)
    assert status == 1 and "see --map" in errors
    assert bytesOf(folder) == before
    status, _, errors = run("replace_type.py", "mix", "none_such", folder)
    assert status == 1 and "no definition" in errors
    wall = folder / "weathered_brick_wall.mtlx"
    assert run("replace_type.py", "mix", "add", wall, "--map", "wrong")[0] == 2
    names = ["--map", "fg=in1", "--map", "bg=in2", "--map", "mix="]
    assert run("replace_type.py", "mix", "add", wall, *names)[0] == 0
    doc = zel.shading.open(wall, strict=True)
    assert not any(node.getNodeTypeName() == "mix" for node in doc.walk())
    assert any(c.target.endswith(".in1") for c in doc.connections())


def test_unused_nodes(folder):
    assert run("unused_nodes.py", folder) == (0, "", "")
    path = folder / "rusty_painted_gate.mtlx"
    doc = zel.shading.open(path)
    first = doc.create("add", "lost")
    second = doc.create("add", "feeds_lost")
    doc.connect(second.outputs()[0], first.inputs()[0])
    inside = doc.create("add", "inside", "Top.NG_gate.rust")
    graph = doc.create("nodegraph", "empty")
    doc.save()
    lost = [f"{path}: {node.getFullPathName()}" for node in (first, second, graph, inside)]
    before = path.read_bytes()
    status, out, errors = run("unused_nodes.py", path)
    assert (status, errors) == (0, "")
    assert [line.rpartition(" ")[0] for line in out.splitlines()] == lost
    assert run("unused_nodes.py", path, "--delete", "-n") == (status, out, errors)
    assert path.read_bytes() == before
    assert run("unused_nodes.py", path, "--delete") == (status, out, errors)
    assert path.read_bytes() == (DOCUMENTS / path.name).read_bytes()


def test_what_is_named_beside_the_network_is_used(tmp_path):
    path = tmp_path / "library.mtlx"
    path.write_text(
        '<?xml version="1.0"?>\n<materialx version="1.38">\n'
        '  <nodedef name="ND_own" node="own"><output name="out" type="float"/></nodedef>\n'
        '  <nodegraph name="NG_own" nodedef="ND_own">\n'
        '    <constant name="c" type="float"/>\n'
        '    <constant name="d" type="float"/>\n'
        '    <output name="out" type="float" nodename="c"/>\n'
        "  </nodegraph>\n</materialx>\n"
    )
    assert run("unused_nodes.py", path)[1] == f"{path}: Top.NG_own.d constant\n"
