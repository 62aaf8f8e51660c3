#include "window/canvas/sceneData.h"

#include <algorithm>

namespace shading {

QPointF SceneData::dotOf(const SceneEnd& end) const
{
    const SceneBox& place = box(end.box);
    const ScenePort& found = place.ports[static_cast<std::size_t>(end.port)];
    return {found.takes ? place.rect.left() : place.rect.right(), place.rect.top() + found.y};
}

SceneEnd SceneData::endIn(int index, const ZEL::Port* port, bool takes) const
{
    const std::vector<ScenePort>& ports = box(index).ports;
    const int first = takes ? 0 : box(index).takers;
    const int last = takes ? box(index).takers : static_cast<int>(ports.size());
    for (int i = first; i < last; ++i) {
        if (ports[static_cast<std::size_t>(i)].port.get() == port)
            return {index, i};
    }
    return {};
}

int SceneData::addBox()
{
    int index = static_cast<int>(boxes.size());
    if (m_freeBoxes.empty()) {
        boxes.emplace_back();
    } else {
        index = m_freeBoxes.back();
        m_freeBoxes.pop_back();
    }
    box(index).isAlive = true;
    return index;
}

void SceneData::removeBox(int index)
{
    SceneBox& gone = box(index);
    if (!gone.rect.isNull())
        boxGrid.remove(index, gone.rect);
    gone = {};
    m_freeBoxes.push_back(index);
}

void SceneData::setRect(int index, const QRectF& rect)
{
    SceneBox& moved = box(index);
    if (moved.rect != rect) {
        if (!moved.rect.isNull())
            boxGrid.remove(index, moved.rect);
        moved.rect = rect;
        boxGrid.insert(index, rect);
    }
    for (const int wire : moved.wires)
        placeWire(wire);
}

int SceneData::addWire(const SceneEnd& source, const SceneEnd& target, int type)
{
    int index = static_cast<int>(wires.size());
    if (m_freeWires.empty()) {
        wires.emplace_back();
    } else {
        index = m_freeWires.back();
        m_freeWires.pop_back();
    }
    SceneWire& made = wire(index);
    made.isAlive = true;
    made.source = source;
    made.target = target;
    made.type = type;
    box(source.box).wires.push_back(index);
    box(target.box).wires.push_back(index);
    return index;
}

void SceneData::removeWire(int index)
{
    SceneWire& gone = wire(index);
    if (gone.isPlaced)
        wireGrid.remove(index, gone.curve().bounds());
    for (const int end : {gone.source.box, gone.target.box}) {
        std::vector<int>& ofBox = box(end).wires;
        const auto found = std::find(ofBox.begin(), ofBox.end(), index);
        *found = ofBox.back();
        ofBox.pop_back();
    }
    gone = {};
    m_freeWires.push_back(index);
}

std::vector<int> SceneData::removeWires(int index)
{
    std::vector<int> others;
    while (!box(index).wires.empty()) {
        const int wireIndex = box(index).wires.back();
        const SceneWire& gone = wire(wireIndex);
        others.push_back(gone.source.box == index ? gone.target.box : gone.source.box);
        removeWire(wireIndex);
    }
    return others;
}

void SceneData::placeWire(int index)
{
    SceneWire& placed = wire(index);
    const SceneBox& source = box(placed.source.box);
    const SceneBox& target = box(placed.target.box);
    if (source.rect.isNull() || target.rect.isNull())
        return;
    const QPointF from = dotOf(placed.source);
    const QPointF to = dotOf(placed.target);
    if (placed.isPlaced && placed.from == from && placed.to == to)
        return;
    if (placed.isPlaced)
        wireGrid.remove(index, placed.curve().bounds());
    placed.from = from;
    placed.to = to;
    placed.isPlaced = true;
    wireGrid.insert(index, placed.curve().bounds());
}

void SceneData::clear()
{
    *this = SceneData();
}

} // namespace shading
