#pragma once

#include <QObject>

namespace shading {

class DocumentView;

/// Lets node types of the library be dropped onto the canvas of a document. Owned by the canvas.
class NodeDrop : public QObject {
    Q_OBJECT

public:
    /// The view must outlive its canvas. Once more does nothing.
    static void acceptIn(DocumentView& view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit NodeDrop(DocumentView& view);

    DocumentView& m_view;
};

/// Makes a node of the catalogue's entry of that name, in the middle of what is seen. False when
/// there is none, or it was refused.
bool makeNode(DocumentView& view, const QString& name);

} // namespace shading
