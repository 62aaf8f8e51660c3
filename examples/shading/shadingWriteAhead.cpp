#include "shadingWriteAhead.h"

#include "shadingContainer.h"
#include "shadingDraftNetwork.h"
#include "shadingReferenceWriter.h"

#include <string>
#include <string_view>

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
        DraftItem* const item = m_network.itemOf(port);
        if (!item || !item->isFromText)
            return;
        writeName(*item, port.getName());
        const std::string_view value = port.getPortDefaultValue();
        const DraftAttribute* const read = item->attribute("value");
        if (!hasValue || (read ? !read->isPlain() || read->value == value : value.empty()))
            return;
        if (value.empty())
            m_network.draft().removeAttribute(*item, "value");
        else
            m_network.draft().setAttribute(*item, "value", std::string(value));
    }

    /// A name that the document does not give is made up when it is read.
    void writeName(DraftItem& item, const char* name)
    {
        const DraftAttribute* const read = item.attribute("name");
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

    /// The outer port is the one that has the element.
    void writeReference(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer)
    {
        const PortPtr source = receiver.connectedTo()[0];
        if (source && node.isCompound() && !m_network.itemOf(outer))
            m_network.declare(node, outer);
        DraftItem* const item = m_network.itemOf(outer);
        if (!item || (source ? mayMean(*item, *source) : !isStale(m_network, *item, outer)))
            return;
        shading::writeReference(m_network, *item, source);
    }

    DraftNetwork& m_network;
};

} // namespace

void writeAhead(DraftNetwork& network)
{
    WriteAhead(network).run(*network.container().getRootNode());
}

} // namespace shading
