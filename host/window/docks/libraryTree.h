#pragma once

#include <QTreeWidget>

namespace shading {

/// What is dragged from the library onto a canvas: the name of a catalogue's entry, in UTF-8.
extern const char* const kNodeTypeMime;

/// A tree of node types that can be dragged; NameRole says which one an item is.
class LibraryTree : public QTreeWidget {
    Q_OBJECT

public:
    /// The name of a catalogue's entry; a category has none.
    static constexpr int kNameRole = Qt::UserRole;

    explicit LibraryTree(QWidget* parent = nullptr);

protected:
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
};

} // namespace shading
