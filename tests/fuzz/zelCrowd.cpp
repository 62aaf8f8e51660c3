#include "zelCrowd.h"

#include "zelFuzzPort.h"

#include <algorithm>

namespace zelFuzz {

std::string crowdName(int naming, int i)
{
    switch (naming % 5) {
    case 0:
        return "a";
    case 1:
        return "p" + std::to_string(i / 2);
    case 2:
        return "p" + std::to_string(i);
    case 3:
        return "p" + std::to_string(i % 7);
    default:
        return i % 3 == 0 ? "b" : "p" + std::to_string(i);
    }
}

int roomForMany(int wanted)
{
    constexpr int kMaxMany = 480;
    return std::clamp(kMaxMany - FuzzPort::live - CrowdNode::live - TitledNode::live, 0, wanted);
}

int roomForConnections(const Census& census, int wanted)
{
    constexpr int kMaxConnections = 800; // Each counts twice.
    int present = 0;
    for (ZEL::Port* const port : census.ports.all())
        present += port->connectedTo().size();
    return std::clamp(kMaxConnections - present / 2, 0, wanted);
}

int pickManyCount(Universe& universe)
{
    return 40 + universe.input.number(161);
}

NodePtr makeCrowdNode(Universe& universe, int kind, const std::string& name)
{
    NodePtr node;
    if (kind % 3 == 2)
        node = new TitledNode(universe);
    else
        node = new CrowdNode(universe);
    node->setName(name.c_str());
    return node;
}

PortPtr makeCrowdPort(Universe& universe, int kind, const std::string& name, ZEL::PortIOType ioType)
{
    if (kind % 3 == 2)
        return new TitledPort(universe, name.c_str(), ioType);
    return new FuzzPort(universe, name.c_str(), ioType);
}

} // namespace zelFuzz
