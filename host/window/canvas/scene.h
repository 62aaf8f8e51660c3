#pragma once

#include "window/canvas/sceneData.h"
#include "window/canvas/screenMemory.h"
#include "window/workspace/changeMarks.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace shading {

class Document;
class ScenePlaces;
class SceneReader;

/// What changed in a compound since the scene was built or updated last.
struct SceneMarks {
    /// Nodes that came into the compound, left it, were renamed or folded, got another place,
    /// definition, value, port or connection. Both ends of a connection are marked.
    std::vector<NodePtr> nodes;
    bool isInterface = false; ///< The inner ports, or their connections.
    bool hasBackdrops = false;
    bool isAll = false; ///< Anything: the scene is built anew.

    SceneMarks() = default;
    /// What a workspace tells of the compound.
    explicit SceneMarks(const CompoundMarks& marks);
    bool isEmpty() const { return nodes.empty() && !isInterface && !hasBackdrops && !isAll; }
};

/// What one compound shows, as flat arrays, without any painting: boxes, their ports, wires,
/// backdrops. It reads the network and changes nothing; where the document gives a node no place,
/// the memory of the screen keeps one.
///
/// It holds nodes and ports of the document, so it goes before the document.
class Scene {
public:
    /// The document and the memory are not owned and must outlive the scene.
    Scene(Document& document, CompoundPtr compound, ScreenMemory& memory);
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene();

    // Building. Until it is done, the arrays are not complete and there is nothing to ask for.
    /// Goes on building for about so many milliseconds, without end when negative. True when done.
    bool build(int milliseconds = -1);
    bool isBuilt() const;
    /// From 0 to 1000.
    int builtPermille() const;
    /// Follows what changed in the network. Gives the area that looks different now. Before the
    /// scene is built, it begins anew.
    QRectF update(const SceneMarks& marks);

    // What it shows.
    Document& document() const { return m_document; }
    const CompoundPtr& compound() const { return m_compound; }
    const std::vector<SceneBox>& boxes() const { return m_data.boxes; }
    const std::vector<SceneWire>& wires() const { return m_data.wires; }
    const std::vector<SceneBackdrop>& backdrops() const { return m_data.backdrops; }
    const SceneTexts& texts() const { return m_data.texts; }
    int nodeCount() const { return m_data.nodeCount; }
    /// Around all that is shown; empty when nothing is.
    QRectF bounds() const;
    /// Around the boxes, with their wires' ends.
    QRectF boundsOf(const std::vector<int>& boxes) const;

    // Who is what.
    /// -1 when the node is not shown.
    int boxOf(const ZEL::Node* node) const;
    /// Where the port is shown: of a node inside the compound, or of the compound itself on a bar.
    /// Invalid when it is not.
    SceneEnd endOf(ZEL::Port& port) const;
    /// -1 when there is none.
    int wireOf(ZEL::Port& source, ZEL::Port& target) const;
    const ScenePort& port(const SceneEnd& end) const;
    QPointF dotOf(const SceneEnd& end) const;
    /// The box of the bar, or -1 while there is none: the root of a document has none without
    /// ports.
    int bar(bool isInput) const { return isInput ? m_data.inputBar : m_data.outputBar; }
    /// The row of a bar on which a wire makes a new port.
    QRectF barPlus(int box) const;
    QRectF badge(int box) const;

    // Where things are. Each calls with an index; those that the area touches, boxes from the
    // lowest to the highest.
    void forBoxes(const QRectF& area, const std::function<void(int)>& call) const;
    void forWires(const QRectF& area, const std::function<void(int)>& call) const;
    /// What is on top at the point of a view of that scale (pixels of the screen for one of the
    /// scene). Ports and wires are caught from a distance in pixels of the screen.
    Hit hitAt(const QPointF& point, double scale) const;
    /// The nearest port of those that the filter takes, within the distance that ports are caught
    /// from, or in whose row the point is.
    SceneEnd portAt(const QPointF& point,
                    double scale,
                    const std::function<bool(const SceneEnd&)>& filter) const;

    // Where things are by their paths; empty when they are not shown.
    /// The dot of a port of a node inside. Where an input and an output have the name: isInput.
    std::optional<QPointF> portCentre(const std::string& path,
                                      std::optional<bool> isInput = std::nullopt) const;
    std::optional<QRectF> nodeRect(const std::string& path) const;
    std::optional<QPointF> wireMiddle(const std::string& source, const std::string& target) const;
    /// The label of an inner port.
    std::optional<QPointF> barCentre(const std::string& path,
                                     std::optional<bool> isInput = std::nullopt) const;
    /// A free place near the point that a rectangle of that size fits in, without others.
    QPointF freePlace(const QRectF& wanted) const;

    // Places for the time of a drag: the network does not change.
    /// Draws these boxes so far from where they are; others go back. Gives the area that looks
    /// different now.
    QRectF setOffset(const std::vector<int>& boxes, const QPointF& offset);

    /// Everything it shows as text, in an order that does not depend on how it came about: two
    /// scenes of the same look have the same.
    std::string dump() const;

private:
    struct Builder;

    void begin();
    QRectF change(const SceneMarks& marks);
    std::vector<NodePtr> membersOf(const std::vector<NodePtr>& nodes) const;
    std::vector<int> readNodes(SceneReader& reader,
                               const std::vector<NodePtr>& members,
                               const std::vector<int>& touched);
    void connect(SceneReader& reader, const std::vector<int>& boxes, bool hasBars);
    void dropStubs(const std::vector<int>& stubs);
    QRectF placeRest(ScenePlaces& places);
    int boxNamed(const std::string& path, std::string& port) const;
    SceneEnd endAt(const std::string& path, std::optional<bool> takes) const;
    Hit hitBox(int box, const QPointF& point, double scale) const;
    SceneEnd nearestDot(const QPointF& point,
                        double distance,
                        const std::function<bool(const SceneEnd&)>& filter) const;
    Hit hitWire(const QPointF& point, double scale) const;
    Hit hitBackdrop(const QPointF& point, double scale) const;
    int topBoxAt(const QPointF& point) const;

    Document& m_document;
    CompoundPtr m_compound;
    ScreenMemory& m_memory;
    std::unique_ptr<Builder> m_builder; ///< Null: the scene is built.
    SceneData m_data;
    mutable std::optional<QRectF> m_bounds; ///< Empty: not known since something moved.
    std::vector<int> m_moved;               ///< The boxes that are drawn elsewhere.
    QPointF m_offset;                       ///< How far.
};

} // namespace shading
