#include "shadingWriteAhead.h"

#include "shadingContainer.h"
#include "shadingDraftNetwork.h"
#include "shadingFormat.h"
#include "shadingNode.h"
#include "shadingOrigins.h"
#include "shadingReferenceWriter.h"

#include <pugixml.hpp>

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
            writeName(*m_network.itemOf(node), pugi::xml_node(static_cast<Node&>(node).element()),
                      node.getName());
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
        const pugi::xml_node element(m_network.container().origins().elementOf(port));
        writeName(*item, element, port.getName());
        const std::string value = port.getPortDefaultValue();
        if (!hasValue || value == element.attribute("value").value())
            return;
        if (value.empty())
            m_network.draft().removeAttribute(*item, "value");
        else
            m_network.draft().setAttribute(*item, "value", value);
    }

    /// A name that the document does not give is made up when it is read.
    void writeName(DraftItem& item, pugi::xml_node element, const std::string& name)
    {
        const char* const read = element.attribute("name").value();
        if (item.isFromText && *read != '\0' && read != name)
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
        const pugi::xml_node element(m_network.container().origins().elementOf(outer));
        if (!item || (source ? item->isFromText && mayMean(element, *source)
                             : !isStale(m_network, *item, outer)))
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
