"""Undo and redo, several edits as one, watchers, and changes past the edits."""

import gc
import sys
import weakref

import pytest

import zel
import zel.shading
from shading_support import GATE, reasonOf, stateOf


@pytest.fixture
def doc():
    return zel.shading.open(GATE)


class Log(list):
    """Watches a document."""

    def __call__(self, change):
        self.append((change.kind, change.title))


def test_undo_and_redo_give_the_titles(doc):
    before = stateOf(doc)
    doc.rename("Top.NG_gate", "a")
    doc.rename("Top.a", "b")
    doc.create("add", "c")
    assert (doc.undoCount(), doc.redoCount()) == (3, 0)
    assert doc.undo() == ["Create c"]
    assert doc.undo(2) == ["Rename a to b", "Rename NG_gate to a"]
    assert stateOf(doc) == before
    assert reasonOf(doc.undo) == "history: nothing to undo"
    assert reasonOf(lambda: doc.redo(4)) == "4: only 3 to redo"
    assert doc.redo(3) == ["Rename NG_gate to a", "Rename a to b", "Create c"]
    doc.undo()
    assert [(e.title, e.isUndone) for e in doc.history()][1:] == [
        ("Rename a to b", False),
        ("Create c", True),
    ]
    doc.rename("Top.b", "d")
    assert doc.redoCount() == 0
    assert doc.undo(0) == [] and doc.undoCount() == 3


def test_several_edits_are_one(doc):
    doc.set("Top.NG_gate.age", 1)
    before = stateOf(doc)
    with doc.edit("Several"):
        doc.rename("Top.NG_gate", "a")
        with doc.edit("Inner"):
            doc.create("add", "b")
        assert reasonOf(doc.undo) == "history: an edit is open"
        assert reasonOf(lambda: doc.save("x.mtlx")) == "Top: an edit is open"
        # One that is refused changes nothing, and the others stay.
        assert "no such node" in reasonOf(lambda: doc.rename("Top.none", "x"))
    assert [(e.title, e.commands) for e in doc.history()[1:]] == [
        ("Several", ["rename Top.NG_gate a", "create ND_add_float b"])
    ]
    assert doc.undo() == ["Several"]
    assert stateOf(doc) == before
    with doc.edit("Nothing"):
        pass
    assert doc.undoCount() == 1


def test_an_exception_takes_them_back(doc):
    before = stateOf(doc)
    with pytest.raises(KeyError):
        with doc.edit("Outer"):
            doc.rename("Top.NG_gate", "a")
            try:
                with doc.edit("Inner"):
                    doc.create("add", "b")
                    raise ValueError
            except ValueError:
                assert doc.node("Top.a").getName() == "a"
                assert "no such node" in reasonOf(lambda: doc.node("Top.b"))
            raise KeyError
    with pytest.raises(KeyboardInterrupt):
        with doc.edit("Interrupted"):
            doc.delete("Top.NG_gate")
            raise KeyboardInterrupt
    assert stateOf(doc) == before
    assert not doc.isModified()


def test_edits_end_in_their_order(doc):
    outer, inner, unused = doc.edit("Outer"), doc.edit("Inner"), doc.edit("Unused")
    with pytest.raises(RuntimeError):
        unused.__exit__(None, None, None)
    outer.__enter__()
    with pytest.raises(RuntimeError):
        outer.__enter__()
    doc.rename("Top.NG_gate", "a")
    inner.__enter__()
    doc.create("add", "b")
    with pytest.raises(RuntimeError, match="inside"):
        outer.__exit__(None, None, None)
    with pytest.raises(RuntimeError, match="not open"):
        inner.__exit__(None, None, None)
    assert not doc.isModified()
    doc.rename("Top.NG_gate", "a")
    assert doc.undoCount() == 1


def test_an_edit_that_is_dropped_is_taken_back(doc):
    def several():
        with doc.edit("Several"):
            doc.rename("Top.NG_gate", "a")
            yield

    steps = several()
    next(steps)
    assert doc.root.getAsCompound().nodes()["a"]
    del steps
    gc.collect()
    assert doc.root.getAsCompound().nodes()["NG_gate"]
    assert not doc.isModified()
    # Also when the document goes first.
    root = doc.root
    doc.edit("Open").__enter__()
    kept = doc.edit("Kept")
    kept.__enter__()
    doc.rename("Top.NG_gate", "a")
    del doc, kept
    gc.collect()
    assert root.getName() == "Top"


def test_watchers_are_told_of_each_change(doc):
    log = Log()
    assert doc.watch(log) is log
    doc.watch(log)  # Once is enough.
    doc.create("add", "a")
    with doc.edit("Several"):
        doc.rename("Top.a", "b")
        doc.rename("Top.b", "c")
    with pytest.raises(zel.Error):
        doc.rename("Top.none", "x")
    doc.undo(2)
    doc.redo()
    assert log == [
        ("done", "Create a"),
        ("done", "Several"),
        ("undone", "Several"),
        ("undone", "Create a"),
        ("redone", "Create a"),
    ]
    doc.unwatch(log)
    doc.undo()
    assert len(log) == 5
    with pytest.raises(ValueError):
        doc.unwatch(log)
    with pytest.raises(TypeError):
        doc.watch(3)


def test_a_change_says_what_changed(doc):
    changes = []
    doc.watch(changes.append)
    node = doc.create("add", "a")
    doc.rename(node, "b")
    doc.delete(node)
    made, renamed, deleted = changes
    assert (made.added, made.removed, made.changed) == ([node], [], [])
    assert made.compounds == [doc.root.getAsCompound()]
    assert made.commands == ["create ND_add_float a"]
    assert renamed.changed == [node]
    assert deleted.removed == [node]
    assert "Delete b" in repr(deleted)
    del doc, node
    gc.collect()
    assert deleted.removed[0].getName() == "b"


def test_one_that_raises_does_not_stop_the_others(doc, monkeypatch):
    unraisable = []
    monkeypatch.setattr(sys, "unraisablehook", unraisable.append)
    log = Log()

    @doc.watch
    def first(change):
        raise KeyError("first")

    @doc.watch
    def second(change):
        raise ValueError("second")

    doc.watch(log)
    with pytest.raises(KeyError, match="first"):
        doc.rename("Top.NG_gate", "a")
    assert log == [("done", "Rename NG_gate to a")]
    assert doc.node("Top.a")
    assert [str(entry.exc_value) for entry in unraisable] == ["second"]
    unraisable.clear()  # Before pytest looks at what it holds.


def test_watchers_may_edit_and_come_and_go(doc):
    log = Log()

    @doc.watch
    def follow(change):
        if change.kind == "done" and change.title.startswith("Create"):
            doc.rename(change.added[0], change.added[0].getName() + "_x")
        doc.unwatch(follow)
        doc.watch(log)

    doc.create("add", "a")
    assert doc.node("Top.a_x")
    assert log == [("done", "Rename a to a_x")]
    assert doc.undo(2) == ["Rename a to a_x", "Create a"]


class Watcher:
    def __init__(self, doc):
        self.doc = doc
        self.seen = 0
        doc.watch(self.onChange)

    def onChange(self, change):
        self.seen += 1


def test_a_method_watches_once_and_a_cycle_is_collected():
    doc = zel.shading.open(GATE)
    watcher = Watcher(doc)
    doc.watch(watcher.onChange)
    doc.rename("Top.NG_gate", "a")
    assert watcher.seen == 1
    doc.unwatch(watcher.onChange)
    doc.watch(watcher.onChange)
    gone = weakref.ref(watcher)
    del doc, watcher
    gc.collect()
    assert gone() is None


def test_an_edit_in_a_cycle_is_collected():
    class Holder:
        def told(self, change):
            pass

    doc = zel.shading.open(GATE)
    holder = Holder()
    edit = doc.edit("Open")
    edit.__enter__()
    doc.rename("Top.NG_gate", "a")
    holder.edit = edit
    doc.watch(holder.told)
    gone = weakref.ref(holder)
    del doc, edit, holder
    gc.collect()
    assert gone() is None


def test_a_change_past_the_edits_forgets_them(doc):
    log = Log()
    doc.watch(log)
    doc.rename("Top.NG_gate", "a")
    doc.node("Top.a").setName("b")
    assert doc.isModified()
    assert doc.undoCount() == 0
    assert reasonOf(doc.undo) == "history: nothing to undo"
    assert log == [("done", "Rename NG_gate to a"), ("outside", "")]
    # It goes on from there.
    before = stateOf(doc)
    doc.rename("Top.b", "c")
    doc.undo()
    assert stateOf(doc) == before


def test_what_was_taken_past_its_compound_is_not_saved(doc, tmp_path):
    outputs = doc.node("Top.NG_gate").outputs()
    while len(outputs) > 0:
        assert outputs.remove(outputs[-1])
    assert doc.check()[0] == ("Top.NG_gate", "0 outputs, but 3 inner outputs")
    with pytest.raises(zel.Error):
        doc.save(tmp_path / "out.mtlx")
    assert not list(tmp_path.iterdir())


def test_a_change_of_the_library_in_an_edit_is_a_part_of_it(doc):
    before = stateOf(doc)
    with doc.edit("Several"):
        node = doc.create("add", "a")
        node.setName("b")
        node.inputs()["in1"].setPortDefaultValue("2")
        doc.node("Top.NG_gate").setName("a")
    assert doc.value("Top.b.in1") == 2
    doc.undo()
    assert stateOf(doc) == before
    doc.redo()
    assert doc.value("Top.b.in1") == 2
    doc.undo()
    # The rules of the document hold there: what breaks them is not kept.
    with pytest.raises(zel.Error):
        with doc.edit("Refused"):
            doc.create("add", "a")
            doc.node("Top.a").setName("NG_gate")
    assert stateOf(doc) == before
