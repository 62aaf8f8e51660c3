#include "saving/writeAhead.h"

#include "document/document.h"
#include "document/node.h"
#include "format/format.h"
#include "saving/draftNetwork.h"
#include "saving/referenceWriter.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace shading {

namespace {

class WriteAhead {
public:
    explicit WriteAhead(DraftNetwork& network) : m_network(network) {}

    /// The names come first: references are written with the new ones.
    void run(ZEL::Node& node)
    {
        writeNames(node);
        writeReferences(node);
        for (const PortPtr& source : m_sources) {
            if (isMissing(*source))
                m_network.declare(*source->getParentNode(), *source);
        }
    }

private:
    using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;

    void writeNames(ZEL::Node& node)
    {
        if (node.getParentCompound())
            writeName(*m_network.itemOf(node), node.getName());
        for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (ZEL::Port* const port : *list)
                writePort(*port, node.isCompound() || list == &node.inputs());
        }
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (!compound)
            return;
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
            writeNames(*inner);
    }

    void writePort(ZEL::Port& port, bool hasValue)
    {
        Piece* const item = m_network.itemOf(port);
        if (!item || !m_network.draft().isRead(*item))
            return;
        writeName(*item, port.getName());
        const std::string_view value = port.getPortDefaultValue();
        const Attribute* const read = item->attribute("value");
        if (!hasValue || (read ? !read->isPlain() || read->value == value : value.empty()))
            return;
        if (value.empty())
            m_network.draft().removeAttribute(*item, "value");
        else
            m_network.draft().setAttribute(*item, "value", std::string(value));
    }

    /// A name that the document does not give is made up when it is read.
    void writeName(Piece& item, const char* name)
    {
        const Attribute* const read = item.attribute("name");
        if (read && !read->value.empty() && read->isPlain() && read->value != name)
            m_network.draft().setAttribute(item, "name", name);
    }

    void writeReferences(ZEL::Node& node)
    {
        for (ZEL::Port* const input : node.inputs())
            writeReference(node, *input, *input);
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (!compound)
            return;
        for (ZEL::Port* const inner : compound->innerOutputs())
            writeReference(node, *inner, *compound->getReversePort(inner));
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
            writeReferences(*inner);
    }

    /// The outer port is the one that has the element. A compound's output comes from an element
    /// only, and so does any port with a source.
    void writeReference(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer)
    {
        const PortPtr source = receiver.connectedTo()[0];
        const bool isNew = node.isCompound() && !m_network.itemOf(outer) &&
                           (source || outer.getPortIOType() == ZEL::PortOutput);
        if (isNew)
            m_network.declare(node, outer);
        Piece* const item = m_network.itemOf(outer);
        if (isNew && source) {
            m_new.insert(item);
            m_sources.push_back(source);
        }
        if (!item || (source ? mayMean(*item, *source) : !isStale(m_network, *item, outer)))
            return;
        shading::writeReference(m_network, *item, source);
    }

    /// True for an output of a plain node that is there because a reference named it, when only new
    /// elements do: such an output gets an element of its own.
    bool isMissing(ZEL::Port& port) const
    {
        const ZEL::AddRefWrapper<ZEL::Node> node = port.getParentNode();
        if (port.isCompoundInternalPort() || node->isCompound() || m_network.itemOf(port) ||
            isGiven(static_cast<const Node&>(*node), port))
            return false;
        for (ZEL::Port* const receiver : port.connectedTo()) {
            const bool isInner = receiver->isCompoundInternalPort();
            const PortPtr outer =
                isInner ? receiver->getParentCompound()->getReversePort(receiver) : receiver;
            const Piece* const item = m_network.itemOf(*outer);
            if (item && m_new.count(item) == 0)
                return false;
        }
        return true;
    }

    /// By the node's type or by its definition.
    bool isGiven(const Node& node, ZEL::Port& port) const
    {
        const std::string name = port.getName();
        const Attribute* const type = m_network.itemOf(node)->attribute("type");
        if (name == kDefaultOutput && type && !type->value.empty() && type->value != kMultiOutput)
            return true;
        if (!node.definition())
            return false;
        const auto& outputs = node.definition()->record().outputs;
        return std::any_of(outputs.begin(), outputs.end(),
                           [&](const PortDescription& output) { return output.name == name; });
    }

    DraftNetwork& m_network;
    std::unordered_set<const Piece*> m_new; ///< Elements of compounds' ports with a source.
    std::vector<PortPtr> m_sources;         ///< Of those.
};

} // namespace

void writeAhead(DraftNetwork& network)
{
    WriteAhead(network).run(*network.document().getRootNode());
}

} // namespace shading
