#include "document/history.h"

#include "document/document.h"
#include "document/journal.h"

#include <algorithm>

namespace shading {

namespace {

const char* const kRefused = "refused by a listener";

/// After the whole edit: an editor that looks at the network finds it as it is now.
void notifyAll(const Steps& steps, bool isForward)
{
    const std::size_t count = steps.size();
    for (std::size_t i = 0; i < count; ++i)
        steps[isForward ? i : count - 1 - i]->notify(isForward);
}

} // namespace

History::History(Document& document) : m_document(document)
{
    document.journal().takeStale(); // What happened before is the document.
}

bool History::run(const std::string& title,
                  bool keepsTypes,
                  const Action& action,
                  std::string& problem)
{
    dropStale();
    m_hasLastEdit = false;
    const auto edit = std::make_shared<Edit>();
    edit->title = title;
    Journal& journal = m_document.journal();
    journal.begin(keepsTypes);
    const std::string reason = action();
    std::string refusal;
    if (!journal.end(reason.empty(), edit->steps, refusal)) {
        problem = refusal.empty() ? reason : refusal;
        return false;
    }
    if (edit->steps.empty())
        return true;
    m_edits.resize(m_done);
    m_edits.push_back(edit);
    ++m_done;
    m_hasLastEdit = true;
    notifyAll(edit->steps, true);
    return true;
}

Edit* History::lastEdit()
{
    return m_hasLastEdit ? m_edits[m_done - 1].get() : nullptr;
}

bool History::undo(std::string& title, std::string& problem)
{
    dropStale();
    if (m_done == 0) {
        problem = "nothing to undo";
        return false;
    }
    const std::shared_ptr<Edit> edit = m_edits[m_done - 1];
    title = edit->title;
    m_hasLastEdit = false;
    if (!replay(*edit, false)) {
        problem = kRefused;
        return false;
    }
    --m_done;
    notifyAll(edit->steps, false);
    return true;
}

bool History::redo(std::string& title, std::string& problem)
{
    dropStale();
    if (m_done == m_edits.size()) {
        problem = "nothing to redo";
        return false;
    }
    const std::shared_ptr<Edit> edit = m_edits[m_done];
    title = edit->title;
    if (!replay(*edit, true)) {
        problem = kRefused;
        return false;
    }
    ++m_done;
    notifyAll(edit->steps, true);
    return true;
}

int History::undoCount()
{
    dropStale();
    return static_cast<int>(m_done);
}

int History::redoCount()
{
    dropStale();
    return static_cast<int>(m_edits.size() - m_done);
}

std::vector<std::string> History::titles()
{
    dropStale();
    std::vector<std::string> titles;
    for (const std::shared_ptr<Edit>& edit : m_edits)
        titles.push_back(edit->title);
    return titles;
}

void History::noteSaved()
{
    dropStale();
    m_savedEdit = lastDone();
    m_isChangedOutside = false;
}

bool History::isSaved()
{
    dropStale();
    return !m_isChangedOutside && lastDone() == m_savedEdit;
}

/// A change that did not run through here makes the steps fit no more.
void History::dropStale()
{
    if (!m_document.journal().takeStale())
        return;
    m_edits.clear();
    m_done = 0;
    m_isChangedOutside = true;
    m_hasLastEdit = false;
}

bool History::replay(Edit& edit, bool isForward)
{
    return edit.command ? runCommand(edit, isForward)
                        : m_document.journal().replay(edit.steps, isForward);
}

/// The library's commands pass over what is refused: the steps tell whether all was done, and take
/// back what was. A command that failed has recorded what it found, so it is not asked again.
bool History::runCommand(Edit& edit, bool isForward)
{
    Journal& journal = m_document.journal();
    journal.suspend();
    edit.command(isForward);
    const bool isGood = std::all_of(edit.steps.begin(), edit.steps.end(),
                                    [&](const auto& step) { return step->isDone() == isForward; });
    for (const std::unique_ptr<Step>& step : edit.steps) {
        if (!isGood && step->isDone() == isForward)
            step->run(!isForward);
    }
    journal.resume();
    if (!isGood)
        edit.command = nullptr;
    return isGood;
}

} // namespace shading
