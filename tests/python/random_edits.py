"""Random edits of a shading document: all that there are, good and refused, alone and in groups."""

import random

import zel
from shading_support import compoundsOf

NAMES = ["a", "b", "in", "out", "position", "mix", "a.b", "two words", ""]
VALUES = [0.5, 1, (0.1, 0.2, 0.3), True, 'a <b> & "c"', None, (1, 2), "1, 2, 3", -7]
VALUES.append([[1, 0, 0]] * 3)


def isFed(port):
    return port.isConnected()


class RandomEdits:
    """Makes random edits on a document, by paths or objects of what is there now."""

    def __init__(self, doc, seed):
        self.doc = doc
        self.random = random.Random(seed)
        self.mostNodes = doc.stats().nodes + 60
        self.done = set()  # The names of edits that were done at least once.
        self.kinds = [
            value
            for name, value in sorted(vars(RandomEdits).items())
            if name.startswith("edit") and name not in ("edit", "editGroup")
        ]

    def step(self):
        """Makes one edit or a group, takes some back, or does some again. Gives what it did."""
        chance = self.random.randrange(16)
        if chance == 0:
            return self.replay(self.doc.undo)
        if chance == 1:
            return self.replay(self.doc.redo)
        return self.editGroup(0) if chance == 2 else self.edit()

    def edit(self):
        """One edit. A refusal is an answer too; nothing else may be raised."""
        self.nodes = list(self.doc.walk())
        self.compounds = compoundsOf(self.doc)
        if len(self.nodes) > self.mostNodes:
            self.doc.delete(self.node())
            return "delete"
        kind = self.random.choice(self.kinds)
        edits = self.doc.undoCount()
        try:
            kind(self)
        except zel.Error as error:
            assert error.reason, (kind.__name__, error)
            return f"{kind.__name__} refused: {error}"
        except (TypeError, ValueError):
            assert kind is RandomEdits.editValue  # Of all types of values, most are wrong.
            return f"{kind.__name__}: no such value"
        if self.doc.undoCount() > edits:
            self.done.add(kind.__name__)
        return kind.__name__

    def editGroup(self, depth):
        """Some edits as one, which now and then is given up."""
        done = []

        class GivenUp(Exception):
            pass

        try:
            with self.doc.edit("Group"):
                for _ in range(self.random.randrange(1, 5)):
                    isGroup = depth < 3 and self.random.randrange(4) == 0
                    done.append(self.editGroup(depth + 1) if isGroup else self.edit())
                if self.random.randrange(3) == 0:
                    raise GivenUp
        except GivenUp:
            return f"given up {done}"
        return f"group {done}"

    def replay(self, call):
        try:
            return call(self.random.choice([1, 1, 1, 2, 5, 30]))
        except zel.Error as error:
            return str(error)

    # What edits are given.
    def node(self):
        """A node or its path."""
        node = self.random.choice(self.nodes) if self.nodes else self.doc.root
        return node if self.random.randrange(2) else node.getFullPathName()

    def compound(self):
        node = self.random.choice(self.compounds)
        return self.random.choice([node, node.getAsCompound(), node.getFullPathName()])

    def children(self, compound):
        """Some nodes of the compound, or their names."""
        nodes = list(self.doc.compound(compound).nodes())
        chosen = self.random.sample(nodes, min(len(nodes), self.random.randrange(1, 4)))
        return [node if self.random.randrange(2) else node.getName() for node in chosen]

    def name(self):
        if self.random.randrange(3) == 0:
            return self.random.choice(NAMES)
        return f"n{self.random.randrange(100000)}"

    def ports(self, sends):
        """Ports that send or receive inside one compound."""
        compound = self.random.choice(self.compounds).getAsCompound()
        lists = [compound.innerInputs() if sends else compound.innerOutputs()]
        lists += [node.outputs() if sends else node.inputs() for node in compound.nodes()]
        return [port for ports in lists for port in ports]

    def port(self, sends, like=None):
        """A port or its path, mostly of the type of the other one."""
        ports = self.ports(sends)
        if like is not None and self.random.randrange(4):
            ports = [p for p in ports if p.getDataType().isSameType(like.getDataType())] or ports
        return self.random.choice(ports) if ports else None

    def given(self, port):
        if port is None:
            return "Top.none"
        return port if self.random.randrange(2) else port.getFullPathName()

    def place(self):
        return self.random.randrange(100) / 4, self.random.randrange(100) / 4

    # The edits.
    def editConnect(self):
        source = self.port(True)
        ends = [self.given(source), self.given(self.port(False, source))]
        self.random.shuffle(ends)
        self.doc.connect(*ends)

    def editDisconnect(self):
        source = self.port(True)
        targets = source.connectedTo() if source else ()
        target = self.random.choice(targets) if targets else self.port(False)
        self.doc.disconnect(self.given(source), self.given(target))

    def editDisconnectAll(self):
        self.doc.disconnectAll(self.given(self.port(self.random.randrange(2) == 0)))

    def editReroute(self):
        sends = self.random.randrange(2) == 0
        connected = [port for port in self.ports(sends) if port.isConnected()]
        first = self.random.choice(connected) if connected else self.port(sends)
        self.doc.reroute(
            self.given(first),
            self.given(self.port(sends, first)),
            inside=self.random.randrange(4) == 0,
        )

    def editInsert(self):
        sources = [port for port in self.ports(True) if port.isConnected()]
        source = self.random.choice(sources) if sources else self.port(True)
        targets = source.connectedTo() if source else ()
        target = self.random.choice(targets) if targets else self.port(False)
        node = self.node()
        if self.random.randrange(4):
            compound = target.getParentNode().getParentCompound() if target else None
            nodes = compound.nodes() if compound else []
            beside = [n for n in nodes if not any(map(isFed, n.inputs()))]
            node = self.random.choice(beside) if beside else node
        self.doc.insert(node, self.given(source), self.given(target))

    def editCreate(self):
        like = self.random.choice(self.nodes) if self.nodes else self.doc.root
        nodeType = self.random.choice([like.getNodeTypeName(), "nodegraph", "add", "nothing"])
        dataType = self.random.choice([None, None, "color3"])
        node = self.doc.create(nodeType, self.name(), self.compound(), type=dataType)
        assert node in list(self.doc.walk())

    def editRename(self):
        self.doc.rename(self.node(), self.name())

    def editDelete(self):
        nodes = [self.node() for _ in range(self.random.randrange(1, 3))]
        self.doc.delete(nodes, heal=self.random.randrange(3) > 0)

    def editCollapse(self):
        compound = self.compound()
        made = self.doc.collapse(compound, self.name(), self.children(compound))
        assert made.isCompound()

    def editExpand(self):
        for old, new in self.doc.expand(self.random.choice(self.compounds)):
            assert old != new
            self.doc.node(new)

    def editReparent(self):
        nodes = [
            self.doc.compound(compound).nodes()[child] if isinstance(child, str) else child
            for compound in [self.compound()]
            for child in self.children(compound)
        ]
        self.doc.reparent(self.compound(), nodes)

    def editMove(self):
        if self.random.randrange(2):
            self.doc.move(self.node(), *self.place())
        else:
            self.doc.move([(self.node(), *self.place()) for _ in range(2)])

    def editPaste(self):
        compound = self.compound()
        nodes = [node for node in self.doc.compound(compound).nodes()][:2]
        text = self.doc.copy(nodes)
        where = self.random.choice([{}, {"at": self.place()}, {"middle": self.place()}])
        inner = self.random.randrange(2) == 0
        made = self.doc.paste(self.compound(), text, inner=inner, **where)
        assert len(made) == len(nodes)

    def editDuplicate(self):
        made = self.doc.duplicate(self.node())
        assert len(made) == 1

    def editArrange(self):
        compound = self.compound()
        nodes = self.children(compound) if self.random.randrange(2) else []
        self.doc.arrange(compound, nodes or None)

    def editPortAdd(self):
        direction = self.random.choice(["input", "output", zel.PortInput, zel.PortOutput])
        dataType = self.random.choice(["float", "color3"])
        self.doc.portAdd(self.compound(), direction, self.name(), dataType)

    def innerPort(self):
        """What a port of a compound is named by: the compound and its name, or itself."""
        node = self.random.choice(self.compounds)
        compound = node.getAsCompound()
        ports = [*compound.innerInputs(), *compound.innerOutputs(), *node.inputs()]
        if not ports:
            return node, "none"
        port = self.random.choice(ports)
        return (port,) if self.random.randrange(2) else (node, port.getName())

    def editPortDelete(self):
        self.doc.portDelete(*self.innerPort())

    def editPortRename(self):
        self.doc.portRename(*self.innerPort(), self.name())

    def editPortMove(self):
        self.doc.portMove(*self.innerPort(), self.random.randrange(1, 4))

    def editPortType(self):
        self.doc.portType(*self.innerPort(), self.random.choice(["float", "color3", "none such"]))

    def editValue(self):
        port = self.port(False)
        value = self.random.choice(VALUES)
        self.doc.set(self.given(port), value)
        if isinstance(value, tuple) and port is not None and not port.isCompoundInternalPort():
            assert self.doc.value(port) == value

    def editAttribute(self):
        owner = self.random.choice([self.node(), self.given(self.port(False))])
        name = self.random.choice(["colorspace", "doc", "xpos", "version", "value"])
        self.doc.attribute(owner, name, self.random.choice(["1", 'a <b> & "c"', ""]))

    def editRebuild(self):
        self.doc.rebuild()

    # Frames.
    def backdrop(self):
        """A compound with a backdrop and the name of that."""
        for compound in self.random.sample(self.compounds, len(self.compounds)):
            names = [backdrop.name for backdrop in self.doc.backdropList(compound)]
            if names:
                return compound, self.random.choice(names)
        return self.random.choice(self.compounds), "none"

    def editBackdropAdd(self):
        compound = self.compound()
        frame = self.random.choice([None, (0, 1, 2, 3)])
        nodes = self.children(compound)
        self.doc.backdropAdd(compound, self.name(), nodes, frame=frame, text="a <text>")

    def editBackdropNodes(self):
        compound, name = self.backdrop()
        self.doc.backdropNodes(compound, name, self.children(compound))

    def editBackdropFrame(self):
        self.doc.backdropFrame(*self.backdrop(), *self.place(), 2, 3)

    def editBackdropMove(self):
        self.doc.backdropMove(*self.backdrop(), *self.place())

    def editBackdropText(self):
        self.doc.backdropText(*self.backdrop(), self.random.choice(["", "other"]))

    def editBackdropRename(self):
        self.doc.backdropRename(*self.backdrop(), self.name())

    def editBackdropDelete(self):
        self.doc.backdropDelete(*self.backdrop())
