#include "saving/projection.h"

#include "document/attributes.h"
#include "document/document.h"
#include "document/node.h"
#include "document/origins.h"
#include "saving/draftNetwork.h"

#include <cstring>

namespace shading {

namespace {

class Projection {
public:
    explicit Projection(DraftNetwork& network) : m_network(network), m_draft(network.draft()) {}

    void run()
    {
        const ZEL::AddRefWrapper<ZEL::Node> root = m_network.document().getRootNode();
        claimAll(*root);
        collectGone(*m_network.itemOf(*root));
        place(*root);
        for (const Gone& gone : m_gone) {
            m_network.progress().step();
            remove(gone);
        }
        declareInputs(*root);
    }

private:
    struct Gone {
        Piece* item;
        bool hasNodes; ///< Of those inside, some live on elsewhere.
    };

    void claimAll(ZEL::Node& node)
    {
        m_network.progress().step();
        Piece* item = m_network.readItemOf(node);
        if (!item || m_network.nodeOf(item))
            item = &newElement(node);
        m_network.claim(*item, node);
        for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (ZEL::Port* const port : *list) {
                Piece* const portItem = m_network.readItemOf(*port);
                // An input may stand in the definition that its graph implements.
                if (portItem && (portItem->parent == item || portItem->parent->text == "nodedef"))
                    m_network.claim(*portItem, *port);
            }
        }
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (!compound)
            return;
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
            claimAll(*inner);
    }

    Piece& newElement(ZEL::Node& node)
    {
        Piece& item = m_draft.newElement(node.getNodeTypeName());
        m_draft.setAttribute(item, "name", node.getName());
        ZEL::PortList& outputs = node.outputs();
        if (node.isCompound())
            return item;
        Signature signature;
        signature.nodeType = node.getNodeTypeName();
        const bool isPlain =
            outputs.size() == 1 && std::strcmp(outputs[0]->getName(), kDefaultOutput) == 0;
        if (outputs.size() > 0) {
            // A copy has the type of what it was copied from.
            signature.type = m_network.document().attributes().get({&node, nullptr}, "type");
            if (signature.type.empty())
                signature.type = isPlain ? typeNameOf(*outputs[0]) : kMultiOutput;
            m_draft.setAttribute(item, "type", signature.type);
        }
        // A definition that these alone do not find is named.
        const auto* const own = dynamic_cast<const Node*>(&node);
        const DefinitionPtr definition = own ? own->definition() : nullptr;
        if (definition && m_network.document().definitions().matching(signature) != definition)
            m_draft.setAttribute(item, "nodedef", definition->record().name);
        return item;
    }

    /// Finds the elements below that stand for nothing any more, inner ones first. True when one
    /// stands for a node.
    bool collectGone(Piece& parent)
    {
        const bool isGraph =
            parent.text == "materialx" || kindOf(parent.text) == ElementKind::Graph;
        bool hasNodes = false;
        for (Piece* item = parent.first; item; item = item->next) {
            m_network.progress().step();
            const ElementKind kind = item->isElement() ? kindOf(item->text) : ElementKind::Other;
            const bool isNode =
                isGraph && (kind == ElementKind::Node || kind == ElementKind::Graph);
            const bool isPort = kind == ElementKind::Input || kind == ElementKind::Output;
            const bool isPresent = m_network.nodeOf(item) != nullptr;
            const bool hasNodesInside = isNode && collectGone(*item);
            hasNodes = hasNodes || isPresent || hasNodesInside;
            if ((isNode && !isPresent) ||
                (isPort && m_network.nodeOf(&parent) && !m_network.portOf(item)))
                m_gone.push_back({item, hasNodesInside});
        }
        return hasNodes;
    }

    /// An element that is in its graph stays where it is; others come behind that of the node
    /// before.
    void place(ZEL::Node& node)
    {
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (!compound)
            return;
        Piece& parent = *m_network.itemOf(node);
        Piece* previous = nullptr;
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes()) {
            m_network.progress().step();
            Piece& item = *m_network.itemOf(*inner);
            Piece* const place = previous ? previous : startOf(parent);
            if (!item.parent)
                m_draft.insert(item, parent, place);
            else if (item.parent != &parent)
                m_draft.move(item, parent, place);
            previous = &item;
        }
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
            place(*inner);
    }

    /// Behind what a first node comes: before the nodes and outputs that are there.
    Piece* startOf(const Piece& parent) const
    {
        Piece* start = nullptr;
        for (Piece* item = parent.first; item; item = item->next) {
            const ElementKind kind = item->isElement() ? kindOf(item->text) : ElementKind::Other;
            if (kind == ElementKind::Output || kind == ElementKind::Node ||
                kind == ElementKind::Graph)
                return start;
            if (item->isElement())
                start = item;
        }
        return lastPiece(parent);
    }

    /// What is no part of the network stays where a graph stood whose nodes live on.
    void remove(const Gone& gone)
    {
        std::vector<Piece*> kept;
        for (Piece* item = gone.hasNodes ? gone.item->first : nullptr; item; item = item->next) {
            if (!item->isBlank() &&
                (!item->isElement() || kindOf(item->text) == ElementKind::Other))
                kept.push_back(item);
        }
        Piece* previous = gone.item;
        for (Piece* const item : kept) {
            if (item->parent != gone.item)
                continue; // A comment, which went along.
            m_draft.move(*item, *gone.item->parent, previous);
            previous = item;
        }
        m_draft.remove(*gone.item);
    }

    /// The reader makes an input that an `interfacename` means; the format wants it declared.
    void declareInputs(ZEL::Node& node)
    {
        m_network.progress().step();
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (!compound)
            return;
        for (ZEL::Port* const port : node.inputs()) {
            if (!m_network.itemOf(*port) && !m_network.document().origins().isImplied(*port))
                m_network.declare(node, *port);
        }
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
            declareInputs(*inner);
    }

    DraftNetwork& m_network;
    Draft& m_draft;
    std::vector<Gone> m_gone;
};

} // namespace

void projectNodes(DraftNetwork& network)
{
    Projection(network).run();
}

} // namespace shading
