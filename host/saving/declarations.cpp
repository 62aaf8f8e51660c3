#include "saving/declarations.h"

#include "document/document.h"
#include "document/origins.h"
#include "format/nodeDefs.h"
#include "format/xml.h"

#include <map>
#include <memory>
#include <set>
#include <utility>

namespace shading {

namespace {

const char* const kKinds[] = {"input", "output"};

/// `input` or `output`, and the name.
using Key = std::pair<std::string, std::string>;

struct Declared {
    std::string type;
    const Piece* element; ///< Null: the type of an old definition declares it.
};

using Ports = std::map<Key, Declared>;

std::string typeOf(const Piece& element)
{
    const std::string type = attributeOf(element, "type");
    return type.empty() ? kNoType : type;
}

std::string kindName(ZEL::Port& port)
{
    return kKinds[port.getPortIOType() == ZEL::PortInput ? 0 : 1];
}

/// One graph, and the definition that it implements.
struct Tie {
    const Piece& graph;
    const Piece& nodeDef;
    const Piece& element; ///< The graph, or the `implementation`.
};

/// Who names the definitions and the types of nodes in what is written.
class Users {
public:
    explicit Users(const Piece& root) { count(root); }

    /// Anything but the tie itself.
    bool hasOthers(const Tie& tie) const
    {
        const auto named = m_nodeDefs.find(attributeOf(tie.nodeDef, "name"));
        return (named != m_nodeDefs.end() && named->second > 1) ||
               m_nodeTypes.count(attributeOf(tie.nodeDef, "node")) > 0 ||
               (&tie.element != &tie.graph && tie.element.first);
    }

private:
    void count(const Piece& item)
    {
        const bool isNodeDef = item.text == "nodedef";
        if (const Attribute* const name = item.attribute(isNodeDef ? "inherit" : "nodedef"))
            ++m_nodeDefs[std::string(name->value)];
        const Attribute* const type = item.attribute("node");
        if (type && !isNodeDef)
            m_nodeTypes.emplace(type->value);
        if (kindOf(item.text) == ElementKind::Node)
            m_nodeTypes.emplace(item.text);
        for (const Piece* child = item.first; child; child = child->next) {
            if (child->isElement())
                count(*child);
        }
    }

    std::map<std::string, int> m_nodeDefs;
    std::set<std::string> m_nodeTypes;
};

class Declarations {
public:
    Declarations(DraftNetwork& network, std::vector<SaveProblem>& problems)
        : m_network(network),
          m_problems(problems),
          m_root(network.document().xml().documentElement()),
          m_nodeDefs(m_root)
    {
    }

    void run()
    {
        if (m_nodeDefs.isEmpty())
            return;
        std::map<std::string, const Piece*> graphs;
        for (const Piece& element : ElementsIn(m_root)) {
            if (element.text != "nodegraph")
                continue;
            graphs.emplace(attributeOf(element, "name"), &element);
            check(element, element);
        }
        for (const Piece& element : ElementsIn(m_root)) {
            const auto graph = element.text == "implementation"
                                   ? graphs.find(attributeOf(element, "nodegraph"))
                                   : graphs.end();
            if (graph != graphs.end())
                check(*graph->second, element);
        }
    }

private:
    Piece& itemOf(const Piece& read) { return m_network.draft().at(read); }

    void check(const Piece& graph, const Piece& element)
    {
        const Piece* const nodeDef = m_nodeDefs.named(attributeOf(element, "nodedef"));
        const Piece& item = itemOf(graph);
        ZEL::Node* const node = m_network.nodeOf(&item);
        if (!node || !nodeDef)
            return;
        const Tie tie = {graph, *nodeDef, element};
        const Ports declared = portsOf(tie.nodeDef);
        if (!didAgree(graph, declared))
            return;
        if (item.parent == &itemOf(m_root))
            checkPorts(tie, *node, declared);
        else if (&element == &graph)
            m_problems.push_back({pathOf(*node), "it implements nodedef \"" +
                                                     attributeOf(*nodeDef, "name") +
                                                     "\", and the document itself has it no more"});
    }

    /// Those of the inherited definitions, and the own ones, which may replace some of those.
    Ports portsOf(const Piece& nodeDef)
    {
        Ports ports;
        bool hasOutput = false;
        const std::vector<const Piece*> line = m_nodeDefs.lineOf(nodeDef);
        for (const Piece* const element : line) {
            for (const Piece& port : ElementsIn(*element)) {
                const ElementKind kind = kindOf(port);
                hasOutput = hasOutput || kind == ElementKind::Output;
                if (kind == ElementKind::Input || kind == ElementKind::Output)
                    ports[{std::string(port.text), attributeOf(port, "name")}] = {typeOf(port),
                                                                                  &port};
            }
        }
        // Before version 1.38 a definition had its type itself.
        if (line.size() == 1 && !hasOutput && nodeDef.attribute("type"))
            ports.emplace(Key("output", kDefaultOutput), Declared{typeOf(nodeDef), nullptr});
        return ports;
    }

    /// What the document said of the graph.
    static bool didAgree(const Piece& graph, const Ports& declared)
    {
        for (const Piece& child : ElementsIn(graph)) {
            const ElementKind kind = kindOf(child);
            const bool isPort = kind == ElementKind::Input || kind == ElementKind::Output;
            const auto found = declared.find({std::string(child.text), attributeOf(child, "name")});
            if (isPort && (found == declared.end() || found->second.type != typeOf(child) ||
                           !hasInterface(child, declared)))
                return false;
            if (kind != ElementKind::Node && kind != ElementKind::Graph)
                continue;
            for (const Piece& input : ElementsIn(child)) {
                if (kindOf(input) == ElementKind::Input && !hasInterface(input, declared))
                    return false;
            }
        }
        for (const auto& [key, port] : declared) {
            if (key.first == kKinds[1] && !childNamed(graph, "output", key.second))
                return false;
        }
        return true;
    }

    /// True also for an element that names no input of the graph.
    static bool hasInterface(const Piece& element, const Ports& declared)
    {
        const std::string name = attributeOf(element, "interfacename");
        return name.empty() || declared.count({kKinds[0], name}) > 0;
    }

    void checkPorts(const Tie& tie, ZEL::Node& node, const Ports& declared)
    {
        std::set<Key> present;
        std::vector<std::pair<ZEL::Port*, Key>> others;
        for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (ZEL::Port* const port : *list) {
                const Key key(kindName(*port), port->getName());
                const auto found = declared.find(key);
                const bool isLike = found != declared.end() &&
                                    (found->second.type == typeNameOf(*port) || isImplied(*port));
                if (found != declared.end())
                    present.insert(key);
                if (!isLike)
                    others.emplace_back(port, Key(key.first, readNameOf(*port)));
            }
        }
        for (const auto& [port, key] : others) {
            const auto found = declared.find(key);
            if (found == declared.end() || key.second == port->getName())
                addPort(pathOf(*port), tie,
                        "has no such " + key.first + " of type " + typeNameOf(*port));
            else if (present.insert(key).second && isFree(tie, found->second, port->getName()))
                rename(tie, key, found->second, port->getName());
            else
                addPort(pathOf(*port), tie,
                        "calls it \"" + key.second + "\" and must stay as it is");
        }
        for (const auto& [key, port] : declared) {
            if (key.first == kKinds[1] && present.count(key) == 0)
                addPort(pathOf(node) + "." + key.second, tie, "has that output; it is gone");
        }
    }

    /// A reference made the port: it has the type of what it feeds.
    bool isImplied(ZEL::Port& port)
    {
        return !m_network.document().origins().impliedNameOf(port).empty();
    }

    /// Empty for a port that an edit made.
    std::string readNameOf(ZEL::Port& port)
    {
        const Origins& origins = m_network.document().origins();
        const Piece* const element = origins.elementOf(port);
        return element ? attributeOf(*element, "name") : origins.impliedNameOf(port);
    }

    /// The definition may call the port so: it has the port itself, and no other of that name, and
    /// nobody else knows it.
    bool isFree(const Tie& tie, const Declared& port, const char* name)
    {
        if (!m_users)
            m_users = std::make_unique<Users>(itemOf(m_root));
        for (const Piece& child : ElementsIn(tie.nodeDef)) {
            if (attributeOf(child, "name") == name)
                return false;
        }
        return port.element && port.element->parent == &tie.nodeDef && !m_users->hasOthers(tie);
    }

    void rename(const Tie& tie, const Key& key, const Declared& port, const char* name)
    {
        Draft& draft = m_network.draft();
        draft.setAttribute(itemOf(*port.element), "name", name);
        if (key.first == kKinds[1])
            return;
        for (const Piece& output : ElementsIn(tie.nodeDef)) {
            if (output.text == "output" && attributeOf(output, "defaultinput") == key.second)
                draft.setAttribute(itemOf(output), "defaultinput", name);
        }
    }

    void addPort(const std::string& path, const Tie& tie, const std::string& reason)
    {
        m_problems.push_back({path, "its graph implements nodedef \"" +
                                        attributeOf(tie.nodeDef, "name") + "\", which " + reason});
    }

    DraftNetwork& m_network;
    std::vector<SaveProblem>& m_problems;
    const Piece& m_root;
    const NodeDefs m_nodeDefs;
    std::unique_ptr<Users> m_users; ///< Empty until somebody asks.
};

} // namespace

void updateDeclarations(DraftNetwork& network, std::vector<SaveProblem>& problems)
{
    Declarations(network, problems).run();
}

} // namespace shading
