#include "saving/declarations.h"

#include "document/document.h"
#include "document/origins.h"
#include "format/format.h"
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
    pugi::xml_node element; ///< Empty: the type of an old definition declares it.
};

using Ports = std::map<Key, Declared>;

std::string typeOf(pugi::xml_node element)
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
    pugi::xml_node graph;
    pugi::xml_node nodeDef;
    pugi::xml_node element; ///< The graph, or the `implementation`.
};

/// Who names the definitions and the types of nodes in what is written.
class Users {
public:
    explicit Users(const DraftItem& root) { count(root); }

    /// Anything but the tie itself.
    bool hasOthers(const Tie& tie) const
    {
        const auto named = m_nodeDefs.find(attributeOf(tie.nodeDef, "name"));
        return (named != m_nodeDefs.end() && named->second > 1) ||
               m_nodeTypes.count(attributeOf(tie.nodeDef, "node")) > 0 ||
               (tie.element != tie.graph && tie.element.first_child());
    }

private:
    void count(const DraftItem& item)
    {
        const bool isNodeDef = item.text == "nodedef";
        if (const DraftAttribute* const name = item.attribute(isNodeDef ? "inherit" : "nodedef"))
            ++m_nodeDefs[std::string(name->value)];
        const DraftAttribute* const type = item.attribute("node");
        if (type && !isNodeDef)
            m_nodeTypes.emplace(type->value);
        if (kindOf(item.text) == ElementKind::Node)
            m_nodeTypes.emplace(item.text);
        for (const DraftItem* child = item.first; child; child = child->next) {
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
          m_root(network.document().xml().documentElement())
    {
    }

    void run()
    {
        for (const pugi::xml_node element : m_root.children("nodedef"))
            m_nodeDefs.emplace(attributeOf(element, "name"), element);
        if (m_nodeDefs.empty())
            return;
        std::map<std::string, pugi::xml_node> graphs;
        for (const pugi::xml_node element : m_root.children("nodegraph")) {
            graphs.emplace(attributeOf(element, "name"), element);
            check(element, element);
        }
        for (const pugi::xml_node element : m_root.children("implementation")) {
            const auto graph = graphs.find(attributeOf(element, "nodegraph"));
            if (graph != graphs.end())
                check(graph->second, element);
        }
    }

private:
    DraftItem* itemOf(pugi::xml_node element)
    {
        return m_network.draft().elementAt(offsetOf(element));
    }

    void check(pugi::xml_node graph, pugi::xml_node element)
    {
        const auto nodeDef = m_nodeDefs.find(attributeOf(element, "nodedef"));
        const DraftItem& item = *itemOf(graph);
        ZEL::Node* const node = m_network.nodeOf(&item);
        if (!node || nodeDef == m_nodeDefs.end())
            return;
        const Tie tie = {graph, nodeDef->second, element};
        Ports declared;
        std::set<std::string> heirs;
        addPorts(tie.nodeDef, heirs, declared);
        if (!didAgree(graph, declared))
            return;
        if (item.parent == itemOf(m_root))
            checkPorts(tie, *node, declared);
        else if (element == graph)
            m_problems.push_back({pathOf(*node), "it implements nodedef \"" +
                                                     attributeOf(nodeDef->second, "name") +
                                                     "\", and the document itself has it no more"});
    }

    /// Those of the inherited definition, and the own ones, which may replace some of those.
    void addPorts(pugi::xml_node nodeDef, std::set<std::string>& heirs, Ports& ports)
    {
        const auto base = m_nodeDefs.find(attributeOf(nodeDef, "inherit"));
        if (heirs.insert(attributeOf(nodeDef, "name")).second && base != m_nodeDefs.end())
            addPorts(base->second, heirs, ports);
        for (const char* const kind : kKinds) {
            for (const pugi::xml_node port : nodeDef.children(kind))
                ports[{kind, attributeOf(port, "name")}] = {typeOf(port), port};
        }
        // Before version 1.38 a definition had its type itself.
        if (heirs.size() == 1 && !nodeDef.child("output") && nodeDef.attribute("type"))
            ports.emplace(Key("output", kDefaultOutput), Declared{typeOf(nodeDef), {}});
    }

    /// What the document said of the graph.
    static bool didAgree(pugi::xml_node graph, const Ports& declared)
    {
        for (const pugi::xml_node child : graph.children()) {
            const ElementKind kind = kindOf(child);
            const bool isPort = kind == ElementKind::Input || kind == ElementKind::Output;
            const auto found = declared.find({child.name(), attributeOf(child, "name")});
            if (isPort && (found == declared.end() || found->second.type != typeOf(child) ||
                           !hasInterface(child, declared)))
                return false;
            if (kind != ElementKind::Node && kind != ElementKind::Graph)
                continue;
            for (const pugi::xml_node input : child.children("input")) {
                if (!hasInterface(input, declared))
                    return false;
            }
        }
        for (const auto& [key, port] : declared) {
            if (key.first == kKinds[1] &&
                !graph.find_child_by_attribute("output", "name", key.second.c_str()))
                return false;
        }
        return true;
    }

    /// True also for an element that names no input of the graph.
    static bool hasInterface(pugi::xml_node element, const Ports& declared)
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
        const pugi::xml_node element(origins.elementOf(port));
        return element ? attributeOf(element, "name") : origins.impliedNameOf(port);
    }

    /// The definition may call the port so: it has the port itself, and no other of that name, and
    /// nobody else knows it.
    bool isFree(const Tie& tie, const Declared& port, const char* name)
    {
        if (!m_users)
            m_users = std::make_unique<Users>(*itemOf(m_root));
        return port.element.parent() == tie.nodeDef &&
               !tie.nodeDef.find_child_by_attribute("name", name) && !m_users->hasOthers(tie);
    }

    void rename(const Tie& tie, const Key& key, const Declared& port, const char* name)
    {
        Draft& draft = m_network.draft();
        draft.setAttribute(*itemOf(port.element), "name", name);
        if (key.first == kKinds[1])
            return;
        for (const pugi::xml_node output : tie.nodeDef.children("output")) {
            if (attributeOf(output, "defaultinput") == key.second)
                draft.setAttribute(*itemOf(output), "defaultinput", name);
        }
    }

    void addPort(const std::string& path, const Tie& tie, const std::string& reason)
    {
        m_problems.push_back({path, "its graph implements nodedef \"" +
                                        attributeOf(tie.nodeDef, "name") + "\", which " + reason});
    }

    DraftNetwork& m_network;
    std::vector<SaveProblem>& m_problems;
    pugi::xml_node m_root;
    std::map<std::string, pugi::xml_node> m_nodeDefs; ///< By name, the first of each.
    std::unique_ptr<Users> m_users;                   ///< Empty until somebody asks.
};

} // namespace

void updateDeclarations(DraftNetwork& network, std::vector<SaveProblem>& problems)
{
    Declarations(network, problems).run();
}

} // namespace shading
