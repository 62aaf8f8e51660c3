"""What the tests of the package make networks with."""

import contextlib
import sys

import zel


@contextlib.contextmanager
def unraised():
    """Collects the texts of the errors that no call can raise."""
    texts, hook = [], sys.unraisablehook
    sys.unraisablehook = lambda error: texts.append(str(error.exc_value))
    try:
        yield texts
    finally:
        sys.unraisablehook = hook


class Document(zel.Container):
    """A document whose root is a compound node named Top."""

    def __init__(self):
        super().__init__()
        self.root = zel.Node(self, "Top")
        self.top = zel.Compound(self.root)

    def getRootNode(self):
        return self.root


def compound(name, kind=zel.Compound, owner=zel.Node):
    """A compound of a node of its own, which lives as long as the result is held."""
    node = owner(None, name)
    inside = kind(node)
    return node, inside


def node(parent=None, name="n", inputs="", outputs="", kind=zel.Node):
    """A node with those ports, in that compound."""
    made = kind(None, name)
    for port in inputs.split():
        made.inputs().addPort(port)
    for port in outputs.split():
        made.outputs().addPort(port)
    if parent is not None:
        assert parent.nodes().add(made)
    return made


def names(entries):
    return " ".join(entry.getName() for entry in entries)
