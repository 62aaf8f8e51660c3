#pragma once

#include "window/canvas/canvasInput.h"
#include "window/canvas/canvasPainter.h"

#include <QTimer>
#include <QWidget>
#include <memory>

namespace shading {

/// What is marked on a canvas. The canvas holds the nodes and ports.
struct CanvasSelection {
    std::vector<NodePtr> nodes;
    std::vector<std::pair<PortPtr, PortPtr>> wires; ///< Source and target.
    std::vector<PortPtr> ports;                     ///< Inner ports, on the bars.
    std::shared_ptr<Backdrop> backdrop;             ///< Null: none is.
    NodePtr focus;                                  ///< The node that keys act on; empty: none.
};

/// Shows one compound of a document and changes nothing: what the user does goes to an input. It
/// follows the document by the marks that it is given.
class Canvas : public QWidget {
    Q_OBJECT

public:
    enum class Theme { System, Light, Dark };

    explicit Canvas(QWidget* parent = nullptr);
    ~Canvas() override;

    // What is shown.
    /// Shows the compound, as it was seen last or whole. The document and the memory are not owned
    /// and must outlive the showing. A large compound is built in slices: built() tells the end.
    void showCompound(Document& document, const CompoundPtr& compound, ScreenMemory& memory);
    /// Shows nothing and holds nothing of a document.
    void showNothing();
    /// Null while nothing is shown or the scene is not built yet.
    Scene* scene() const;
    /// The compound that is shown, also while it is being built.
    CompoundPtr compound() const;
    /// Follows what changed in the compound.
    void update(const SceneMarks& marks);
    using QWidget::update;
    /// The selection outlives edits; what of it is not shown is not drawn.
    void setSelection(CanvasSelection selection);
    const CanvasSelection& selection() const { return m_selection; }
    /// The boxes of the selected nodes that are shown.
    std::vector<int> selectedBoxes() const;
    bool isSelected(int box) const;
    bool isWireSelected(int wire) const;
    void setTheme(Theme theme);
    bool isDark() const;

    // The view.
    const CanvasView& view() const { return m_state.view; }
    QPointF toScene(const QPointF& pixel) const { return m_state.view.toScene(pixel); }
    QPointF toPixel(const QPointF& point) const { return m_state.view.toPixel(point); }
    void setView(double scale, const QPointF& centre);
    /// The point of the scene under the pixel stays there.
    void zoomAt(const QPointF& pixel, double factor);
    /// In pixels: what is shown moves with them.
    void panBy(const QPointF& pixels);
    /// Shows the area of the scene whole, no larger than life.
    void frame(const QRectF& area);
    void frameSelection();
    void frameAll();
    /// Moves the view no further than needed for the area to be seen.
    void reveal(const QRectF& area);
    /// What is under the pixel.
    Hit hitAt(const QPointF& pixel) const;

    // For gestures.
    /// Not owned; null: the canvas only shows. Taken back before the input goes.
    void setInput(CanvasInput* input) { m_input = input; }
    const CanvasOverlay& overlay() const { return m_overlay; }
    void setOverlay(CanvasOverlay overlay);
    /// What the mouse is over gets a ring.
    void setHover(const Hit& hit);
    const Hit& hover() const { return m_state.hover; }
    /// Ports for which it is true are dimmed; an empty one dims none.
    void setDimming(std::function<bool(const SceneEnd&)> isDimmed);
    /// Draws these boxes elsewhere for the time of a drag; an empty list ends it.
    void setOffset(const std::vector<int>& boxes, const QPointF& offset);
    /// Lets the nodes light up for a moment, now and as soon as they are shown.
    void flash(const std::vector<NodePtr>& nodes);

Q_SIGNALS:
    void viewChanged();
    /// The scene of the compound is there.
    void built();
    /// Something in the scene changed.
    void sceneChanged();
    void themeChanged();
    /// Also when it was the same.
    void selectionChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void buildOn();
    void startView();
    void rememberView();
    void showView();
    void redraw(const QRectF& area);
    void redrawAll();
    void findSelection();
    void stepFlash();
    void chooseTheme();

    std::unique_ptr<Scene> m_scene;           ///< Null: nothing is shown.
    ScreenMemory* m_memory = nullptr;         ///< Not owned; null with the scene.
    std::unique_ptr<CanvasPainter> m_painter; ///< Never null.
    CanvasState m_state;                      ///< With the scene when it is built.
    CanvasSelection m_selection;
    CanvasOverlay m_overlay;
    std::vector<NodePtr> m_flashing;
    Theme m_theme = Theme::System;
    CanvasInput* m_input = nullptr; ///< Not owned.
    bool m_isFramed = false;        ///< The view of the compound was set.
    bool m_isFresh = false;         ///< And shows all of it, as nobody moved it.
    QTimer m_buildTimer;
    QTimer m_flashTimer;
};

} // namespace shading
