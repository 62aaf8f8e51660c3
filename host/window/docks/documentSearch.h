#pragma once

#include "document/pointers.h"

#include <QObject>
#include <QString>
#include <string>
#include <vector>

class QTimer;

namespace shading {

class Document;

/// Looks for a text in the names, types and values of all nodes of a document, a little at each
/// turn of the event loop. A text with a "." is looked for in the paths.
class DocumentSearch : public QObject {
    Q_OBJECT

public:
    struct Hit {
        NodePtr node;
        QString what; ///< Where the text was found: "type mix", "in1 = 0.5".
    };

    explicit DocumentSearch(QObject* parent = nullptr);

    /// Begins anew. The document must outlive the search or its stop.
    void start(Document& document, const QString& text);
    /// Lets go of the document.
    void stop();
    bool isRunning() const;

Q_SIGNALS:
    /// More was found, in the order of the network.
    void found(const std::vector<shading::DocumentSearch::Hit>& hits);
    void finished();

private:
    /// A compound on the way, and where in it.
    struct Level {
        CompoundPtr compound;
        int next = 0;
    };

    void runSlice();
    void look(const NodePtr& node, std::vector<Hit>& hits) const;
    QString match(ZEL::Node& node) const;
    bool isIn(const char* text) const;

    QTimer* m_timer;
    std::string m_text;
    bool m_isPath = false;
    std::vector<Level> m_levels; ///< From the root down; empty: nothing is left to do.
    NodePtr m_exact;             ///< That of the path, told first.
};

} // namespace shading
