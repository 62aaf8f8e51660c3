#include "window/gestures/selecting.h"

#include "document/document.h"
#include "window/canvas/canvas.h"
#include "window/workspace/workspace.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace shading {

namespace {

/// The node of the compound that the port belongs to; empty for a port of another level.
NodePtr nodeIn(const CompoundPtr& compound, ZEL::Port& port)
{
    NodePtr node = port.isCompoundInternalPort() ? NodePtr() : port.getParentNode();
    return node && node->getParentCompound() == compound ? node : NodePtr();
}

/// How far the other middle is, when it lies in that direction: what lies beside the way counts
/// more. Negative when it lies elsewhere.
double distanceTo(const QPointF& from, const QPointF& to, Direction direction)
{
    const QPointF way = to - from;
    const bool isFlat = direction == Direction::Left || direction == Direction::Right;
    const bool isBack = direction == Direction::Left || direction == Direction::Up;
    const double along = (isFlat ? way.x() : way.y()) * (isBack ? -1 : 1);
    const double beside = std::abs(isFlat ? way.y() : way.x());
    return along > 0.5 && beside < 3 * along ? along + 2 * beside : -1;
}

} // namespace

void selectBy(Workspace& workspace,
              const std::vector<NodePtr>& nodes,
              Qt::KeyboardModifiers modifiers)
{
    const bool isToggle = (modifiers & Qt::ControlModifier) != 0;
    if (!isToggle && (modifiers & Qt::ShiftModifier) == 0) {
        workspace.select(nodes);
        return;
    }
    std::vector<NodePtr> selection = workspace.selection();
    for (const NodePtr& node : nodes) {
        const auto place = std::find(selection.begin(), selection.end(), node);
        if (place == selection.end())
            selection.push_back(node);
        else if (isToggle)
            selection.erase(place);
    }
    workspace.select(selection);
}

void selectAll(Workspace& workspace)
{
    std::vector<NodePtr> nodes;
    for (ZEL::Node* const node : workspace.compound()->nodes())
        nodes.emplace_back(node);
    workspace.select(nodes);
}

void selectStream(Workspace& workspace, const std::vector<NodePtr>& nodes, bool isUpstream)
{
    std::vector<NodePtr> stream = nodes;
    std::unordered_set<const ZEL::Node*> seen;
    for (const NodePtr& node : nodes)
        seen.insert(node.get());
    for (std::size_t i = 0; i < stream.size(); ++i) {
        const NodePtr node = stream[i];
        for (ZEL::Port* const port : isUpstream ? node->inputs() : node->outputs()) {
            for (ZEL::Port* const other : port->connectedTo()) {
                const NodePtr next = nodeIn(workspace.compound(), *other);
                if (next && seen.insert(next.get()).second)
                    stream.push_back(next);
            }
        }
    }
    workspace.select(stream);
}

NodePtr neighbour(const Canvas& canvas, const NodePtr& node, Direction direction)
{
    const Scene* const scene = canvas.scene();
    if (!scene)
        return nullptr;
    const auto rectOf = [&](int box) { return scene->boxes()[static_cast<std::size_t>(box)].rect; };
    const int own = node ? scene->boxOf(node.get()) : -1;
    const QPointF from = own < 0 ? canvas.view().centre() : rectOf(own).center();
    int best = -1;
    double least = 0;
    for (int i = 0; i < static_cast<int>(scene->boxes().size()); ++i) {
        if (!scene->boxes()[static_cast<std::size_t>(i)].isNode() || i == own)
            continue;
        const QPointF way = rectOf(i).center() - from;
        const double distance = own < 0 ? std::hypot(way.x(), way.y())
                                        : distanceTo(from, rectOf(i).center(), direction);
        if (distance >= 0 && (best < 0 || distance < least)) {
            best = i;
            least = distance;
        }
    }
    return best < 0 ? NodePtr() : scene->boxes()[static_cast<std::size_t>(best)].node;
}

void selectNeighbour(Canvas& canvas, Workspace& workspace, Direction direction, bool isAdded)
{
    const std::vector<NodePtr>& selection = workspace.selection();
    const NodePtr from = selection.empty() ? NodePtr() : selection.back();
    const NodePtr next = neighbour(canvas, from, direction);
    if (!next)
        return;
    std::vector<NodePtr> nodes = isAdded ? selection : std::vector<NodePtr>();
    nodes.erase(std::remove(nodes.begin(), nodes.end(), next), nodes.end());
    nodes.push_back(next);
    workspace.select(nodes);
    const int box = canvas.scene()->boxOf(next.get());
    canvas.reveal(canvas.scene()->boxes()[static_cast<std::size_t>(box)].rect);
}

} // namespace shading
