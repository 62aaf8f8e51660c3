#include "window/canvas/pictureExport.h"

#include "base/file.h"
#include "document/names.h"
#include "draw/zelPicture.h"
#include "draw/zelPictureStyle.h"
#include "window/canvas/canvas.h"

#include <QBuffer>
#include <algorithm>

namespace shading {

namespace {

constexpr double kPictureEdge = 24; ///< Around what is shown, in pixels of the scene.
constexpr double kMostPixels = 16000;
constexpr double kImageScale = 2;

std::vector<char> shownBoxes(const Scene& scene, const std::vector<int>& boxes)
{
    std::vector<char> isShown(scene.boxes().size(), boxes.empty() ? 1 : 0);
    for (const int box : boxes)
        isShown[static_cast<std::size_t>(box)] = 1;
    return isShown;
}

QRectF areaOf(const Scene& scene, const std::vector<int>& boxes)
{
    QRectF area = boxes.empty() ? scene.bounds() : QRectF();
    for (const int box : boxes)
        area |= scene.boxes()[static_cast<std::size_t>(box)].rect;
    return area.adjusted(-kPictureEdge, -kPictureEdge, kPictureEdge, kPictureEdge);
}

/// Makes of a scene what `draw` writes: a frame, its upper left corner at (0, 0).
class PictureMaker {
public:
    PictureMaker(const Scene& scene, const std::vector<int>& boxes)
        : m_scene(scene),
          m_isShown(shownBoxes(scene, boxes)),
          m_isWhole(boxes.empty()),
          m_places(scene.boxes().size(), zelDraw::PictureEnd::kEdge)
    {
        QRectF area = areaOf(scene, boxes);
        // The bars are the edges of the frame.
        for (const bool isInput : {true, false}) {
            const int bar = m_isWhole ? scene.bar(isInput) : -1;
            if (bar >= 0 && isInput)
                area.setLeft(boxAt(bar).rect.left());
            else if (bar >= 0)
                area.setRight(boxAt(bar).rect.right());
        }
        area.adjust(0, -zelDraw::kFrameHeader, 0, 0);
        m_origin = area.topLeft();
        m_frame.place = {0, 0, area.width(), area.height()};
    }

    zelDraw::PictureBox make()
    {
        const NodePtr node = m_scene.compound()->getAsNode();
        m_frame.kind = zelDraw::PictureBox::Kind::Frame;
        m_frame.name = node->getName();
        m_frame.path = pathOf(*node);
        m_frame.type = node->getNodeTypeName();
        for (int i = 0; i < static_cast<int>(m_scene.boxes().size()); ++i) {
            if (boxAt(i).isAlive && m_isShown[static_cast<std::size_t>(i)] != 0)
                addBox(i);
        }
        for (const SceneWire& wire : m_scene.wires()) {
            if (wire.isAlive && m_isShown[static_cast<std::size_t>(wire.source.box)] != 0 &&
                m_isShown[static_cast<std::size_t>(wire.target.box)] != 0)
                addWire(wire);
        }
        return std::move(m_frame);
    }

private:
    const SceneBox& boxAt(int box) const { return m_scene.boxes()[static_cast<std::size_t>(box)]; }

    zelDraw::Point pointAt(const QPointF& point) const
    {
        return {point.x() - m_origin.x(), point.y() - m_origin.y()};
    }

    std::string pathOfPort(const ScenePort& port) const
    {
        return port.port ? pathOf(*port.port) : m_scene.texts().text(port.name).toStdString();
    }

    zelDraw::PicturePort portOf(const SceneEnd& end) const
    {
        const ScenePort& port = m_scene.port(end);
        zelDraw::PicturePort made;
        made.path = pathOfPort(port);
        made.name = port.port ? port.port->getName() : made.path;
        made.type = m_scene.texts().type(port.type);
        made.dot = pointAt(m_scene.dotOf(end));
        made.isConnected = port.isConnected;
        return made;
    }

    void addBox(int index)
    {
        const SceneBox& box = boxAt(index);
        if (box.isBar()) {
            for (int i = 0; i < static_cast<int>(box.ports.size()); ++i) {
                zelDraw::PicturePort port = portOf({index, i});
                const bool isInput = box.kind == SceneBox::Kind::InputBar;
                port.dot.x = isInput ? 0 : m_frame.place.width;
                (isInput ? m_frame.inputs : m_frame.outputs).push_back(port);
            }
            return;
        }
        zelDraw::PictureBox made;
        const zelDraw::Point corner = pointAt(box.rect.topLeft());
        made.place = {corner.x, corner.y, box.rect.width(), box.rect.height()};
        if (box.kind == SceneBox::Kind::Stub) {
            made.kind = zelDraw::PictureBox::Kind::Stub;
            made.name = m_scene.texts().text(box.title).toStdString();
            made.path = pathOfPort(box.ports.front());
        } else {
            made.kind = box.kind == SceneBox::Kind::Compound ? zelDraw::PictureBox::Kind::Compound
                                                             : zelDraw::PictureBox::Kind::Node;
            made.isUnknown = box.kind == SceneBox::Kind::Unknown;
            made.name = box.node->getName();
            made.path = pathOf(*box.node);
            made.type = box.node->getNodeTypeName();
            made.omittedInputs = box.fold == Fold::Header ? 0 : box.omitted;
        }
        for (int i = 0; i < static_cast<int>(box.ports.size()); ++i) {
            if (box.fold != Fold::Header)
                (i < box.takers ? made.inputs : made.outputs).push_back(portOf({index, i}));
        }
        m_places[static_cast<std::size_t>(index)] = m_frame.boxes.size();
        m_frame.boxes.push_back(std::move(made));
    }

    void addWire(const SceneWire& wire)
    {
        zelDraw::PictureConnection made;
        made.source.box = m_places[static_cast<std::size_t>(wire.source.box)];
        made.source.port =
            static_cast<std::size_t>(wire.source.port - boxAt(wire.source.box).takers);
        made.target.box = m_places[static_cast<std::size_t>(wire.target.box)];
        made.target.port = static_cast<std::size_t>(wire.target.port);
        made.sourcePath = pathOfPort(m_scene.port(wire.source));
        made.targetPath = pathOfPort(m_scene.port(wire.target));
        made.type = m_scene.texts().type(wire.type);
        const QPointF last = wire.to;
        if (boxAt(wire.source.box).isBar())
            addStraight(made.curve, QPointF(m_origin.x(), wire.from.y()), wire.from);
        for (const QPointF& point : wire.curve().control)
            made.curve.push_back(pointAt(point));
        if (boxAt(wire.target.box).isBar()) {
            made.curve.pop_back();
            addStraight(made.curve, last, QPointF(m_origin.x() + m_frame.place.width, last.y()));
            made.curve.push_back(pointAt(QPointF(m_origin.x() + m_frame.place.width, last.y())));
        }
        m_frame.connections.push_back(std::move(made));
    }

    /// All but the last point.
    void addStraight(zelDraw::Curve& curve, const QPointF& from, const QPointF& to) const
    {
        for (const int third : {0, 1, 2})
            curve.push_back(pointAt(from + (to - from) * third / 3));
    }

    const Scene& m_scene;
    std::vector<char> m_isShown;
    bool m_isWhole;
    std::vector<std::size_t> m_places; ///< Of the boxes, in the frame.
    QPointF m_origin;                  ///< Of the frame, in the scene.
    zelDraw::PictureBox m_frame;
};

} // namespace

std::string sceneSvg(const Scene& scene, const std::vector<int>& boxes)
{
    return zelDraw::pictureSvg(PictureMaker(scene, boxes).make());
}

QImage sceneImage(const Scene& scene, const std::vector<int>& boxes, double scale, bool isDark)
{
    CanvasState state;
    state.scene = &scene;
    state.isDark = isDark;
    state.isSelected.assign(scene.boxes().size(), 0);
    if (!boxes.empty())
        state.isShown = shownBoxes(scene, boxes);
    const QRectF area = areaOf(scene, boxes);
    const double longest = std::max({area.width(), area.height(), 1.0});
    return CanvasPainter::paintAll(state, area, std::min(scale, kMostPixels / longest));
}

bool exportPicture(const Canvas& canvas, bool onlySelection, const QString& file, QString& problem)
{
    const Scene* const scene = canvas.scene();
    const std::vector<int> boxes = onlySelection ? canvas.selectedBoxes() : std::vector<int>();
    const bool isSvg = file.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive);
    const bool isPng = file.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive);
    if (!scene)
        problem = Canvas::tr("the canvas is still being drawn");
    else if (onlySelection && boxes.empty())
        problem = Canvas::tr("nothing is selected");
    else if (!isSvg && !isPng)
        problem = Canvas::tr("the name of a picture ends in .svg or .png");
    if (!problem.isEmpty())
        return false;
    std::string bytes;
    if (isSvg) {
        bytes = sceneSvg(*scene, boxes);
    } else {
        QByteArray made;
        QBuffer buffer(&made);
        if (!sceneImage(*scene, boxes, kImageScale, canvas.isDark()).save(&buffer, "PNG")) {
            problem = Canvas::tr("there is no memory for the picture");
            return false;
        }
        bytes = made.toStdString();
    }
    std::string reason;
    if (replaceFile(file.toStdString(), bytes, reason))
        return true;
    problem = Canvas::tr("cannot be written: %1").arg(QString::fromStdString(reason));
    return false;
}

} // namespace shading
