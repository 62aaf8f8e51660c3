// The edit that brings nodes from a text of the format into a document.

#include "document/attributes.h"
#include "document/backdrops.h"
#include "document/compound.h"
#include "document/document.h"
#include "document/flow.h"
#include "document/names.h"
#include "document/origins.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/inheritance.h"
#include "edits/pasteOptions.h"
#include "format/value.h"
#include "format/xml.h"
#include "reading/openDocument.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace shading {

namespace {

/// How far a copy stands beside what has its place, to the right and down.
constexpr double kBeside = 0.5;

/// Why the elements inside cannot become a part of the network; empty when they can.
std::string textProblem(const Piece& parent)
{
    std::set<std::string> names;
    for (const Piece& element : ElementsIn(parent)) {
        const ElementKind kind = kindOf(element);
        const std::string name = attributeOf(element, "name");
        const bool isPort = kind == ElementKind::Input || kind == ElementKind::Output;
        std::string problem;
        if (kind == ElementKind::Other && element.text != "backdrop")
            problem = "it is no part of a network";
        else if (kind == ElementKind::Graph && element.attribute("nodedef"))
            problem = "it implements a nodedef, which only one graph does";
        else if (isPort && parent.text == "materialx")
            problem = "it is a port of a document, not of a node";
        else if (!name.empty())
            problem = names.insert(name).second ? nameProblem(name) : kNameIsTaken;
        if (problem.empty() && kind == ElementKind::Input)
            problem = valueProblem(attributeOf(element, "type"), attributeOf(element, "value"));
        if (!problem.empty())
            return std::string(element.text).append(" \"").append(name).append("\": ") + problem;
        problem = textProblem(element);
        if (!problem.empty())
            return problem;
    }
    return "";
}

/// Makes the network of one document anew in a compound of another one.
class Paste {
public:
    Paste(Document& document,
          Document& source,
          ZEL::Compound& compound,
          const PasteOptions& options)
        : m_document(document),
          m_source(source),
          m_compound(compound),
          m_options(options)
    {
    }

    /// Returns why it cannot be done, empty when it is done.
    std::string run()
    {
        const CompoundPtr from = m_source.getRootNode()->getAsCompound();
        for (const NodePtr& node : from->nodes()) {
            const std::string name = uniqueName(m_compound, node->getName());
            m_made.push_back(copyOf(static_cast<Node&>(*node), name));
            m_isMade.insert(m_made.back().get());
            // What is connected inside before it is there, undo takes away with it.
            connectInside(*node);
            if (!m_compound.nodes().add(m_made.back()))
                return "refused";
        }
        for (const NodePtr& node : from->nodes())
            connectInputs(*node);
        for (const auto& [receiver, source] : m_acrossGraphs)
            connect(*receiver, source);
        for (const NodePtr& node : m_made)
            keepInherited(node);
        for (const BackdropPtr& backdrop : m_source.backdrops().all())
            copyBackdrop(*backdrop);
        if (m_problem.empty())
            checkFlow();
        if (m_problem.empty())
            place();
        return m_problem;
    }

    const std::vector<NodePtr>& made() const { return m_made; }

private:
    NodePtr copyOf(Node& node, const std::string& name)
    {
        HostNodePtr made = Node::createNew(&m_document, name.c_str());
        m_nodes[&node] = made.get();
        made->setNodeTypeName(node.getNodeTypeName());
        const CompoundPtr from = node.getAsCompound();
        const CompoundPtr to = from ? CompoundPtr(Compound::createNew(made.get())) : nullptr;
        copyPorts(node.inputs(), made->inputs(), to.get());
        copyPorts(node.outputs(), made->outputs(), to.get());
        for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (ZEL::Port* const port : *list) {
                const PortPtr inner = from ? from->getReversePort(port) : nullptr;
                if (inner)
                    m_copies[inner.get()] = to->getReversePort(m_copies[port]);
            }
        }
        made->setDefinition(node.definition());
        copyAttributes({&node, nullptr}, {made.get(), nullptr});
        for (int i = 0; from && i < from->nodes().size(); ++i) {
            Node& inner = static_cast<Node&>(*from->nodes()[i]);
            to->nodes().add(copyOf(inner, inner.getName()));
        }
        return made.get();
    }

    void copyPorts(ZEL::PortList& from, ZEL::PortList& to, ZEL::Compound* compound)
    {
        for (ZEL::Port* const port : from) {
            const TypePtr type = m_document.dataType(typeNameOf(*port));
            if (compound)
                compound->createCompoundPort(port->getPortIOType(), port->getName(), type);
            else
                to.addPort(port->getName(), type);
            const PortPtr made = to[to.size() - 1];
            made->setPortDefaultValue(port->getPortDefaultValue());
            m_copies[port] = made;
            if (made->getPortIOType() == ZEL::PortOutput)
                m_senders.push_back(made.get());
            copyAttributes({nullptr, port}, {nullptr, made});
        }
    }

    void copyAttributes(const AttributeOwner& from, const AttributeOwner& to)
    {
        for (const auto& [name, value] : m_source.attributes().all(from)) {
            // A definition that is not known is named all the same, and an output by its type
            // stays.
            const bool isOfNode = to.node && !to.node->isCompound();
            if ((isOfNode && (name == "nodedef" || name == "type")) ||
                Edits::attributeProblem(to, name).empty())
                m_document.attributes().set(to, name, AttributeValue{value, nullptr});
        }
    }

    void copyBackdrop(const Backdrop& backdrop)
    {
        const bool isOuter = backdrop.owner() == m_source.getRootNode();
        Backdrop::State state;
        state.owner = isOuter ? m_compound.getAsNode() : m_nodes[backdrop.owner().get()];
        if (!backdrop.name().empty())
            state.name = uniqueName(*state.owner->getAsCompound(), backdrop.name());
        for (const NodePtr& node : backdrop.nodes())
            state.nodes.push_back(m_nodes[node.get()]);
        const BackdropPtr made = m_document.backdrops().add();
        m_document.backdrops().set(made, state);
        copyAttributes({nullptr, nullptr, &backdrop.element()},
                       {nullptr, nullptr, &made->element()});
        if (isOuter)
            m_backdrops.push_back(made);
    }

    void connectInside(ZEL::Node& node)
    {
        const CompoundPtr compound = node.getAsCompound();
        if (!compound)
            return;
        for (ZEL::Port* const inner : compound->innerOutputs())
            connect(*inner, inner->connectedTo()[0]);
        for (const NodePtr& child : compound->nodes()) {
            connectInputs(*child);
            connectInside(*child);
        }
    }

    void connectInputs(ZEL::Node& node)
    {
        for (ZEL::Port* const input : node.inputs()) {
            const PortPtr source = input->connectedTo()[0];
            const Piece* const element = m_source.origins().elementOf(*input);
            const PortPtr made = m_copies[input];
            if (source && levelOf(*source) != levelOf(*input))
                m_acrossGraphs.emplace_back(input, source);
            else if (source && m_copies.count(source.get()) > 0)
                connect(*input, source);
            else if (element && !m_options.isInner && levelOf(*made).get() == &m_compound)
                connectOutside(*made, *element);
        }
    }

    void connectOutside(ZEL::Port& made, const Piece& element)
    {
        const PortPtr source = sourceOf(element);
        if (source && connectionProblem(*source, made, false).empty())
            made.addConnection(source);
    }

    void connect(ZEL::Port& receiver, const PortPtr& source)
    {
        if (!source || !m_problem.empty())
            return;
        const PortPtr from = m_copies[source.get()];
        const PortPtr to = m_copies[&receiver];
        // What is in the network is checked as every edit is.
        const bool isInside = levelOf(*to) == levelOf(*from) && levelOf(*to).get() != &m_compound;
        if (isInside)
            m_problem = connectionProblem(*from, *to, false);
        if (m_problem.empty())
            to->addConnection(from);
    }

    /// What an element names that is not in the text: what is called so beside the copy.
    PortPtr sourceOf(const Piece& element) const
    {
        const std::string interface = attributeOf(element, "interfacename");
        if (!interface.empty())
            return m_compound.innerInputs()[interface.c_str()];
        const std::string graph = attributeOf(element, "nodegraph");
        const std::string name = graph.empty() ? attributeOf(element, "nodename") : graph;
        const NodePtr node = name.empty() ? nullptr : m_compound.nodes()[name.c_str()];
        if (!node || m_isMade.count(node.get()) > 0)
            return nullptr;
        const std::string output = attributeOf(element, "output");
        return output.empty() ? node->outputs()[0] : node->outputs()[output.c_str()];
    }

    /// What holds for the whole text holds for the copies, where something else does around them.
    void keepInherited(const NodePtr& made)
    {
        Attributes& attributes = m_document.attributes();
        for (const char* const name : kInherited) {
            const std::string wanted =
                m_source.attributes().get({m_source.getRootNode(), nullptr}, name);
            const bool isOwn = !attributes.get({made, nullptr}, name).empty();
            if (!wanted.empty() && !isOwn && inheritedValue(m_document, made, name) != wanted)
                attributes.set({made, nullptr}, name, AttributeValue{wanted, nullptr});
        }
    }

    /// Far enough beside what they were copied from, and beside the copies before them, that none
    /// hides another one.
    Position stepBeside() const
    {
        ZEL::NodeList& from = m_source.getRootNode()->getAsCompound()->nodes();
        std::vector<NodePtr> others = lastNodes(m_compound, static_cast<int>(m_made.size()));
        for (const NodePtr& node : from) {
            const NodePtr copied = m_compound.nodes()[node->getName()];
            if (copied && m_isMade.count(copied.get()) == 0)
                others.push_back(copied);
        }
        std::set<std::pair<std::string, std::string>> taken;
        for (const NodePtr& node : others) {
            if (const std::optional<Position> place = positionOf(m_document, node))
                taken.emplace(numberText(place->x), numberText(place->y));
        }
        const auto isHidden = [&](const NodePtr& node, double by) {
            const std::optional<Position> place = positionOf(m_document, node);
            return place && taken.count({numberText(place->x + by), numberText(place->y + by)}) > 0;
        };
        double by = 0;
        // Each turn passes a place that is taken; far away the next one may look the same.
        for (std::size_t turn = 0; turn < taken.size(); ++turn) {
            if (std::none_of(m_made.begin(), m_made.end(),
                             [&](const NodePtr& node) { return isHidden(node, by); }))
                break;
            by += kBeside;
        }
        return {by, by};
    }

    /// Those that the text gives no place come below the others, or below what is there.
    void place()
    {
        std::vector<NodePtr> unplaced;
        for (const NodePtr& node : m_made) {
            if (!positionOf(m_document, node))
                unplaced.push_back(node);
        }
        std::optional<PlaceBox> box = boxOf(m_document, m_made);
        if (!m_options.at && box)
            shiftAll({}, stepBeside());
        std::optional<Position> below =
            placeBelow(m_document, m_compound, static_cast<int>(m_made.size()));
        if (box)
            below = Position{box->first.x, box->last.y + 1};
        else if (m_options.at)
            below = Position{};
        if (below && !unplaced.empty())
            placeInColumns(m_document, unplaced, *below);
        box = boxOf(m_document, m_made);
        if (!m_options.at || !box)
            return;
        const Position middle = {(box->first.x + box->last.x) / 2,
                                 (box->first.y + box->last.y) / 2};
        shiftAll(m_options.isMiddleAt ? middle : box->first, *m_options.at);
    }

    void shiftAll(const Position& from, const Position& to)
    {
        shift(m_document, m_made, from, to);
        shift(m_document, m_backdrops, from, to);
    }

    /// What the text connects in a circle.
    void checkFlow()
    {
        if (ZEL::Port* const sender = feedingItself(m_senders))
            m_problem = pathOf(*sender) + " would feed itself";
    }

    Document& m_document;
    Document& m_source;
    ZEL::Compound& m_compound;
    const PasteOptions& m_options;
    std::string m_problem;
    std::vector<NodePtr> m_made; ///< In the compound itself.
    std::unordered_set<const ZEL::Node*> m_isMade;
    std::unordered_map<const ZEL::Node*, NodePtr> m_nodes; ///< Those made, by what they are of.
    std::vector<BackdropPtr> m_backdrops;                  ///< Made in the compound itself.
    std::unordered_map<ZEL::Port*, PortPtr> m_copies;
    std::vector<ZEL::Port*> m_senders;                       ///< The copied outputs.
    std::vector<std::pair<PortPtr, PortPtr>> m_acrossGraphs; ///< Receivers and their sources.
};

} // namespace

void addWords(const PasteOptions& options, std::vector<std::string>& words)
{
    if (options.at)
        words.insert(words.end(), {options.isMiddleAt ? "--middle" : "--at",
                                   numberText(options.at->x) + "," + numberText(options.at->y)});
    if (options.isInner)
        words.emplace_back("--inner");
}

bool Edits::paste(const CompoundPtr& compound,
                  const std::string& text,
                  const PasteOptions& options,
                  std::vector<NodePtr>& made)
{
    const NodePtr owner = compound ? compound->getAsNode() : nullptr;
    if (!has(owner))
        return false;
    const std::string path = pathOf(*owner);
    if (options.at && (!std::isfinite(options.at->x) || !std::isfinite(options.at->y)))
        return fail(path, "its place is no number");
    Message error;
    const PassingDocument source = openText(text, m_document, error);
    if (!source)
        return fail("text", error.text);
    const std::string problem = textProblem(source->xml().documentElement());
    if (!problem.empty())
        return fail("text", problem);
    ZEL::NodeList& nodes = source->getRootNode()->getAsCompound()->nodes();
    if (nodes.size() == 0)
        return fail("text", "no node is in it");
    const std::string what =
        nodes.size() == 1 ? nodes[0]->getName() : std::to_string(nodes.size()) + " nodes";
    std::vector<std::string> words = {"paste", path, elementText(source->xml().documentElement())};
    addWords(options, words);
    return run(named("Paste " + what, words), path, [&] {
        Paste paste(m_document, *source, *compound, options);
        std::string refusal = paste.run();
        made = paste.made();
        return refusal;
    });
}

bool Edits::paste(const CompoundPtr& compound, const std::string& text, std::vector<NodePtr>& made)
{
    return paste(compound, text, {}, made);
}

bool Edits::paste(const std::string& path, const std::string& text, std::vector<NodePtr>& made)
{
    const CompoundPtr compound = findCompound(path);
    return compound && paste(compound, text, made);
}

} // namespace shading
