#pragma once

#include "window/canvas/canvasView.h"
#include "window/canvas/screenMemory.h"
#include "window/workspace/workspace.h"

#include <QWidget>
#include <memory>

class QVBoxLayout;

namespace shading {

class Actions;
class Canvas;
class Gestures;
class Minimap;

/// A document in its tab: the canvas, and above it where the user is and what there is to say.
class DocumentView : public QWidget {
    Q_OBJECT

public:
    DocumentView(std::unique_ptr<Workspace> workspace, Actions& actions, QWidget* parent = nullptr);
    ~DocumentView() override;

    Workspace& workspace() { return *m_workspace; }
    Canvas& canvas() { return *m_canvas; }
    Gestures& gestures() { return *m_gestures; }
    Minimap& minimap() { return *m_minimap; }
    const ScreenMemory& memory() const { return m_memory; }
    /// Lets go of the document, and of all that shows it: the view is only to be deleted then.
    std::unique_ptr<Workspace> takeWorkspace();
    /// Shows what was seen of the compound, also when it is still being built.
    void showAgain(const CanvasView& seen);
    /// A bar above the canvas, which is owned here from then on: the changed file, a refused save.
    void addBar(QWidget* bar);

private:
    void showCompound();
    void takeMarks(const Marks& marks);
    void showSelection();

    // The children of the widget go first, then the memory, which holds nodes, then the document.
    std::unique_ptr<Workspace> m_workspace;
    ScreenMemory m_memory;
    QVBoxLayout* m_bars; ///< Both are owned by the widget.
    Canvas* m_canvas;
    Minimap* m_minimap = nullptr;         ///< Owned by the canvas.
    std::unique_ptr<Gestures> m_gestures; ///< Goes before what it works on.
};

} // namespace shading
