#include "saving/declarations.h"

#include "document/document.h"
#include "document/graphInterface.h"
#include "document/node.h"
#include "document/origins.h"
#include "format/nodeDefs.h"
#include "format/xml.h"

#include <set>
#include <utility>

namespace shading {

namespace {

const char* kindName(ZEL::PortIOType ioType)
{
    return ioType == ZEL::PortOutput ? "output" : "input";
}

/// The `nodedef` of one graph.
class Declaration {
public:
    Declaration(DraftNetwork& network,
                Node& graph,
                const Tie& tie,
                std::vector<SaveProblem>& problems)
        : m_network(network),
          m_origins(network.document().origins()),
          m_graph(graph),
          m_tie(tie),
          m_problems(problems)
    {
    }

    void update()
    {
        for (ZEL::PortList* const list : {&m_graph.inputs(), &m_graph.outputs()}) {
            for (ZEL::Port* const port : *list)
                update(*port);
        }
        if (!m_tie.nodeDef)
            return;
        for (const Piece& child : ElementsIn(*m_tie.nodeDef))
            removeGone(child);
    }

private:
    void update(ZEL::Port& port)
    {
        const ZEL::PortIOType ioType = port.getPortIOType();
        const std::string name = m_origins.nameOf(port);
        m_present.insert({kindName(ioType), name});
        const Piece* const element = m_origins.elementOf(port);
        const bool isDeclared = element && element->parent->text == "nodedef";
        if (isDeclared && port.isConnected())
            refuse(port.getName(), "a graph that implements a nodedef has no sources");
        const std::string type = element ? attributeOf(*element, "type") : "";
        const bool isLike =
            !element || ((type.empty() ? kNoType : type) == typeNameOf(port) &&
                         (ioType == ZEL::PortOutput ||
                          attributeOf(*element, "value") == port.getPortDefaultValue()));
        if (isLike && name == port.getName())
            return;
        const std::string problem = interfaceProblem(m_graph, ioType, name);
        if (!problem.empty())
            refuse(port.getName(), problem);
        else if (!name.empty())
            follow(port, name);
    }

    /// What stands in the definition alone is written like any port; here that which the graph has
    /// too.
    void follow(ZEL::Port& port, const std::string& name)
    {
        const bool isInput = port.getPortIOType() == ZEL::PortInput;
        if (const Piece* const known =
                childNamed(*m_tie.nodeDef, kindName(port.getPortIOType()), name)) {
            Piece& item = itemOf(*known);
            m_network.draft().setAttribute(item, "name", port.getName());
            m_network.draft().setAttribute(item, "type", typeNameOf(port));
            if (isInput && *port.getPortDefaultValue() != '\0')
                m_network.draft().setAttribute(item, "value", port.getPortDefaultValue());
            else if (isInput)
                m_network.draft().removeAttribute(item, "value");
        }
        if (isInput)
            updateDefaultInput(name, port.getName());
    }

    /// A port of the definition that the graph had when the document was opened.
    void removeGone(const Piece& declared)
    {
        const ElementKind kind = kindOf(declared);
        const std::string name = attributeOf(declared, "name");
        const bool isOutput = kind == ElementKind::Output;
        const bool wasThere = isOutput ? childNamed(*m_graph.element(), "output", name) != nullptr
                                       : kind == ElementKind::Input && !name.empty();
        if (!wasThere || m_present.count({std::string(declared.text), name}) > 0)
            return;
        const std::string problem =
            interfaceProblem(m_graph, isOutput ? ZEL::PortOutput : ZEL::PortInput, name, true);
        if (!problem.empty())
            return refuse(name, problem);
        m_network.draft().remove(itemOf(declared));
        updateDefaultInput(name, "");
    }

    /// The output that an input of the definition is handed to.
    void updateDefaultInput(const std::string& name, const char* now)
    {
        for (const Piece& output : ElementsIn(*m_tie.nodeDef)) {
            if (output.text != "output" || attributeOf(output, "defaultinput") != name)
                continue;
            if (*now == '\0')
                m_network.draft().removeAttribute(itemOf(output), "defaultinput");
            else
                m_network.draft().setAttribute(itemOf(output), "defaultinput", now);
        }
    }

    Piece& itemOf(const Piece& read) { return m_network.draft().at(read); }

    void refuse(const std::string& port, const std::string& reason)
    {
        m_problems.push_back({pathOf(m_graph) + "." + port, reason});
    }

    DraftNetwork& m_network;
    const Origins& m_origins;
    Node& m_graph;
    const Tie& m_tie;
    std::vector<SaveProblem>& m_problems;
    std::set<std::pair<std::string, std::string>> m_present; ///< The ports, as they were called.
};

} // namespace

void updateDeclarations(DraftNetwork& network, std::vector<SaveProblem>& problems)
{
    const Piece& root = network.document().xml().documentElement();
    for (const Piece& element : ElementsIn(root)) {
        network.progress().step();
        const Tie* const tie = network.document().nodeDefs().tieOf(element);
        const Piece& item = network.draft().at(element);
        ZEL::Node* const graph = tie ? network.nodeOf(&item) : nullptr;
        if (!graph)
            continue;
        if (item.parent != &network.draft().at(root))
            problems.push_back({pathOf(*graph), kStaysAtTheTop});
        else // The nodes of this host's documents are its own.
            Declaration(network, static_cast<Node&>(*graph), *tie, problems).update();
    }
}

} // namespace shading
