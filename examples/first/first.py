"""A host in Python alone: a plugin with a runtime, a document of classes of its own, an observer, and
edits that can be undone."""

import zel


def registerPlugin(registrar, info):
    """A plugin: one runtime, with a data type and two node definitions."""
    info.setUserName("First plugin")
    runtime = zel.Runtime()
    runtime.setName("Images")  # The host finds it by this name.
    runtime.createPortDataType("image")
    library = zel.NodeLibrary("Images")
    library.addNode("Load")
    library.addNode("Blur")
    library.sort()
    runtime.setNodeLibrary(library)
    registrar.registerRuntime(info, runtime)


def unregisterPlugin(info):
    print(info.getUserName(), "is unregistered")


class ImageNode(zel.Node):
    """Every node of the host. It answers the questions about its ports."""

    def onPortAddConnection(self, port, other):
        """A connection leads between two ports of one type."""
        return port.getDataType() is other.getDataType()

    def onPortListPortMove(self, list, fromIndex, toIndex):
        """The ports of a compound node have their mirrors inside, by place: no list is moved alone."""
        return not self.isCompound()


def createImageNode(document, definition):
    """A node of a definition. Every such node has one input and one output here."""
    node = ImageNode(document, definition.getName())
    node.setNodeTypeName(definition.getName())
    image = document.getRuntime().getPortDataType("image")
    node.inputs().addPort("In", image)
    node.outputs().addPort("Out", image)
    return node


class Network(zel.Compound):
    """The network inside a node."""

    def createNewCompound(self, name):
        """CreateCompoundCommand asks for it."""
        node = ImageNode(self.getAsNode().getContainer(), name)
        return Network(node) if self.nodes().add(node) else None

    def onPortAddConnection(self, port, other):
        return port.getDataType() is other.getDataType()

    def onPortListPortMove(self, list, fromIndex, toIndex):
        return False


class Document(zel.Container):
    """The document. Its nodes hold it, so it lives as long as they do."""

    def __init__(self, runtime):
        super().__init__()
        self.runtime = runtime
        self.root = ImageNode(self, "Top")
        self.nodes = Network(self.root).nodes()
        runtime.registerContainer(self)

    def getRootNode(self):
        return self.root

    def getRuntime(self):
        return self.runtime


class Printer(zel.HostEditor):
    """Prints what changes."""

    def zel_onConnectionChange(self, type, first, second):
        what = "connected" if type == zel.eCnxAdded else "disconnected"
        print(f"{what}: {first.getFullPathName()} > {second.getFullPathName()}")


def edit(runtime):
    document = Document(runtime)
    library = runtime.getNodeLibrary()
    for index in range(library.getNumberOfNodes()):
        document.nodes.add(createImageNode(document, library.getNodeAt(index)))
    print("nodes:", *(node.getName() for node in document.nodes))

    blur = document.findNodeFromPath("Top.Blur")
    source = document.findPortFromPath("Top.Load.Out", zel.PortOutput)
    target = blur.inputs()["In"]
    printer = Printer()  # A node does not hold its editors.
    blur.registerEditor(printer)

    command = zel.ConnectCommand()
    # The library notifies nobody by itself: the host does, after each change.
    if command.connect(document, source, target):
        blur.notifyConnectionChange(zel.eCnxAdded, source, target)
    if command.undo(document):
        blur.notifyConnectionChange(zel.eCnxRemoved, source, target)
    if command.redo(document):
        blur.notifyConnectionChange(zel.eCnxAdded, source, target)

    collapse = zel.CreateCompoundCommand()
    collapse.setParentCompound(document, "Top")
    collapse.setNewCompoundName("Soft")
    collapse.addNodeToMove("Blur")
    collapse.doit()
    print("collapsed:", blur.getFullPathName())
    print("feeds:", *(port.getFullPathName() for port in source.connectedTo()))


def main():
    zel.selfRegisterPlugin(registerPlugin, unregisterPlugin)
    host = zel.Host()
    host.initialize("first host")
    edit(host.getRuntimeByName("Images"))
    host.terminate()


if __name__ == "__main__":
    main()
