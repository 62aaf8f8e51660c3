"""Editors: told after a change, in order, and free to come and go."""

import gc
import sys
import weakref

import pytest

import zel


class Editor(zel.HostEditor):
    def __init__(self, heard, name="editor", then=None):
        super().__init__()
        self.heard, self.name, self.then = heard, name, then

    def zel_onNodeChange(self, kind, compound, node):
        self.heard.append((self.name, kind, compound, node))
        if self.then:
            self.then(self)

    def zel_onConnectionChange(self, kind, first, second):
        self.heard.append((self.name, kind, first, second))

    def zel_onCompoundConnectionChange(self, kind, first, second):
        self.heard.append((self.name, kind, first, second))

    def zel_onCompoundPortChange(self, kind, port):
        self.heard.append((self.name, kind, port))


def test_each_notification_reaches_its_callback_with_members_or_numbers():
    node, heard = zel.Node(None, "n"), []
    editor = Editor(heard)
    node.registerEditor(editor)
    node.registerEditor(editor)
    node.registerEditor(None)
    a, b = zel.Port("a", zel.PortInput), zel.Port("b", zel.PortOutput)
    node.notifyConnectionChange(zel.eCnxRemoved, a, b)
    node.notifyCompoundConnectionChange(zel.eCnxAdded, a, b)
    node.notifyCompoundPortChange(zel.eCompoundPortMoved, a)
    node.notifyNodeChange(77, None, node)
    assert heard == [
        ("editor", zel.eCnxRemoved, b, a),
        ("editor", zel.eCnxAdded, a, b),
        ("editor", zel.eCompoundPortMoved, a),
        ("editor", 77, None, node),
    ]
    assert heard[0][1] is zel.ECnxChangeType.eCnxRemoved and type(heard[3][1]) is int
    node.unregisterEditor(editor)
    node.notifyNodeChange(zel.eNodeChanged, None, None)
    assert len(heard) == 4
    # The base does nothing, and may be called.
    plain = zel.HostEditor()
    plain.zel_onNodeChange(zel.eNodeAdded, None, None)
    plain.zel_onConnectionChange(zel.eCnxAdded, None, None)


def test_nobody_keeps_an_editor():
    node, heard = zel.Node(None, "n"), []
    editor = Editor(heard)
    node.registerEditor(editor)
    gone = weakref.ref(editor)
    del editor
    assert gone() is None
    node.notifyNodeChange(zel.eNodeAdded, None, None)
    assert heard == []
    # And an editor that outlives its node.
    editor = Editor(heard)
    node.registerEditor(editor)
    del node
    gc.collect()
    assert editor.heard == []


def test_an_editor_may_die_in_its_own_callback():
    node, heard, owned = zel.Node(None, "n"), [], {}
    for name in "abc":
        owned[name] = Editor(heard, name, lambda editor: owned.pop(editor.name))
        node.registerEditor(owned[name])
    node.notifyNodeChange(zel.eNodeRemoved, None, None)
    # The one that moves into the place just passed misses it, as in C++.
    assert [entry[0] for entry in heard] == ["a", "c"] and list(owned) == ["b"]
    node.notifyNodeChange(zel.eNodeRemoved, None, None)
    assert [entry[0] for entry in heard] == ["a", "c", "b"] and owned == {}


def test_one_that_raises_does_not_stop_the_others(monkeypatch):
    node, heard = zel.Node(None, "n"), []

    def fail(editor):
        raise LookupError(editor.name)

    editors = [Editor(heard, "a", fail), Editor(heard, "b"), Editor(heard, "c", fail)]
    for editor in editors:
        node.registerEditor(editor)
    unraisable = []
    monkeypatch.setattr(sys, "unraisablehook", lambda entry: unraisable.append(str(entry.exc_value)))
    with pytest.raises(LookupError, match="a"):
        node.notifyNodeChange(zel.eNodeRenamed, None, node)
    assert [entry[0] for entry in heard] == ["a", "b", "c"]
    assert unraisable == ["c"]


def test_a_node_may_die_in_a_pass():
    heard = []
    owner = zel.Node(None, "owner")
    compound = zel.Compound(owner)
    compound.nodes().add(zel.Node(None, "inside"))
    first = Editor(heard, "first", lambda editor: compound.removeNode("inside"))
    second = Editor(heard, "second")
    for editor in (first, second):
        compound.nodes()["inside"].registerEditor(editor)
    compound.nodes()["inside"].notifyNodeChange(zel.eNodeChanged, compound, None)
    assert [entry[0] for entry in heard] == ["first", "second"]
    assert compound.nodes().size() == 0


def test_an_editor_that_was_not_made_is_refused():
    class Hollow(zel.HostEditor):
        def __init__(self):
            pass

    with pytest.raises(TypeError):
        zel.Node(None, "n").registerEditor(Hollow.__new__(Hollow))
    with pytest.raises(TypeError):
        type("Two", (zel.HostEditor, zel.Runtime), {})
