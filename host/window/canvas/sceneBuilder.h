#pragma once

#include "window/canvas/scenePlaces.h"
#include "window/canvas/sceneReader.h"

#include <atomic>
#include <chrono>
#include <future>

namespace shading {

/// Fills the arrays of a scene in slices.
class SceneBuilder {
public:
    SceneBuilder(Document& document, CompoundPtr compound, ScreenMemory& memory, SceneData& data);
    SceneBuilder(const SceneBuilder&) = delete;
    SceneBuilder& operator=(const SceneBuilder&) = delete;
    ~SceneBuilder();

    /// Goes on for about so many milliseconds, without end when negative. True when done.
    bool step(int milliseconds);
    int permille() const;

private:
    enum class Phase { Nodes, Connections, Positions, Layout, Places, Wires, Done };
    using Clock = std::chrono::steady_clock;

    void runOne();
    void beginPhase(Phase phase, std::size_t total);
    bool layOut();

    Document& m_document;
    CompoundPtr m_compound;
    SceneData& m_data;
    SceneReader m_reader;
    ScenePlaces m_places;
    Phase m_phase = Phase::Nodes;
    std::size_t m_at = 0; ///< In the phase.
    std::size_t m_total = 0;
    std::vector<int> m_nodes; ///< Their boxes.
    bool m_mayWait = false;
    std::future<zelDraw::LayoutGraph> m_layout;
};

} // namespace shading
