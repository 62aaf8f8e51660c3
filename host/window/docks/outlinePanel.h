#pragma once

#include "document/pointers.h"
#include "window/docks/documentSearch.h"
#include "window/workspace/panel.h"

class QLabel;
class QLineEdit;
class QModelIndex;
class QStackedWidget;
class QTimer;
class QTreeView;

namespace shading {

class HitsModel;
class OutlineModel;

/// The document as a tree, in step with what is selected on the canvas, and the search in all of
/// it.
class OutlinePanel : public Panel {
    Q_OBJECT

public:
    explicit OutlinePanel(QWidget* parent = nullptr);
    ~OutlinePanel() override;

    void setWorkspace(Workspace* workspace) override;

    /// The typing goes into the search.
    void focusSearch();
    /// Goes to the next hit, or to the one before, and on from the last to the first.
    void findNext(bool isForward = true);
    bool hasSearch() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void addParts();
    void addTree();
    void addHits();
    void follow();
    void showSelection();
    void takeSelection();
    void enter(const QModelIndex& index);
    void search();
    void takeHits(const std::vector<DocumentSearch::Hit>& hits);
    void goToHit(int row);
    void showCount();

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    // Owned by the widget.
    OutlineModel* m_model;
    HitsModel* m_hits;
    DocumentSearch* m_search;
    QTreeView* m_tree;
    QTreeView* m_list; ///< Of the hits.
    QStackedWidget* m_pages;
    QLineEdit* m_line;
    QLabel* m_count;
    QTimer* m_again;            ///< Searches anew after edits.
    QTimer* m_follow;           ///< Follows the selection when the event loop turns.
    bool m_isFollowing = false; ///< What is selected in the tree comes from the document.
    bool m_isTaking = false;    ///< What is selected in the document comes from the tree.
    bool m_wantsHit = false;    ///< The first one that comes is gone to.
};

} // namespace shading
