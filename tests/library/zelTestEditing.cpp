#include "zelTestEditing.h"

namespace ZEL {

namespace {

std::string listText(const char* mark, PortList& list)
{
    std::string result(list.size() > 0 ? mark : "");
    for (Port* port : list) {
        const AddRefWrapper<PortDataType> type = port->getDataType();
        const std::string typeName = type ? type->getName() : "-";
        result += std::string(" ") + port->getName() + (typeName == "Float" ? "" : ":" + typeName);
        for (int i = 0; i < port->connectedTo().size(); ++i)
            result += (i == 0 ? "=" : ",") + pathOf(port->connectedTo()[i]);
    }
    return result;
}

std::string nodeText(Node& node)
{
    std::string result =
        pathOf(&node) + listText(" <", node.inputs()) + listText(" >", node.outputs());
    const AddRefWrapper<Compound> compound = node.getAsCompound();
    if (!compound)
        return result + "\n";
    result += listText(" {<", compound->innerInputs()) + listText(" {>", compound->innerOutputs());
    result += "\n";
    for (const AddRefWrapper<Node>& inside : compound->nodes())
        result += nodeText(*inside);
    return result;
}

} // namespace

std::string wholeText(TestNetwork& net)
{
    return nodeText(*net.root);
}

} // namespace ZEL
