"""Reports the nodes that lead nowhere, in any number of documents.

    unused_nodes.py textures
    unused_nodes.py textures --delete

A node is used when its data comes to an output of the graph that it is in, or, at the top of the
document, to a shader, a material, or a graph with outputs: definitions and other documents may use
that. What something beside the network names, such as a look, is used too.
"""

import pathlib
import sys

import zel
import zel.shading
from documents import goThrough, makeParser

RESULTS = ("material", "surfaceshader", "displacementshader", "volumeshader", "lightshader")


class TakeBack(Exception):
    """Ends an edit that was only a question."""


def isResult(node: zel.Node) -> bool:
    """At the top of a document: it is there for itself."""
    if node.isCompound():
        return len(node.outputs()) > 0
    types = [port.getDataType() for port in node.outputs()]
    return any(type is not None and type.getName() in RESULTS for type in types)


def usedNodes(doc: zel.shading.Document, graph: zel.Compound) -> list[zel.Node]:
    """The nodes inside the graph whose data comes to its end."""
    isTop = graph.getAsNode() is doc.root
    waiting = [node for node in graph.nodes() if isTop and isResult(node)]
    for port in graph.innerOutputs():
        waiting += [source.getParentNode() for source in port.connectedTo()]
    used: list[zel.Node] = []
    known = {graph.getAsNode()}
    while waiting:
        node = waiting.pop()
        if node in known:
            continue
        known.add(node)
        used.append(node)
        for port in node.inputs():
            waiting += [source.getParentNode() for source in port.connectedTo()]
    return used


def isNamedElsewhere(doc: zel.shading.Document, node: zel.Node) -> bool:
    """Something that the network does not show would miss the node."""
    before = set(doc.check())
    missed = False
    try:
        with doc.edit("What if"):
            doc.delete(node)
            missed = not set(doc.check()) <= before
            raise TakeBack
    except TakeBack:
        return missed
    except zel.Error:
        return True


def unusedNodes(doc: zel.shading.Document) -> list[zel.Node]:
    """Those that lead nowhere, in the order of a walk; what is inside of one goes with it."""
    unused = []
    graphs = [doc.root] + [node for node in doc.walk() if node.isCompound()]
    for graph in graphs:
        used = set(usedNodes(doc, graph.getAsCompound()))
        unused += [node for node in graph.getAsCompound().nodes() if node not in used]
    inUnused = {inner for node in unused if node.isCompound() for inner in doc.walk(node)}
    unused = [node for node in unused if node not in inUnused]
    return [node for node in unused if not isNamedElsewhere(doc, node)]


def main() -> int:
    parser = makeParser("Reports the nodes that lead nowhere.")
    parser.add_argument("paths", nargs="+", type=pathlib.Path, help="documents, or folders of them")
    parser.add_argument("--delete", action="store_true", help="delete them")
    arguments = parser.parse_args()

    def report(doc: zel.shading.Document) -> None:
        unused = unusedNodes(doc)
        for node in unused:
            print(f"{doc.path}: {node.getFullPathName()} {node.getNodeTypeName()}")
        if unused and arguments.delete:
            doc.delete(unused)

    return goThrough(arguments, arguments.paths, report)


if __name__ == "__main__":
    sys.exit(main())
