// The document: Container's operations, and the paths that all commands go by.
#include "zelConformanceScene.h"
#include "zelSurvives.h"

#include <gtest/gtest.h>

#include <fstream>

namespace ZEL::Conformance {

namespace {

void rootNodeStays(Scene& scene)
{
    if (!scene.root) {
        ADD_FAILURE() << "getRootNode is empty: no path leads anywhere";
        return;
    }
    if (scene.document->getRootNode() != scene.root)
        ADD_FAILURE() << "getRootNode gave another node at the second call: paths lead into a "
                         "network that is gone";
    const std::string name = scene.root->getName();
    if (name.empty() || name.find('.') != std::string::npos)
        ADD_FAILURE() << "the root node is called " << inQuotes(name) << ": no path reaches it";
    if (scene.root->getParentCompound())
        ADD_FAILURE() << "the root node lies in a compound: it is the top of the document";
    if (scene.root->getContainer() != scene.document.get())
        ADD_FAILURE() << "getContainer of the root node is not the document";
    const std::unique_ptr<Container> other = scene.host.makeDocument();
    if (other && other->getRootNode() == scene.root)
        ADD_FAILURE() << "two documents have the same root node";
}

void rootNodeOwnsACompound(Scene& scene)
{
    if (!scene.root)
        return;
    if (!scene.top)
        ADD_FAILURE() << "the root node owns no compound: nodes have no place";
    else if (scene.top->getAsNode() != scene.root)
        ADD_FAILURE() << "getAsNode of the root node's compound is another node";
    if (scene.root->isCompound() != static_cast<bool>(scene.top))
        ADD_FAILURE() << "isCompound of the root node says otherwise than getAsCompound";
}

void appendName(Node* node, void* names)
{
    std::string& path = *static_cast<std::string*>(names);
    path += (path.empty() ? "" : ".") + std::string(node->getName());
}

void expectPortReachable(Scene& scene, Node& node, const PortPtr& port)
{
    const std::string path = port->getFullPathName().getName();
    const std::string expected = pathOf(node) + "." + port->getName();
    if (path != expected)
        ADD_FAILURE() << "the path of a port is " << inQuotes(path) << ", of its node and its name "
                      << inQuotes(expected)
                      << ": onGetParentFullPathName answers the full path of the node";
    const PortIOType ioType = port->getPortIOType();
    if (!port->isCompoundInternalPort() &&
        scene.document->findPortFromPath(path.c_str(), ioType, Container::eSearchNode) != port)
        ADD_FAILURE() << "findPortFromPath(" << inQuotes(path)
                      << ") does not find the port that has this path";
}

void expectReachable(Scene& scene, Node& node)
{
    std::string names;
    node.recurse_parent_first(&appendName, &names);
    if (pathOf(node) != names)
        ADD_FAILURE() << "getFullPathName of a node is " << inQuotes(pathOf(node))
                      << ", the names from the root node down are " << inQuotes(names);
    if (scene.document->findNodeFromPath(pathOf(node).c_str()) != &node)
        ADD_FAILURE() << "findNodeFromPath(" << inQuotes(pathOf(node))
                      << ") does not find the node that has this path";
    for (PortList* const list : {&node.inputs(), &node.outputs()}) {
        for (Port* const port : *list)
            expectPortReachable(scene, node, port);
    }
}

void pathsLeadToTheirObjects(Scene& scene)
{
    expectReachable(scene, *scene.root);
    const NodePtr plain = scene.addNode(*scene.top, "alpha", "in1 in2", "out1");
    if (plain)
        expectReachable(scene, *plain);
    const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    if (!sub || !sub->getAsNode())
        return;
    const NodePtr inside = scene.addNode(*sub, "beta", "in1", "out1");
    if (inside)
        expectReachable(scene, *inside);
    scene.addCompoundPort(*sub, PortInput, "in2");
    expectReachable(scene, *sub->getAsNode());
    for (Port* const port : sub->innerInputs())
        expectPortReachable(scene, *sub->getAsNode(), port);
    if (testing::Test::HasFailure())
        return;
    // A path that was kept is another now, also that of a node further down.
    sub->getAsNode()->setName(scene.name("gamma").c_str());
    expectReachable(scene, *sub->getAsNode());
    if (inside)
        expectReachable(scene, *inside);
}

void runtimeKeepsItsDataTypes(Scene& scene)
{
    Runtime* const runtime = scene.document->getRuntime();
    if (!runtime)
        GTEST_SKIP() << "getRuntime is null: ModifyCompoundPortCommand cannot make ports here";
    if (scene.document->getRuntime() != runtime)
        ADD_FAILURE() << "getRuntime gave another runtime at the second call: its data types are "
                         "others, too";
    const char* const name = scene.host.dataTypeName(0);
    const TypePtr type = scene.type(0);
    if (!type || std::string(type->getName()) != name)
        ADD_FAILURE() << "makeDataType made " << (type ? inQuotes(type->getName()) : "nothing")
                      << " when asked for " << inQuotes(name);
    const TypePtr made = runtime->createPortDataType(name);
    if (!made || made != runtime->getPortDataType(name))
        ADD_FAILURE() << "getPortDataType(" << inQuotes(name)
                      << ") of the runtime does not find what createPortDataType made";
    else if (type && !(*type == *made))
        ADD_FAILURE() << "the host's ports have another data type " << inQuotes(name)
                      << " than the runtime's: commands make ports that do not fit";
}

void runtimeForgetsAClosedDocument(Scene& scene)
{
    Runtime* const runtime = scene.document->getRuntime();
    std::unique_ptr<Container> closed = scene.host.makeDocument();
    if (!runtime || !closed || closed->getRuntime() != runtime)
        GTEST_SKIP() << "two documents have no runtime in common";
    closed = nullptr;
    if (!survives([runtime] { runtime->forceRebuildCompounds(); }))
        ADD_FAILURE()
            << "forceRebuildCompounds of the runtime ends the program once a document was "
               "closed: a document unregisters from its runtime in its destructor";
}

void rebuildKeepsTheNetwork(Scene& scene)
{
    const NodePtr a = scene.addNode(*scene.top, "alpha", "", "out1");
    const NodePtr b = scene.addNode(*scene.top, "beta", "in1", "");
    if (!a || !b || !scene.connect(scene.output(*a, "out1"), scene.input(*b, "in1")))
        return;
    const std::string before = scene.text();
    scene.document->rebuildCompounds();
    if (scene.document->getRootNode() != scene.root)
        ADD_FAILURE() << "rebuildCompounds replaced the root node";
    else if (scene.text() != before)
        ADD_FAILURE() << "rebuildCompounds changed the network although no definition changed\n"
                      << before << "became\n"
                      << scene.text();
}

void uuidNamesTheDocumentWhileItLives(Scene& scene)
{
    std::unique_ptr<Container> document = scene.host.makeDocument();
    const std::string uuid = scene.host.uuidOf(*document);
    if (uuid.empty())
        GTEST_SKIP() << "uuidOf is empty: the host registers no document";
    if (uuid == scene.host.uuidOf(*scene.document))
        ADD_FAILURE() << "two documents have the same UUID " << inQuotes(uuid);
    if (Container::getFromUUID(uuid.c_str()) != document.get())
        ADD_FAILURE() << "getFromUUID(" << inQuotes(uuid) << ") does not give the document";
    document = nullptr;
    if (Container::getFromUUID(uuid.c_str())) {
        ADD_FAILURE() << "getFromUUID gives a document that is gone: register null under its UUID "
                         "in its destructor";
        Container::registerWithUUID(uuid.c_str(), nullptr);
    }
}

void saveAsLeavesTheNetworkAlone(Scene& scene)
{
    const std::string path = scene.host.savePath();
    if (path.empty())
        GTEST_SKIP() << "savePath is empty: saveAs is not tried";
    scene.addNode(*scene.top, "alpha", "in1", "out1");
    const std::string before = scene.text();
    const bool isSaved = scene.top->saveAs(path.c_str());
    if (scene.text() != before)
        ADD_FAILURE() << "saveAs changed the network\n" << before << "became\n" << scene.text();
    if (isSaved && !std::ifstream(path))
        ADD_FAILURE() << "saveAs answered true, but there is no file " << path;
}

} // namespace

const std::vector<Rule>& documentRules()
{
    static const std::vector<Rule> rules = {
        {"RootNodeStays", &rootNodeStays, false},
        {"RootNodeOwnsACompound", &rootNodeOwnsACompound, false},
        {"PathsLeadToTheirObjects", &pathsLeadToTheirObjects, true},
        {"RuntimeKeepsItsDataTypes", &runtimeKeepsItsDataTypes, false},
        {"RuntimeForgetsAClosedDocument", &runtimeForgetsAClosedDocument, false},
        {"RebuildKeepsTheNetwork", &rebuildKeepsTheNetwork, true},
        {"UuidNamesTheDocumentWhileItLives", &uuidNamesTheDocumentWhileItLives, false},
        {"SaveAsLeavesTheNetworkAlone", &saveAsLeavesTheNetworkAlone, true},
    };
    return rules;
}

} // namespace ZEL::Conformance
