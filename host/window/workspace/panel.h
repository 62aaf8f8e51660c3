#pragma once

#include <QWidget>

namespace shading {

class Workspace;

/// A view beside the canvas, for the document in front: a dock holds one.
class Panel : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    ~Panel() override;
    /// Shows this document from now on; null: none. What the panel knew of the one before, nodes
    /// and connections of signals, it lets go: that one may be about to close.
    virtual void setWorkspace(Workspace* workspace) = 0;
};

} // namespace shading
