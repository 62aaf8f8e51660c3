#pragma once

#include <QRectF>
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

namespace shading {

/// Finds the rectangles that an area touches: a grid of square cells for each size of rectangles,
/// four times as wide as the one before. A rectangle lies in the cell of its centre.
class LooseGrid {
public:
    static constexpr int kLevels = 12; ///< Of sizes.

    void insert(int item, const QRectF& rect);
    /// The rectangle is the one that it was inserted with.
    void remove(int item, const QRectF& rect);
    void clear();
    /// Calls for each item that may touch the area: some that lie near it, too.
    void query(const QRectF& area, const std::function<void(int)>& call) const;

private:
    struct Level {
        std::unordered_map<std::uint64_t, std::vector<int>> cells;
        int count = 0;
    };

    Level m_levels[kLevels];
};

} // namespace shading
