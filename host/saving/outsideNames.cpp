#include "saving/outsideNames.h"

#include "document/attributes.h"
#include "document/document.h"
#include "document/origins.h"
#include "format/nodeDefs.h"
#include "format/xml.h"

#include <cstring>
#include <unordered_map>

namespace shading {

namespace {

class OutsideNames {
public:
    OutsideNames(DraftNetwork& network, std::vector<SaveProblem>& problems)
        : m_network(network),
          m_problems(problems),
          m_root(network.document().xml().documentElement())
    {
    }

    void run() { visit(m_root, m_root, true); }

private:
    using Elements = std::unordered_map<std::string, const Piece*>;

    /// What an element of the network has inside, as the document calls it: where several have one
    /// name, the first.
    struct Names {
        Elements nodes; ///< The graphs too.
        Elements graphs;
        Elements inputs;
        Elements outputs;
    };

    /// Goes through what is inside the parent. The graph is the nearest one around; the network has
    /// the parent: it is that graph or a node in it.
    void visit(const Piece& parent, const Piece& graph, bool isNetwork)
    {
        for (const Piece& element : ElementsIn(parent)) {
            m_network.progress().step();
            const ElementKind kind = isNetwork ? kindOf(element) : ElementKind::Other;
            if (kind == ElementKind::Graph && &parent == &graph) {
                visit(element, element, true);
            } else if (kind == ElementKind::Node && &parent == &graph) {
                visit(element, graph, true);
            } else {
                if (kind != ElementKind::Input && kind != ElementKind::Output)
                    updateOne(element, graph);
                visit(element, graph, false);
            }
        }
    }

    void updateOne(const Piece& element, const Piece& graph)
    {
        Piece& item = itemOf(element);
        const bool hasNameSpace = element.text.find(':') != std::string_view::npos;
        if (element.attributes.empty() || hasNameSpace || !isThere(item))
            return;
        if (isGiven(element, "interfacename"))
            updateInput(item, element, graph);
        bool hasNode = false;
        for (const char* const attribute : {"nodename", "nodegraph", "material"}) {
            const bool isMaterial = std::strcmp(attribute, "material") == 0;
            if ((isMaterial && element.text != "materialassign") || !isGiven(element, attribute))
                continue;
            hasNode = true;
            const Piece* const meant =
                updateNode(item, element, attribute, isMaterial ? m_root : graph);
            if (meant)
                updateOutput(item, element, *meant);
        }
        if (!hasNode)
            updateOutput(item, element, graph);
    }

    /// One that an edit changed is known to mean what is there.
    bool isGiven(const Piece& element, const char* name) const
    {
        return says(element, name) &&
               !m_network.document().attributes().changedValue({nullptr, nullptr, &element}, name);
    }

    bool isThere(const Piece& item)
    {
        const Piece* top = &item;
        while (top->parent)
            top = top->parent;
        return top == &m_network.draft().top();
    }

    Piece& itemOf(const Piece& read) { return m_network.draft().at(read); }

    /// The graph that the element is in now.
    Piece& graphAround(Piece& item)
    {
        Piece* around = item.parent;
        while (!m_network.nodeOf(around) || !m_network.nodeOf(around)->isCompound())
            around = around->parent;
        return *around;
    }

    const Names& namesOf(const Piece& parent)
    {
        const auto [entry, isNew] = m_names.try_emplace(&parent);
        Names& names = entry->second;
        if (!isNew)
            return names;
        for (const Piece& child : ElementsIn(parent)) {
            m_network.progress().step();
            const ElementKind kind = kindOf(child);
            const std::string name = attributeOf(child, "name");
            if (kind == ElementKind::Input)
                names.inputs.emplace(name, &child);
            if (kind == ElementKind::Output)
                names.outputs.emplace(name, &child);
            if (kind == ElementKind::Node || kind == ElementKind::Graph)
                names.nodes.emplace(name, &child);
            if (kind == ElementKind::Graph)
                names.graphs.emplace(name, &child);
        }
        return names;
    }

    static const Piece* find(const Elements& elements, const std::string& name)
    {
        const auto found = elements.find(name);
        return found == elements.end() ? nullptr : found->second;
    }

    /// A name that means a node of the graph or of the document: its element. Null when there is
    /// none, or none any more that the item sees: that is a problem.
    const Piece*
    updateNode(Piece& item, const Piece& element, const char* attribute, const Piece& graph)
    {
        const std::string name = attributeOf(element, attribute);
        const bool isGraph = std::strcmp(attribute, "nodegraph") == 0;
        for (const Piece* const around : {&graph, &m_root}) {
            const Names& names = namesOf(*around);
            const Piece* const found = find(isGraph ? names.graphs : names.nodes, name);
            if (!found)
                continue;
            Piece& root = itemOf(m_root);
            Piece& place = around == &m_root ? root : graphAround(item);
            const Piece& meant = itemOf(*found);
            ZEL::Node* const node = m_network.nodeOf(&meant);
            if (node && (meant.parent == &place || meant.parent == &root)) {
                follow(item, attribute, name, node->getName());
                return found;
            }
            refuse(pathOf(*m_network.nodeOf(&place)) + "." + name, element);
            return nullptr;
        }
        return nullptr;
    }

    /// The node has the outputs.
    void updateOutput(Piece& item, const Piece& element, const Piece& node)
    {
        const std::string name = attributeOf(element, "output");
        const Piece* const output = name.empty() ? nullptr : find(namesOf(node).outputs, name);
        if (!output)
            return;
        ZEL::Node* const owner = m_network.nodeOf(&itemOf(node));
        const ZEL::Port* const port = m_network.portOf(&itemOf(*output));
        if (port)
            follow(item, "output", name, port->getName());
        else
            refuse(pathOf(owner ? *owner : *m_network.nodeOf(&graphAround(item))) + "." + name,
                   element);
    }

    /// An input of the graph around, which need not be declared there.
    void updateInput(Piece& item, const Piece& element, const Piece& graph)
    {
        const std::string name = attributeOf(element, "interfacename");
        const Tie* const tie = m_network.document().nodeDefs().tieOf(graph);
        const bool isDeclared = find(namesOf(graph).inputs, name) ||
                                (tie && tie->nodeDef && childNamed(*tie->nodeDef, "input", name));
        ZEL::Node* const owner = m_network.nodeOf(&itemOf(graph));
        const ZEL::Node* const around = m_network.nodeOf(&graphAround(item));
        const ZEL::Port* port = nullptr;
        for (int i = 0; owner && !port && i < owner->inputs().size(); ++i) {
            const ZEL::AddRefWrapper<ZEL::Port> input = owner->inputs()[i];
            if (m_network.document().origins().nameOf(*input) == name)
                port = input.get();
        }
        const std::string now = port ? port->getName() : name.c_str();
        if (!owner)
            refuse(pathOf(*m_network.document().getRootNode()) + "." + attributeOf(graph, "name") +
                       "." + name,
                   element);
        else if (owner != around)
            m_problems.push_back(
                {pathOf(*owner) + "." + now,
                 titleOf(element) + " names it and is not in that graph any more"});
        else if (isDeclared && !port)
            refuse(pathOf(*owner) + "." + name, element);
        else
            follow(item, "interfacename", name, now.c_str());
    }

    void follow(Piece& item, const char* attribute, const std::string& read, const char* now)
    {
        if (read != now)
            m_network.draft().setAttribute(item, attribute, now);
    }

    /// The element names what is gone.
    void refuse(const std::string& path, const Piece& element)
    {
        m_problems.push_back(
            {path, "it is gone from there, and " + titleOf(element) + " still names it"});
    }

    static std::string titleOf(const Piece& element)
    {
        const std::string name = attributeOf(element, "name");
        return std::string(element.text) + (name.empty() ? "" : " \"" + name + "\"");
    }

    DraftNetwork& m_network;
    std::vector<SaveProblem>& m_problems;
    const Piece& m_root;
    std::unordered_map<const Piece*, Names> m_names;
};

} // namespace

void updateOutsideNames(DraftNetwork& network, std::vector<SaveProblem>& problems)
{
    OutsideNames(network, problems).run();
}

} // namespace shading
