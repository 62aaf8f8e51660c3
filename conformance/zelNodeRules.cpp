// The nodes: how they come and go, who holds them, and what they share by assignment.
#include "zelConformanceScene.h"

#include <gtest/gtest.h>

namespace ZEL::Conformance {

namespace {

void nodeIsMadeAsAsked(Scene& scene)
{
    const std::string name = scene.name("alpha");
    const NodePtr node = scene.host.makeNode(*scene.document, name.c_str());
    if (!node) {
        ADD_FAILURE() << "makeNode made no node";
        return;
    }
    if (node->getName() != name)
        ADD_FAILURE() << "makeNode made a node called " << inQuotes(node->getName())
                      << " when asked for " << inQuotes(name);
    if (node->getRefCount() < 1)
        ADD_FAILURE() << "a node that makeNode made is held by nobody";
    if (node->getContainer() != scene.document.get())
        ADD_FAILURE() << "getContainer of a node that makeNode made is not the document";
    if (node->getParentCompound())
        ADD_FAILURE() << "a node that makeNode made lies in a compound: it is in no list yet";
    if (node->isCompound() != static_cast<bool>(node->getAsCompound()))
        ADD_FAILURE() << "isCompound of a node that makeNode made says otherwise than "
                         "getAsCompound";
    node->setNodeTypeName("kind");
    const char* const kind = node->getNodeTypeName();
    if (!kind || kind != std::string("kind"))
        ADD_FAILURE() << "getNodeTypeName is " << (kind ? inQuotes(kind) : "null")
                      << " after setNodeTypeName(\"kind\")";
}

int placesOf(NodeList& list, const NodePtr& node)
{
    int count = 0;
    for (Node* const entry : list)
        count += entry == node.get() ? 1 : 0;
    return count;
}

/// Adds a node and checks that the list agrees with the answer.
bool tryNode(Scene& scene, const NodePtr& node)
{
    NodeList& nodes = scene.top->nodes();
    const int size = nodes.size();
    const CompoundPtr before = node->getParentCompound();
    const bool isAdded = nodes.add(node);
    const std::string call = "nodes().add of a node " + inQuotes(node->getName());
    if (isAdded && (nodes.size() != size + 1 || nodes[size] != node || placesOf(nodes, node) != 1))
        ADD_FAILURE() << call << " answered true, but it does not stand once, at the end: the "
                      << "library adds it, onNodeAdd only answers";
    if (!isAdded && (nodes.size() != size || placesOf(nodes, node) != 0))
        ADD_FAILURE() << call << " was refused, but the list is another: onNodeAdd changes nothing "
                      << "when it answers false";
    if (node->getParentCompound() != (isAdded ? scene.top : before))
        ADD_FAILURE() << call << (isAdded ? " answered true" : " was refused")
                      << ", but getParentCompound of the node is wrong";
    return isAdded;
}

void nodesComeAndGo(Scene& scene)
{
    NodeList& nodes = scene.top->nodes();
    const std::string name = scene.name("alpha");
    const NodePtr node = scene.host.makeNode(*scene.document, name.c_str());
    const NodePtr namesake = scene.host.makeNode(*scene.document, name.c_str());
    if (!node || !namesake)
        return;
    if (!tryNode(scene, node)) {
        ADD_FAILURE() << "the host refused the first node " << inQuotes(name)
                      << ": let makeNode and nameOf give the kit what it accepts";
        return;
    }
    tryNode(scene, namesake); // Agreed to or refused, as the host likes.
    const int size = nodes.size();
    const bool isRemoved = nodes.remove(node);
    if (nodes.size() != size - (isRemoved ? 1 : 0) || placesOf(nodes, node) != (isRemoved ? 0 : 1))
        ADD_FAILURE() << "nodes().remove " << (isRemoved ? "answered true" : "was refused")
                      << ", but the list is another: onNodeRemove only answers";
}

void removedNodeIsForgotten(Scene& scene)
{
    const NodePtr a = scene.addNode(*scene.top, "alpha", "", "out1");
    const NodePtr b = scene.addNode(*scene.top, "beta", "in1", "out1");
    const NodePtr c = scene.addNode(*scene.top, "gamma", "in1", "");
    if (!a || !b || !c || !scene.connect(scene.output(*a, "out1"), scene.input(*b, "in1")) ||
        !scene.connect(scene.output(*b, "out1"), scene.input(*c, "in1")))
        return;
    const bool isRemoved = scene.top->nodes().remove(b);
    const PortPtr ends[][2] = {{scene.output(*a, "out1"), scene.input(*b, "in1")},
                               {scene.input(*c, "in1"), scene.output(*b, "out1")}};
    for (const auto& [far, near] : ends) {
        if (!isRemoved)
            continue;
        if (entriesOf(*far, *near) > 0) {
            ADD_FAILURE() << pathOf(far) << " still lists a port of the node " << b->getName()
                          << ", which was removed: as soon as that node dies this is a dead "
                             "pointer. An override of onThisNodeDeleted calls that of Node";
            far->removeFromConnectedList(near.get());
        }
        if (entriesOf(*near, *far) > 0)
            ADD_FAILURE() << "the node " << b->getName() << " was removed, and its port "
                          << near->getName() << " still lists " << pathOf(far)
                          << ", which has forgotten it: added again, it has a connection of one "
                             "end. Disconnect a node in onNodeRemove";
    }
}

/// A port that says whether it lives.
class LivePort : public Port {
public:
    static PortPtr make(const std::string& name, PortIOType ioType, int& alive)
    {
        return new LivePort(name, ioType, alive);
    }
    ~LivePort() override { --m_alive; }

private:
    LivePort(const std::string& name, PortIOType ioType, int& alive)
        : Port(name.c_str(), ioType),
          m_alive(alive)
    {
        ++m_alive;
    }

    int& m_alive;
};

bool addLivePort(Scene& scene, Node& node, PortIOType ioType, int& alive)
{
    PortPtr port = LivePort::make(scene.name(ioType == PortInput ? "in1" : "out1"), ioType, alive);
    port->setDataType(scene.type(0));
    return (ioType == PortInput ? node.inputs() : node.outputs()).add(port);
}

void nothingOutlivesTheDocument(Scene& original)
{
    static int alive = 0;
    alive = 0;
    int made = 0;
    {
        Scene scene(original.host);
        if (!scene.top)
            return;
        scene.host.edit(*scene.document, [&] {
            const NodePtr a = scene.addNode(*scene.top, "alpha", "", "");
            const NodePtr b = scene.addNode(*scene.top, "beta", "", "");
            const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
            const NodePtr inside = sub ? scene.addNode(*sub, "gamma", "", "") : nullptr;
            for (const NodePtr& node : {a, b, inside}) {
                if (!node || !addLivePort(scene, *node, PortInput, alive) ||
                    !addLivePort(scene, *node, PortOutput, alive))
                    return;
            }
            scene.output(*a, "out1")->addConnection(scene.input(*b, "in1"));
            scene.top->nodes().remove(b);
            scene.top->nodes().add(b);
            b->inputs().remove(scene.input(*b, "in1"));
            made = 5;
        });
    }
    if (made > 0 && alive > 0)
        ADD_FAILURE() << "a document has gone, but " << alive << " of its " << made
                      << " ports live on: somebody holds a reference too many to their nodes or to "
                         "them";
}

void nobodyReleasesWhatItDoesNotHold(Scene& scene)
{
    const NodePtr node = scene.host.makeNode(*scene.document, scene.name("alpha").c_str());
    if (!node)
        return;
    // Spare references, so that the node lives whatever the host does.
    constexpr int kSpare = 16;
    const int least = kSpare + 1;
    for (int i = 0; i < kSpare; ++i)
        node->addRef();
    NodeList& nodes = scene.top->nodes();
    const auto expectHeld = [&](int holders, const char* after) {
        if (node->getRefCount() < holders)
            ADD_FAILURE() << "after " << after << " a node has " << node->getRefCount() - kSpare
                          << " references, but " << holders - kSpare
                          << " holders: somebody released what it does not hold";
        while (node->getRefCount() < holders)
            node->addRef();
    };
    const bool isAdded = nodes.add(node);
    expectHeld(least + (isAdded ? 1 : 0), "nodes().add");
    const bool isRemoved = isAdded && nodes.remove(node);
    expectHeld(least + (isAdded && !isRemoved ? 1 : 0), "nodes().remove");
    for (int i = 0; i < kSpare; ++i)
        node->release();
}

void assignmentSharesTheLists(Scene& scene)
{
    const NodePtr a = scene.host.makeNode(*scene.document, scene.name("alpha").c_str());
    const NodePtr b = scene.host.makeNode(*scene.document, scene.name("beta").c_str());
    if (!a || !b)
        return;
    b->setNodeTypeName("kind");
    Node& target = *a;
    target = *b;
    if (&a->inputs() != &b->inputs() || &a->outputs() != &b->outputs() ||
        a->getNodeTypeName() != std::string("kind"))
        ADD_FAILURE() << "after an assignment through ZEL::Node the two nodes do not share their "
                         "port lists and type name: an override calls Node::operator=";
    const CompoundPtr c = scene.addCompound(*scene.top, "sub");
    const CompoundPtr d = scene.addCompound(*scene.top, "gamma");
    const NodePtr owner = c ? c->getAsNode() : nullptr;
    if (!owner || !d || !d->getAsNode())
        return;
    Compound& compound = *c;
    compound = *d;
    if (&c->nodes() != &d->nodes() || &c->innerInputs() != &d->innerInputs() ||
        c->getAsNode() != d->getAsNode())
        ADD_FAILURE() << "after an assignment through ZEL::Compound the two compounds do not share "
                         "their lists and owner: an override calls Compound::operator=";
    scene.top->nodes().remove(owner);
}

} // namespace

const std::vector<Rule>& nodeRules()
{
    static const std::vector<Rule> rules = {
        {"NodeIsMadeAsAsked", &nodeIsMadeAsAsked, true},
        {"NodesComeAndGo", &nodesComeAndGo, true},
        {"RemovedNodeIsForgotten", &removedNodeIsForgotten, true},
        {"NothingOutlivesTheDocument", &nothingOutlivesTheDocument, true},
        {"NobodyReleasesWhatItDoesNotHold", &nobodyReleasesWhatItDoesNotHold, true},
        {"AssignmentSharesTheLists", &assignmentSharesTheLists, true},
    };
    return rules;
}

} // namespace ZEL::Conformance
