#pragma once

#include "window/canvas/looseGrid.h"
#include "window/canvas/sceneParts.h"
#include "window/canvas/sceneTexts.h"

#include <unordered_map>
#include <vector>

namespace shading {

/// The arrays of a scene, with all that finds something in them.
struct SceneData {
    std::vector<SceneBox> boxes;
    std::vector<SceneWire> wires;
    std::vector<SceneBackdrop> backdrops;
    SceneTexts texts;
    std::unordered_map<const ZEL::Node*, int> boxByNode;
    std::unordered_map<const ZEL::Port*, int> stubs; ///< By the port of another level.
    LooseGrid boxGrid;                               ///< Of the boxes that have a place.
    LooseGrid wireGrid;                              ///< Of the wires between them.
    int inputBar = -1;
    int outputBar = -1;
    int nodeCount = 0;

    SceneBox& box(int index) { return boxes[static_cast<std::size_t>(index)]; }
    const SceneBox& box(int index) const { return boxes[static_cast<std::size_t>(index)]; }
    SceneWire& wire(int index) { return wires[static_cast<std::size_t>(index)]; }
    const SceneWire& wire(int index) const { return wires[static_cast<std::size_t>(index)]; }
    const ScenePort& port(const SceneEnd& end) const
    {
        return box(end.box).ports[static_cast<std::size_t>(end.port)];
    }
    QPointF dotOf(const SceneEnd& end) const;
    /// The port of the box that takes or gives; invalid when the box does not show it.
    SceneEnd endIn(int box, const ZEL::Port* port, bool takes) const;

    int addBox();
    /// The box has no wires left.
    void removeBox(int index);
    /// Puts the box there, with the ends of its wires.
    void setRect(int index, const QRectF& rect);
    int addWire(const SceneEnd& source, const SceneEnd& target, int type);
    void removeWire(int index);
    /// Takes all wires off the box; gives the other ends' boxes.
    std::vector<int> removeWires(int box);
    /// Leads the wire from dot to dot.
    void placeWire(int index);
    void clear();

private:
    std::vector<int> m_freeBoxes;
    std::vector<int> m_freeWires;
};

} // namespace shading
