"""What an installed package must do. Arguments: the prefix, and a folder of documents."""

import importlib.util
import pathlib
import sys

import zel

prefix, documents = map(pathlib.Path, sys.argv[1:])


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


def loaded_from_elsewhere():
    """Files of this project in the process that do not lie below the prefix."""
    names = ("libZEL", "_zel.", "_shading.", "libshadingDefinitions", "shadingPlugin")
    files = {pathlib.Path(line.split()[5]) for line in open("/proc/self/maps") if "/" in line}
    ours = {file for file in files if file.name.startswith(names)}
    assert any(file.name.startswith("_zel.") for file in ours)
    return sorted(str(file) for file in ours if prefix not in file.parents)


assert pathlib.Path(zel.__file__).is_relative_to(prefix), zel.__file__
build_a_network()
if importlib.util.find_spec("zel.shading"):
    import zel.shading
assert not loaded_from_elsewhere(), loaded_from_elsewhere()
