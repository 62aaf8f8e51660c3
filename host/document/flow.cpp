#include "document/flow.h"

#include <unordered_map>
#include <unordered_set>

namespace shading {

std::vector<ZEL::Port*> receiversBehind(ZEL::Port& sender)
{
    std::vector<ZEL::Port*> receivers;
    const ZEL::AddRefWrapper<ZEL::Node> node = sender.getParentNode();
    if (!node)
        return receivers;
    if (!node->isCompound()) {
        for (ZEL::Port* const input : node->inputs())
            receivers.push_back(input);
    } else if (const auto mirror = node->getAsCompound()->getReversePort(&sender)) {
        receivers.push_back(mirror.get()); // The compound holds it.
    }
    return receivers;
}

bool comesFrom(ZEL::Port& sender, ZEL::Port& receiver)
{
    std::unordered_set<ZEL::Port*> seen = {&sender};
    std::vector<ZEL::Port*> senders = {&sender};
    while (!senders.empty()) {
        ZEL::Port* const next = senders.back();
        senders.pop_back();
        for (ZEL::Port* const behind : receiversBehind(*next)) {
            if (behind == &receiver)
                return true;
            for (ZEL::Port* const source : behind->connectedTo()) {
                if (seen.insert(source).second)
                    senders.push_back(source);
            }
        }
    }
    return false;
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
