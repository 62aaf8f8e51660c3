#pragma once

#include "window/canvas/canvas.h"
#include "window/drive/inputEvents.h"
#include "windowFixture.h"

#include <optional>

namespace shadingTest {

/// The canvas of a document with one graph, Top.G: red.out > blend.fg, grey.out > blend.mix,
/// blend.out > bright.in1, bright.out > the output `colour`; `spare` is on its own, `level` and
/// `tint` are inputs.
class OnCanvas : public Window {
protected:
    OnCanvas();

    // Where things are, in pixels of the canvas. A failure, and its corner, when they are not
    // shown.
    QPoint port(const std::string& path, std::optional<bool> isInput = std::nullopt);
    QPoint header(const std::string& path);
    QPoint wire(const std::string& source, const std::string& target, double part = 0.5);
    QPoint bar(const std::string& path);
    QPoint barPlus(bool isInput);
    /// A place with nothing around it.
    QPoint empty();

    void click(const QPoint& at, Qt::KeyboardModifiers modifiers = {});
    void rightClick(const QPoint& at);
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = {});
    /// A press and moves, but no release.
    void dragOn(const QPoint& from,
                const QPoint& to,
                Qt::MouseButton button = Qt::LeftButton,
                Qt::KeyboardModifiers modifiers = {});
    void release(const QPoint& at,
                 Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = {});
    /// To what has the focus: "Ctrl+G".
    void key(const char* keys);
    void type(const char* text);
    /// Of the menu that is open. False when it has no such entry.
    bool chooseFromMenu(const QString& text);

    bool isConnected(const std::string& source, const std::string& target);
    /// Names of the selected nodes, sorted.
    std::string selected();
    int undoCount() { return workspace.history().undoCount(); }
    /// What the scene shows, and a scene of the same compound that is built anew.
    void expectCanvasIsNew();
    /// Undoes everything: the bytes are the first ones.
    void expectUndone(int edits);

    shading::Workspace& workspace;
    shading::Canvas& canvas;
    std::string first; ///< The bytes at the beginning.
};

} // namespace shadingTest
