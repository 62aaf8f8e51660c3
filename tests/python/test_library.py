"""Libraries of node definitions."""

import gc
import weakref

import pytest

import zel


class Definition(zel.NodeDefinition):
    def __init__(self, name, cost):
        super().__init__(name)
        self.cost = cost


def test_definitions_written_in_python_come_back_as_themselves():
    library = zel.NodeLibrary("root")
    library.addNode(Definition("blur", 3))
    library.addNode("add")
    library.addNode(zel.NodeDefinition("Add"))
    gc.collect()
    assert library.getNumberOfNodes() == 3
    assert type(library.getNodeAt(0)) is Definition and library.getNodeAt(0).cost == 3
    library.sort()
    names = [library.getNodeAt(i).getName() for i in range(3)]
    assert names == ["Add", "add", "blur"]
    assert library.getNodeAt(3) is None and library.getNodeAt(-1) is None
    assert zel.sortFunc(library.getNodeAt(0), library.getNodeAt(2)) is True
    assert zel.sortFunc(library.getNodeAt(2), library.getNodeAt(2)) is False
    alive = weakref.ref(library.getNodeAt(2))
    del library
    assert alive() is None


def test_a_name_given_by_an_override_counts():
    class Upper(zel.NodeDefinition):
        def setName(self, name):
            super().setName(name.upper())

    made = Upper("as it is")
    assert made.getName() == "as it is"
    made.setName("louder")
    assert made.getName() == "LOUDER" and repr(made).endswith("Upper 'LOUDER'>")
    assert zel.NodeDefinition().getName() == ""


def test_nothing_and_cycles_are_refused():
    top, middle, bottom = (zel.NodeLibrary(name) for name in ("top", "middle", "bottom"))
    top.addSubLibrary(middle)
    middle.addSubLibrary(bottom)
    for outer, inner in [(top, top), (bottom, top), (middle, top), (bottom, middle)]:
        with pytest.raises(ValueError):
            outer.addSubLibrary(inner)
    for nothing in (top.addSubLibrary, top.addNode):
        with pytest.raises(TypeError):
            nothing(None)
    with pytest.raises(TypeError):
        zel.sortFunc(None, zel.NodeDefinition("a"))
    with pytest.raises(TypeError):
        type("Mine", (zel.NodeLibrary,), {})
    assert bottom.getNumberOfSubLibraries() == 0 and top.getNumberOfNodes() == 0


def test_a_child_is_found_before_any_grandchild():
    top = zel.NodeLibrary("top")
    left, right, deep = (zel.NodeLibrary(name) for name in ("left", "same", "same"))
    left.addSubLibrary(deep)
    top.addSubLibrary(left)
    top.addSubLibrary(right)
    assert top.findLibrary("same") is right and left.findLibrary("same") is deep
    assert top.findLibrary("top") is top and top.findLibrary("top.left") is None
    assert top.findLibrary(None) is None
    top.removeSubLibraryAt(0)
    top.removeSubLibraryAt(5)
    assert top.getNumberOfSubLibraries() == 1 and top.getSubLibraryAt(0) is right


def test_cycles_through_attributes_are_collected():
    runtime = zel.Runtime()
    library, sub = zel.NodeLibrary("a"), zel.NodeLibrary("b")
    definition = Definition("d", runtime)  # The runtime leads back to it.
    sub.addNode(definition)
    library.addSubLibrary(sub)
    runtime.setNodeLibrary(library)

    class Mine(zel.Runtime):
        pass

    alone = Mine()
    alone.setNodeLibrary(zel.NodeLibrary("c"))
    alone.getNodeLibrary().addNode(Definition("d", alone))
    gone = [weakref.ref(alone), weakref.ref(definition)]
    del alone, library, sub, definition, runtime
    gc.collect()
    assert gone[0]() is None
    assert gone[1]() is None
