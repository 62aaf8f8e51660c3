"""The commands on a document written in Python: what they make of it is what they make in C++."""

import copy
import gc
import weakref

import pytest

import zel

# Texts of networks as the tests of the library write them.


def path_of(port):
    return port.getFullPathName() + (" inner" if port.isCompoundInternalPort() else "")


def list_text(mark, ports):
    text = mark if len(ports) else ""
    for port in ports:
        kind = port.getDataType().getName() if port.getDataType() else "-"
        text += f" {port.getName()}" + ("" if kind == "Float" else f":{kind}")
        if port.isConnected():
            text += "=" + ",".join(path_of(other) for other in port.connectedTo())
    return text


def text_of(node):
    text = node.getFullPathName() + list_text(" <", node.inputs()) + list_text(" >", node.outputs())
    compound = node.getAsCompound()
    if not compound:
        return text + "\n"
    text += list_text(" {<", compound.innerInputs()) + list_text(" {>", compound.innerOutputs())
    return text + "\n" + "".join(text_of(inside) for inside in compound.nodes())


class Compound(zel.Compound):
    creating = naming = None  # What a test does or answers instead.

    def onPortSetName(self, port, name):
        return self.naming(port) if self.naming else True

    def createNewCompound(self, name):
        return self.creating(name) if self.creating else self.create(name)

    def create(self, name):
        node = zel.Node(self.getAsNode().getContainer(), name)
        return type(self)(node) if self.nodes().add(node) else None


class Document(zel.Container):
    def __init__(self, outputs=""):
        super().__init__()
        self.runtime = zel.Runtime()
        self.float = self.runtime.createPortDataType("Float")
        self.runtime.createPortDataType("Color")
        self.root = zel.Node(self, "Top")
        Compound(self.root)
        self.add_ports(self.root.getAsCompound(), "", outputs)

    def getRootNode(self):
        return self.root

    def getRuntime(self):
        return self.runtime

    def add_ports(self, compound, inputs, outputs):
        for kind, names in ((zel.PortInput, inputs), (zel.PortOutput, outputs)):
            for name in names.split():
                compound.createCompoundPort(kind, name, self.float)

    def add_node(self, path, name, inputs="", outputs=""):
        node = zel.Node(self, name)
        for ports, names in ((node.inputs(), inputs), (node.outputs(), outputs)):
            for port in names.split():
                ports.addPort(port, self.float)
        assert self.findNodeFromPath(path).getAsCompound().nodes().add(node)

    def add_compound(self, path, name, inputs="", outputs=""):
        made = self.findNodeFromPath(path).getAsCompound().createNewCompound(name)
        self.add_ports(made, inputs, outputs)

    def connect(self, a, b):
        out, into = self.findPortsForConnection(a, b)
        assert into.addConnection(out)

    def port(self, path, kind=zel.PortInput):
        return self.findPortFromPath(path, kind)

    def text(self):
        return text_of(self.root)


def collapsible():
    document = Document("Z")
    document.add_node("Top", "S", "", "Out")
    document.add_node("Top", "N", "X Y", "Out")
    document.add_compound("Top", "M", "X", "Out")
    document.add_node("Top", "T", "A B")
    document.port("Top.N.Y").setDataType(document.runtime.getPortDataType("Color"))
    inside = document.findNodeFromPath("Top.M").getAsCompound()
    inside.innerInputs()["X"].addConnection(inside.innerOutputs()["Out"])
    for source, inputs in (
        ("S", ("M.X", "N.Y", "T.B")), ("M", ("Z", "N.X", "T.A")), ("N", ("T.B", "N.Y"))
    ):
        for name in inputs:
            document.connect(f"Top.{source}.Out", f"Top.{name}")
    return document


def with_ports():
    document = Document()
    document.add_compound("Top", "Sub", "A B", "Z")
    document.add_node("Top.Sub", "N", "X", "Out")
    document.add_node("Top.Sub", "P", "X")
    document.connect("Top.Sub.A", "Top.Sub.N.X")
    document.connect("Top.Sub.A", "Top.Sub.P.X")
    document.connect("Top.Sub.N.Out", "Top.Sub.Z")
    return document


def sub_line(document):
    return document.text().splitlines()[1][len("Top.Sub"):]


def sources():
    document = Document()
    for name in "ABD":
        document.add_node("Top", name, "", "Out")
    document.add_node("Top", "C", "In")
    document.connect("Top.A.Out", "Top.C.In")
    document.connect("Top.B.Out", "Top.C.In")
    return document


def test_a_collapse_is_the_one_of_cpp():
    document = collapsible()
    command = zel.CreateCompoundCommand()
    assert command.getCreatedCompoundPath() == "" and command.doit() is False
    assert command.setParentCompound(document, "Top") is True
    command.setNewCompoundName("Box")
    assert [command.addNodeToMove(name) for name in ("N", "M", "N", "none")] == [1, 1, 1, 0]
    moved = document.findNodeFromPath("Top.N")
    assert command.doit() is True
    assert command.getCreatedCompoundPath() == "Top.Box"
    assert document.findNodeFromPath("Top.Box.N") is moved
    assert document.text() == (
        "Top > Z {> Z=Top.Box.Out\n"
        "Top.S > Out=Top.T.B,Top.Box.X,Top.Box.Y\n"
        "Top.T < A=Top.Box.Out B=Top.S.Out,Top.Box.Out\n"
        "Top.Box < X=Top.S.Out Y:Color=Top.S.Out > Out=Top.Z inner Out=Top.T.A Out=Top.T.B"
        " {< X=Top.Box.M.X Y:Color=Top.Box.N.Y"
        " {> Out=Top.Box.M.Out Out=Top.Box.M.Out Out=Top.Box.N.Out\n"
        "Top.Box.M < X=Top.Box.X inner"
        " > Out=Top.Box.Out inner,Top.Box.Out inner,Top.Box.N.X"
        " {< X=Top.Box.M.Out inner {> Out=Top.Box.M.X inner\n"
        "Top.Box.N < X=Top.Box.M.Out Y:Color=Top.Box.Y inner,Top.Box.N.Out"
        " > Out=Top.Box.Out inner,Top.Box.N.Y\n"
    )
    assert (command.undo(document), command.redo(document), command.doit()) == (False,) * 3
    with pytest.raises(ValueError, match="make another"):
        command.setParentCompound(document, "Top")


def test_a_collapse_is_bound_to_the_compound_of_its_nodes():
    document = collapsible()
    command = zel.CreateCompoundCommand()
    with pytest.raises(ValueError):
        command.setParentCompound(None, "Top")
    assert command.setParentCompound(None, None) is True
    assert command.setParentCompound(document, "Top.none") is True
    assert command.addNodeToMove("N") is False
    assert command.setParentCompound(document, "Top.S") is False
    assert command.setParentCompound(document, "Top.M") is True
    assert command.setParentCompound(document, "Top") is True
    assert command.addNodeToMove("N") and command.setParentCompound(document, "Top")
    with pytest.raises(ValueError, match="another compound"):
        command.setParentCompound(document, "Top.M")
    assert command.undo(document) is True and command.redo(None) is True
    assert command.undo(None) is False and command.redo(document) is False
    assert command.setParentCompound(document, "Top")
    node = document.root.getAsCompound().removeNode("N")
    inside = document.findNodeFromPath("Top.M").getAsCompound()
    inside.nodes().add(node)
    before = document.text()
    with pytest.raises(ValueError, match="N"):
        command.doit()
    assert document.text() == before
    inside.nodes().remove(node)
    # One that lies nowhere is moved all the same.
    assert command.doit() is True and document.findNodeFromPath("Top.Compound.N") is node


def test_a_new_compound_of_the_wrong_kind_changes_nothing():
    document = collapsible()
    before = document.text()
    for answer, error in ((None, None), (7, TypeError)):
        command = zel.CreateCompoundCommand()
        command.setParentCompound(document, "Top")
        command.addNodeToMove("N")
        document.root.getAsCompound().creating = lambda name, answer=answer: answer
        if error:
            with pytest.raises(error):
                command.doit()
        else:
            assert command.doit() is False
        assert document.text() == before


def test_a_command_is_not_used_from_what_it_causes():
    document, raised = collapsible(), []
    parent = document.root.getAsCompound()

    def create(name):
        uses = [command.doit, command.getCreatedCompoundPath]
        uses += [lambda: command.undo(document), lambda: command.addNodeToMove("S")]
        for use in uses:
            with pytest.raises(RuntimeError, match="at work"):
                use()
            raised.append(use)
        other = zel.CreateCompoundCommand()
        assert other.setParentCompound(document, "Top.M")
        return parent.create(name)

    parent.creating = create
    command = zel.CreateCompoundCommand()
    command.setParentCompound(document, "Top")
    command.addNodeToMove("N")
    assert command.doit() and len(raised) == 4

    connect = zel.ConnectCommand()

    class Asking(zel.Node):
        def onPortAddConnection(self, port, other):
            raised.append(connect.undo(document))
            return True

    node = Asking(document, "asking")
    node.outputs().addPort("Out", document.float)
    document.root.getAsCompound().nodes().add(node)
    with pytest.raises(RuntimeError, match="at work"):
        connect.connect(document, node.outputs()[0], document.port("Top.T.A"))
    assert len(raised) == 4 and not node.outputs()[0].isConnected()


def test_ports_of_a_compound_are_changed_and_back():
    document = with_ports()
    before = document.text()
    command = zel.ModifyCompoundPortCommand()
    assert command.doit() is True and command.deletePort("A") is False
    assert command.setParentCompound(document, "Top.Sub") is True
    sub = document.findNodeFromPath("Top.Sub").getAsCompound()

    def name(port):
        sub.naming = None
        assert command.renamePort("Z", "Y")  # Carried out in its turn.
        with pytest.raises(RuntimeError):
            command.redo(None)
        return True

    sub.naming = name
    assert command.deletePort("B") and command.renamePort("A", "Wide")
    assert command.createPort(zel.PortOutput, "New", "Color")
    assert command.createPort(zel.PortInput, "C", "Color")
    assert command.createPort(zel.PortInput, "D", "none") is False
    assert command.renamePort("none", "x") is False
    for wrong in (lambda: command.deletePort(None), lambda: command.renamePort(None, "x")):
        with pytest.raises(TypeError):
            wrong()
    assert command.doit() is True
    after = document.text()
    assert sub_line(document) == (
        " < Wide C:Color > Y New:Color {< Wide=Top.Sub.N.X,Top.Sub.P.X C:Color"
        " {> Y=Top.Sub.N.Out New:Color"
    )
    for _ in range(2):
        command.undo(None)
        assert document.text() == before
        command.redo(document)
        assert document.text() == after


def test_deleted_ports_come_back_with_their_inner_connections():
    document = with_ports()
    document.add_node("Top.Sub", "Sub", "Z")
    sub = document.findNodeFromPath("Top.Sub").getAsCompound()
    sub.innerInputs()["A"].addConnection(sub.innerOutputs()["Z"])
    sub.innerInputs()["A"].setDataType(document.runtime.getPortDataType("Color"))
    command = zel.ModifyCompoundPortCommand()
    assert command.setParentCompound(document, "Top.Sub")
    assert command.deletePort("A") and command.deletePort("Z") and command.doit()
    assert sub_line(document) == " < B {< B"
    command.undo(document)
    assert sub_line(document) == (
        " < B A:Color > Z {< A:Color=Top.Sub.P.X,Top.Sub.N.X B {> Z=Top.Sub.N.Out"
    )


def test_a_connection_is_replaced_and_brought_back():
    document = sources()
    before = document.text()
    command = zel.ConnectCommand()
    out, into = document.port("Top.D.Out", zel.PortOutput), document.port("Top.C.In")
    a, b = into, out
    assert command.undo(document) is False and command.resolvePorts() is None
    for nothing in ((None, a, b), (document, None, b), (document, a, None)):
        assert command.connect(*nothing) is False
    assert command.connect(document, a, b) is True
    assert (a, b) == (into, out) and into.connectedTo() == (out,)
    assert command.resolvePorts() == (out, into)
    after = document.text()
    for _ in range(2):
        assert command.undo(document) and document.text() == before
        assert command.redo(document) and document.text() == after
    back = zel.ConnectCommand()
    assert back.disconnect(document, out, into) and not into.isConnected()
    assert back.undo(document) and document.text() == after
    every = zel.ConnectCommand()
    assert every.disconnectAll(document, into) and every.undo(document) is False


def test_a_command_acts_on_what_bears_the_paths_now():
    document = sources()
    command = zel.ConnectCommand()
    command.connect(document, document.port("Top.D.Out", zel.PortOutput), document.port("Top.C.In"))
    for name in ("C", "D"):
        document.root.getAsCompound().removeNode(name)
    assert command.undo(document) is False
    document.add_node("Top", "C", "In")
    document.add_node("Top", "D", "", "Out")
    assert command.redo(document) is True
    assert document.port("Top.C.In").connectedTo()[0].getFullPathName() == "Top.D.Out"


def test_a_command_holds_its_document_and_what_it_moves():
    command = zel.ConnectCommand()
    document = sources()
    command.connect(document, document.port("Top.D.Out", zel.PortOutput), document.port("Top.C.In"))
    gone = weakref.ref(document)
    del document
    gc.collect()
    assert command.resolvePorts()[1].getFullPathName() == "Top.C.In"
    del command
    gc.collect()
    assert gone() is None

    class Kept(zel.Node):
        pass

    document = Document()
    document.root.getAsCompound().nodes().add(Kept(document, "kept"))
    create = zel.CreateCompoundCommand()
    create.setParentCompound(document, "Top")
    assert create.addNodeToMove("kept")
    gone = weakref.ref(document.root.getAsCompound().removeNode("kept"))
    gc.collect()
    assert type(gone()) is Kept and zel._debug.owner(gone()) == "python"
    assert create.doit() and type(document.findNodeFromPath("Top.Compound.kept")) is Kept
    assert zel._debug.owner(gone()) == "cpp"


def test_documents_that_hold_their_commands_are_collected():
    class Kept(zel.Node):
        pass

    ends = []
    for done in (False, True):
        document = collapsible()
        document.root.getAsCompound().nodes().add(Kept(document, "kept"))
        create, modify, connect = (
            zel.CreateCompoundCommand(), zel.ModifyCompoundPortCommand(), zel.ConnectCommand()
        )
        out, into = document.port("Top.S.Out", zel.PortOutput), document.port("Top.T.A")
        assert connect.connect(document, out, into)
        assert modify.setParentCompound(document, "Top.M") and modify.renamePort("X", "Y")
        assert create.setParentCompound(document, "Top") and create.addNodeToMove("kept")
        assert create.addNodeToMove("N")
        if done:
            assert modify.doit() and create.doit()
        kept = document.findNodeFromPath("Top.Compound.kept" if done else "Top.kept")
        kept.command = create
        document.history = [create, modify, connect]
        ends += [weakref.ref(document), weakref.ref(kept)]
        del document, create, modify, connect, out, into, kept
    gc.collect()
    assert [end() for end in ends] == [None] * 4


def test_commands_are_neither_derived_from_nor_copied():
    for kind in (zel.ConnectCommand, zel.CreateCompoundCommand, zel.ModifyCompoundPortCommand):
        with pytest.raises(TypeError):
            type("Mine", (kind,), {})
        with pytest.raises(TypeError):
            copy.copy(kind())
        with pytest.raises(TypeError):
            kind.__new__(kind).undo(None)
