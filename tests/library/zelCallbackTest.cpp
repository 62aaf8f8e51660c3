#include "zelRuntime.h"
#include "zelTestEditing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace ZEL {
namespace {

// What docs/callbacks.md allows inside a callback, done, each with its outcome.

/// The outputs First and Out of the node A, or the inner inputs of Top with these names; Out is
/// connected to B.In, and C.X waits for a connection. Out is held by its list alone.
struct Asked {
    explicit Asked(bool inner) : net(inner ? "First Out" : ""), mark(inner ? " {< " : " > ")
    {
        const AddRefWrapper<Node> a = net.addNode("Top", "A", "", inner ? "" : "First Out");
        net.addNode("Top", "B", "In");
        net.addNode("Top", "C", "X");
        outputs = inner ? &net.compound()->innerInputs() : &a->outputs();
        out = (*outputs)["Out"].get();
        out->addConnection(net.port("Top.B.In"));
        net.questions.take();
    }

    /// The ports in the list with their connections, without "Top.".
    std::string outputsText()
    {
        const std::string whole = wholeText(net);
        const std::size_t begin = whole.find(mark);
        std::string ports = begin == std::string::npos ? "" : whole.substr(begin + mark.size());
        ports = ports.substr(0, ports.find('\n'));
        for (std::size_t i = ports.find("Top."); i != std::string::npos; i = ports.find("Top."))
            ports.erase(i, 4);
        return ports;
    }

    TestNetwork net;
    std::string mark; ///< Stands before the ports in the whole text.
    PortList* outputs;
    Port* out; ///< Not held: it dies when it is taken out of its list.
};

struct Change {
    const char* name;
    std::function<void(Asked&)> run;
};

const Change kQuestionsOfPorts[] = {
    {"connect", [](Asked& t) { t.out->addConnection(t.net.port("Top.C.X")); }},
    {"disconnect", [](Asked& t) { t.out->removeConnection(t.net.port("Top.B.In")); }},
    {"type", [](Asked& t) { t.out->setDataType(PortDataType::createNew("Color")); }},
    {"value", [](Asked& t) { t.out->setPortDefaultValue("1"); }},
    {"name", [](Asked& t) { t.out->setName("New"); }},
    {"add", [](Asked& t) { t.outputs->addPort("Late", PortDataType::createNew("Float")); }},
    {"remove", [](Asked& t) { t.outputs->remove(t.out); }},
    {"move", [](Asked& t) { t.outputs->movePort(1, 0); }},
};

const Change kChangesInside[] = {
    {"remove it", [](Asked& t) { t.out->removeAllConnections(), t.outputs->remove(t.out); }},
    {"remove the other", [](Asked& t) { t.outputs->remove((*t.outputs)["First"]); }},
    {"add a port", [](Asked& t) { t.outputs->addPort("More", PortDataType::createNew("Float")); }},
    {"connect", [](Asked& t) { t.out->addConnection(t.net.port("Top.C.X")); }},
    {"disconnect", [](Asked& t) { t.out->removeAllConnections(); }},
};

TEST(Callback, PortsAndConnectionsMayChangeInEachQuestion)
{
    const char* const outcomes[][5] = {
        // The list afterwards, whoever is asked: in the order of the table of changes.
        {"First", "Out=B.In,C.X", "First Out=B.In,C.X More", "First Out=B.In,C.X,C.X",
         "First Out=C.X"},
        {"First", "Out", "First Out More", "First Out=C.X", "First Out"},
        {"First", "Out:Color=B.In", "First Out:Color=B.In More", "First Out:Color=B.In,C.X",
         "First Out:Color"},
        {"First", "Out=B.In", "First Out=B.In More", "First Out=B.In,C.X", "First Out"},
        {"First", "New=B.In", "First New=B.In More", "First New=B.In,C.X", "First New"},
        {"First Late", "Out=B.In Late", "First Out=B.In More Late", "First Out=B.In,C.X Late",
         "First Out Late"},
        {"First", "", "First More", "First", "First"},
        {"First", "Out=B.In", "Out=B.In First More", "Out=B.In,C.X First", "Out First"},
    };
    const int alive = Live::count;
    const std::size_t changes = std::size(kChangesInside);
    for (std::size_t i = 0; i < std::size(kQuestionsOfPorts) * changes * 2; ++i) {
        const Change& question = kQuestionsOfPorts[i / 2 / changes];
        const Change& change = kChangesInside[i / 2 % changes];
        SCOPED_TRACE(question.name + std::string(i % 2 ? " inner, " : ", ") + change.name);
        Asked asked(i % 2 != 0);
        asked.net.questions.during = [&] {
            change.run(asked);
            if (question.name == std::string("remove"))
                asked.out->removeAllConnections(); // As a host does: the port goes.
        };
        printed([&] { question.run(asked); });
        EXPECT_EQ(outcomes[i / 2 / changes][i / 2 % changes], asked.outputsText());
    }
    EXPECT_EQ(alive, Live::count);
}

/// A node that answers a name with one of its own, as hosts do to keep names unique.
struct Renaming : Node {
    using Node::Node;
    using Node::operator=;
    bool onPortSetName(PortArg port, const char* name) override
    {
        if (std::exchange(asked, true))
            return true;
        port->setName((name + std::string("1")).c_str());
        asked = false;
        return agrees;
    }
    bool asked = false;
    bool agrees = false;
};

TEST(Callback, ANameGivenInOnPortSetNameStaysWhenTheOtherIsRefused)
{
    const AddRefWrapper<Renaming> node(new Renaming(nullptr));
    const AddRefWrapper<Port> port = node->inputs().addPort("In", nullptr);
    port->setName("New");
    EXPECT_STREQ("New1", port->getName());
    node->agrees = true;
    port->setName("Agreed");
    EXPECT_STREQ("Agreed", port->getName()) << "the question is answered last";
}

TEST(Callback, NodesMayComeAndGoInEachQuestion)
{
    using Inside = void (*)(TestNetwork&, NodeArg);
    const struct {
        const char* name;
        Inside run;
        const char* afterAdd;    ///< The nodes in Top after N was added to First.
        const char* afterRemove; ///< After N behind First was removed: asked, or told.
    } cases[] = {
        {"remove it", [](TestNetwork& t, NodeArg n) { t.compound()->nodes().remove(n); }, "First N",
         "First"},
        {"remove the other", [](TestNetwork& t, NodeArg) { t.compound()->removeNode("First"); },
         "N", ""},
        {"make one", [](TestNetwork& t, NodeArg) { t.compound()->createNewCompound("C"); },
         "First C N", "First C"},
        {"add it", [](TestNetwork& t, NodeArg n) { t.compound()->nodes().add(n); }, "First N N",
         "First N"},
        {"no compound", [](TestNetwork& t, NodeArg) { t.root->setOwnedCompound(nullptr); }, "-",
         "-"},
        {"no document", [](TestNetwork& t, NodeArg) { t.root = nullptr; }, "-", "-"},
    };
    for (const auto& row : cases) {
        for (const char* question : {"add node", "remove node", "forget"}) {
            SCOPED_TRACE(row.name + std::string(" in ") + question);
            TestNetwork net;
            net.addNode("Top", "First");
            const AddRefWrapper<Node> node = net.addNode("Top", "N");
            NodeList& nodes = net.compound()->nodes();
            const bool isAdding = question == std::string("add node");
            if (isAdding)
                nodes.remove(node);
            const auto inside = [&] { row.run(net, node); };
            net.questions.during = inside;
            if (question == std::string("forget"))
                net.questions.during = [&] { net.questions.during = inside; };
            EXPECT_TRUE(isAdding ? nodes.add(node) || !node->getParentCompound()
                                 : nodes.remove(node));
            std::string left;
            if (net.root && net.root->isCompound()) {
                for (const Node* present : net.compound()->nodes())
                    left += (left.empty() ? "" : " ") + std::string(present->getName());
            } else {
                left = "-";
                EXPECT_EQ(1, node->getRefCount());
            }
            EXPECT_EQ(isAdding ? row.afterAdd : row.afterRemove, left);
        }
    }
}

/// Logs its name at every callback, and runs during once, inside the next.
struct Ear : HostEditor {
    Ear(std::string& log, char name) : m_log(log), m_name(name) {}
    void zel_onConnectionChange(ECnxChangeType, PortArg, PortArg) override { hear(); }
    void zel_onCompoundConnectionChange(ECnxChangeType, PortArg, PortArg) override { hear(); }
    void zel_onCompoundPortChange(ECompoundPortChangeType, PortArg) override { hear(); }
    void zel_onNodeChange(ENodeChangeType, const AddRefWrapper<Compound>&, NodeArg) override
    {
        hear();
    }
    std::function<void()> during;

private:
    void hear()
    {
        m_log += m_name;
        if (const std::function<void()> action = std::exchange(during, nullptr))
            action();
    }
    std::string& m_log;
    char m_name;
};

TEST(Callback, EditorsComeAndGoInEveryNotification)
{
    using Ears = std::vector<std::unique_ptr<Ear>>;
    const struct {
        const char* inside; ///< In the first callback of the editor b; a, b and c are registered.
        std::function<void(Ears&, AddRefWrapper<Node>&, TestNetwork&)> run;
        const char* heard; ///< In this notification, and in the next.
    } cases[] = {
        {"register",
         [](Ears& e, AddRefWrapper<Node>& n, TestNetwork&) { n->registerEditor(e[3].get()); },
         "abcd abcd"},
        {"unregister",
         [](Ears& e, AddRefWrapper<Node>& n, TestNetwork&) { n->unregisterEditor(e[1].get()); },
         "ab ac"},
        {"own editor dies", [](Ears& e, AddRefWrapper<Node>&, TestNetwork&) { e[1] = nullptr; },
         "ab ac"},
        {"others die",
         [](Ears& e, AddRefWrapper<Node>&, TestNetwork&) { e[0] = nullptr, e[2] = nullptr; },
         "ab b"},
        {"all die", [](Ears& e, AddRefWrapper<Node>&, TestNetwork&) { e.clear(); }, "ab "},
        {"the notifier dies",
         [](Ears&, AddRefWrapper<Node>& n, TestNetwork& t) {
             t.compound()->removeNode("N"), n = nullptr;
         },
         "ab gone"},
    };
    const std::function<void(Node&, PortArg, NodeArg, const AddRefWrapper<Compound>&)>
        notifications[] = {
            [](Node& n, PortArg port, NodeArg, const AddRefWrapper<Compound>&) {
                n.notifyConnectionChange(eCnxAdded, port, port);
            },
            [](Node& n, PortArg port, NodeArg, const AddRefWrapper<Compound>&) {
                n.notifyCompoundConnectionChange(eCnxAdded, port, port);
            },
            [](Node& n, PortArg port, NodeArg, const AddRefWrapper<Compound>&) {
                n.notifyCompoundPortChange(eCompoundPortAdded, port);
            },
            [](Node& n, PortArg, NodeArg node, const AddRefWrapper<Compound>& c) {
                n.notifyNodeChange(eNodeAdded, c, node);
            },
        };
    for (const auto& row : cases) {
        for (const auto& notify : notifications) {
            TestNetwork net;
            AddRefWrapper<Node> node = net.addNode("Top", "N", "In");
            std::string log;
            Ears ears;
            for (const char name : {'a', 'b', 'c', 'd'})
                ears.push_back(std::make_unique<Ear>(log, name));
            for (int i = 0; i < 3; ++i)
                node->registerEditor(ears[i].get());
            ears[1]->during = [&] { row.run(ears, node, net); };
            const AddRefWrapper<Port> port = node->inputs()[0];
            const AddRefWrapper<Compound> compound = net.compound();
            notify(*node, port, nullptr, compound);
            log += " ";
            if (node)
                notify(*node, port, nullptr, compound);
            else
                log += "gone";
            EXPECT_EQ(row.heard, log) << row.inside;
        }
    }
}

struct Rebuilt : TestNetwork {
    void rebuildCompounds() override
    {
        ++rebuilds;
        if (const std::function<void()> action = std::exchange(during, nullptr))
            action();
    }
    std::function<void()> during;
};

TEST(Callback, ADocumentMayBeClosedInACallbackOfAnother)
{
    const int alive = Live::count;
    Runtime runtime;
    std::unique_ptr<Rebuilt> documents[3];
    const auto open = [&] {
        for (auto& document : documents) {
            document = std::make_unique<Rebuilt>();
            document->addNode("Top", "A", "In", "Out");
            runtime.registerContainer(document.get());
        }
        std::sort(std::begin(documents), std::end(documents));
    };
    const auto close = [&](int i) {
        runtime.unregisterContainer(documents[i].get());
        documents[i] = nullptr;
    };
    // While the one in the middle is rebuilt it closes the one before, the one behind, or both.
    const struct {
        std::vector<int> closed;
        const char* rebuilds;
    } cases[] = {{{0}, "-11"}, {{2}, "11-"}, {{0, 2}, "-1-"}};
    for (const auto& row : cases) {
        open();
        documents[1]->during = [&] { std::for_each(row.closed.begin(), row.closed.end(), close); };
        runtime.forceRebuildCompounds();
        std::string rebuilds;
        for (int i : {0, 1, 2}) {
            rebuilds += documents[i] ? std::to_string(documents[i]->rebuilds) : "-";
            if (documents[i])
                close(i);
        }
        EXPECT_EQ(row.rebuilds, rebuilds);
    }
    // In a question and in a callback of an editor that watches both.
    open();
    documents[0]->questions.during = [&] { close(1); };
    EXPECT_TRUE(documents[0]->port("Top.A.Out")->addConnection(documents[0]->port("Top.A.In")));
    std::string log;
    Ear ear(log, 'e');
    for (int i : {0, 2})
        documents[i]->root->registerEditor(&ear);
    ear.during = [&] { close(2); };
    documents[0]->root->notifyNodeChange(eNodeChanged, nullptr, nullptr);
    documents[0]->root->notifyNodeChange(eNodeChanged, nullptr, nullptr);
    EXPECT_EQ("ee", log);
    EXPECT_EQ("Top.A.Out > Top.A.In\n", documents[0]->text());
    ear.during = [&] { close(0); }; // In a callback of its own.
    documents[0]->root->notifyNodeChange(eNodeChanged, nullptr, nullptr);
    EXPECT_EQ("eee", log);
    EXPECT_EQ(alive, Live::count);
}

TEST(Callback, TheChainMayGoInRecurseParentFirst)
{
    const int alive = Live::count;
    struct Walk {
        TestNetwork net;
        std::string visited;
        int others; ///< Objects of other tests.
    } walk;
    walk.others = alive;
    walk.net.addCompound("Top", "Mid");
    walk.net.addNode("Top.Mid", "Leaf");
    Node& leaf = *walk.net.compound("Top.Mid")->nodes()[0];
    leaf.recurse_parent_first(
        [](Node* node, void* data) {
            auto& reached = *static_cast<Walk*>(data);
            reached.net.root = nullptr;
            reached.visited += node->getName() + std::to_string(Live::count - reached.others);
        },
        &walk);
    // The nodes and compounds that are alive: each node is held until its turn is over.
    EXPECT_EQ("Top5Mid3Leaf1", walk.visited);
    EXPECT_EQ(alive, Live::count);
}

/// A compound whose createNewCompound takes out the node that is about to be moved, disconnected
/// first.
struct Taking : TestCompound {
    using TestCompound::TestCompound;
    using Compound::operator=;
    AddRefWrapper<Compound> createNewCompound(const char* name) override
    {
        nodes()["M"]->inputs()[0]->removeAllConnections();
        removeNode("M");
        return TestCompound::createNewCompound(name);
    }
};

TEST(Callback, CreateNewCompoundMayChangeTheNetwork)
{
    TestNetwork net;
    const AddRefWrapper<Compound> top(new Taking(net.questions, net.root));
    net.addNode("Top", "M", "In");
    net.addNode("Top", "S", "", "Out");
    net.connect("Top.S.Out", "Top.M.In");
    CreateCompoundCommand command;
    EXPECT_TRUE(command.setParentCompound(&net, "Top") && command.addNodeToMove("M"));
    EXPECT_TRUE(command.doit());
    EXPECT_EQ("Top\nTop.S > Out\nTop.Compound\nTop.Compound.M < In\n", wholeText(net))
        << "the command holds M and moves it all the same";
}

} // namespace
} // namespace ZEL
