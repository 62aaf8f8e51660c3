#include "window/canvas/scenePlaces.h"

#include "draw/zelQuickLayout.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kBarGap = 70;         ///< Between a bar and the content.
constexpr double kStubGap = 36;        ///< Between a stub and the port.
constexpr double kBlockGap = 80;       ///< Between what has a position and what is laid out.
constexpr double kNextGap = 70;        ///< From a node to a new one that is connected to it.
constexpr double kLeastGap = 14;       ///< To what is in the way of a new one.
constexpr std::size_t kMostSingly = 8; ///< More new nodes at a time are laid out together.
constexpr double kFarthest = 20000;    ///< In positions. What lies beyond is no picture.

/// The room that the stubs of a box need at its sides.
struct SideRoom {
    int left = 0;
    int right = 0;
};

SideRoom roomForStubs(const SceneData& data, const SceneBox& box)
{
    SideRoom room;
    for (const int index : box.wires) {
        const SceneWire& wire = data.wire(index);
        const SceneBox& source = data.box(wire.source.box);
        const SceneBox& target = data.box(wire.target.box);
        if (source.kind == SceneBox::Kind::Stub)
            room.left = std::max(room.left, static_cast<int>(source.size.width() + kStubGap));
        if (target.kind == SceneBox::Kind::Stub)
            room.right = std::max(room.right, static_cast<int>(target.size.width() + kStubGap));
    }
    return room;
}

QPointF asPoint(const zelDraw::Point& point)
{
    return {point.x, point.y};
}

} // namespace

std::vector<int> heightsOf(const SceneBox& box, bool takes)
{
    std::vector<int> heights;
    int least = 1;
    for (const ScenePort& port : box.ports) {
        if (port.takes != takes)
            continue;
        heights.push_back(std::max(least, static_cast<int>(std::lround(port.y))));
        least = heights.back() + 2;
    }
    return heights;
}

QRectF contentBounds(const SceneData& data)
{
    QRectF bounds;
    for (const SceneBox& box : data.boxes) {
        if (box.isAlive && !box.isBar())
            bounds |= box.rect;
    }
    return bounds;
}

ScenePlaces::Found ScenePlaces::look(int index) const
{
    const SceneBox& box = m_data.box(index);
    Found found = {index, {}, positionOf(m_document, box.node), false, false};
    const std::optional<QPointF> kept = m_memory.place(box.node, found.position);
    found.isRemembered = kept.has_value();
    if (kept)
        found.place = *kept;
    else if (found.position)
        found.place = pointOf(*found.position);
    const bool isFar = found.position && (std::abs(found.position->x) > kFarthest ||
                                          std::abs(found.position->y) > kFarthest);
    found.isPlaced = kept || (found.position && !isFar);
    return found;
}

void ScenePlaces::find(int box)
{
    m_found.push_back(look(box));
}

void ScenePlaces::judge()
{
    QRectF around;
    int count = 0;
    std::size_t known = 0;
    for (const Found& found : m_found) {
        known += found.isPlaced ? 1 : 0;
        if (!found.isPlaced || found.isRemembered)
            continue;
        const QRectF place(QPointF(found.position->x, found.position->y), QSizeF(1, 1));
        around = count++ == 0 ? place : around.united(place);
    }
    const double most = 100 + 10.0 * count;
    const bool isHeap = count > 2 && around.width() < 1.05 && around.height() < 1.05;
    // A few among many: they were placed for another picture than that of the rest.
    const bool isSparse = 2 * known < m_found.size();
    const bool isAbsurd = isSparse || isHeap || around.width() > most || around.height() > most;
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        if (isAbsurd && !m_found[i].isRemembered)
            m_found[i].isPlaced = false;
    }
}

bool ScenePlaces::hasUnplaced() const
{
    return std::any_of(m_found.begin(), m_found.end(),
                       [](const Found& found) { return !found.isPlaced; });
}

zelDraw::LayoutGraph ScenePlaces::graph() const
{
    zelDraw::LayoutGraph graph;
    if (!hasUnplaced())
        return graph;
    std::unordered_map<int, std::size_t> places; // Of boxes in the graph.
    const auto add = [&](int index, zelDraw::LayoutBox::Layer layer) {
        const SceneBox& box = m_data.box(index);
        const SideRoom room = roomForStubs(m_data, box);
        zelDraw::LayoutBox added;
        added.width = static_cast<int>(box.size.width()) + room.left + room.right;
        added.height = static_cast<int>(box.size.height());
        added.leftPorts = heightsOf(box, true);
        added.rightPorts = heightsOf(box, false);
        added.layer = layer;
        places[index] = graph.boxes.size();
        graph.boxes.push_back(std::move(added));
    };
    // Those that have a place, too: the others find theirs by them.
    for (const Found& found : m_found)
        add(found.box, zelDraw::LayoutBox::Layer::Any);
    if (m_data.inputBar >= 0)
        add(m_data.inputBar, zelDraw::LayoutBox::Layer::First);
    if (m_data.outputBar >= 0)
        add(m_data.outputBar, zelDraw::LayoutBox::Layer::Last);
    for (const SceneWire& wire : m_data.wires) {
        const auto source = wire.isAlive ? places.find(wire.source.box) : places.end();
        const auto target = wire.isAlive ? places.find(wire.target.box) : places.end();
        if (source == places.end() || target == places.end())
            continue;
        zelDraw::LayoutEdge edge;
        edge.source = source->second;
        edge.target = target->second;
        edge.sourcePort =
            static_cast<std::size_t>(wire.source.port - m_data.box(wire.source.box).takers);
        edge.targetPort = static_cast<std::size_t>(wire.target.port);
        graph.edges.push_back(edge);
    }
    return graph;
}

/// One more than the index of what has a place, by its box; 0: it has none.
std::vector<std::size_t> ScenePlaces::placedByBox() const
{
    std::vector<std::size_t> placed(m_data.boxes.size());
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        if (m_found[i].isPlaced)
            placed[static_cast<std::size_t>(m_found[i].box)] = i + 1;
    }
    return placed;
}

/// To the right of its sources that have a place, else to the left of its targets.
QPointF ScenePlaces::clearOf(const Found& found,
                             QPointF place,
                             const std::vector<std::size_t>& placed) const
{
    const SceneBox& box = m_data.box(found.box);
    for (const bool isBefore : {false, true}) {
        for (const int index : box.wires) {
            const SceneWire& wire = m_data.wire(index);
            const int far = isBefore ? wire.source.box : wire.target.box;
            const std::size_t at = placed[static_cast<std::size_t>(far)];
            if (at == 0 || far == found.box)
                continue;
            const double left = m_found[at - 1].place.x();
            if (isBefore)
                place.setX(std::max(place.x(), left + m_data.box(far).size.width() + kNextGap));
            else
                place.setX(std::min(place.x(), left - box.size.width() - kNextGap));
        }
    }
    return place;
}

void ScenePlaces::take(const zelDraw::LayoutGraph& graph)
{
    QPointF sum; // From where the layout has those with a place to where they are.
    int count = 0;
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        Found& found = m_found[i];
        const double room = roomForStubs(m_data, m_data.box(found.box)).left;
        const QPointF laidOut = asPoint(graph.boxes[i].place) + QPointF(room, 0);
        if (found.isPlaced) {
            sum += found.place - laidOut;
            ++count;
        } else {
            found.place = laidOut;
        }
    }
    m_keepsClear = count > 0;
    const QPointF way = count == 0 ? QPointF() : sum / count;
    const std::vector<std::size_t> placed = placedByBox();
    for (Found& found : m_found) {
        if (!found.isPlaced)
            found.place = QPointF(clearOf(found, found.place + way, placed).toPoint());
    }
    std::stable_partition(m_found.begin(), m_found.end(),
                          [](const Found& found) { return found.isPlaced; });
}

void ScenePlaces::put(int index)
{
    const Found& found = m_found[static_cast<std::size_t>(index)];
    QRectF rect(found.place, m_data.box(found.box).size);
    if (!found.isPlaced) {
        if (m_keepsClear)
            rect = freePlace(m_data, rect);
        m_memory.setPlace(m_data.box(found.box).node, rect.topLeft(), found.position);
    }
    m_data.setRect(found.box, rect);
}

QPointF ScenePlaces::besideWires(int index, const QRectF& content) const
{
    const SceneBox& box = m_data.box(index);
    const double width = box.size.width();
    std::optional<QPointF> before;
    std::optional<QPointF> behind;
    for (const int wireIndex : box.wires) {
        const SceneWire& wire = m_data.wire(wireIndex);
        const SceneBox& source = m_data.box(wire.source.box);
        const SceneBox& target = m_data.box(wire.target.box);
        if (wire.target.box == index && source.isNode() && !source.rect.isNull())
            behind = source.rect.topRight() + QPointF(kNextGap, 0);
        else if (wire.source.box == index && target.isNode() && !target.rect.isNull())
            before = target.rect.topLeft() - QPointF(kNextGap + width, 0);
    }
    if (behind || before)
        return behind ? *behind : *before;
    return content.isNull() ? QPointF() : content.bottomLeft() + QPointF(0, kStubGap);
}

void ScenePlaces::place(const std::vector<int>& boxes)
{
    const QRectF content = contentBounds(m_data);
    m_found.clear();
    for (const int box : boxes)
        m_found.push_back(look(box));
    const auto firstNew = std::stable_partition(m_found.begin(), m_found.end(),
                                                [](const Found& found) { return found.isPlaced; });
    const auto known = static_cast<std::size_t>(firstNew - m_found.begin());
    for (std::size_t i = 0; i < known; ++i)
        put(static_cast<int>(i));
    m_found.erase(m_found.begin(), firstNew);
    m_keepsClear = true;
    if (m_found.size() <= kMostSingly) {
        for (std::size_t i = 0; i < m_found.size(); ++i) {
            m_found[i].place = besideWires(m_found[i].box, content);
            put(static_cast<int>(i));
        }
        return;
    }
    zelDraw::LayoutGraph laidOut = graph();
    zelDraw::layOutQuickly(laidOut);
    take(laidOut);
    // Below all that there is.
    QRectF block;
    for (const Found& found : m_found)
        block |= QRectF(found.place, m_data.box(found.box).size);
    const QPointF way = content.bottomLeft() + QPointF(0, kBlockGap) - block.topLeft();
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        m_found[i].place += way;
        put(static_cast<int>(i));
    }
}

QRectF ScenePlaces::freePlace(const SceneData& data, QRectF wanted)
{
    for (;;) {
        double below = wanted.top();
        const QRectF taken = wanted.adjusted(-kLeastGap, -kLeastGap, kLeastGap, kLeastGap);
        data.boxGrid.query(taken, [&](int index) {
            const QRectF& rect = data.box(index).rect;
            if (rect.intersects(taken))
                below = std::max(below, rect.bottom() + kLeastGap + 1);
        });
        if (below <= wanted.top())
            return wanted;
        wanted.moveTop(below);
    }
}

void ScenePlaces::placeStub(int index)
{
    const SceneBox& stub = m_data.box(index);
    std::optional<QPointF> nearest;
    for (const int wireIndex : stub.wires) {
        const SceneWire& wire = m_data.wire(wireIndex);
        const SceneEnd& far = wire.source.box == index ? wire.target : wire.source;
        const QPointF dot = m_data.dotOf(far);
        if (!nearest || dot.y() < nearest->y() ||
            (dot.y() == nearest->y() && dot.x() < nearest->x()))
            nearest = dot;
    }
    if (!nearest)
        return;
    const bool isSource = stub.takers == 0;
    const double left =
        isSource ? nearest->x() - kStubGap - stub.size.width() : nearest->x() + kStubGap;
    m_data.setRect(index, QRectF(QPointF(left, nearest->y() - stub.size.height() / 2), stub.size));
}

double ScenePlaces::barTop(int index, bool isInput, const QRectF& content)
{
    const std::optional<double> kept = m_memory.barTop(m_compound, isInput);
    if (kept)
        return *kept;
    const SceneBox& bar = m_data.box(index);
    double sum = 0;
    for (const int wireIndex : bar.wires) {
        const SceneWire& wire = m_data.wire(wireIndex);
        const SceneEnd& own = isInput ? wire.source : wire.target;
        const SceneEnd& far = isInput ? wire.target : wire.source;
        sum += m_data.dotOf(far).y() - m_data.port(own).y;
    }
    const double top = bar.wires.empty() ? content.center().y() - bar.size.height() / 2
                                         : sum / static_cast<double>(bar.wires.size());
    m_memory.setBarTop(m_compound, isInput, std::round(top));
    return std::round(top);
}

void ScenePlaces::placeBars()
{
    QRectF content = contentBounds(m_data);
    if (content.isNull())
        content = QRectF(-90, -40, 180, 80);
    if (const int bar = m_data.inputBar; bar >= 0) {
        const QSizeF size = m_data.box(bar).size;
        const double top = barTop(bar, true, content);
        m_data.setRect(bar, QRectF(QPointF(content.left() - kBarGap - size.width(), top), size));
    }
    if (const int bar = m_data.outputBar; bar >= 0) {
        const double top = barTop(bar, false, content);
        m_data.setRect(bar, QRectF(QPointF(content.right() + kBarGap, top), m_data.box(bar).size));
    }
}

} // namespace shading
