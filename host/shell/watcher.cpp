#include "shell/watcher.h"

#include "document/names.h"

#include <ostream>

namespace shading {

namespace {

const char* wordOf(ZEL::ECnxChangeType type)
{
    return type == ZEL::eCnxAdded ? "added" : "removed";
}

const char* wordOf(ZEL::ECompoundPortChangeType type)
{
    switch (type) {
    case ZEL::eCompoundPortAdded:
        return "added";
    case ZEL::eCompoundPortRemoved:
        return "removed";
    case ZEL::eCompoundPortRenamed:
        return "renamed";
    case ZEL::eCompoundPortMoved:
        return "moved";
    }
    return "changed";
}

const char* wordOf(ZEL::ENodeChangeType type)
{
    switch (type) {
    case ZEL::eNodeAdded:
        return "added";
    case ZEL::eNodeRemoved:
        return "removed";
    case ZEL::eNodeRenamed:
        return "renamed";
    case ZEL::eNodeChanged:
        break;
    }
    return "changed";
}

} // namespace

Watcher::Watcher(const ZEL::AddRefWrapper<ZEL::Node>& root, std::ostream& out) : m_out(out)
{
    watch(root);
}

void Watcher::zel_onConnectionChange(ZEL::ECnxChangeType type,
                                     const ZEL::AddRefWrapper<ZEL::Port>& first,
                                     const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    print(std::string("connection ") + wordOf(type) + ": " + pathOf(*first) + " -> " +
          pathOf(*second));
}

void Watcher::zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                             const ZEL::AddRefWrapper<ZEL::Port>& first,
                                             const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    const bool firstSends = first->getPortIOType() == ZEL::PortOutput;
    print(std::string("compound connection ") + wordOf(type) + ": " +
          pathOf(firstSends ? *first : *second) + " -> " + pathOf(firstSends ? *second : *first));
}

void Watcher::zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                       const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    // An inner port: the directions are crossed.
    const bool isInput = port->getPortIOType() == ZEL::PortOutput;
    print(std::string("port ") + wordOf(type) + ": " + (isInput ? "input " : "output ") +
          pathOf(*port));
}

void Watcher::zel_onNodeChange(ZEL::ENodeChangeType type,
                               const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                               const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    watch(node);
    print(std::string("node ") + wordOf(type) + ": " + pathOf(*compound->getAsNode()) + "." +
          node->getName());
}

void Watcher::watch(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    if (!node->isCompound())
        return;
    node->registerEditor(this);
    for (const ZEL::AddRefWrapper<ZEL::Node>& inner : node->getAsCompound()->nodes())
        watch(inner);
}

void Watcher::print(const std::string& line)
{
    m_out << line << "\n";
}

} // namespace shading
