#include "saving/factWriter.h"

#include "document/definedNode.h"
#include "document/document.h"
#include "document/origins.h"
#include "document/step.h"
#include "saving/referenceWriter.h"

#include <string>
#include <string_view>

namespace shading {

namespace {

/// The node has an output of that name and this type by the type of its element.
bool isImplied(const Piece& item, ZEL::Port& port)
{
    const std::string type = attributeOf(item, "type");
    return port.getPortIOType() == ZEL::PortOutput &&
           std::string_view(port.getName()) == kDefaultOutput && !type.empty() &&
           type != kMultiOutput;
}

} // namespace

void FactWriter::writeChanges()
{
    const NodePtr root = m_network.document().getRootNode();
    // References are written with the new names, and outputs may come from references.
    writeNode(static_cast<Node&>(*root));
    writeBindings(*root);
    writeOutputs(*root);
}

void FactWriter::writeNode(Node& node)
{
    m_network.progress().step();
    Piece& item = *m_network.itemOf(node);
    if (node.getParentCompound()) {
        writeName(item, node.getName());
        m_network.draft().setElementName(item, node.getNodeTypeName());
    }
    for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
        for (ZEL::Port* const port : *list)
            writePort(node, *port);
    }
    const CompoundPtr compound = node.getAsCompound();
    if (!compound)
        return;
    // The nodes of this host's compounds are its own.
    for (const NodePtr& inner : compound->nodes())
        writeNode(static_cast<Node&>(*inner));
}

/// A name that the document does not give is made up when it is read.
void FactWriter::writeName(Piece& item, const char* name)
{
    const Attribute* const read = item.attribute("name");
    if (read && !read->value.empty() && (read->isPlain() ? read->value : read->text()) != name)
        m_network.draft().setAttribute(item, "name", name);
}

void FactWriter::writePort(Node& node, ZEL::Port& port)
{
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    if (Piece* const item = m_network.itemOf(port))
        writeName(*item, port.getName());
    else if (node.isCompound() ? !isInput || isSaid(port)
                               : isInput && isSaid(port) && !isGiven(node, port))
        declare(node, port);
}

/// The input has a source or a value.
bool FactWriter::isSaid(ZEL::Port& port) const
{
    return m_network.isFed(port) || *port.getPortDefaultValue() != '\0';
}

void FactWriter::writeBindings(ZEL::Node& node)
{
    m_network.progress().step();
    const CompoundPtr compound = node.getAsCompound();
    for (ZEL::Port* const input : node.inputs())
        writeBinding(node, *input, *input);
    for (int i = 0; compound && i < node.outputs().size(); ++i) {
        const PortPtr outer = node.outputs()[i];
        writeBinding(node, *compound->getReversePort(outer), *outer);
    }
    for (int i = 0; compound && i < compound->nodes().size(); ++i)
        writeBindings(*compound->nodes()[i]);
}

/// The outer port is the one that has the element.
void FactWriter::writeBinding(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer)
{
    Piece* const item = m_network.itemOf(outer);
    if (!item)
        return;
    const PortPtr source = receiver.connectedTo()[0];
    const bool isChange =
        source ? !means(m_network, *item, *source) : isStale(m_network, *item, outer);
    const bool isLed = isChange && shading::writeReference(m_network, *item, source);
    if (m_network.draft().isRead(*item))
        writeValue(node, outer, *item, isLed);
}

/// What a value or a source was taken from goes when it says nothing any more.
void FactWriter::writeValue(ZEL::Node& node, ZEL::Port& port, Piece& item, bool isLed)
{
    Draft& draft = m_network.draft();
    const std::string_view value = port.getPortDefaultValue();
    const Attribute* const read = item.attribute("value");
    const bool isSame = read ? (read->isPlain() ? read->value == value : read->text() == value)
                             : value.empty() || (!isLed && isGiven(static_cast<Node&>(node), port));
    if (isSame && !isLed)
        return;
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    if (value.empty() || m_network.isFed(port))
        draft.removeAttribute(item, "value");
    const bool isNeeded = node.isCompound() || !isInput || m_network.isFed(port) || !isBare(item) ||
                          !(value.empty() || isGiven(static_cast<Node&>(node), port));
    if (!isNeeded)
        return m_network.remove(port);
    if (value.empty() || m_network.isFed(port))
        return;
    draft.setAttribute(item, "value", std::string(value));
    if (isInput)
        shading::writeReference(m_network, item, nullptr); // It named nothing.
}

/// An output that no element and no definition gives comes from those that refer to it. Whether one
/// without any is read back, only the judge knows.
void FactWriter::writeOutputs(ZEL::Node& node)
{
    m_network.progress().step();
    const CompoundPtr compound = node.getAsCompound();
    if (compound) {
        for (const NodePtr& inner : compound->nodes())
            writeOutputs(*inner);
        return;
    }
    const bool isRead = m_network.draft().isRead(*m_network.itemOf(node));
    for (ZEL::Port* const output : node.outputs()) {
        if ((output->isConnected() || !isRead) && !m_network.itemOf(*output) &&
            !isGiven(static_cast<Node&>(node), *output) && !isNamed(*output))
            declare(node, *output);
    }
}

bool FactWriter::declare(ZEL::Node& node, ZEL::Port& port)
{
    const bool isDone = m_network.declare(node, port);
    if (isDone)
        m_new.insert(m_network.itemOf(port));
    return isDone;
}

/// By the type of the node's element or by its definition; a connection needs an element.
bool FactWriter::isGiven(const Node& node, ZEL::Port& port) const
{
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    if (isInput && m_network.isFed(port))
        return false;
    if (isImplied(*m_network.itemOf(node), port))
        return true;
    const PortDescription* const known = descriptionOf(port);
    return known && known->type == typeNameOf(port) &&
           (!isInput || known->value == port.getPortDefaultValue());
}

/// An element that was there, and may have been written since, refers to the output.
bool FactWriter::isNamed(ZEL::Port& output) const
{
    for (ZEL::Port* const receiver : output.connectedTo()) {
        const bool isInner = receiver->isCompoundInternalPort();
        const PortPtr outer =
            isInner ? receiver->getParentCompound()->getReversePort(receiver) : receiver;
        const Piece* const item = m_network.itemOf(*outer);
        if (item && m_new.count(item) == 0)
            return true;
    }
    return false;
}

bool FactWriter::writeInFull(const std::vector<Difference>& differences)
{
    for (const Difference& difference : differences) {
        if (difference.fact == Difference::Fact::Definition)
            m_redefined.insert(difference.node);
        if (difference.fact == Difference::Fact::Missing)
            m_missing.insert(difference.port);
    }
    bool isWritten = false;
    for (const Difference& difference : differences) {
        m_network.progress().step();
        isWritten = writeInFull(difference) || isWritten;
    }
    return isWritten;
}

bool FactWriter::writeInFull(const Difference& difference)
{
    if (difference.port)
        return writePortInFull(difference, *difference.port);
    Draft& draft = m_network.draft();
    ZEL::Node& node = *difference.node;
    Piece& item = *m_network.itemOf(node);
    switch (difference.fact) {
    case Difference::Fact::Name:
        return draft.setAttribute(item, "name", node.getName());
    case Difference::Fact::NodeType:
        return node.getParentCompound() && draft.setElementName(item, node.getNodeTypeName());
    case Difference::Fact::Definition:
        return draft.setAttribute(item, "nodedef",
                                  static_cast<Node&>(node).definition()->record().name);
    case Difference::Fact::Surplus:
        return m_redefined.count(&node) == 0 && declareAll(node);
    default:
        return false;
    }
}

bool FactWriter::writePortInFull(const Difference& difference, ZEL::Port& port)
{
    Draft& draft = m_network.draft();
    ZEL::Node& node = *difference.node;
    Piece* const item = m_network.itemOf(port);
    // The ports that another definition gave, and did not give, come right with it.
    const bool isRedefined = m_redefined.count(&node) > 0;
    if (!item && isRedefined)
        return false;
    const std::string value = port.getPortDefaultValue();
    switch (difference.fact) {
    case Difference::Fact::Name:
        return item && draft.setAttribute(*item, "name", port.getName());
    case Difference::Fact::PortType:
        return writeType(node, port);
    case Difference::Fact::Missing:
    case Difference::Fact::Value:
        if (item)
            return value.empty() ? draft.removeAttribute(*item, "value")
                                 : draft.setAttribute(*item, "value", value);
        return declare(node, port);
    case Difference::Fact::Order:
        return !isRedefined && writeOrder(node, port);
    case Difference::Fact::Source:
        return writeSource(node, port);
    default:
        return false;
    }
}

/// The output that a plain node has by its type needs no element.
bool FactWriter::writeType(ZEL::Node& node, ZEL::Port& port)
{
    Draft& draft = m_network.draft();
    Piece& owner = *m_network.itemOf(node);
    Piece* const item = m_network.itemOf(port);
    const std::string type = typeNameOf(port);
    const bool isOwners = !node.isCompound() && isImplied(owner, port);
    if (!item && !isOwners)
        return declare(node, port);
    const bool isOwnWritten = item && draft.setAttribute(*item, "type", type);
    return (isOwners && draft.setAttribute(owner, "type", type)) || isOwnWritten;
}

bool FactWriter::writeOrder(ZEL::Node& node, ZEL::Port& first)
{
    const bool isInput = first.getPortIOType() == ZEL::PortInput;
    // The inputs that references made come in the order of those.
    const bool isDeclared = node.isCompound() && declareAll(node);
    std::vector<Piece*> items;
    for (ZEL::Port* const port : isInput ? node.inputs() : node.outputs()) {
        Piece* const item = m_network.itemOf(*port);
        if (item && (items.empty() || item->parent == items.front()->parent))
            items.push_back(item);
    }
    bool hasMoved = false;
    for (std::size_t i = 1; i < items.size(); ++i) {
        const Piece* behind = items[i - 1];
        while (behind && behind != items[i])
            behind = behind->next;
        if (!behind)
            m_network.draft().move(*items[i], *items[i]->parent, items[i - 1]);
        hasMoved = hasMoved || !behind;
    }
    return hasMoved || isDeclared || declareAll(node);
}

/// So that nothing is left to the definition of the node and to references. An input of a plain
/// node that has neither value nor source is not in the document.
bool FactWriter::declareAll(ZEL::Node& node)
{
    bool isWritten = false;
    for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
        for (ZEL::Port* const port : *list) {
            const bool isKept = node.isCompound() || list == &node.outputs() || isSaid(*port);
            if (isKept && !m_network.itemOf(*port))
                isWritten = declare(node, *port) || isWritten;
        }
    }
    return isWritten;
}

bool FactWriter::writeSource(ZEL::Node& node, ZEL::Port& outer)
{
    const bool isInner = node.isCompound() && outer.getPortIOType() == ZEL::PortOutput;
    const PortPtr receiver = isInner ? node.getAsCompound()->getReversePort(&outer) : &outer;
    const PortPtr source = receiver->connectedTo()[0];
    if (!m_network.itemOf(outer) && !declare(node, outer))
        return false;
    Piece& item = *m_network.itemOf(outer);
    // What the source is read back as is not settled yet, and the element names it.
    const bool isUnsettled = source && (m_missing.count(source.get()) > 0 ||
                                        m_redefined.count(source->getParentNode().get()) > 0);
    if (isUnsettled && means(m_network, item, *source))
        return false;
    if (m_network.isFed(outer))
        m_network.draft().removeAttribute(item, "value");
    return shading::writeReference(m_network, item, source);
}

} // namespace shading
