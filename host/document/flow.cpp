#include "document/flow.h"

#include <unordered_map>
#include <unordered_set>

namespace shading {

namespace {

/// The other side of what a node does with the port: those ports of it; for a port of a compound
/// the mirror alone.
std::vector<ZEL::Port*> portsBehind(ZEL::Port& port, ZEL::PortList& (ZEL::Node::*list)())
{
    std::vector<ZEL::Port*> ports;
    const ZEL::AddRefWrapper<ZEL::Node> node = port.getParentNode();
    if (!node)
        return ports;
    if (!node->isCompound()) {
        for (ZEL::Port* const other : (node.get()->*list)())
            ports.push_back(other);
    } else if (const auto mirror = node->getAsCompound()->getReversePort(&port)) {
        ports.push_back(mirror.get()); // The compound holds it.
    }
    return ports;
}

} // namespace

std::vector<ZEL::Port*> receiversBehind(ZEL::Port& sender)
{
    return portsBehind(sender, &ZEL::Node::inputs);
}

namespace {

/// Calls for each receiver that what the sender gives comes from, until one call says true. False
/// when none does.
template <class Function>
bool walkBack(ZEL::Port& sender, const Function& isEnough)
{
    std::unordered_set<ZEL::Port*> seen = {&sender};
    std::vector<ZEL::Port*> senders = {&sender};
    while (!senders.empty()) {
        ZEL::Port* const next = senders.back();
        senders.pop_back();
        for (ZEL::Port* const behind : receiversBehind(*next)) {
            if (isEnough(behind))
                return true;
            for (ZEL::Port* const source : behind->connectedTo()) {
                if (seen.insert(source).second)
                    senders.push_back(source);
            }
        }
    }
    return false;
}

/// The ports that give what becomes of what the receiver takes.
std::vector<ZEL::Port*> sendersBehind(ZEL::Port& receiver)
{
    return portsBehind(receiver, &ZEL::Node::outputs);
}

} // namespace

bool comesFrom(ZEL::Port& sender, ZEL::Port& receiver)
{
    return walkBack(sender, [&](ZEL::Port* port) { return port == &receiver; });
}

std::unordered_set<const ZEL::Port*> receiversBefore(ZEL::Port& sender)
{
    std::unordered_set<const ZEL::Port*> receivers;
    walkBack(sender, [&](ZEL::Port* port) {
        receivers.insert(port);
        return false;
    });
    return receivers;
}

std::unordered_set<const ZEL::Port*> sendersAfter(ZEL::Port& receiver)
{
    std::unordered_set<const ZEL::Port*> senders;
    std::vector<ZEL::Port*> receivers = {&receiver};
    while (!receivers.empty()) {
        ZEL::Port* const next = receivers.back();
        receivers.pop_back();
        for (ZEL::Port* const sender : sendersBehind(*next)) {
            if (!senders.insert(sender).second)
                continue;
            for (ZEL::Port* const target : sender->connectedTo())
                receivers.push_back(target);
        }
    }
    return senders;
}

ZEL::Port* feedingItself(const std::vector<ZEL::Port*>& senders)
{
    enum class State { OnTheWay, Done };
    std::unordered_map<ZEL::Port*, State> states;
    for (ZEL::Port* const first : senders) {
        std::vector<ZEL::Port*> way = {first};
        while (!way.empty()) {
            ZEL::Port* const sender = way.back();
            const auto [state, isNew] = states.emplace(sender, State::OnTheWay);
            if (!isNew) {
                state->second = State::Done;
                way.pop_back();
                continue;
            }
            for (ZEL::Port* const behind : receiversBehind(*sender)) {
                for (ZEL::Port* const source : behind->connectedTo()) {
                    const auto known = states.find(source);
                    if (known == states.end())
                        way.push_back(source);
                    else if (known->second == State::OnTheWay)
                        return source;
                }
            }
        }
    }
    return nullptr;
}

} // namespace shading
