#pragma once

#include "session/session.h"
#include "window/workspace/changeMarks.h"

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shading {

/// One document in the window: its session, the compound that is looked at, and what is selected
/// there. All views of the document share it; none knows another. Views hear of changes by the
/// signals and ask the document for what it is then.
class Workspace : public QObject {
    Q_OBJECT

public:
    using EditFunction = std::function<bool(Edits& edits)>;

    /// Messages: what was said when the document was opened.
    explicit Workspace(std::unique_ptr<Session> session,
                       std::vector<Message> messages = {},
                       QObject* parent = nullptr);
    ~Workspace() override;

    /// Lets go of the document: the workspace is only to be destroyed then.
    std::unique_ptr<Session> takeSession();

    Session& session() { return *m_session; }
    Document& document() { return m_session->document(); }
    Edits& edits() { return m_session->edits(); }
    History& history() { return m_session->edits().history(); }
    const std::vector<Message>& messages() const { return m_messages; }
    /// Tells the views now what changed, not when the event loop turns.
    void flush() { m_marks->flush(); }

    // Where the user is.
    /// Never empty.
    const CompoundPtr& compound() const { return m_compound; }
    /// Looks into a compound of the document. What was selected there is selected again.
    void enter(const CompoundPtr& compound);
    /// Goes to the compound around, and selects the one that was left. False at the root.
    bool leave();
    /// Along the compounds that were looked at, as pages of a book. False when there is none.
    bool goBack();
    bool goForward();
    bool canGoBack() const { return m_visit > 0; }
    bool canGoForward() const { return m_visit + 1 < m_visits.size(); }
    /// Goes where the path leads: selects the node, or that of the port, and tells revealed. An
    /// element that is no part of the network leads to the document. False when it leads nowhere.
    bool reveal(const std::string& path);
    void reveal(const NodePtr& node);

    // What is selected: nodes of the compound, in the order in which they were chosen.
    const std::vector<NodePtr>& selection() const { return m_selection; }
    bool isSelected(const ZEL::Node& node) const { return m_isSelected.count(&node) > 0; }
    /// What is not in the compound, or twice, is left out.
    void select(const std::vector<NodePtr>& nodes);

    // Edits. A refusal is told by refused, and nothing changed.
    /// Runs one edit.
    bool edit(const EditFunction& function);
    /// Runs several as one of that title.
    bool editAs(const QString& title, const EditFunction& function);
    /// Takes edits back, or does them again; goes where the change is.
    bool undo(int count = 1);
    bool redo(int count = 1);
    /// So that so many edits are done.
    bool goToEdit(int count);
    /// Tells that something was refused that no edit was begun for.
    void refuse(const QString& subject, const QString& reason);
    /// A line for the status bar.
    void say(const QString& text);
    /// Tells fileChanged: to be called after saving.
    void noteFile();

Q_SIGNALS:
    void compoundChanged();
    void selectionChanged();
    /// Once a turn of the event loop, after the library told. The compound that is looked at is
    /// still one of the document, and the selection has what is left of it.
    void changed(const shading::Marks& marks);
    /// An edit was done, undone or redone.
    void edited(const shading::Change& change);
    /// The document was saved, or is no longer as it was saved; or it has another file.
    void fileChanged();
    void refused(const QString& subject, const QString& reason);
    void said(const QString& text);
    /// The user is to be shown the nodes, which are selected.
    void revealed();

private:
    void takeMarks(const Marks& marks);
    void noteChange(const Change& change);
    void showWhere(const Change& change);
    bool isInDocument(const CompoundPtr& compound);
    void look(const CompoundPtr& compound);
    bool report(bool isDone);

    // Destroyed in reverse order: what holds nodes goes before the document.
    std::unique_ptr<Session> m_session;
    std::vector<Message> m_messages;
    std::unique_ptr<ChangeMarks> m_marks;
    std::shared_ptr<void> m_observer;
    CompoundPtr m_compound;
    std::vector<NodePtr> m_selection;
    std::unordered_set<const ZEL::Node*> m_isSelected;
    std::vector<CompoundPtr> m_visits; ///< The compounds that were looked at.
    std::size_t m_visit = 0;           ///< The one of them that is.
    /// What was selected in compounds that were left.
    std::unordered_map<const ZEL::Compound*, std::vector<NodePtr>> m_kept;
    bool m_isReplaying = false;
    bool m_wasSaved = true;
};

} // namespace shading
