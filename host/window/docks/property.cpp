#include "window/docks/property.h"

#include "document/attributes.h"
#include "document/definedNode.h"
#include "document/document.h"
#include "document/names.h"
#include "window/docks/tryEdit.h"
#include "window/workspace/workspace.h"

#include <QStringList>
#include <algorithm>

namespace shading {

namespace {

/// The attributes that people give to nodes and documents.
const char* const kAttributes[] = {"colorspace", "doc", "uiname"};
const char* const kDocumentAttributes[] = {"colorspace", "fileprefix", "doc"};
const char* const kAttributeFolder = "Attributes";

Property attributeProperty(const NodePtr& owner, const std::string& name)
{
    Property property;
    property.name = QString::fromStdString(name);
    property.owner = owner;
    property.style.folder = kAttributeFolder;
    return property;
}

void addAttributes(Document& document, const NodePtr& node, std::vector<Property>& properties)
{
    std::vector<std::string> names;
    if (node == document.getRootNode())
        names.assign(std::begin(kDocumentAttributes), std::end(kDocumentAttributes));
    else
        names.assign(std::begin(kAttributes), std::end(kAttributes));
    AttributeOwner owner;
    owner.node = node;
    for (const auto& [name, value] : document.attributes().all(owner)) {
        if (std::find(names.begin(), names.end(), name) == names.end() &&
            Edits::attributeProblem(owner, name).empty())
            names.push_back(name);
    }
    for (const std::string& name : names)
        properties.push_back(attributeProperty(node, name));
}

PortPtr inputLike(ZEL::Node& node, ZEL::Port& port)
{
    const PortPtr found = node.inputs()[port.getName()];
    return found && typeNameOf(*found) == typeNameOf(port) ? found : nullptr;
}

std::string definedValue(ZEL::Port& input)
{
    const PortDescription* const description = descriptionOf(input);
    return description ? description->value : std::string();
}

/// Those that have no source: a value means something to them.
std::vector<PortPtr> freeInputs(const Property& property)
{
    std::vector<PortPtr> inputs;
    for (const PortPtr& input : property.inputs) {
        if (!input->isConnected())
            inputs.push_back(input);
    }
    return inputs.empty() ? property.inputs : inputs;
}

PropertyState attributeState(Document& document, const Property& property)
{
    AttributeOwner owner;
    owner.node = property.owner;
    PropertyState state;
    state.value =
        QString::fromStdString(document.attributes().get(owner, property.name.toStdString()));
    state.isOwn = !state.value.isEmpty();
    return state;
}

QString setAttribute(Workspace& workspace, const Property& property, const QString& value)
{
    const std::string path = pathOf(*property.owner);
    if (workspace.document().findNodeFromPath(path.c_str()) != property.owner)
        return QStringLiteral("several nodes have this path: rename one first");
    return tryEdit(workspace, [&] {
        return workspace.edit([&](Edits& edits) {
            return edits.setAttribute(path, property.name.toStdString(), value.toStdString());
        });
    });
}

} // namespace

QString sourceText(ZEL::Port& source)
{
    const NodePtr node = source.getParentNode();
    // An inner port is an input of the graph around.
    if (source.isCompoundInternalPort())
        return QString("input %1").arg(source.getName());
    return QString("%1.%2").arg(node ? node->getName() : "", source.getName());
}

std::vector<Property> propertiesOf(Workspace& workspace, const std::vector<NodePtr>& nodes)
{
    std::vector<Property> properties;
    if (nodes.empty())
        return properties;
    for (ZEL::Port* const port : nodes.front()->inputs()) {
        Property property;
        for (const NodePtr& node : nodes) {
            if (const PortPtr input = inputLike(*node, *port))
                property.inputs.push_back(input);
        }
        if (property.inputs.size() != nodes.size())
            continue;
        property.name = port->getName();
        property.typeName = QString::fromStdString(typeNameOf(*port));
        property.style = styleOf(workspace.document(), *port);
        properties.push_back(std::move(property));
    }
    if (nodes.size() == 1)
        addAttributes(workspace.document(), nodes.front(), properties);
    return properties;
}

PropertyState stateOf(Workspace& workspace, const Property& property)
{
    if (property.inputs.empty())
        return attributeState(workspace.document(), property);
    PropertyState state;
    const std::vector<PortPtr> inputs = freeInputs(property);
    ZEL::Port& first = *inputs.front();
    state.value = first.getPortDefaultValue();
    for (const PortPtr& input : inputs) {
        state.isMixed = state.isMixed || state.value != input->getPortDefaultValue();
        state.isOwn = state.isOwn || definedValue(*input) != input->getPortDefaultValue();
    }
    if (first.isConnected()) {
        const PortPtr source = first.connectedTo()[0];
        state.source = sourceText(*source);
        state.sourceNode = source->getParentNode();
    } else {
        state.source = QString::fromStdString(hiddenSourceOf(first));
    }
    return state;
}

QString setProperty(Workspace& workspace, const Property& property, const QString& value)
{
    if (property.inputs.empty())
        return setAttribute(workspace, property, value);
    const std::vector<PortPtr> inputs = freeInputs(property);
    const std::string text = value.toStdString();
    if (inputs.size() == 1)
        return tryEdit(workspace, [&] {
            return workspace.edit([&](Edits& edits) { return edits.setValue(inputs[0], text); });
        });
    const QString title = value.isEmpty() ? QString("Clear %1 of %2 nodes").arg(property.name)
                                          : QString("Set %1 of %2 nodes to %3").arg(property.name);
    const QString count = QString::number(inputs.size());
    return tryEdit(workspace, [&] {
        return workspace.editAs(
            value.isEmpty() ? title.arg(count) : title.arg(count, value.left(40)),
            [&](Edits& edits) {
                return std::all_of(inputs.begin(), inputs.end(),
                                   [&](const PortPtr& port) { return edits.setValue(port, text); });
            });
    });
}

} // namespace shading
