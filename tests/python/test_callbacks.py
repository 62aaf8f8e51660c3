"""What docs/callbacks.md allows inside a callback, done in Python."""

import gc
import weakref

import pytest
import zel
from network import Document, compound, names, node


def in_question(base, question, action, answer=True):
    """A class that does something once, the first time it is asked."""

    def override(self, *args):
        if not vars(self).setdefault("done", False):
            self.done = True
            action(self, *args)
        return answer

    return type("Acting", (base,), {question: override})


def test_an_input_keeps_one_source():
    class OneSource(zel.Compound):
        def onPortAddConnection(self, port, other):
            other.removeAllConnections()
            return True

    owner, top = compound("Top", OneSource)
    a, b = top.innerInputs().addPort("a"), top.innerInputs().addPort("b")
    i = node(top, "n", "i").inputs()["i"]
    assert a.addConnection(i) and b.addConnection(i)
    assert i.connectedTo() == (b,) and not a.isConnected()


@pytest.mark.parametrize("answer", [True, False])
@pytest.mark.parametrize("change, after", [
    (lambda ports, port: ports.addPort("z"), "a b z{}"),
    (lambda ports, port: ports.remove(ports["a"]), "b{}"),
    (lambda ports, port: [ports.remove(each) for each in ports], "{}"),
    (lambda ports, port: ports.movePort(1, 0), "b a{}"),
    (lambda ports, port: port.setName("d"), "a b{}"),
])
def test_the_list_changes_while_it_asks(answer, change, after):
    kind = in_question(zel.Node, "onPortListPortAdded", lambda self, *args: change(*args), answer)
    made = kind(None, "n")
    made.done = True
    type(made).onPortListPortAdded, override = lambda *args: True, type(made).onPortListPortAdded
    made.inputs().addPort("a"), made.inputs().addPort("b")
    type(made).onPortListPortAdded, made.done = override, False
    port = zel.Port("c", zel.PortInput)
    kinds_answer = made.inputs().add(port)
    expected = after.format(f" {port.getName()}" if answer else "").strip()
    if "z" in after:  # The nested addition was asked too, and answered alike.
        expected = expected if answer else "a b"
    assert kinds_answer is answer and names(made.inputs()) == expected
    assert port.getParent() is (made if answer else None)


@pytest.mark.parametrize("answer", [True, False])
def test_a_port_that_goes_elsewhere_while_it_is_removed(answer):
    other = node(None, "other")
    kind = in_question(zel.Node, "onPortListPortRemoved",
                       lambda self, ports, port: ports.remove(port) and other.inputs().add(port))
    made = node(None, "n", "p", kind=kind)
    made.answer = answer
    port = made.inputs()["p"]
    made.inputs().remove(port)
    assert port.getParent() is other and names(other.inputs()) == "p" and len(made.inputs()) == 0
    del made
    assert port.getFullPathName() == "other.p"


def test_a_port_is_put_into_one_list():
    def elsewhere(self, ports, port):
        self.outputs().add(port)

    made = in_question(zel.Node, "onPortListPortAdded", elsewhere)(None, "n")
    port = zel.Port("p", zel.PortInput)
    assert not made.inputs().add(port)
    assert (names(made.inputs()), names(made.outputs())) == ("", "p") and port.getParent() is made


def test_who_is_asked_may_be_dropped():
    """The asked object goes in its own question: nothing is touched afterwards."""
    held = []

    class Node(zel.Node):
        def onPortListPortRemoved(self, ports, port):
            held.clear()
            return True

        def onPortGetDefaultValue(self, port):
            held.clear()
            return "v" * 1000

        def onPortSetName(self, port, name):
            held.clear()
            return True

    class Compound(zel.Compound):
        def onNodeAdd(self, node):
            held.clear()
            return True

        onNodeRemove = onNodeAdd

    port = zel.Port("p", zel.PortInput)
    for act in (lambda: held[0].inputs().remove(port), lambda: port.getPortDefaultValue(),
                lambda: port.setName("q")):
        held.append(Node(None, "n"))
        held[0].inputs().add(port)
        ref = weakref.ref(held[0])
        act()
        assert ref() is None and port.getParent() is None
    inside = node()
    held.extend(compound("Top", Compound))
    held[1].nodes().add(inside)
    assert held == [] and inside.getParentCompound() is None
    del Compound.onNodeAdd
    held.extend(compound("Top", Compound))
    assert held[1].nodes().add(inside)
    assert held[1].removeNode("n") is inside and held == [] and inside.getParentCompound() is None
    owner, top = compound("Other")
    assert top.nodes().add(inside)


def test_a_name_of_ones_own():
    class Named(zel.Node):
        naming = False

        def onPortSetName(self, port, name):
            if self.naming:
                return True
            self.naming = True
            port.setName(name.upper())
            self.naming = False
            return False

    made = node(None, "n", "p", kind=Named)
    made.inputs()["p"].setName("abc")
    assert names(made.inputs()) == "ABC"


def test_removed_in_the_question_of_its_removal():
    kind = in_question(zel.Node, "onPortRemoveConnection",
                       lambda self, port, other: port.removeConnection(other))
    made, far = node(None, "n", "", "o", kind=kind), node(None, "f", "i")
    made.outputs()["o"].addConnection(far.inputs()["i"])
    assert not made.outputs()["o"].removeConnection(far.inputs()["i"])
    assert not far.inputs()["i"].isConnected()


@pytest.mark.parametrize("action, after", [
    (lambda self, one: self.nodes().add(zel.Node(None, "x")), "a b x n"),
    (lambda self, one: self.removeNode("a"), "b n"),
    (lambda self, one: [self.nodes().remove(each) for each in self.nodes()], "n"),
    (lambda self, one: one.setName("m"), "a b m"),
])
def test_nodes_come_and_go_while_one_is_added(action, after):
    kind = in_question(zel.Compound, "onNodeAdd", action)
    owner, top = compound("Top", kind)
    top.done = True
    node(top, "a"), node(top, "b")
    top.done = False
    assert top.nodes().add(zel.Node(None, "n"))
    assert names(top.nodes()) == after
    assert all(each.getParentCompound() is top for each in top.nodes())


def test_a_node_removed_in_the_question_or_put_back_when_told():
    kind = in_question(zel.Compound, "onNodeRemove", lambda self, one: self.nodes().remove(one))
    owner, top = compound("Top", kind)
    twice = node(top, "n")
    assert top.nodes().add(twice) and names(top.nodes()) == "n n"
    assert top.nodes().remove(twice)
    assert names(top.nodes()) == "" and twice.getParentCompound() is None

    back = node(top, "b",
                kind=in_question(zel.Node, "onThisNodeDeleted", lambda self: top.nodes().add(self)))
    top.done = True
    assert top.nodes().remove(back) and names(top.nodes()) == "b"
    assert back.getParentCompound() is top
    assert top.nodes().remove(back) and len(top.nodes()) == 0 and back.getParentCompound() is None


def test_recurse_parent_first():
    document = Document()
    owner, inner = compound("inner")
    document.top.nodes().add(owner)
    leaf = node(inner, "leaf")
    seen = []
    leaf.recurse_parent_first(lambda each: seen.append(each.getName()))
    inner.recurse_parent_first(lambda each: seen.append(each.getName()))
    assert seen == ["Top", "inner", "leaf", "Top", "inner"]

    def cut(each):
        seen.append(each.getName())
        document.top.nodes().remove(owner)
        inner.nodes().remove(leaf)

    seen.clear()
    leaf.recurse_parent_first(cut)
    assert seen == ["Top", "inner", "leaf"] and leaf.getFullPathName() == "leaf"

    def raises(each):
        raise LookupError(each.getName())

    with pytest.raises(LookupError, match="leaf"):
        leaf.recurse_parent_first(raises)


def test_a_collection_in_a_question():
    class Kind(zel.Node):
        def onPortListPortAdded(self, ports, port):
            gc.collect()
            return True

    made = [node(None, str(i), "a b c", kind=Kind) for i in range(3)]
    for each in made:
        each.others = made
    assert [names(each.inputs()) for each in made] == ["a b c"] * 3
