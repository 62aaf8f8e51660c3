// A host as its author built it against a stored release. It loads the plugin named by its
// argument, builds a network, edits it, and prints everything that the library asks and answers.

#include "document.h"
#include "plugin.h"

#include <cstring>

namespace {

void printNetwork(ZEL::Compound& compound)
{
    for (ZEL::Node* node : compound.nodes()) {
        std::printf("  %s (%s)\n", node->getFullPathName().getName(), node->getNodeTypeName());
        for (ZEL::Port* port : node->outputs()) {
            for (ZEL::Port* other : port->connectedTo())
                std::printf("    %s > %s\n", port->getName(), other->getFullPathName().getName());
        }
    }
}

void useValues()
{
    ZEL::PropertyList list;
    list.addStringPair("colour", "red");
    list.addChildList("more")->addStringPair("size", "3");
    const ZEL::PropertyList copy(list);
    ZEL::PropertyList other = copy;
    list.removeAll();
    std::printf("pairs %d, lists %d, %s\n", list.getNumberOfPairs(), other.getNumberOfChildList(),
                other.getChildList("more")->getStringPairValue("size"));
    ZEL::StatusStr status("%s of %s", "one", "two");
    std::printf("status %d %s\n", !status, status.getErrorString());
    ZEL::Namable name("N");
    name.appendString("ame");
    std::printf("name %s %d\n", name.getName(), name == ZEL::Namable("Name"));
}

void useRuntime(ZEL::Runtime* runtime)
{
    const AddRefWrapper<ZEL::NodeLibrary> basic = runtime->findLibrary("basic");
    std::printf("library %s:", basic ? basic->getName() : "none");
    for (int i = 0; basic && i < basic->getNumberOfNodes(); ++i)
        std::printf(" %s", basic->getNodeAt(i)->getName());
    std::puts("");
    const AddRefWrapper<ZEL::PortDataType> type = runtime->createPortDataType("colour");
    std::printf("types %d, again %d\n", runtime->getNumberOfPortDataTypes(),
                type == runtime->getPortDataType("colour") && type == runtime->getPortDataType(0));
}

void connectAndUndo(Document& document)
{
    AddRefWrapper<ZEL::Port> out =
        document.findPortFromPath("Top.A.Out", ZEL::PortOutput, ZEL::Container::eSearchNode);
    AddRefWrapper<ZEL::Port> in =
        document.findPortFromPath("Top.P.In", ZEL::PortInput, ZEL::Container::eSearchNodeAndInner);
    ZEL::ConnectCommand command;
    std::printf("connect %d\n", command.connect(&document, out, in));
    std::printf("default %s\n", in->getPortDefaultValue());
    std::printf("undo %d\n", command.undo(&document));
    std::printf("redo %d\n", command.redo(&document));
    AddRefWrapper<ZEL::Port> plugged = in->getParentNode()->outputs()["Out"];
    AddRefWrapper<ZEL::Port> end = document.findNodeFromPath("Top.B")->inputs()["In"];
    end->setDataType(ZEL::PortDataType::createNew("timbre"));
    std::printf("plugin's type %d\n", ZEL::ConnectCommand().connect(&document, plugged, end));
}

void collapseAndEdit(Document& document)
{
    ZEL::CreateCompoundCommand collapse;
    collapse.setParentCompound(&document, "Top");
    collapse.setNewCompoundName("Box");
    collapse.addNodeToMove("P");
    std::printf("collapse %d ", collapse.doit());
    std::printf("%s\n", collapse.getCreatedCompoundPath());

    const AddRefWrapper<ZEL::Node> box = document.findNodeFromPath("Top.Box");
    ZEL::ModifyCompoundPortCommand ports;
    ports.setParentCompound(&document, "Top.Box");
    ports.createPort(ZEL::PortInput, "Extra", "colour");
    ports.renamePort("Out", "Result");
    std::printf("modify %d\n", ports.doit());
    printNetwork(*document.getRootNode()->getAsCompound());
    printNetwork(*box->getAsCompound());
    std::printf("move %d\n", box->inputs().movePort(1, 0));
    ports.undo(&document);
    std::printf("box %d %s %s\n", box->inputs().size(), box->getAsCompound()->getName(),
                box->getAsCompound()->getSpecializedCompoundTypeName());
}

void edit(ZEL::Runtime* runtime, decltype(&createPluginNode) create)
{
    Document document(runtime);
    ZEL::Container::registerWithUUID("document", &document);
    ZEL::Container::getFromUUID("document")->hostOperation();
    runtime->registerContainer(&document);
    runtime->forceRebuildCompounds();

    const AddRefWrapper<ZEL::Compound> network = document.getRootNode()->getAsCompound();
    network->createNodeFromPreset("A");
    network->createNodeFromPreset("B");
    AddRefWrapper<ZEL::Node> plugged;
    create(&document, "P", &plugged);
    network->nodes().add(plugged);
    plugged = nullptr;
    connectAndUndo(document);
    printNetwork(*network);
    collapseAndEdit(document);

    Editor editor;
    NodeArg root = document.getRootNode();
    root->registerEditor(&editor);
    const AddRefWrapper<ZEL::Node> b = network->nodes()["B"];
    root->notifyConnectionChange(ZEL::eCnxAdded, b->inputs()[0], b->outputs()[0]);
    root->notifyCompoundConnectionChange(ZEL::eCnxRemoved, b->inputs()[0], b->outputs()[0]);
    root->notifyNodeChange(ZEL::eNodeChanged, network, b);
    root->notifyCompoundPortChange(ZEL::eCompoundPortMoved, b->inputs()[0]);
    dynamic_cast<HostNode&>(*b).mark();
    std::printf("path %s\n", b->inputs()[0]->getFullPathName().getName());
    const ZEL::StatusStr status = network->makeConnection(b, "Nothing", b, "In");
    std::printf("status %d %s\n", !status, status.getErrorString());
    std::printf("linked %d, saved %d\n", network->createLinkedPort("L", "x", nullptr),
                network->saveAs("x"));
    b->inputs()[0]->setPortDefaultValue("5");
    b->inputs()[0]->setName("Renamed");
    std::printf("removed %d\n", network->removeNode("B") == b);
    runtime->unregisterContainer(&document);
    ZEL::Container::registerWithUUID("document", nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    void* const handle = argc == 2 ? loadModule(argv[1]) : nullptr;
    if (!handle) {
        std::fprintf(stderr, "host: no plugin: %s\n", argc == 2 ? whyNot().c_str() : "none given");
        return 2;
    }
    ZEL::Host host;
    host.initialize("host");
    std::printf("runtimes %d\n", host.getNumberOfRuntimes());
    ZEL::Runtime* runtime = host.getRuntimeByName("tones");
    useValues();
    useRuntime(runtime);
    edit(runtime, functionOf<decltype(createPluginNode)>(handle, "createPluginNode"));
    host.terminate();
    return 0;
}
