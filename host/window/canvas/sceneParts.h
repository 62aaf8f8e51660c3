#pragma once

#include "document/pointers.h"

#include <QPointF>
#include <QRectF>
#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace shading {

class Backdrop;

// What a scene consists of. All places are in pixels of the scene, to the right and down, at the
// measures of the pictures that `draw` makes. Indexes count from 0; -1 is none. They stay what they
// are until the next update or rebuild of the scene.

/// The distances of the drawn grid, to which things snap: a sixth and a fifth of a position.
constexpr double kGridWidth = 23;
constexpr double kGridHeight = 23.2;

/// The least scales at which things are seen.
constexpr double kBarsFrom = 0.15; ///< A bar in the colour of what a node makes.
constexpr double kTitlesFrom = 0.35;
constexpr double kPortsFrom = 0.35; ///< Their dots.
constexpr double kLabelsFrom = 0.6;
constexpr double kLeastText = 8; ///< No text is smaller, in pixels.

/// How much of a node is shown.
enum class Fold {
    Header, ///< The ports of Brief lie in the middle of the header's sides and are not shown.
    Brief,  ///< Outputs, and the inputs that are connected or tell more than the definition.
    All,
};

/// A dot with a label. It stands for a port of the network.
struct ScenePort {
    PortPtr port;       ///< Empty: a source that the network does not show.
    double y = 0;       ///< Of the dot's centre, below the top of the box.
    int name = 0;       ///< A text of the scene.
    int type = 0;       ///< A type of the scene.
    bool takes = false; ///< At the left side: connections end here. Otherwise they begin here.
    bool isConnected = false;
};

/// A rectangle with ports: a node, a bar of inner ports, or a stub.
struct SceneBox {
    enum class Kind {
        Node,
        Compound,
        Unknown,   ///< A node without a definition: hatched.
        Stub,      ///< A port of another level, or a source that the network does not show.
        InputBar,  ///< The inner inputs, at the left edge; its ports give.
        OutputBar, ///< The inner outputs, at the right edge; its ports take.
    };

    Kind kind = Kind::Node;
    Fold fold = Fold::Brief;
    bool isAlive = false;   ///< False: a free place of the array.
    bool isTouched = false; ///< Used while the scene is updated.
    NodePtr node;           ///< Empty for a stub; for a bar that of the compound.
    QSizeF size;
    QRectF rect;   ///< Null while it has no place.
    int title = 0; ///< Texts of the scene.
    int typeName = 0;
    int omitted = 0;              ///< Inputs that are not shown.
    std::vector<ScenePort> ports; ///< Those that take before those that give.
    int takers = 0;               ///< How many of them take.
    std::vector<int> wires;       ///< Those that begin or end here; a loop stands twice.

    bool isNode() const { return isAlive && kind <= Kind::Unknown; }
    bool isBar() const { return kind == Kind::InputBar || kind == Kind::OutputBar; }
};

/// A port of a scene by its place in the arrays.
struct SceneEnd {
    int box = -1;
    int port = -1;

    bool isValid() const { return box >= 0 && port >= 0; }
    bool operator==(const SceneEnd& other) const { return box == other.box && port == other.port; }
    bool operator!=(const SceneEnd& other) const { return !(*this == other); }
};

/// The line of a connection: a cubic Bézier curve that leaves to the right and arrives from the
/// left.
struct WireCurve {
    /// How far it reaches beyond its ends at most.
    static constexpr double kMostReach = 160;

    std::array<QPointF, 4> control;

    WireCurve() = default;
    WireCurve(const QPointF& from, const QPointF& to);
    /// From 0 to 1.
    QPointF at(double part) const;
    QRectF bounds() const;
    /// How far the point is from the curve, and at which part of it is the nearest place.
    double distance(const QPointF& point, double* part = nullptr) const;
};

struct SceneWire {
    bool isAlive = false;
    bool isPlaced = false; ///< Both ends have a place.
    SceneEnd source;
    SceneEnd target;
    int type = 0; ///< A type of the scene: that of the source.
    QPointF from;
    QPointF to;

    WireCurve curve() const { return {from, to}; }
};

/// A frame with a title behind nodes.
struct SceneBackdrop {
    std::shared_ptr<Backdrop> backdrop; ///< Never null.
    QRectF rect;
    int title = 0;
};

/// What lies at a point.
struct Hit {
    enum class Kind {
        Empty,
        Port,   ///< Of a node or stub by its whole row; of a bar near its dot.
        Header, ///< Of a node.
        Badge,  ///< The sign of a compound, beside its name.
        Body,   ///< What else there is of a node or stub.
        BarRow, ///< The label of a port of a bar.
        BarPlus,
        WireSource, ///< A wire near its source, in the middle, near its target.
        WireMiddle,
        WireTarget,
        BackdropTitle,
        BackdropEdge,
        BackdropBody,
    };

    Kind kind = Kind::Empty;
    int box = -1;
    int port = -1; ///< Of the box.
    int wire = -1;
    int backdrop = -1;
    bool isRight = false;  ///< Of an edge: the right one.
    bool isBottom = false; ///< The lower one.

    bool isWire() const { return wire >= 0; }
    SceneEnd end() const { return {box, port}; }
};

} // namespace shading
