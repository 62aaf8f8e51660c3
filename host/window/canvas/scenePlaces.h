#pragma once

#include "draw/zelLayeredLayout.h"
#include "window/canvas/sceneData.h"
#include "window/canvas/screenMemory.h"

#include <vector>

namespace shading {

class Document;

/// Gives the boxes of a scene their places: those that the document says, or that the screen
/// remembers; the others are laid out, which the memory is told.
class ScenePlaces {
public:
    ScenePlaces(Document& document, CompoundPtr compound, ScreenMemory& memory, SceneData& data)
        : m_document(document),
          m_compound(std::move(compound)),
          m_memory(memory),
          m_data(data)
    {
    }

    // All at once, in parts.
    /// Finds the place of the box of a node, or notes that it has none.
    void find(int box);
    /// After all are found: when the positions of the document make no picture, none of them counts
    /// but those that nodes got since.
    void judge();
    /// All boxes, to be laid out; none when each has a place.
    zelDraw::LayoutGraph graph() const;
    /// Takes over from the laid out graph where those without a place are, from those that have
    /// one.
    void take(const zelDraw::LayoutGraph& graph);
    /// Puts a found box into its place, from the first to the last.
    void put(int found);

    // After a change.
    /// Places these boxes of nodes, new ones where there is room.
    void place(const std::vector<int>& boxes);
    /// Places the stubs at the ports that they belong to.
    void placeStub(int box);
    /// Places the bars beside the content.
    void placeBars();

    /// A place for a rectangle that covers no other, the wanted one or one below it.
    static QRectF freePlace(const SceneData& data, QRectF wanted);

private:
    struct Found {
        int box;
        QPointF place;
        std::optional<Position> position; ///< In the document.
        bool isPlaced;
        bool isRemembered;
    };

    Found look(int box) const;
    bool hasUnplaced() const;
    std::vector<std::size_t> placedByBox() const;
    QPointF
    clearOf(const Found& found, QPointF place, const std::vector<std::size_t>& placed) const;
    QPointF besideWires(int box, const QRectF& content) const;
    double barTop(int bar, bool isInput, const QRectF& content);

    Document& m_document;
    CompoundPtr m_compound;
    ScreenMemory& m_memory;
    SceneData& m_data;
    std::vector<Found> m_found;
    bool m_keepsClear = false; ///< Those that get a place cover no other.
};

/// The heights of the ports at one side of a box, as a layout takes them: no two the same.
std::vector<int> heightsOf(const SceneBox& box, bool takes);
/// Around the boxes that have a place, bars aside; null when there are none.
QRectF contentBounds(const SceneData& data);

} // namespace shading
