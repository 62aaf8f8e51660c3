"""Thousands of random edits, each done to a network and to a model of it written in Python."""

import gc
import os
import random

import pytest
import zel

# Under a collection at every allocation each step costs much.
STEPS = 500 if os.environ.get("ZEL_GC_EVERY") else 4000


class Refusing:
    """Answers every question by the dice of the test, and remembers what it refused."""

    refuse = staticmethod(lambda: False)

    def answer(self, *args):
        return not self.refuse()

    onPortAddConnection = onPortRemoveConnection = onPortListPortAdded = answer
    onPortListPortRemoved = onPortSetName = onPortListPortMove = onNodeAdd = onNodeRemove = answer


class RefusingNode(Refusing, zel.Node):
    pass


class RefusingCompound(Refusing, zel.Compound):
    pass


class Model:
    """Lists by the object that has them, and the connections, as plain Python."""

    def __init__(self):
        self.nodes = {}  # Compound: its nodes in order.
        self.ports = {}  # Node: inputs, outputs.
        self.names = {}  # Port or node: its name.
        self.links = []  # Pairs of ports, output first.

    def inside(self, node):
        """The node and all below it."""
        yield node
        compound = node.getAsCompound()
        for each in self.nodes.get(compound, ()):
            yield from self.inside(each)

    def cut(self, keep):
        self.links = [link for link in self.links if keep(*link)]

    def remove_node(self, compound, node):
        """Own connections go, and those from inside to outside."""
        self.nodes[compound].remove(node)
        mine = set().union(*self.ports[node])
        below = {port for each in self.inside(node) for ports in self.ports[each] for port in ports}
        self.cut(lambda a, b: not ({a, b} & mine) and (a in below) == (b in below))

    def check(self, top):
        for compound, nodes in self.nodes.items():
            assert list(compound.nodes()) == nodes
            assert all(node.getParentCompound() is compound for node in nodes)
            for node in nodes[:3] + nodes[-1:]:
                name = node.getName()
                assert compound.nodes()[name] is next(n for n in nodes if self.names[n] == name)
        linked = {}
        for a, b in self.links:
            linked.setdefault(a, []).append(b)
            linked.setdefault(b, []).append(a)
        for node, (inputs, outputs) in self.ports.items():
            assert node.getName() == self.names[node]
            assert list(node.inputs()) == inputs and list(node.outputs()) == outputs
            for port in (*inputs, *outputs):
                assert port.getParentNode() is node and port.getName() == self.names[port]
                assert list(port.connectedTo()) == linked.get(port, [])


class Editing:
    """The edits: each picks at random, acts on both, and says whether the network agreed."""

    def __init__(self, seed):
        self.dice, self.model = random.Random(seed), Model()
        self.refusal = 0.0
        Refusing.refuse = staticmethod(self.refuses)
        self.refused = False
        self.top_node = self.new_node("Top")
        self.top = self.new_compound(self.top_node)
        self.loose = []  # Nodes in no list.

    def refuses(self):
        refused = self.dice.random() < self.refusal
        self.refused = self.refused or refused
        return refused

    def new_node(self, name):
        node = self.dice.choice([RefusingNode, zel.Node])(None, name)
        self.model.ports[node], self.model.names[node] = ([], []), name
        return node

    def new_compound(self, node):
        compound = self.dice.choice([RefusingCompound, zel.Compound])(node)
        self.model.nodes[compound] = []
        return compound

    def any_compound(self):
        return self.top if self.dice.random() < 0.3 else self.dice.choice(list(self.model.nodes))

    def any_node(self):
        return self.dice.choice(list(self.model.ports))

    def any_list(self):
        node, which = self.any_node(), self.dice.randrange(2)
        return (node.inputs(), node.outputs())[which], self.model.ports[node][which]

    # The edits.

    def add_node(self):
        compound = self.any_compound()
        if self.loose and self.dice.random() < 0.5:
            node = self.loose.pop()
        else:
            node = self.new_node(f"n{self.dice.randrange(60)}")
        owner = compound.getAsNode()
        if owner in self.model.inside(node):
            with pytest.raises(ValueError):
                compound.nodes().add(node)
        elif compound.nodes().add(node):
            self.model.nodes[compound].append(node)
            return
        self.loose.append(node)

    def add_compound(self):
        node = self.any_node()
        if not node.isCompound():
            self.new_compound(node)

    def remove_node(self):
        compound = self.any_compound()
        if not self.model.nodes[compound]:
            return
        node = self.dice.choice(self.model.nodes[compound])
        self.refusing_disconnects(lambda: compound.nodes().remove(node),
                                  lambda: self.model.remove_node(compound, node))
        if node.getParentCompound() is None:
            self.loose.append(node)

    def refusing_disconnects(self, act, mirror):
        """A removal that disconnects first: refused midway, some connections have gone."""
        if act():
            mirror()
        else:
            self.model.cut(lambda a, b: b in a.connectedTo())

    def move_node(self):
        self.remove_node()
        if self.loose:
            self.add_node()

    def drop_node(self):
        if not self.loose:
            return
        node = self.loose.pop(self.dice.randrange(len(self.loose)))
        gone = set(self.model.inside(node))
        ports = {port for each in gone for ports in self.model.ports[each] for port in ports}
        self.model.cut(lambda a, b: not {a, b} & ports)
        for each in gone:
            self.model.nodes.pop(each.getAsCompound(), None)
            del self.model.ports[each], self.model.names[each]
        for port in ports:
            del self.model.names[port]

    def add_port(self):
        ports, mirror = self.any_list()
        name = f"p{self.dice.randrange(50)}"
        if self.dice.random() < 0.5:
            port = ports.addPort(name)
        else:
            port = zel.Port(name, zel.PortOutput if ports.getParent().outputs() is ports
                            else zel.PortInput)
            ports.add(port)
        if port.getParent() is not None:
            mirror.append(port)
            self.model.names[port] = name

    def remove_port(self):
        ports, mirror = self.any_list()
        if not mirror:
            return
        port = self.dice.choice(mirror)

        def gone():
            mirror.remove(port)
            del self.model.names[port]
            self.model.cut(lambda a, b: port not in (a, b))

        self.refusing_disconnects(lambda: ports.remove(port), gone)

    def move_port(self):
        ports, mirror = self.any_list()
        if len(mirror) < 2:
            return
        after, before = sorted(self.dice.sample(range(len(mirror)), 2))
        if ports.movePort(before, after):
            mirror.insert(after, mirror.pop(before))

    def connect(self):
        outputs, inputs = self.model.ports[self.any_node()][1], self.model.ports[self.any_node()][0]
        if not outputs or not inputs:
            return
        a, b = self.dice.choice(outputs), self.dice.choice(inputs)
        from_, to = self.dice.choice([(a, b), (b, a)])
        if (a, b) not in self.model.links and from_.addConnection(to):
            self.model.links.append((a, b))

    def disconnect(self):
        if self.model.links:
            a, b = self.dice.choice(self.model.links)
            if self.dice.choice([a.removeConnection, lambda other: other.removeConnection(a)])(b):
                self.model.links.remove((a, b))

    def rename(self):
        node = self.any_node()
        name = f"n{self.dice.randrange(60)}"
        node.setName(name)
        self.model.names[node] = name
        ports, mirror = self.any_list()
        if mirror:
            port, name = self.dice.choice(mirror), f"p{self.dice.randrange(50)}"
            port.setName(name)
            if port.getName() == name:
                self.model.names[port] = name


EDITS = [("add_node", 9), ("add_compound", 1), ("remove_node", 2), ("move_node", 4),
         ("drop_node", 3), ("add_port", 9),
         ("remove_port", 3), ("move_port", 2), ("connect", 10), ("disconnect", 3), ("rename", 4)]


@pytest.mark.parametrize("seed", range(4))
def test_random_edits(seed):
    editing = Editing(seed)
    names, weights = zip(*EDITS)
    for step in range(STEPS):
        editing.refusal = 0.15 if seed % 2 else 0.0
        editing.refused = False
        try:
            getattr(editing, editing.dice.choices(names, weights)[0])()
        finally:
            editing.refusal = 0.0
        if step % 50 == 0 or editing.refused and step % 5 == 0:
            editing.model.check(editing.top)
        if step % 500 == 0:
            gc.collect()
    editing.model.check(editing.top)
    # Lists grow long enough to be indexed.
    assert STEPS < 1000 or max(len(nodes) for nodes in editing.model.nodes.values()) >= 40
    del Refusing.refuse
