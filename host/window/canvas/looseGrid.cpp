#include "window/canvas/looseGrid.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kLeastCell = 256;
constexpr double kLastPlace = 1e9; ///< Cells beyond it are one.

int levelOf(const QRectF& rect)
{
    const double size = std::max(rect.width(), rect.height());
    int level = 0;
    for (double cell = kLeastCell; cell < size && level < LooseGrid::kLevels - 1; cell *= 4)
        ++level;
    return level;
}

double cellSize(int level)
{
    return std::ldexp(kLeastCell, 2 * level);
}

std::int32_t cellAt(double place, double size)
{
    return static_cast<std::int32_t>(std::floor(std::clamp(place, -kLastPlace, kLastPlace) / size));
}

std::uint64_t keyOf(std::int32_t x, std::int32_t y)
{
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(x)) << 32U |
           static_cast<std::uint32_t>(y);
}

std::uint64_t keyOf(const QRectF& rect, int level)
{
    const QPointF centre = rect.center();
    const double size = cellSize(level);
    return keyOf(cellAt(centre.x(), size), cellAt(centre.y(), size));
}

} // namespace

void LooseGrid::insert(int item, const QRectF& rect)
{
    const int number = levelOf(rect);
    Level& level = m_levels[static_cast<std::size_t>(number)];
    level.cells[keyOf(rect, number)].push_back(item);
    ++level.count;
}

void LooseGrid::remove(int item, const QRectF& rect)
{
    const int number = levelOf(rect);
    Level& level = m_levels[static_cast<std::size_t>(number)];
    const auto cell = level.cells.find(keyOf(rect, number));
    if (cell == level.cells.end())
        return;
    const auto found = std::find(cell->second.begin(), cell->second.end(), item);
    if (found == cell->second.end())
        return;
    *found = cell->second.back();
    cell->second.pop_back();
    --level.count;
    if (cell->second.empty())
        level.cells.erase(cell);
}

void LooseGrid::clear()
{
    *this = LooseGrid();
}

void LooseGrid::query(const QRectF& area, const std::function<void(int)>& call) const
{
    for (int number = 0; number < kLevels; ++number) {
        const Level& level = m_levels[static_cast<std::size_t>(number)];
        if (level.count == 0)
            continue;
        // A rectangle reaches no farther than half a cell, the widest ones aside.
        const bool isWidest = number == kLevels - 1;
        const double size = cellSize(number);
        const QRectF near = area.adjusted(-size / 2, -size / 2, size / 2, size / 2);
        const std::int32_t left = cellAt(near.left(), size);
        const std::int32_t right = cellAt(near.right(), size);
        const std::int32_t top = cellAt(near.top(), size);
        const std::int32_t bottom = cellAt(near.bottom(), size);
        const double cells = (1.0 + right - left) * (1.0 + bottom - top);
        if (isWidest || cells > static_cast<double>(level.cells.size())) {
            for (const auto& cell : level.cells) {
                const auto x = static_cast<std::int32_t>(cell.first >> 32U);
                const auto y = static_cast<std::int32_t>(cell.first);
                if (isWidest || (x >= left && x <= right && y >= top && y <= bottom))
                    std::for_each(cell.second.begin(), cell.second.end(), call);
            }
            continue;
        }
        for (std::int32_t x = left; x <= right; ++x) {
            for (std::int32_t y = top; y <= bottom; ++y) {
                const auto cell = level.cells.find(keyOf(x, y));
                if (cell != level.cells.end())
                    std::for_each(cell->second.begin(), cell->second.end(), call);
            }
        }
    }
}

} // namespace shading
