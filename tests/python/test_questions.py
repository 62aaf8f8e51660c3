"""What a class written in Python answers when the library asks it."""

import gc

import _keeping
import pytest
import zel
from network import compound, names, node, unraised

QUESTIONS = """onPortAddConnection onPortRemoveConnection onPortSetDataType onPortListPortAdded
onPortListPortRemoved onPortListPortMove onPortSetDefaultValue onPortSetName onNodeAdd
onNodeRemove""".split()


def asked(base, question, reply):
    """A class that gives that answer to the question."""
    return type("Asked", (base,), {question: lambda self, *args: reply(self, *args)})


class Scene:
    """A compound with a connected inner port, and what each question is about."""

    def __init__(self, question, reply):
        self.reply = lambda *args: True
        kind = asked(zel.Compound, question, lambda *args: self.reply(*args))
        self.owner, self.compound = compound("Top", kind)
        self.inside = node(self.compound, "inside", "a b")
        self.ports = self.compound.innerInputs()
        self.p, self.q = self.ports.addPort("p"), self.ports.addPort("q")
        self.a, self.b = self.inside.inputs()
        self.p.addConnection(self.a)
        self.type, self.other = zel.PortDataType("float"), node()
        self.free = zel.Port("f", zel.PortOutput)
        self.reply = reply

    def change(self, question):
        {
            "onPortAddConnection": lambda: self.b.addConnection(self.p),
            "onPortRemoveConnection": lambda: self.a.removeConnection(self.p),
            "onPortSetDataType": lambda: self.p.setDataType(self.type),
            "onPortListPortAdded": lambda: self.ports.add(self.free),
            "onPortListPortRemoved": lambda: self.ports.remove(self.p),
            "onPortListPortMove": lambda: self.ports.movePort(1, 0),
            "onPortSetDefaultValue": lambda: self.p.setPortDefaultValue("0.5"),
            "onPortSetName": lambda: self.p.setName("r"),
            "onNodeAdd": lambda: self.compound.nodes().add(self.other),
            "onNodeRemove": lambda: self.compound.removeNode("inside"),
        }[question]()

    def state(self):
        return [
            [(p.getName(), p.getFullPathName(), p.getDataType(), p.getPortDefaultValue(),
              p.connectedTo(), p.getParent())
             for p in (*self.ports, self.p, self.a, self.b, self.free)],
            list(self.compound.nodes()), self.inside.getParentCompound(),
            self.other.getParentCompound(),
        ]


def answers():
    def raises(*args):
        raise LookupError("no")

    return [
        ("True", lambda *args: True, None), ("False", lambda *args: False, None),
        ("None", lambda *args: None, TypeError), ("text", lambda *args: "yes", TypeError),
        ("number", lambda *args: 1, TypeError), ("error", raises, LookupError),
    ]


@pytest.mark.parametrize("question", QUESTIONS)
@pytest.mark.parametrize("name, reply, error", answers())
def test_a_question(question, name, reply, error):
    calls = []

    def counting(*args):
        calls.append(args[1:])
        return reply(*args)

    scene = Scene(question, counting)
    before = scene.state()
    if error:
        with pytest.raises(error, match="no" if error is LookupError
                           else f"{question} must answer True or False"):
            scene.change(question)
    else:
        scene.change(question)
    assert len(calls) == 1
    assert (scene.state() == before) == (name != "True")
    scene.reply = lambda *args: True


@pytest.mark.parametrize("base", [zel.Node, zel.Compound])
def test_each_answer_of_the_base_is_at_hand(base):
    """An override that asks the base is no recursion and changes nothing."""
    asks = [name for name in dir(base) if name.startswith("on")] + ["setName", "appendString"]
    asks += ["isCompound", "getAsCompound", "getFullPathName", "getNodeTypeName", "setNodeTypeName"]
    asks += ["createCompoundPort", "deleteCompoundPort", "createLinkedPort", "createNodeFromPreset",
             "createNewCompound", "saveAs", "getSpecializedCompoundTypeName"]
    calls = set()

    def through(name):
        def override(self, *args):
            calls.add(name)
            return getattr(super(kind, self), name)(*args)

        return override

    kind = type("Through", (base,), {name: through(name) for name in asks if hasattr(base, name)})
    if base is zel.Node:
        made = node(None, "n", "", "a b", kind=kind)
        ports, others = made.outputs(), node(None, "o", "i").inputs()
        made.isCompound(), made.getAsCompound(), made.setNodeTypeName("t")
        assert made.getFullPathName() == "n" and made.getNodeTypeName() == "t"
    else:
        owner, made = compound("n", kind)
        extra = made.createCompoundPort(zel.PortInput, "x", None)
        assert made.deleteCompoundPort(made.innerInputs()[extra]) == extra
        made.createLinkedPort("l", "t"), made.createNodeFromPreset("p"), made.createNewCompound("c")
        assert made.saveAs("f") is False and made.getSpecializedCompoundTypeName() == "Compound"
        inside = node(made, "inside", "i")
        assert made.removeNode("inside") is inside and made.nodes().add(inside)
        ports, others = made.innerInputs(), inside.inputs()
        ports.addPort("a"), ports.addPort("b")
    assert ports["a"].addConnection(others[0]) and others[0].removeConnection(ports["a"])
    assert ports.movePort(1, 0) and names(ports) == "b a"
    ports["a"].setName("c"), ports["c"].setPortDefaultValue("v"), ports["c"].setDataType(None)
    made.setName("m"), made.appendString(".")
    assert ports["c"].getFullPathName().endswith(".c") and ports["c"].getPortDefaultValue() == "v"
    assert ports.remove(ports["c"]) and names(ports) == "b"
    missing = {name for name in asks if hasattr(base, name)} - calls
    # Only a list that removes the node tells it that it goes.
    assert missing <= {"onThisNodeDeleted"}, missing


@pytest.mark.parametrize("answer, error",
                         [(5, TypeError), (None, None), ("a\0b", ValueError),
                          ("\ud800", UnicodeError)])
def test_texts_that_are_none(answer, error):
    class Kind(zel.Node):
        def onPortGetDefaultValue(self, port):
            return answer

        def onGetParentFullPathName(self):
            return answer

    made = node(None, "n", "p", kind=Kind)
    made.inputs()["p"].setPortDefaultValue("own")
    if answer is None:
        assert made.inputs()["p"].getPortDefaultValue() == "own"
    else:
        with pytest.raises(error):
            made.inputs()["p"].getPortDefaultValue()
    with pytest.raises(error or TypeError):
        made.inputs()["p"].getFullPathName()


def test_each_object_answers_with_its_own_text():
    class Kind(zel.Node):
        def onPortGetDefaultValue(self, port):
            return f"{self.getName()} {port.getName()} " + "x" * 100

        def onGetParentFullPathName(self):
            return "/" + self.getName()

    made = [node(None, name, "p q", kind=Kind) for name in "abc"]
    ports = [port for each in made for port in each.inputs()]
    for _ in range(2):
        assert [p.getPortDefaultValue()[:3] for p in ports] == ["a p", "a q", "b p", "b q", "c p",
                                                            "c q"]
        assert [p.getFullPathName() for p in ports] == ["/a.p", "/a.q", "/b.p", "/b.q", "/c.p",
                                                        "/c.q"]


def test_what_is_told_raises_after_the_change():
    class Kind(zel.Node):
        def onPortListPortMoved(self, ports, before, after):
            raise LookupError(names(ports))

        def onThisNodeDeleted(self):
            raise LookupError("gone")

    owner, top = compound("Top")
    made = node(top, "n", "a b", kind=Kind)
    with pytest.raises(LookupError, match="b a"):
        made.inputs().movePort(1, 0)
    with pytest.raises(LookupError, match="gone"):
        top.nodes().remove(made)
    assert len(top.nodes()) == 0 and made.getParentCompound() is None


def test_the_first_error_is_raised_and_the_others_are_shown():
    class Kind(zel.Node):
        def onPortRemoveConnection(self, port, other):
            raise LookupError(other.getName())

        def onPortSetName(self, port, name):
            raise LookupError(name)

    made = node(None, "n", "", "o", kind=Kind)
    far = node(None, "f", "a b c")
    port = made.outputs()["o"]
    assert all(port.addConnection(other) for other in far.inputs())
    with unraised() as texts:
        with pytest.raises(LookupError, match="^c$") as error:
            port.removeAllConnections()
        assert error.traceback[-1].name == "onPortRemoveConnection"
        assert len(port.connectedTo()) == 3 and texts == ["b", "a"]
        _keeping.rename(port, "x")  # No call from Python waits for it.
        assert texts == ["b", "a", "x"] and port.getName() == "o"


def test_an_error_in_a_nested_call_waits_for_the_outermost():
    seen = []

    class Inner(zel.Node):
        def onPortSetName(self, port, name):
            raise LookupError("inner")

    inner = node(None, "i", "p", kind=Inner)

    class Outer(zel.Node):
        def onPortSetName(self, port, name):
            inner.inputs()["p"].setName("x")
            seen.append(inner.inputs()["p"].getName())
            return True

    outer = node(None, "o", "p", kind=Outer)
    with pytest.raises(LookupError, match="inner"):
        outer.inputs()["p"].setName("y")
    assert seen == ["p"] and names(outer.inputs()) == "y"


def test_an_override_may_come_and_go():
    class Kind(zel.Node):
        pass

    made = node(None, "n", "p", kind=Kind)
    port = made.inputs()["p"]
    port.setName("a")
    Kind.onPortSetName = lambda self, port, name: False
    port.setName("b")
    assert port.getName() == "a"
    del Kind.onPortSetName
    made.onPortSetName = lambda port, name: False  # No override: an attribute of the object.
    port.setName("c")
    assert port.getName() == "c"
    Kind.onPortSetName = staticmethod(lambda port, name: False)
    port.setName("d")
    Kind.onPortSetName = classmethod(lambda cls, port, name: cls is not Kind)
    port.setName("d")
    Kind.onPortSetName = None
    with pytest.raises(TypeError):
        port.setName("d")
    assert port.getName() == "c"

    class Mixin:
        def onPortSetName(self, port, name):
            return name == "mixed"

    class Mixed(Mixin, zel.Node):
        pass

    port = node(None, "n", "p", kind=Mixed).inputs().addPort("q")
    port.setName("x"), port.setName("mixed")


def test_a_name_answered_by_the_class_is_not_looked_up():
    class Kind(zel.Node):
        def getName(self):
            return "made up"

    owner, top = compound("Top")
    made = node(top, "n", kind=Kind)
    assert made.getName() == "made up" and top.nodes()["n"] is made and "made up" not in top.nodes()
    assert made.getFullPathName() == "Top.n" and "made up" in repr(made)


def test_a_question_without_end_is_an_error():
    class Kind(zel.Node):
        def onPortSetName(self, port, name):
            port.setName(name + "x")
            return False

    port = node(None, "n", "p", kind=Kind).inputs()
    made = port.getParent()
    with pytest.raises(RecursionError):
        made.inputs()["p"].setName("q")
    assert names(made.inputs()) == "p"
    gc.collect()
