"""What an installed package must do. Arguments: the prefix, a folder of documents, and whether the
package has zel.shading, 1 or 0."""

import pathlib
import sys

import zel

prefix, documents = map(pathlib.Path, sys.argv[1:3])


class Document(zel.Container):
    def __init__(self):
        super().__init__()
        self.root = zel.Node(self, "Top")

    def getRootNode(self):
        return self.root


def build_a_network():
    document = Document()
    network = zel.Compound(document.root)
    image = zel.PortDataType("image")
    for name in ("Load", "Blur"):
        network.nodes().add(zel.Node(document, name))
    network.nodes()["Load"].outputs().addPort("Out", image)
    network.nodes()["Blur"].inputs().addPort("In", image)
    network.makeConnection(network.nodes()["Load"], "Out", network.nodes()["Blur"], "In")
    found = document.findPortFromPath("Top.Blur.In", zel.PortInput, zel.Container.eSearchNode)
    assert [port.getFullPathName() for port in found.connectedTo()] == ["Top.Load.Out"]


def edit_a_document(shading):
    document = shading.open(documents / "rusty_painted_gate.mtlx")
    before = document.tree()
    document.rename("Top.NG_gate.chipping", "chips")
    document.save("out.mtlx")
    again = shading.open("out.mtlx")
    assert again.node("Top.NG_gate.chips").getFullPathName() == "Top.NG_gate.chips"
    assert not again.messages
    document.undo()
    assert document.tree() == before
    document.draw("out.svg", depth=1)
    assert "<svg" in pathlib.Path("out.svg").read_text()


def files_of_the_project():
    """Those of this project's files that are loaded."""
    names = ("libZEL", "_zel.", "_shading.", "libshadingDefinitions", "shadingPlugin")
    files = {pathlib.Path(line.rstrip("\n").split(maxsplit=5)[5]) for line in open("/proc/self/maps") if "/" in line}
    return {file for file in files if file.name.startswith(names)}


assert pathlib.Path(zel.__file__).is_relative_to(prefix), zel.__file__
build_a_network()
wanted = {"libZEL", "_zel"}
if sys.argv[3] == "1":
    import zel.shading

    edit_a_document(zel.shading)
    wanted |= {"_shading", "libshadingDefinitions", "shadingPlugin"}
loaded = files_of_the_project()
assert {file.name.split(".")[0] for file in loaded} == wanted, loaded
assert all(file.is_relative_to(prefix) for file in loaded), loaded
