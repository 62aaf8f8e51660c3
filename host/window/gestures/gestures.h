#pragma once

#include "window/canvas/canvasInput.h"
#include "window/canvas/sceneParts.h"
#include "window/gestures/canvasCommands.h"
#include "window/gestures/gesture.h"

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

class QMenu;

namespace shading {

class Actions;

/// What mouse and keyboard do on one canvas. At most one gesture goes on; what is not a gesture are
/// commands. Esc, another window in front, and a change of what is shown cancel a gesture.
class Gestures : public QObject, public CanvasInput {
    Q_OBJECT

public:
    /// None is owned, and all must outlive this.
    Gestures(Canvas& canvas, Workspace& workspace, ScreenMemory& memory, Actions& actions);
    ~Gestures() override;

    Desk& desk() { return m_desk; }
    CanvasCommands& commands() { return m_commands; }

    /// A gesture goes on.
    bool isBusy() const { return m_gesture != nullptr; }
    /// Ends the gesture, and what waits for one, without a trace.
    void cancel();
    /// The next drag is a line that cuts.
    void prepareToCut();
    bool isReadyToCut() const { return m_isCutting; }
    /// The menu of what is selected, beside it.
    void showMenu();

    // What the canvas hands on.
    void mousePress(QMouseEvent* event) override;
    void mouseMove(QMouseEvent* event) override;
    void mouseRelease(QMouseEvent* event) override;
    void mouseDoubleClick(QMouseEvent* event) override;
    void wheel(QWheelEvent* event) override;
    void keyPress(QKeyEvent* event) override;
    void keyRelease(QKeyEvent* event) override;
    void contextMenu(QContextMenuEvent* event) override;
    void leave() override;
    void focusIn(QFocusEvent* event) override;
    void focusOut(QFocusEvent* event) override;
    void sceneChanged() override;

protected:
    /// Two fingers on the canvas.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    /// A button that is down.
    struct Press {
        Pointer pointer;
        Hit hit;
        Qt::MouseButton button;
    };

    Pointer pointerOf(const QPointF& pixel, Qt::KeyboardModifiers modifiers) const;
    void begin(const Press& press, const Pointer& pointer);
    std::unique_ptr<Gesture> gestureFor(const Press& press);
    std::unique_ptr<Gesture> gestureForBox(const Press& press);
    std::unique_ptr<Gesture> gestureForWire(const Press& press);
    void finish(const Pointer& pointer);
    void drop();
    void pressLeft(const Press& press);
    void click(const Press& press);
    void clickNode(const Press& press);
    void clickPort(const Press& press);
    void clickWire(const Press& press);
    void showMenuAt(const Hit& hit, const QPoint& pixel);
    void repeatMove(Qt::KeyboardModifiers modifiers);
    void hover(const Pointer& pointer);
    void showCursor(const Hit& hit);
    void openSearch(const NodeWish& wish);
    void noteRefusal(const QString& reason);
    void showRest();
    const SceneBox& boxOf(const Hit& hit) const;
    const std::shared_ptr<Backdrop>& backdropOf(const Hit& hit) const;

    Desk m_desk;
    CanvasCommands m_commands;
    Actions& m_actions;
    std::optional<Press> m_press;
    std::unique_ptr<Gesture> m_gesture; ///< Null: none goes on.
    QPointF m_lastPixel;
    bool m_isFollowing = false;     ///< The gesture goes on without a button, until the next click.
    bool m_isSpaceDown = false;     ///< A drag moves the view.
    bool m_isCutting = false;       ///< A drag cuts.
    std::optional<NodeWish> m_wish; ///< What a search is open for.
    QString m_tip;                  ///< Why the last edit was refused; empty: no more.
    QPointF m_tipAt;                ///< In pixels of the scene.
    QTimer m_tipTimer;
};

} // namespace shading
