"""Documents live as long as anything of them, and nothing strange comes into them."""

import gc
import subprocess
import sys
import threading

import pytest

import zel
import zel.shading
from shading_support import GATE, WALL, stateOf


def test_a_document_lives_as_long_as_any_object_of_it():
    doc = zel.shading.open(GATE)
    node = doc.node("Top.NG_gate.chipping")
    kept = {
        "node": node,
        "compound": node.getAsCompound(),
        "port": node.inputs()[0],
        "inner port": node.getAsCompound().innerInputs()[0],
        "ports": node.inputs(),
        "nodes": node.getAsCompound().nodes(),
        "container": node.getContainer(),
        "walk": doc.walk(),
    }
    asked = {
        "node": lambda o: o.getFullPathName(),
        "compound": lambda o: o.getAsNode().getFullPathName(),
        "port": lambda o: o.getFullPathName(),
        "inner port": lambda o: o.getFullPathName(),
        "ports": lambda o: o[0].getFullPathName(),
        "nodes": lambda o: o[0].getFullPathName(),
        "container": lambda o: o.getRootNode().getName(),
        "walk": lambda o: next(o).getFullPathName(),
    }
    del doc, node
    for name in list(kept):
        alone = {name: kept[name]}
        assert asked[name](alone[name]).startswith("Top")
    for name in list(kept):
        survivor = kept.pop(name)
        if not kept:
            gc.collect()
            assert asked[name](survivor).startswith("Top")


def test_what_was_deleted_keeps_its_document():
    doc = zel.shading.open(GATE)
    node = doc.node("Top.NG_gate.rust")
    doc.delete(node)
    del doc
    gc.collect()
    assert node.getName() == "rust"
    assert len(node.getAsCompound().nodes()) > 0


def test_nothing_strange_comes_into_a_document():
    doc = zel.shading.open(GATE)
    other = zel.shading.open(WALL)
    before = stateOf(doc), stateOf(other)

    class Own(zel.Node):
        pass

    nodes = doc.root.getAsCompound().nodes()
    strangers = [
        zel.Node(None, "n"),
        zel.Node(doc.root.getContainer(), "n"),
        Own(doc.root.getContainer(), "n"),
    ]
    for stranger in strangers:
        assert nodes.add(stranger) is False
    port = next(other.walk()).outputs()[0]
    target = doc.port("Top.SR_gate.base_color")
    lone = zel.Node(None, "n").outputs().addPort("o", port.getDataType())
    for strange in (port, lone):
        for a, b in ((strange, target), (target, strange)):
            with pytest.raises(ValueError):
                a.addConnection(b)
    with pytest.raises(ValueError):
        nodes.add(next(other.walk()))
    with pytest.raises(ValueError):
        zel.Compound(doc.node("Top.SR_gate"))
    assert (stateOf(doc), stateOf(other)) == before
    assert not doc.isModified() and not other.isModified()


def test_many_documents_at_once():
    docs = [zel.shading.open(GATE) for _ in range(20)]
    roots = [doc.root for doc in docs]
    for index, doc in enumerate(docs):
        doc.rename("Top.NG_gate", f"g{index}")
    docs.clear()
    gc.collect()
    for index, root in enumerate(roots):
        assert root.getAsCompound().nodes()[f"g{index}"]


def test_a_second_thread_waits_for_the_first_call():
    doc = zel.shading.open(GATE)
    errors = []

    def other():
        try:
            doc.rename("Top.a", "b")
        except RuntimeError as error:
            errors.append(str(error))

    @doc.watch
    def during(change):
        thread = threading.Thread(target=other)
        thread.start()
        thread.join()

    doc.rename("Top.NG_gate", "a")
    assert len(errors) == 1 and "thread" in errors[0]
    doc.unwatch(during)
    thread = threading.Thread(target=other)
    thread.start()
    thread.join()
    assert doc.node("Top.b")


@pytest.mark.parametrize(
    "code",
    [
        "doc.watch(print)",
        "kept = doc.node('Top.NG_gate'); del doc",
        "edit = doc.edit('Open'); edit.__enter__(); doc.rename('Top.NG_gate', 'a')",
        "walk = doc.walk(); next(walk)",
        "class C: pass\nc = C(); c.c = c; c.doc = doc; doc.watch(lambda change: c)",
        "import threading; threading.stored = doc; changes = []; doc.watch(changes.append); "
        "doc.rename('Top.NG_gate', 'a')",
        "import sys; sys.exit(0)",
    ],
)
def test_the_end_of_the_interpreter(code):
    program = f"import zel.shading\ndoc = zel.shading.open({str(GATE)!r})\n{code}\n"
    command = [sys.executable, "-c", program]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    assert (run.returncode, run.stderr) == (0, "")


def test_a_runtime_outlives_its_documents(tmp_path):
    library = tmp_path / "library.mtlx"
    library.write_text('<materialx version="1.38"><typedef name="own"/></materialx>')
    runtime = zel.shading.new(libraries=[library]).root.getContainer().getRuntime()
    definitions = runtime.getNodeLibrary()
    # Libraries that no document has are forgotten at last.
    for count in range(12):
        library.write_text(library.read_text() + " ")
        zel.shading.new(libraries=[library])
    gc.collect()
    assert runtime.getPortDataType("own").getName() == "own"
    assert definitions.getNumberOfSubLibraries() > 0
