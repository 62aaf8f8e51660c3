#include "window/canvas/sceneBuilder.h"

#include "document/document.h"

namespace shading {

namespace {

/// More boxes are laid out beside the window's work.
constexpr std::size_t kMostAtOnce = 150;
constexpr int kUnitsPerLook = 64; ///< At the clock.

} // namespace

SceneBuilder::SceneBuilder(Document& document,
                           CompoundPtr compound,
                           ScreenMemory& memory,
                           SceneData& data)
    : m_document(document),
      m_compound(compound),
      m_data(data),
      m_reader(*compound, memory, data),
      m_places(document, compound, memory, data)
{
    const auto count = static_cast<std::size_t>(m_compound->nodes().size());
    m_data.boxes.reserve(count + 16);
    m_data.boxByNode.reserve(count);
    m_reader.readBars(m_compound->getAsNode() == m_document.getRootNode());
    beginPhase(Phase::Nodes, count);
}

SceneBuilder::~SceneBuilder() = default;

void SceneBuilder::beginPhase(Phase phase, std::size_t total)
{
    m_phase = phase;
    m_total = total;
    m_at = 0;
}

bool SceneBuilder::step(int milliseconds)
{
    m_mayWait = milliseconds < 0;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (m_phase != Phase::Done) {
        for (int i = 0; i < kUnitsPerLook && m_phase != Phase::Done; ++i)
            runOne();
        if (!m_mayWait && Clock::now() >= end)
            break;
    }
    return m_phase == Phase::Done;
}

int SceneBuilder::permille() const
{
    constexpr int kPhases = static_cast<int>(Phase::Done);
    const double share =
        m_total == 0 ? 0 : static_cast<double>(m_at) / static_cast<double>(m_total);
    return static_cast<int>(1000 * (static_cast<int>(m_phase) + share) / kPhases);
}

void SceneBuilder::runOne()
{
    const bool isAtEnd = m_at >= m_total;
    const int at = static_cast<int>(m_at++);
    switch (m_phase) {
    case Phase::Nodes:
        if (isAtEnd)
            return beginPhase(Phase::Connections, m_data.boxes.size());
        m_nodes.push_back(m_reader.addNode(m_compound->nodes()[at]));
        return;
    case Phase::Connections: // Stubs that come meanwhile stand behind the others.
        if (isAtEnd)
            return beginPhase(Phase::Positions, m_nodes.size());
        if (m_data.box(at).isAlive && m_data.box(at).kind != SceneBox::Kind::Stub)
            m_reader.connect(at);
        return;
    case Phase::Positions:
        if (!isAtEnd)
            return m_places.find(m_nodes[static_cast<std::size_t>(at)]);
        m_places.judge();
        return beginPhase(Phase::Layout, 0);
    case Phase::Layout:
        if (layOut())
            beginPhase(Phase::Places, m_nodes.size());
        return;
    case Phase::Places:
        if (!isAtEnd)
            return m_places.put(at);
        return beginPhase(Phase::Wires, m_data.boxes.size());
    case Phase::Wires:
        if (isAtEnd) {
            m_places.placeBars();
            return beginPhase(Phase::Done, 0);
        }
        if (m_data.box(at).isAlive && m_data.box(at).kind == SceneBox::Kind::Stub)
            m_places.placeStub(at);
        return;
    case Phase::Done:
        return;
    }
}

/// True when it is done.
bool SceneBuilder::layOut()
{
    if (!m_layout.valid()) {
        zelDraw::LayoutGraph graph = m_places.graph();
        if (graph.boxes.empty())
            return true;
        const auto run = [](zelDraw::LayoutGraph given) {
            std::string problem;
            zelDraw::layOut(given, problem);
            return given;
        };
        const bool isLarge = graph.boxes.size() > kMostAtOnce;
        m_layout =
            std::async(isLarge ? std::launch::async : std::launch::deferred, run, std::move(graph));
        if (!isLarge)
            m_layout.wait();
    }
    const auto patience = std::chrono::milliseconds(m_mayWait ? 1000000 : 1);
    if (m_layout.wait_for(patience) == std::future_status::timeout)
        return false;
    m_places.take(m_layout.get());
    return true;
}

} // namespace shading
