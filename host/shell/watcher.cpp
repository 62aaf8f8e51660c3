#include "shell/watcher.h"

#include "document/names.h"

#include <ostream>

namespace shading {

namespace {

// By their types, which count from 0.
const char* const kConnectionWords[] = {"added", "removed"};
const char* const kPortWords[] = {"added", "removed", "renamed", "moved"};
const char* const kNodeWords[] = {"added", "removed", "renamed", "changed"};

} // namespace

Watcher::Watcher(const ZEL::AddRefWrapper<ZEL::Node>& root, std::ostream& out) : m_out(out)
{
    watch(root);
}

void Watcher::zel_onConnectionChange(ZEL::ECnxChangeType type,
                                     const ZEL::AddRefWrapper<ZEL::Port>& first,
                                     const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    print(std::string("connection ") + kConnectionWords[type] + ": " + pathOf(*first) + " -> " +
          pathOf(*second));
}

void Watcher::zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                             const ZEL::AddRefWrapper<ZEL::Port>& first,
                                             const ZEL::AddRefWrapper<ZEL::Port>& second)
{
    const bool firstSends = first->getPortIOType() == ZEL::PortOutput;
    print(std::string("compound connection ") + kConnectionWords[type] + ": " +
          pathOf(firstSends ? *first : *second) + " -> " + pathOf(firstSends ? *second : *first));
}

void Watcher::zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                       const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    // An inner port: the directions are crossed.
    const bool isInput = port->getPortIOType() == ZEL::PortOutput;
    print(std::string("port ") + kPortWords[type] + ": " + (isInput ? "input " : "output ") +
          pathOf(*port));
}

void Watcher::zel_onNodeChange(ZEL::ENodeChangeType type,
                               const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                               const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    watch(node);
    print(std::string("node ") + kNodeWords[type] + ": " + pathOf(*compound->getAsNode()) + "." +
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
