// Steps with many editors of a node, and many nodes of an editor.

#include "zelCrowd.h"

namespace zelFuzz {

namespace {

constexpr std::size_t kMaxEditors = 200;

/// They are registered with one node, from the first or from the last on.
void registerCrowd(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    const bool isBackward = universe.input.number(2) == 1;
    auto& editors = universe.manyEditors;
    for (int i = pickManyCount(universe); i > 0 && editors.size() < kMaxEditors; --i)
        editors.push_back(std::make_unique<FuzzEditor>(universe));
    for (std::size_t i = 0; node && i < editors.size(); ++i)
        universe.registrations.add(*node, *editors[isBackward ? editors.size() - 1 - i : i]);
}

FuzzEditor& pickEditor(Universe& universe)
{
    auto& editors = universe.manyEditors;
    return *editors[static_cast<std::size_t>(
        universe.input.place(static_cast<int>(editors.size())))];
}

/// Takes off many in a row: their first, their last, or those from a place on; or in strides.
void unregisterMany(Universe& universe, ZEL::Node& node)
{
    auto& editors = universe.manyEditors;
    const int from = universe.input.numberOrLater(3, 4);
    const auto place =
        static_cast<std::size_t>(universe.input.place(static_cast<int>(editors.size())));
    const int count = 1 + universe.input.number(80);
    for (std::size_t i = 0; static_cast<int>(i) < count && i < editors.size(); ++i) {
        std::size_t number = i;
        if (from == 1)
            number = editors.size() - 1 - i;
        else if (from == 2)
            number = (place + i) % editors.size();
        else if (from > 2)
            number = (place + i * static_cast<std::size_t>(from)) % editors.size();
        universe.registrations.remove(node, *editors[number]);
    }
}

void destroyMany(Universe& universe)
{
    auto& editors = universe.manyEditors;
    const int place = universe.input.place(static_cast<int>(editors.size()));
    const int count =
        std::min(1 + universe.input.number(40), static_cast<int>(editors.size()) - place);
    editors.erase(editors.begin() + place, editors.begin() + place + count);
}

/// In the middle of a notification, too.
void loseEditors(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    const bool isEnding = universe.input.number(2) == 1;
    if (universe.manyEditors.empty() || !node)
        return;
    if (isEnding)
        destroyMany(universe);
    else
        unregisterMany(universe, *node);
}

void editEditors(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    if (!node || universe.depth > 0)
        return;
    const Agreement agreement(universe);
    Input& input = universe.input;
    for (int left = 1 + input.number(48); left > 0 && !input.isAtEnd(); --left) {
        const int action = input.number(7);
        if (universe.manyEditors.empty() || action == 0)
            registerCrowd(universe);
        else if (action == 1)
            universe.registrations.add(*node, pickEditor(universe));
        else if (action == 2)
            universe.registrations.remove(*node, pickEditor(universe));
        else if (action <= 4)
            unregisterMany(universe, *node);
        else if (action == 5)
            destroyMany(universe);
        else
            universe.registrations.check(*node);
    }
    universe.registrations.check(*node);
}

/// One editor hears of all nodes, and of some no more.
void watchAll(Universe& universe)
{
    auto& slot = pickSlot(universe, universe.editors);
    const int step = 1 + universe.input.number(4);
    const bool isEnding = universe.input.number(3) == 0;
    if (universe.depth > 0)
        return;
    const Agreement agreement(universe);
    if (!slot)
        slot = std::make_unique<FuzzEditor>(universe);
    const Census census = universe.census();
    for (ZEL::Node* const node : census.nodes.all())
        universe.registrations.add(*node, *slot);
    for (std::size_t i = 0; i < census.nodes.all().size(); i += static_cast<std::size_t>(step))
        universe.registrations.remove(*census.nodes.all()[i], *slot);
    if (isEnding)
        slot = nullptr;
    for (ZEL::Node* const node : census.nodes.all())
        universe.registrations.check(*node);
}

} // namespace

const std::vector<Step> kEditorSteps = {
    {"registerCrowd", registerCrowd},
    {"loseEditors", loseEditors},
    {"editEditors", editEditors},
    {"watchAll", watchAll},
};

} // namespace zelFuzz
