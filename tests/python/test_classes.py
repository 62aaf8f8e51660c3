"""Which classes and objects Python can make of the library's, and which not."""

import abc
import copy
import pickle

import pytest
import zel
from network import Document, compound, node, unraised

OPEN = [zel.Node, zel.Compound, zel.Container, zel.NodeDefinition, zel.Runtime, zel.HostEditor]
CLOSED = [zel.Port, zel.PortList, zel.NodeList, zel.PortDataType, zel.NodeLibrary]


def test_what_may_be_derived_from():
    for base in OPEN:
        type("Derived", (base,), {})
    for base in CLOSED:
        with pytest.raises(TypeError):
            type("Derived", (base,), {})
    for base in (zel.PortList, zel.NodeList, zel.Container):
        with pytest.raises(TypeError):
            base()


def test_one_base_of_the_library():
    class Silent(zel.Node):
        def __init_subclass__(cls):
            pass

    for a in OPEN:
        for b in OPEN:
            if a is not b:
                with pytest.raises(TypeError):
                    type("Both", (a, type("Other", (b,), {})), {})
    both = type("Both", (Silent, zel.Compound), {})
    with pytest.raises(TypeError, match="one base"):
        both(None, "x")
    with pytest.raises(TypeError, match="one base"):
        both.__new__(both)


def test_classes_of_every_make():
    class Meta(type(zel.Node)):
        def __call__(cls, *args):
            made = super().__call__(*args)
            made.made = True
            return made

    class Marked(zel.Node, metaclass=Meta):
        def __init_subclass__(cls, mark, **rest):
            super().__init_subclass__(**rest)
            cls.mark = mark

    class Child(Marked, mark="m"):
        pass

    class Slotted(zel.Node):
        __slots__ = ("value",)

    class Mixin(abc.ABC):
        @abc.abstractmethod
        def value(self): ...

    class Mixed(zel.Node):
        __slots__ = ()

    child, slotted = Child(None, "c"), Slotted(None, "s")
    assert (child.made, child.mark) == (True, "m")
    slotted.value = 4
    owner, top = compound("Top")
    assert top.nodes().add(slotted) and top.nodes().add(child)
    with pytest.raises(AttributeError):
        zel.Node(None, "n").value = 1
    with pytest.raises(AttributeError):
        Mixed(None, "n").value = 1
    del slotted, child
    assert top.nodes()["s"].value == 4 and top.nodes()["c"].made


@pytest.mark.parametrize("other",
                         [zel.Compound, zel.Node, type("S", (zel.Node,), {"__slots__": ()})])
def test_an_object_keeps_its_class(other):
    for made in (zel.Node(None, "n"), type("T", (zel.Node,), {"__slots__": ()})(None, "n")):
        with pytest.raises((TypeError, AttributeError)):
            made.__class__ = other
        assert made.__class__ is type(made) and isinstance(made, zel.Node)


def test_an_object_that_is_not_there():
    port, owner = zel.Port("p", 0), node()
    uses = {
        zel.Port: [lambda empty: port.addConnection(empty),
                   lambda empty: owner.inputs().add(empty)],
        zel.PortDataType: [lambda empty: port.setDataType(empty)],
        zel.Compound: [lambda empty: empty.nodes()],
        zel.PortList: [len, list, lambda empty: empty[0]],
        zel.NodeList: [len, list, lambda empty: empty["a"]],
        type("Empty", (zel.Node,), {}): [zel.Compound, lambda empty: empty.inputs()],
        type("Empty", (zel.Container,), {}): [zel.Node, lambda empty: empty.findNodeFromPath("a")],
    }
    for base, calls in uses.items():
        empty = base.__new__(base)
        if hasattr(base, "getName"):
            calls += [lambda empty: empty.getName(), repr, lambda empty: owner.sameName(empty)]
        for call in calls:
            with pytest.raises(TypeError):
                call(empty)
    made = zel.Node(None, "first")
    made.__init__(None, "again")  # Without effect.
    assert made.getName() == "first"
    with pytest.raises(TypeError):
        zel.Node.__init__(zel.Port("p", 0), None)


def test_what_cannot_be_copied():
    owner, top = compound("Top")
    for made in (owner, top, Document(), zel.Port("p", 0), zel.PortDataType("t"), owner.inputs(),
                 top.nodes()):
        for make in (copy.copy, copy.deepcopy, pickle.dumps):
            with pytest.raises(TypeError, match="cannot copy or pickle"):
                make(made)
    assert pickle.loads(pickle.dumps(zel.PortOutput)) is zel.PortOutput


def test_enumerations():
    port = zel.Port("p", zel.PortOutput)
    assert type(port.getPortIOType()) is zel.PortIOType
    assert port.getPortIOType() == zel.PortOutput == 1
    foreign = zel.Port("p", 7).getPortIOType()
    assert foreign == 7 and type(foreign) is int
    assert zel.Port("p", -(2**31)).getPortIOType() == -(2**31)
    for bad in (True, 1.0, "1", None, 2**31):
        with pytest.raises(TypeError):
            zel.Port("p", bad)
    assert zel.Container.eSearchNodeAndInner is zel.Container.ESearchMode.eSearchNodeAndInner


def test_names_and_identity():
    a, b = zel.Node(None, "n"), zel.Node(None, "n")
    assert a != b and a.sameName(b) and len({a, b}) == 2 and repr(a) == "<zel.Node 'n'>"
    assert zel.PortDataType("f").isSameType(zel.PortDataType("f"))
    assert zel.PortDataType("f") != zel.PortDataType("f")
    assert repr(type("D", (zel.Node,), {"__module__": "m"})(None, "d")) == "<m.D 'd'>"


def test_a_compound_is_made_once():
    owner, top = compound("Top")
    with pytest.raises(ValueError):
        zel.Compound(owner)
    with pytest.raises(TypeError):
        zel.Compound(None)
    assert owner.getAsCompound() is top
    renamed, inside = compound("x", lambda owner: zel.Compound(owner, "renames"))
    assert renamed.getName() == inside.getName() == "renames"
    del renamed
    assert inside.getName() == "" and inside.getAsNode() is None


@pytest.mark.parametrize("answer", ["parent", "none", "wrong", "own"])
def test_a_node_has_its_own_compound(answer, capfd):
    class Kind(zel.Node):
        def isCompound(self):
            return True

        def getAsCompound(self):
            return {"parent": self.getParentCompound(), "none": None, "wrong": 3,
                    "own": super().getAsCompound()}[answer]

    owner, top = compound("Top")
    made = node(top, "n", kind=Kind)
    own = zel.Compound(made)
    node(own, "inside")
    document = Document()
    document.root = owner
    if answer in ("parent", "wrong"):
        with pytest.raises(ValueError if answer == "parent" else TypeError):
            document.findNodeFromPath("Top.n.n")
        with unraised(), pytest.raises((ValueError, TypeError)):
            top.debugPrint()
    else:
        assert (document.findNodeFromPath("Top.n.inside") is not None) == (answer == "own")
        top.debugPrint()
    assert "inside" in capfd.readouterr().out or answer != "own"
