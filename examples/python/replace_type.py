"""Replaces the nodes of one type by nodes of another, in any number of documents.

    replace_type.py fractal3d noise3d textures --map lacunarity= --map amplitude=amplitude

The new nodes have the names, places, values and connections of the old ones. Inputs and outputs are
those of the same names; --map OLD=NEW says which others are meant, and --map OLD= gives one up. A
connection that would be lost is refused, and then the whole document stays as it was.
"""

import argparse
import pathlib
import sys

import zel
import zel.shading
from documents import Refused, goThrough, makeParser


class Replacement:
    """Replaces the nodes of one document."""

    def __init__(self, doc: zel.shading.Document, newType: str, names: dict[str, str]):
        self.doc = doc
        self.newType = newType
        self.names = names

    def replace(self, old: zel.Node) -> zel.Node:
        """Makes the new node in the place of the old one."""
        doc = self.doc
        compound = old.getParentCompound()
        new = doc.create(self.definitionFor(old), self.freeName(compound, old), compound)
        shown = {info.name: info for info in doc.ports(old) if info.isInput}
        for port in old.inputs():
            hidden = [] if port.isConnected() else shown[port.getName()].sources
            if hidden:
                reason = f"it comes from {hidden[0]}, which the network does not show"
                raise Refused(f"{port.getFullPathName()}: {reason}")
            self.moveInput(port, new)
        for port in old.outputs():
            if port.isConnected():
                doc.reroute(port, self.counterpart(port, new.outputs()))
        for name, value in doc.attribute(old).items():
            if name != "version" and doc.attribute(new).get(name) != value:
                doc.attribute(new, name, value)
        name = old.getName()
        doc.delete(old)
        doc.rename(new, name)
        return new

    def definitionFor(self, old: zel.Node) -> str:
        """The definition of the new type with the data types that the node has."""
        definitions = self.doc.definitions(self.newType)
        outputs = {port.getDataType().getName() for port in old.outputs()}
        fitting = [d for d in definitions if outputs <= set(d.outputs.values())]
        if definitions and not fitting:
            raise Refused(f"no definition of {self.newType} makes {', '.join(sorted(outputs))}")

        def matches(definition: zel.shading.DefinitionInfo) -> int:
            count = 0
            for port in old.inputs():
                name = self.names.get(port.getName(), port.getName())
                count += definition.inputs.get(name) == port.getDataType().getName()
            return count

        # Without one, it is the name of a definition, or create says what is wrong.
        return max(fitting, key=matches).name if fitting else self.newType

    def freeName(self, compound: zel.Compound, node: zel.Node) -> str:
        name = f"{node.getName()}_replaced"
        while name in compound.nodes():
            name += "_"
        return name

    def counterpart(self, port: zel.Port, ports: zel.PortList) -> zel.Port:
        """The port of the new node that stands for that one."""
        found = ports.get(self.names.get(port.getName(), port.getName()))
        if found is None:
            reason = f"{self.newType} has no {port.getName()}, which is connected; see --map"
            raise Refused(f"{port.getFullPathName()}: {reason}")
        return found

    def moveInput(self, port: zel.Port, new: zel.Node) -> None:
        """Gives the new node the source or the value of the input."""
        name = self.names.get(port.getName(), port.getName())
        if not name:
            return
        if port.isConnected():
            target = self.counterpart(port, new.inputs())
            self.doc.connect(port.connectedTo()[0], target)
            return
        target = new.inputs().get(name)
        if target is None or not target.getDataType().isSameType(port.getDataType()):
            return
        value = self.doc.value(port)
        if value != self.doc.value(target):
            self.doc.set(target, value)


def readNames(words: list[str]) -> dict[str, str]:
    names = {}
    for word in words:
        old, equals, new = word.partition("=")
        if not old or not equals:
            raise argparse.ArgumentTypeError(f"{word}: not OLD=NEW")
        names[old] = new
    return names


def main() -> int:
    parser = makeParser("Replaces the nodes of one type by nodes of another.")
    parser.add_argument("old", help="the type of the nodes that go")
    parser.add_argument("new", help="a type, or the name of a definition")
    parser.add_argument("paths", nargs="+", type=pathlib.Path, help="documents, or folders of them")
    parser.add_argument(
        "--map", action="append", default=[], metavar="OLD=NEW", help="the names of ports"
    )
    arguments = parser.parse_args()
    try:
        names = readNames(arguments.map)
    except argparse.ArgumentTypeError as error:
        parser.error(str(error))

    def replaceAll(doc: zel.shading.Document) -> None:
        replacement = Replacement(doc, arguments.new, names)
        for node in doc.walk():
            if node.getNodeTypeName() == arguments.old and not node.isCompound():
                new = replacement.replace(node)
                print(f"{doc.path}: {new.getFullPathName()}: {arguments.old} -> {arguments.new}")

    return goThrough(arguments, arguments.paths, replaceAll)


if __name__ == "__main__":
    sys.exit(main())
