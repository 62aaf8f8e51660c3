#include "window/workspace/workspace.h"

#include "document/document.h"
#include "document/names.h"

#include <algorithm>

namespace shading {

Workspace::Workspace(std::unique_ptr<Session> session,
                     std::vector<Message> messages,
                     QObject* parent)
    : QObject(parent),
      m_session(std::move(session)),
      m_messages(std::move(messages)),
      m_marks(std::make_unique<ChangeMarks>(m_session->document())),
      m_compound(m_session->document().getRootNode()->getAsCompound()),
      m_visits{m_compound}
{
    m_observer = history().observe([this](const Change& change) { noteChange(change); });
    connect(m_marks.get(), &ChangeMarks::flushed, this, &Workspace::takeMarks);
}

Workspace::~Workspace() = default;

std::unique_ptr<Session> Workspace::takeSession()
{
    m_kept.clear();
    m_visits.clear();
    m_isSelected.clear();
    m_selection.clear();
    m_compound = nullptr;
    m_observer.reset();
    m_marks.reset();
    return std::move(m_session);
}

void Workspace::enter(const CompoundPtr& compound)
{
    if (!compound || compound == m_compound)
        return;
    m_visits.resize(m_visit + 1);
    m_visits.push_back(compound);
    ++m_visit;
    look(compound);
}

bool Workspace::leave()
{
    const NodePtr node = m_compound->getAsNode();
    const CompoundPtr around = node->getParentCompound();
    if (!around)
        return false;
    enter(around);
    select({node});
    return true;
}

bool Workspace::goBack()
{
    if (!canGoBack())
        return false;
    look(m_visits[--m_visit]);
    return true;
}

bool Workspace::goForward()
{
    if (!canGoForward())
        return false;
    look(m_visits[++m_visit]);
    return true;
}

bool Workspace::reveal(const std::string& path)
{
    for (std::string rest = path; !rest.empty();) {
        const NodePtr node = document().findNodeFromPath(rest.c_str());
        if (node) {
            reveal(node);
            return true;
        }
        const std::size_t dot = rest.rfind('.');
        rest.resize(dot == std::string::npos ? 0 : dot);
    }
    return false;
}

void Workspace::reveal(const NodePtr& node)
{
    const CompoundPtr around = node->getParentCompound();
    enter(around ? around : node->getAsCompound());
    if (around)
        select({node});
    Q_EMIT revealed();
}

void Workspace::select(const std::vector<NodePtr>& nodes)
{
    std::vector<NodePtr> selection;
    std::unordered_set<const ZEL::Node*> isSelected;
    for (const NodePtr& node : nodes) {
        if (node && node->getParentCompound() == m_compound && document().has(node) &&
            isSelected.insert(node.get()).second)
            selection.push_back(node);
    }
    if (selection == m_selection)
        return;
    m_selection = std::move(selection);
    m_isSelected = std::move(isSelected);
    Q_EMIT selectionChanged();
}

bool Workspace::edit(const EditFunction& function)
{
    return report(function(edits()));
}

bool Workspace::editAs(const QString& title, const EditFunction& function)
{
    History::Group group(history(), {title.toStdString(), {}});
    const bool isGood = function(edits());
    std::string problem;
    if (group.finish(isGood, problem))
        return true;
    if (!isGood)
        return report(false);
    refuse(title, QString::fromStdString(problem));
    return false;
}

bool Workspace::undo(int count)
{
    std::vector<std::string> titles;
    m_isReplaying = true;
    const bool isDone = report(edits().undo(count, titles));
    m_isReplaying = false;
    if (!titles.empty())
        say(tr("Undone: %1").arg(QString::fromStdString(titles.back())));
    return isDone;
}

bool Workspace::redo(int count)
{
    std::vector<std::string> titles;
    m_isReplaying = true;
    const bool isDone = report(edits().redo(count, titles));
    m_isReplaying = false;
    if (!titles.empty())
        say(tr("Done again: %1").arg(QString::fromStdString(titles.back())));
    return isDone;
}

bool Workspace::goToEdit(int count)
{
    const int done = history().undoCount();
    if (count == done)
        return true;
    return count < done ? undo(done - count) : redo(count - done);
}

void Workspace::refuse(const QString& subject, const QString& reason)
{
    Q_EMIT refused(subject, reason);
}

void Workspace::say(const QString& text)
{
    Q_EMIT said(text);
}

void Workspace::noteFile()
{
    m_wasSaved = m_session->isSaved();
    Q_EMIT fileChanged();
}

bool Workspace::report(bool isDone)
{
    if (!isDone) {
        const Edits::Problem& problem = edits().problem();
        refuse(QString::fromStdString(problem.subject), QString::fromStdString(problem.reason));
    }
    return isDone;
}

void Workspace::look(const CompoundPtr& compound)
{
    m_kept[m_compound.get()] = m_selection;
    m_compound = compound;
    m_selection.clear();
    m_isSelected.clear();
    Q_EMIT compoundChanged();
    const auto kept = m_kept.find(compound.get());
    if (kept != m_kept.end())
        select(kept->second);
    if (m_selection.empty())
        Q_EMIT selectionChanged();
}

/// What is left of the places and the selection after an edit.
void Workspace::takeMarks(const Marks& marks)
{
    const auto isGone = [this](const CompoundPtr& compound) { return !isInDocument(compound); };
    const bool hasOtherNodes =
        std::any_of(marks.begin(), marks.end(), [](const auto& m) { return m.hasOtherNodes; });
    if (hasOtherNodes) {
        CompoundPtr left = m_compound;
        while (left && isGone(left)) {
            const NodePtr node = left->getAsNode();
            left = node ? node->getParentCompound() : nullptr;
        }
        enter(left ? left : document().getRootNode()->getAsCompound());
        const CompoundPtr here = m_compound;
        m_visits.erase(std::remove_if(m_visits.begin(), m_visits.end(), isGone), m_visits.end());
        m_visits.erase(std::unique(m_visits.begin(), m_visits.end()), m_visits.end());
        m_visit = static_cast<std::size_t>(std::find(m_visits.begin(), m_visits.end(), here) -
                                           m_visits.begin());
        if (m_visit == m_visits.size())
            m_visits.push_back(here);
        m_kept.clear();
        select(std::vector<NodePtr>(m_selection));
    }
    Q_EMIT changed(marks);
}

bool Workspace::isInDocument(const CompoundPtr& compound)
{
    return document().has(compound->getAsNode());
}

void Workspace::noteChange(const Change& change)
{
    if (m_isReplaying)
        showWhere(change);
    Q_EMIT edited(change);
    if (const bool isSaved = m_session->isSaved(); isSaved != m_wasSaved) {
        m_wasSaved = isSaved;
        Q_EMIT fileChanged();
    }
}

/// An edit that is taken back or done again is shown: who does not see a change does it once more.
void Workspace::showWhere(const Change& change)
{
    flush();
    const auto isHere = [this](const CompoundPtr& compound) { return compound == m_compound; };
    const std::vector<CompoundPtr>& places = change.compounds;
    if (std::any_of(places.begin(), places.end(), isHere))
        return;
    const auto place = std::find_if(places.begin(), places.end(),
                                    [this](const auto& c) { return isInDocument(c); });
    if (place == places.end())
        return;
    enter(*place);
    std::vector<NodePtr> nodes = change.added;
    nodes.insert(nodes.end(), change.changed.begin(), change.changed.end());
    select(nodes);
    Q_EMIT revealed();
}

} // namespace shading
