#include "window/canvas/canvas.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr int kSlice = 30;     ///< Milliseconds of building at a time.
constexpr int kFlashTime = 40; ///< Milliseconds between its steps.
constexpr double kFlashStep = 0.05;

} // namespace

Canvas::Canvas(QWidget* parent) : QWidget(parent), m_painter(std::make_unique<CanvasPainter>())
{
    setObjectName(QStringLiteral("canvas"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(120, 80);
    setAccessibleName(tr("Canvas"));
    m_buildTimer.setInterval(0);
    connect(&m_buildTimer, &QTimer::timeout, this, &Canvas::buildOn);
    m_flashTimer.setInterval(kFlashTime);
    connect(&m_flashTimer, &QTimer::timeout, this, &Canvas::stepFlash);
    chooseTheme();
}

Canvas::~Canvas() = default;

void Canvas::showCompound(Document& document, const CompoundPtr& compound, ScreenMemory& memory)
{
    if (m_scene && m_scene->compound() == compound && m_memory == &memory)
        return;
    showNothing();
    m_memory = &memory;
    m_scene = std::make_unique<Scene>(document, compound, memory);
    m_isFramed = false;
    setAccessibleDescription(
        tr("The nodes and connections of %1").arg(QString::fromUtf8(compound->getName())));
    buildOn();
}

void Canvas::showNothing()
{
    rememberView();
    m_buildTimer.stop();
    m_state.scene = nullptr;
    m_scene.reset();
    m_memory = nullptr;
    m_overlay = {};
    m_state.hover = {};
    m_state.isDimmed = nullptr;
    findSelection();
    setAccessibleDescription({});
    if (m_input)
        m_input->sceneChanged();
    QWidget::update();
}

Scene* Canvas::scene() const
{
    return m_scene && m_scene->isBuilt() ? m_scene.get() : nullptr;
}

CompoundPtr Canvas::compound() const
{
    return m_scene ? m_scene->compound() : nullptr;
}

void Canvas::buildOn()
{
    if (!m_scene || !m_scene->build(kSlice)) {
        m_buildTimer.start();
        QWidget::update();
        return;
    }
    m_buildTimer.stop();
    m_state.scene = m_scene.get();
    if (!m_isFramed)
        startView();
    findSelection();
    redrawAll();
    if (m_input)
        m_input->sceneChanged();
    Q_EMIT built();
    Q_EMIT sceneChanged();
}

void Canvas::startView()
{
    m_state.view.setSize(size());
    m_isFramed = true;
    m_isFresh = !m_memory->view(m_scene->compound());
    if (const auto seen = m_memory->view(m_scene->compound()))
        m_state.view.set(seen->scale, seen->centre);
    else
        m_state.view.frame(m_scene->bounds());
    Q_EMIT viewChanged();
}

void Canvas::rememberView()
{
    if (m_memory && m_isFramed && !m_isFresh)
        m_memory->setView(m_scene->compound(), {m_state.view.scale(), m_state.view.centre()});
}

void Canvas::update(const SceneMarks& marks)
{
    if (!m_scene || marks.isEmpty())
        return;
    m_state.hover = {};
    const QRectF area = m_scene->update(marks);
    if (!m_scene->isBuilt()) {
        m_state.scene = nullptr;
        findSelection();
        buildOn();
        return;
    }
    findSelection();
    redraw(area);
    if (m_input)
        m_input->sceneChanged();
    Q_EMIT sceneChanged();
}

void Canvas::setSelection(CanvasSelection selection)
{
    m_selection = std::move(selection);
    findSelection();
    redrawAll();
    Q_EMIT selectionChanged();
}

/// The places of what is selected in the scene as it is now.
void Canvas::findSelection()
{
    const Scene* const shown = scene();
    m_state.isSelected.assign(shown ? shown->boxes().size() : 0, 0);
    m_state.selected.clear();
    m_state.selectedWires.clear();
    m_state.flashing.clear();
    m_state.focus = -1;
    m_state.selectedRows.clear();
    m_state.selectedBackdrop = -1;
    if (!shown)
        return;
    m_state.selected = selectedBoxes();
    for (const int box : m_state.selected)
        m_state.isSelected[static_cast<std::size_t>(box)] = 1;
    for (const auto& [source, target] : m_selection.wires) {
        const int wire = shown->wireOf(*source, *target);
        if (wire >= 0)
            m_state.selectedWires.insert(wire);
    }
    for (const PortPtr& port : m_selection.ports)
        m_state.selectedRows.push_back(shown->endOf(*port));
    for (std::size_t i = 0; i < shown->backdrops().size(); ++i) {
        if (shown->backdrops()[i].backdrop == m_selection.backdrop)
            m_state.selectedBackdrop = static_cast<int>(i);
    }
    m_state.focus = shown->boxOf(m_selection.focus.get());
    for (const NodePtr& node : m_flashing) {
        const int box = shown->boxOf(node.get());
        if (box >= 0)
            m_state.flashing.push_back(box);
    }
}

std::vector<int> Canvas::selectedBoxes() const
{
    std::vector<int> boxes;
    for (const NodePtr& node : m_selection.nodes) {
        const int box = scene() ? scene()->boxOf(node.get()) : -1;
        if (box >= 0)
            boxes.push_back(box);
    }
    return boxes;
}

bool Canvas::isSelected(int box) const
{
    return m_state.isSelected[static_cast<std::size_t>(box)] != 0;
}

bool Canvas::isWireSelected(int wire) const
{
    return m_state.selectedWires.count(wire) > 0;
}

void Canvas::setTheme(Theme theme)
{
    m_theme = theme;
    chooseTheme();
}

bool Canvas::isDark() const
{
    return m_state.isDark;
}

void Canvas::chooseTheme()
{
    const QPalette& colours = palette();
    const bool isSystemDark = colours.color(QPalette::Window).lightness() <
                              colours.color(QPalette::WindowText).lightness();
    const bool isDark = m_theme == Theme::System ? isSystemDark : m_theme == Theme::Dark;
    if (isDark == m_state.isDark)
        return;
    m_state.isDark = isDark;
    QWidget::update();
    Q_EMIT themeChanged();
}

void Canvas::setView(double scale, const QPointF& centre)
{
    m_state.view.set(scale, centre);
    showView();
}

void Canvas::zoomAt(const QPointF& pixel, double factor)
{
    m_state.view.zoomAt(pixel, factor);
    showView();
}

void Canvas::panBy(const QPointF& pixels)
{
    m_state.view.panBy(pixels);
    showView();
}

void Canvas::frame(const QRectF& area)
{
    m_state.view.frame(area);
    showView();
}

void Canvas::frameSelection()
{
    if (!scene())
        return;
    QRectF area;
    for (const int box : selectedBoxes())
        area |= scene()->boxes()[static_cast<std::size_t>(box)].rect;
    frame(area.isNull() ? scene()->bounds() : area);
}

void Canvas::frameAll()
{
    if (scene())
        frame(scene()->bounds());
}

void Canvas::reveal(const QRectF& area)
{
    m_state.view.reveal(area);
    showView();
}

void Canvas::showView()
{
    m_isFresh = false;
    rememberView();
    QWidget::update();
    Q_EMIT viewChanged();
}

Hit Canvas::hitAt(const QPointF& pixel) const
{
    return scene() ? scene()->hitAt(toScene(pixel), m_state.view.scale()) : Hit{};
}

void Canvas::redraw(const QRectF& area)
{
    m_painter->forget(m_state, area);
    QWidget::update();
}

void Canvas::redrawAll()
{
    m_painter->forget();
    QWidget::update();
}

void Canvas::setOverlay(CanvasOverlay overlay)
{
    m_overlay = std::move(overlay);
    QWidget::update();
}

void Canvas::setHover(const Hit& hit)
{
    m_state.hover = hit;
    QWidget::update();
}

void Canvas::setDimming(std::function<bool(const SceneEnd&)> isDimmed)
{
    m_state.isDimmed = std::move(isDimmed);
    redrawAll();
}

void Canvas::setOffset(const std::vector<int>& boxes, const QPointF& offset)
{
    if (scene())
        redraw(scene()->setOffset(boxes, offset));
}

void Canvas::flash(const std::vector<NodePtr>& nodes)
{
    m_flashing = nodes;
    m_state.flash = nodes.empty() ? 0 : 1;
    findSelection();
    if (!nodes.empty())
        m_flashTimer.start();
}

void Canvas::stepFlash()
{
    if (!scene() && !m_flashing.empty())
        return; // It waits for what it is about.
    m_state.flash = std::max(0.0, m_state.flash - kFlashStep);
    if (m_state.flash == 0) {
        m_flashTimer.stop();
        m_flashing.clear();
        m_state.flashing.clear();
    }
    QWidget::update();
}

} // namespace shading
