"""Who holds whom: identity, attributes and overrides stay while anything holds an object."""

import gc
import weakref

import _keeping
import pytest
import zel
from network import Document, compound, names, node

owner = zel._debug.owner


class Noise(zel.Node):
    seed = 1

    def onPortSetName(self, port, name):
        return name != "refused"


def test_found_again_it_is_the_same_object():
    top_node, top = compound("Top")
    noise = node(top, "noise", "a", kind=Noise)
    noise.seed = 7
    known, ref = id(noise), weakref.ref(noise)
    assert owner(noise) == "cpp"
    del noise
    gc.collect()
    found = top.nodes()["noise"]
    assert (id(found), type(found), found.seed, vars(found)) == (known, Noise, 7, {"seed": 7})
    found.inputs()["a"].setName("refused")
    assert names(found.inputs()) == "a"
    assert top.nodes().remove(found)
    assert owner(found) == "python" and found.getParentCompound() is None
    del found
    assert ref() is None


@pytest.mark.parametrize("kind", [zel.Node, Noise])
def test_moves_twice_between_compounds(kind):
    (a_node, a), (b_node, b) = compound("A"), compound("B")
    moving = node(a, "m", kind=kind)
    ref = weakref.ref(moving)
    for source, target in ((a, b), (b, a), (a, b)):
        with pytest.raises(ValueError, match="another compound"):
            target.nodes().add(moving)
        assert source.removeNode("m") is moving
        assert target.nodes().add(moving)
        assert moving.getParentCompound() is target and len(source.nodes()) == 0
    del moving
    assert ref().getFullPathName() == "B.m"
    b.removeNode("m")
    assert ref() is None


def test_constructors_that_raise():
    _top_node, top = compound("Top")

    class Early(zel.Node):
        def __init__(self):
            raise LookupError

    class Late(zel.Node):
        def __init__(self, enters):
            super().__init__(None, "late")
            if enters:
                top.nodes().add(self)
            raise LookupError

    class Named(zel.Node):
        def setName(self, name):
            raise LookupError

    for make in (Early, lambda: Late(False), lambda: Late(True), lambda: Named(None, "x")):
        with pytest.raises(LookupError):
            make()
    assert names(top.nodes()) == "late"
    with pytest.raises(TypeError, match="must be called"):
        type("Forgets", (zel.Node,), {"__init__": lambda self: None})()


def deleting(log):
    class Deleting(zel.Node):
        def __del__(self):
            log.append(self.getName())

    class Quiet(zel.Node):
        def __init_subclass__(cls):
            pass

    class Deep(Quiet):
        def __del__(self):
            log.append(self.getName())

    class Later(zel.Node):
        pass

    Later.__del__ = Deep.__del__
    return Deleting, Deep, Later


@pytest.mark.parametrize("which", [0, 1, 2])
@pytest.mark.parametrize("collected", [False, True])
def test_the_net_catches_what_cpp_keeps(which, collected):
    log = []
    kept = deleting(log)[which](None, "n")
    kept.mark = kept if collected else 5
    port, known = kept.inputs().addPort("p"), id(kept)
    for _ in range(2):
        _keeping.keepNodeOf(port)
        del kept
        gc.collect()
        kept = port.getParentNode()
        assert id(kept) == known and owner(kept) == "cpp" and log == []
        assert kept.mark is (kept if collected else 5)
        _keeping.letGo()
        assert owner(kept) == "python"
    del kept
    gc.collect()
    assert port.getParentNode() is None and log == ["n"]


def test_the_net_catches_plain_ones():
    top_node, top = compound("Top")
    port, inner = top_node.inputs().addPort("p"), top.innerInputs().addPort("i")
    _keeping.keepNodeOf(port)
    _keeping.keepCompoundOf(inner)
    del top_node, top
    assert port.getParentNode().getAsCompound() is inner.getParentCompound()
    _keeping.letGo()
    assert port.getParent() is None and inner.getParent() is None


def test_what_a_finalizer_keeps_lives_on_alone():
    kept = []

    class Node(zel.Node):
        def __del__(self):
            kept.append(self)

    class Compound(zel.Compound):
        def __del__(self):
            kept.append(self)
            kept.append(self.getAsNode())

    top_node, top = compound("Top", Compound)
    for i in range(3):
        node(top, f"n{i}", kind=Node)
    del top
    del top_node
    inside, outside = kept[:2]
    assert outside.getAsCompound() is inside and names(inside.nodes()) == "n0 n1 n2"
    kept.clear()
    del outside
    assert inside.getAsNode() is None and inside.getName() == ""
    del inside
    assert names(kept) == "n0 n1 n2"
    assert [each.getParentCompound() for each in kept] == [None] * 3
    assert [each.getFullPathName() for each in kept] == ["n0", "n1", "n2"]
    Node(None, "alone")
    assert names(kept) == "n0 n1 n2 alone"


def test_nobody_is_given_what_is_dying():
    seen = []

    class Watcher:
        def __del__(self):
            self.port.setName("by the base")
            seen.append((self.port.getParentNode(), self.port.getName()))

    watched = node(None, "n", "p", kind=Noise)
    watched.watcher = Watcher()
    watched.watcher.port = watched.inputs()["p"]
    del watched
    assert seen == [(None, "by the base")]


def test_what_is_held_longer_than_what_it_was_in():
    top_node, top = compound("Top")
    inside = node(top, "n", "a", "b")
    outer = top.createCompoundPort(zel.PortInput, "i", None)
    inner, a = top.innerInputs()[outer], inside.inputs()["a"]
    assert inner.addConnection(a)
    del top_node
    assert (top.getAsNode(), top.getName(), top.getReversePort(inner)) == (None, "", None)
    assert inside.getFullPathName() == "n"
    assert top.createCompoundPort(zel.PortInput, "j", None) == -1
    ports, nodes = top.innerInputs(), top.nodes()
    del top
    assert ports.getParent() is nodes.getParentCompound()
    del ports, nodes
    assert inside.getParentCompound() is None and inside.getFullPathName() == "n"
    assert not a.isConnected() and inner.getParent() is None and not inner.isConnected()


def test_a_list_keeps_its_owner():
    made = Noise(None, "n")
    ref, ports = weakref.ref(made), made.outputs()
    del made
    assert ports.getParent() is ref() and ports.addPort("o").getFullPathName() == "n.o"
    del ports
    assert ref() is None


def test_ports_that_die_connected():
    a, b = zel.Port("a", zel.PortOutput), zel.Port("b", zel.PortInput)
    assert a.addConnection(b) and a.addConnection(b)
    del a
    assert b.connectedTo() == ()
    loop = zel.Port("loop", zel.PortOutput)
    assert loop.addConnection(loop)
    del loop
    made = node(None, "n", "i", "o")
    assert made.outputs()["o"].addConnection(b)
    del made
    assert not b.isConnected()


def test_the_document_dropped_first():
    document = Document()
    document.mark = 3
    inside = zel.Node(document, "n")
    document.top.nodes().add(inside)
    ref = weakref.ref(document)
    del document
    gc.collect()
    assert inside.getContainer() is ref() and ref().mark == 3
    assert ref().findNodeFromPath("Top.n") is inside
    del inside
    gc.collect()
    assert ref() is None


class Inside(zel.Compound):
    pass


@pytest.mark.parametrize("kinds",
                         [(zel.Node, zel.Compound), (Noise, zel.Compound), (Noise, Inside)])
def test_deep_networks_do_not_use_up_the_stack(kinds):
    make_node, make_compound = kinds
    root = last = make_node(None, "last")
    for depth in range(5000):
        outer = make_node(None, "n")
        assert make_compound(outer).nodes().add(root)
        root = outer
    assert last.getFullPathName() == "n." * 5000 + "last"
    gc.collect()
    ref = weakref.ref(root)
    del outer, root
    gc.collect()
    assert ref() is None and last.getFullPathName() == "last"


def test_weak_references_tell_of_the_end():
    told = []
    top_node, top = compound("Top")
    inside = node(top, "n", kind=Noise)
    refs = [weakref.ref(each, lambda ref: told.append(ref())) for each in (top_node, top, inside)]
    del top_node, top, inside
    assert told == [None] * len(refs)


# Cycles. Each makes one through the given object, which the collector is to find.


def node_and_compound(end):
    top_node, top = compound("Top", Inside, Noise)
    top.owner, top.end = top_node, end


def deep_inside(end):
    document = Document()
    made = Noise(document, "n")
    made.end, made.document = end, document
    document.top.nodes().add(made)


def closure(end):
    made = Noise(None, "n")
    made.call = lambda: (made, end)


def slots(end):
    class Slotted(zel.Node):
        __slots__ = ("other", "end")

    a, b = Slotted(None, "a"), Slotted(None, "b")
    a.other, b.other, a.end = b, a, end


def lists(end):
    top_node, top = compound("Top", Inside)
    made = node(top, "n", kind=Noise)
    made.lists, made.end = (top.nodes(), top.innerInputs(), made.inputs()), end


def plain_in_lists(end):
    document = Document()
    document.nodes = [zel.Node(document, str(i)) for i in range(3)]
    for each in document.nodes:
        document.top.nodes().add(each)
    document.end = end


def bound_method(end):
    made = Noise(None, "n")
    made.call, made.end = made.onPortSetName, end


def two_documents(end):
    a, b = Document(), Document()
    a.other, b.other, a.end = b.root, a.top, end


@pytest.mark.parametrize("make",
                         [node_and_compound, deep_inside, closure, slots, lists, plain_in_lists,
                                  bound_method, two_documents])
def test_cycles_are_collected(make):
    class End:
        pass

    end = End()
    ref = weakref.ref(end)
    make(end)
    del end
    gc.collect()
    assert ref() is None


def test_a_cycle_is_kept_while_cpp_holds_it():
    top_node, top = compound("Top")
    made = node(top, "n", kind=Noise)
    made.itself, ref = made, weakref.ref(made)
    del made, top
    gc.collect()
    assert ref().itself is ref()
    top_node = None
    gc.collect()
    assert ref() is None
