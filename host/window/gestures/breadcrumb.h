#pragma once

#include <QWidget>

class QHBoxLayout;

namespace shading {

class Workspace;

/// The way from the document to the compound that is looked at: a button for each compound, which
/// leads there.
class Breadcrumb : public QWidget {
    Q_OBJECT

public:
    /// The workspace is not owned and must outlive this.
    explicit Breadcrumb(Workspace& workspace, QWidget* parent = nullptr);

private:
    void fill();

    Workspace& m_workspace;
    QHBoxLayout* m_layout; ///< Owned by the widget.
};

} // namespace shading
