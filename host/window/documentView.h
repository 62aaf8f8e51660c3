#pragma once

#include "window/workspace/workspace.h"

#include <QWidget>
#include <memory>

class QVBoxLayout;

namespace shading {

class Actions;

/// A document in its tab: the canvas, and above it where the user is and what there is to say.
class DocumentView : public QWidget {
    Q_OBJECT

public:
    DocumentView(std::unique_ptr<Workspace> workspace, Actions& actions, QWidget* parent = nullptr);
    ~DocumentView() override;

    Workspace& workspace() { return *m_workspace; }
    /// A bar above the canvas, which is owned here from then on: the changed file, a refused save.
    void addBar(QWidget* bar);

private:
    // Destroyed first: it looks at the workspace.
    std::unique_ptr<Workspace> m_workspace;
    QVBoxLayout* m_bars; ///< Owned by the widget.
};

} // namespace shading
