#pragma once

#include "draw/zelLayeredLayout.h"
#include "zel.h"

#include <functional>
#include <string>
#include <vector>

namespace zelDraw {

struct Rect {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

struct PicturePort {
    std::string name;
    std::string path;
    std::string type;         ///< Empty: the port has none.
    Point dot;                ///< Filled by the layout.
    bool isConnected = false; ///< Something feeds it, or it feeds something.
};

/// One end of a connection within a frame: a port of a box in it, or of the frame's own edge.
struct PictureEnd {
    static constexpr std::size_t kEdge = static_cast<std::size_t>(-1);

    std::size_t box = kEdge; ///< Among the frame's boxes.
    /// A source is an output of the box or an input of the frame; a target is the reverse.
    std::size_t port = 0;
};

struct PictureConnection {
    PictureEnd source;
    PictureEnd target;
    std::string sourcePath;
    std::string targetPath;
    std::string type; ///< Of the source; empty: none.
    Curve curve;      ///< Filled by the layout, from dot to dot.
};

/// What a picture consists of: the outermost box is the compound that is drawn.
struct PictureBox {
    enum class Kind {
        Node,
        Compound, ///< Closed: what is inside it is not shown.
        Frame,    ///< An open compound: its ports are also the inner ones.
        Stub,     ///< A port that is not in the frame, or a source that is not in the network.
    };

    Kind kind = Kind::Node;
    std::string name; ///< Of a stub: the port's path.
    std::string path; ///< As the name's, in full.
    std::string type; ///< The name of the node's type.
    std::vector<PicturePort> inputs;
    std::vector<PicturePort> outputs;
    int omittedInputs = 0;  ///< How many ports are not among the inputs.
    bool isUnknown = false; ///< Nobody knows what the node is: it is hatched.
    Rect place;             ///< Filled by the layout.

    // Of a frame.
    std::vector<PictureBox> boxes;
    std::vector<PictureConnection> connections; ///< Those between its boxes and with its edge.
};

struct PictureOptions {
    int depth = 0; ///< How many levels of compounds inside the drawn one are open frames.
    /// Says which inputs of a plain node are drawn. Empty: all. Connected ones always are.
    std::function<bool(ZEL::Node&, ZEL::Port&)> isShown;
    /// Names what feeds a port without a connection from outside the network: it is drawn as a
    /// stub. Empty, or an empty name: nothing does.
    std::function<std::string(ZEL::Port&)> hiddenSource;
    /// True for a plain node that nobody knows. Empty: all are known.
    std::function<bool(ZEL::Node&)> isUnknown;
};

/// What is drawn of the compound, without places. A connection that leads out of its frame ends in
/// a stub: in the frame of its target, or in that of its source when the target is not drawn.
/// Connections of the drawn compound's own node with what is around it are not drawn.
PictureBox makePicture(ZEL::Compound& compound, const PictureOptions& options);

/// Gives everything its place, the outermost box at (0, 0). False, with the reason, when there is
/// too much to place.
bool placePicture(PictureBox& picture, std::string& problem);

/// A picture with places as the text of an SVG file.
std::string pictureSvg(const PictureBox& picture);

/// The three in turn. False, with the reason, when the picture cannot be made.
bool drawCompound(ZEL::Compound& compound,
                  const PictureOptions& options,
                  std::string& svg,
                  std::string& problem);

} // namespace zelDraw
