#include "document/definedNode.h"

#include "base/progress.h"
#include "document/attributes.h"
#include "document/document.h"
#include "document/names.h"
#include "document/origins.h"
#include "format/piece.h"

#include <algorithm>
#include <string_view>

namespace shading {

namespace {

using Descriptions = std::vector<PortDescription>;

const PortDescription* find(const Descriptions& descriptions, const char* name)
{
    const auto found = std::find_if(descriptions.begin(), descriptions.end(),
                                    [&](const PortDescription& d) { return d.name == name; });
    return found == descriptions.end() ? nullptr : &*found;
}

/// One of the two port lists of a node on its way from one definition to another.
class ListUpdate {
public:
    ListUpdate(Document& document, Node& node, ZEL::PortList& ports)
        : m_document(document),
          m_node(node),
          m_ports(ports)
    {
    }

    void run(const Descriptions& before, const Descriptions& after)
    {
        removeLeftOvers(before, after);
        for (std::size_t i = 0; i < after.size(); ++i) {
            bringUp(find(before, after[i].name.c_str()), after[i]);
            // Only moves to the front: the library's move to the back is none.
            const int place = m_ports.findPort(m_ports[after[i].name.c_str()]);
            if (place > static_cast<int>(i))
                m_ports.movePort(place, static_cast<int>(i));
        }
    }

private:
    void removeLeftOvers(const Descriptions& before, const Descriptions& after)
    {
        for (const PortDescription& old : before) {
            const PortPtr port = m_ports[old.name.c_str()];
            const bool isWanted = !port || find(after, port->getName()) || port->isConnected();
            if (!isWanted && !m_document.origins().elementOf(*port))
                m_ports.remove(port);
        }
    }

    void bringUp(const PortDescription* before, const PortDescription& after)
    {
        PortPtr port = m_ports[after.name.c_str()];
        if (!port) {
            port = m_ports.addPort(after.name.c_str(), m_document.dataType(after.type));
            if (hasValues() && !after.value.empty())
                port->setPortDefaultValue(after.value.c_str());
            return;
        }
        const Piece* const element = m_document.origins().elementOf(*port);
        if (before && !element && before->type != after.type)
            port->setDataType(m_document.dataType(after.type));
        const bool isGiven = element ? !element->attribute("value") : before != nullptr;
        const std::string_view value = before ? before->value : std::string_view();
        if (hasValues() && isGiven && value == port->getPortDefaultValue() &&
            value != after.value && (!element || after.type == typeNameOf(*port)))
            port->setPortDefaultValue(after.value.c_str());
    }

    /// A document cannot give an output of a plain node a value, so no definition does.
    bool hasValues() const { return &m_ports == &m_node.inputs(); }

    Document& m_document;
    Node& m_node;
    ZEL::PortList& m_ports;
};

/// The ports that the document or a connection asks for; what only a definition gave says nothing.
void addPorts(const Origins& origins, ZEL::PortList& ports, std::vector<Signature::Port>& wanted)
{
    for (ZEL::Port* const port : ports) {
        const bool isListed = origins.elementOf(*port) != nullptr;
        const bool hasType = isListed && std::string(port->getDataType()->getName()) != kNoType;
        if (isListed || port->isConnected())
            wanted.push_back({port->getName(), hasType ? port->getDataType()->getName() : ""});
    }
}

Signature signatureOf(Document& document, Node& node, const NamedOutputs& namedOutputs)
{
    Signature signature;
    signature.nodeType = node.getNodeTypeName();
    if (const Piece* const element = node.element()) {
        signature.type = attributeOf(*element, "type");
    }
    signature.nodeDef = document.attributes().get({&node, nullptr}, "nodedef");
    signature.version = document.attributes().get({&node, nullptr}, "version");
    addPorts(document.origins(), node.inputs(), signature.inputs);
    addPorts(document.origins(), node.outputs(), signature.outputs);
    const auto named = namedOutputs.find(&node);
    if (named != namedOutputs.end()) {
        for (const std::string& name : named->second)
            signature.outputs.push_back({name, ""});
    }
    return signature;
}

} // namespace

const PortDescription* descriptionOf(ZEL::Port& port)
{
    const NodePtr node = port.getParentNode();
    const auto* const own = dynamic_cast<const Node*>(node.get());
    if (!own || !own->definition())
        return nullptr;
    const DefinitionRecord& record = own->definition()->record();
    return find(port.getPortIOType() == ZEL::PortInput ? record.inputs : record.outputs,
                port.getName());
}

void defineNode(Document& document, Node& node, const DefinitionPtr& definition)
{
    const DefinitionRecord none;
    const DefinitionPtr former = node.definition();
    node.setDefinition(definition);
    if (!definition)
        return;
    const DefinitionRecord& before = former ? former->record() : none;
    const DefinitionRecord& after = definition->record();
    ListUpdate(document, node, node.inputs()).run(before.inputs, after.inputs);
    ListUpdate(document, node, node.outputs()).run(before.outputs, after.outputs);
}

void defineNodes(Document& document,
                 ZEL::Compound& compound,
                 const NamedOutputs& namedOutputs,
                 Progress* progress)
{
    for (int i = 0; i < compound.nodes().size(); ++i) {
        // The compounds of this host hold nodes of this host.
        const HostNodePtr node(static_cast<Node*>(compound.nodes()[i].get()));
        if (progress)
            progress->step();
        if (node->isCompound()) {
            defineNodes(document, *node->getAsCompound(), namedOutputs, progress);
            continue;
        }
        DefinitionPtr definition = node->definition();
        if (definition)
            definition = document.definitions().named(definition->record().name);
        if (!definition)
            definition =
                document.definitions().matching(signatureOf(document, *node, namedOutputs));
        defineNode(document, *node, definition);
    }
}

void redefineNode(Document& document, Node& node)
{
    Signature signature = signatureOf(document, node, {});
    if (signature.type.empty() && node.outputs().size() == 1)
        signature.type = node.outputs()[0]->getDataType()->getName();
    defineNode(document, node, document.definitions().matching(signature));
}

HostNodePtr createNode(Document& document, const DefinitionPtr& definition, const char* name)
{
    HostNodePtr node = Node::createNew(&document, name);
    node->setNodeTypeName(definition->getName());
    defineNode(document, *node, definition);
    return node;
}

} // namespace shading
