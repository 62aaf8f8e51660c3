#include "window/canvas/scene.h"

#include "document/document.h"
#include "draw/zelPictureStyle.h"
#include "window/canvas/sceneBackdrops.h"
#include "window/canvas/sceneBuilder.h"

#include <algorithm>
#include <unordered_set>

namespace shading {

SceneMarks::SceneMarks(const CompoundMarks& marks)
    : nodes(marks.nodes),
      // A connection of an inner port is no change of that port.
      isInterface(marks.hasOtherPorts || marks.hasOtherWires),
      hasBackdrops(marks.hasOtherBackdrops)
{
}

struct Scene::Builder : SceneBuilder {
    using SceneBuilder::SceneBuilder;
};

Scene::Scene(Document& document, CompoundPtr compound, ScreenMemory& memory)
    : m_document(document),
      m_compound(std::move(compound)),
      m_memory(memory)
{
    begin();
}

Scene::~Scene() = default;

void Scene::begin()
{
    m_builder.reset();
    m_data.clear();
    m_moved.clear();
    m_bounds.reset();
    m_builder = std::make_unique<Builder>(m_document, m_compound, m_memory, m_data);
}

bool Scene::build(int milliseconds)
{
    if (m_builder && m_builder->step(milliseconds)) {
        m_builder.reset();
        m_bounds.reset();
        readBackdrops(m_document, *m_compound, m_data);
    }
    return !m_builder;
}

bool Scene::isBuilt() const
{
    return !m_builder;
}

int Scene::builtPermille() const
{
    return m_builder ? m_builder->permille() : 1000;
}

QRectF Scene::update(const SceneMarks& marks)
{
    if (marks.isEmpty())
        return {};
    setOffset({}, {});
    if (m_builder || marks.isAll) {
        begin();
        return {};
    }
    QRectF area = change(marks);
    area |= readBackdrops(m_document, *m_compound, m_data);
    m_bounds.reset();
    return area;
}

std::vector<NodePtr> Scene::membersOf(const std::vector<NodePtr>& nodes) const
{
    std::unordered_set<const ZEL::Node*> marked;
    for (const NodePtr& node : nodes)
        marked.insert(node.get());
    std::vector<NodePtr> members;
    for (ZEL::Node* const node : m_compound->nodes()) {
        if (marked.erase(node) > 0)
            members.emplace_back(node);
    }
    return members;
}

QRectF Scene::change(const SceneMarks& marks)
{
    SceneReader reader(*m_compound, m_memory, m_data);
    std::vector<int> touched;
    for (const NodePtr& node : marks.nodes) {
        const int box = boxOf(node.get());
        if (box >= 0 && !m_data.box(box).isTouched) {
            m_data.box(box).isTouched = true;
            touched.push_back(box);
        }
    }
    const bool hasBars = marks.isInterface;
    for (const int bar : {m_data.inputBar, m_data.outputBar}) {
        if (hasBars && bar >= 0)
            touched.push_back(bar);
    }
    QRectF area = boundsOf(touched);
    std::vector<int> stubs;
    for (const int box : touched) {
        for (const int other : m_data.removeWires(box)) {
            if (m_data.box(other).kind == SceneBox::Kind::Stub)
                stubs.push_back(other);
        }
    }
    const std::vector<NodePtr> members = membersOf(marks.nodes);
    const std::vector<int> kept = readNodes(reader, members, touched);
    if (hasBars)
        reader.readBars(m_compound->getAsNode() == m_document.getRootNode());
    connect(reader, kept, hasBars);
    dropStubs(stubs);
    ScenePlaces places(m_document, m_compound, m_memory, m_data);
    places.place(kept);
    area |= placeRest(places);
    return area | boundsOf(kept);
}

std::vector<int> Scene::readNodes(SceneReader& reader,
                                  const std::vector<NodePtr>& members,
                                  const std::vector<int>& touched)
{
    std::vector<int> kept;
    std::unordered_set<int> isKept;
    for (const NodePtr& node : members) {
        const int known = boxOf(node.get());
        if (known >= 0)
            reader.readNode(known);
        kept.push_back(known >= 0 ? known : reader.addNode(node));
        m_data.box(kept.back()).isTouched = true;
        isKept.insert(kept.back());
    }
    for (const int box : touched) {
        if (!m_data.box(box).isNode() || isKept.count(box) > 0)
            continue;
        m_data.boxByNode.erase(m_data.box(box).node.get());
        m_data.removeBox(box);
        --m_data.nodeCount;
    }
    return kept;
}

void Scene::connect(SceneReader& reader, const std::vector<int>& boxes, bool hasBars)
{
    std::vector<int> all = boxes;
    for (const int bar : {m_data.inputBar, m_data.outputBar}) {
        if (hasBars && bar >= 0) {
            m_data.box(bar).isTouched = true;
            all.push_back(bar);
        }
    }
    for (const int box : all) {
        reader.connect(box);
        reader.connectToUntouched(box);
    }
    for (const int box : all)
        m_data.box(box).isTouched = false;
}

void Scene::dropStubs(const std::vector<int>& stubs)
{
    for (const int stub : stubs) {
        SceneBox& box = m_data.box(stub);
        if (!box.isAlive || box.kind != SceneBox::Kind::Stub || !box.wires.empty())
            continue;
        m_data.stubs.erase(box.ports.front().port.get());
        m_data.removeBox(stub);
    }
}

QRectF Scene::placeRest(ScenePlaces& places)
{
    QRectF area;
    for (int i = 0; i < static_cast<int>(m_data.boxes.size()); ++i) {
        if (!m_data.box(i).isAlive || m_data.box(i).kind != SceneBox::Kind::Stub)
            continue;
        area |= boundsOf({i});
        places.placeStub(i);
        area |= boundsOf({i});
    }
    std::vector<int> bars;
    for (const int bar : {m_data.inputBar, m_data.outputBar}) {
        if (bar >= 0)
            bars.push_back(bar);
    }
    area |= boundsOf(bars);
    places.placeBars();
    return area | boundsOf(bars);
}

QRectF Scene::bounds() const
{
    if (!m_bounds) {
        m_bounds = QRectF();
        for (const SceneBox& box : m_data.boxes) {
            if (box.isAlive)
                *m_bounds |= box.rect;
        }
        for (const SceneBackdrop& backdrop : m_data.backdrops)
            *m_bounds |= backdrop.rect;
    }
    return *m_bounds;
}

QRectF Scene::boundsOf(const std::vector<int>& boxes) const
{
    QRectF area;
    for (const int index : boxes) {
        const SceneBox& box = m_data.box(index);
        area |= box.rect;
        for (const int wire : box.wires) {
            if (m_data.wire(wire).isPlaced)
                area |= m_data.wire(wire).curve().bounds();
        }
    }
    return area;
}

QRectF Scene::setOffset(const std::vector<int>& boxes, const QPointF& offset)
{
    if (boxes.empty() && m_moved.empty())
        return {};
    QRectF area = boundsOf(m_moved);
    area |= boundsOf(boxes);
    if (boxes != m_moved) {
        for (const int box : m_moved)
            m_data.setRect(box, m_data.box(box).rect.translated(-m_offset));
        area |= boundsOf(m_moved);
        m_moved = boxes;
        m_offset = QPointF();
    }
    for (const int box : m_moved)
        m_data.setRect(box, m_data.box(box).rect.translated(offset - m_offset));
    m_offset = m_moved.empty() ? QPointF() : offset;
    m_bounds.reset();
    return area | boundsOf(m_moved);
}

int Scene::boxOf(const ZEL::Node* node) const
{
    const auto found = m_data.boxByNode.find(node);
    return found == m_data.boxByNode.end() ? -1 : found->second;
}

} // namespace shading
