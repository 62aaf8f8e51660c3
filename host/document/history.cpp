#include "document/history.h"

#include "base/progress.h"
#include "document/document.h"
#include "document/journal.h"
#include "document/release.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace shading {

namespace {

const char* const kRefused = "refused by a listener";
const char* const kIsReplaying = "another edit is being taken back or done again";

} // namespace

History::History(Document& document) : m_document(document)
{
    if (document.history())
        throw std::logic_error("a document has one history only");
    document.setHistory(this);
    document.journal().takeStale(); // What happened before is the document.
}

History::~History()
{
    m_document.setHistory(nullptr);
}

bool History::run(const EditName& name, bool keepsTypes, const Action& action, std::string& problem)
{
    if (m_document.journal().isReplaying() || !m_heldFor.empty()) {
        problem = m_heldFor.empty() ? kIsReplaying : m_heldFor;
        return false;
    }
    Group group(*this, name, keepsTypes);
    const std::string reason = action();
    std::string refusal;
    if (group.finish(reason.empty(), refusal))
        return true;
    problem = refusal.empty() ? reason : refusal;
    return false;
}

History::Group::Group(History& history, EditName name, bool keepsTypes)
    : m_history(&history),
      m_name(std::move(name))
{
    if (history.m_document.journal().isReplaying())
        throw std::logic_error(kIsReplaying);
    if (!history.isOpen())
        history.dropStale();
    history.m_document.journal().begin(keepsTypes);
    history.m_groups.push_back(this);
}

History::Group::~Group()
{
    std::string ignored;
    if (m_history)
        finish(false, ignored);
}

bool History::Group::finish(bool isGood, std::string& problem)
{
    History& history = *m_history;
    m_history = nullptr;
    history.m_groups.pop_back();
    const bool isHeld = !history.m_heldFor.empty();
    const bool isDone = history.m_document.journal().end(isGood && !isHeld, problem);
    if (isHeld)
        problem = history.m_heldFor;
    if (m_name.lines.empty())
        m_name.lines = std::move(m_innerLines);
    if (m_name.lines.empty())
        m_name.lines.push_back("# " + m_name.title);
    if (isDone && history.isOpen()) {
        std::vector<std::string>& lines = history.m_groups.back()->m_innerLines;
        lines.insert(lines.end(), m_name.lines.begin(), m_name.lines.end());
    } else if (!history.isOpen()) {
        history.close(std::move(m_name));
    }
    return isDone;
}

/// The outermost group has ended.
void History::close(EditName name)
{
    Steps steps = m_document.journal().takeSteps();
    if (steps.empty())
        return;
    m_edits.resize(m_done);
    const bool goesOn = isRepeated();
    if (!goesOn) {
        m_edits.push_back(std::make_shared<Edit>());
        ++m_done;
    }
    const EditPtr edit = lastDone();
    const std::size_t firstStep = edit->steps.size();
    std::move(steps.begin(), steps.end(), std::back_inserter(edit->steps));
    edit->name = std::move(name);
    m_repeat = {};
    if (m_repeating)
        m_repeat = {m_repeating->m_key, std::chrono::steady_clock::now() + m_repeating->m_within};
    tell(edit, goesOn ? Change::Kind::GoneOn : Change::Kind::Done, firstStep);
}

/// The edit that ends goes on with the last one.
bool History::isRepeated() const
{
    return m_repeating && !m_repeat.key.empty() && m_repeat.key == m_repeating->m_key &&
           std::chrono::steady_clock::now() < m_repeat.until;
}

History::Repeating::Repeating(History& history, std::string key, std::chrono::milliseconds within)
    : m_history(history),
      m_outer(history.m_repeating),
      m_key(std::move(key)),
      m_within(within)
{
    m_history.m_repeating = this;
}

History::Repeating::~Repeating()
{
    m_history.m_repeating = m_outer;
}

bool History::undo(std::string& title, std::string& problem)
{
    return replay(false, title, problem);
}

bool History::redo(std::string& title, std::string& problem)
{
    return replay(true, title, problem);
}

bool History::replay(bool isForward, std::string& title, std::string& problem)
{
    dropStale();
    Journal& journal = m_document.journal();
    const bool isAtEnd = m_done == (isForward ? m_edits.size() : 0);
    if (!m_heldFor.empty() || isOpen() || journal.isReplaying() || isAtEnd) {
        problem = !m_heldFor.empty()      ? m_heldFor
                  : isOpen()              ? "an edit is open"
                  : journal.isReplaying() ? kIsReplaying
                  : isForward             ? "nothing to redo"
                                          : "nothing to undo";
        return false;
    }
    const EditPtr edit = m_edits[isForward ? m_done : m_done - 1];
    title = edit->name.title;
    if (!journal.replay(edit->steps, isForward)) {
        problem = kRefused;
        return false;
    }
    m_done = isForward ? m_done + 1 : m_done - 1;
    m_repeat = {};
    tell(edit, isForward ? Change::Kind::Redone : Change::Kind::Undone);
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

std::vector<EditName> History::names()
{
    dropStale();
    std::vector<EditName> names;
    for (const EditPtr& edit : m_edits)
        names.push_back(edit->name);
    return names;
}

std::shared_ptr<void> History::observe(Observer observer)
{
    const auto handle = std::make_shared<Observer>(std::move(observer));
    m_observers.push_back(handle);
    return handle;
}

History::Hold::Hold(History& history, std::string reason) : m_history(history)
{
    history.m_heldFor = std::move(reason);
}

void History::release(Progress& progress)
{
    Release removed;
    for (std::size_t i = 0; i < m_edits.size(); ++i) {
        Change change;
        ChangeCollector collector(change);
        for (const std::unique_ptr<Step>& step : m_edits[i]->steps)
            step->collect(collector, i < m_done);
        collector.finish();
        for (const NodePtr& node : change.removed)
            removed.add(node, progress);
        progress.step();
    }
    m_done = 0;
    m_savedEdit = nullptr;
    for (; !m_edits.empty(); m_edits.pop_back()) {
        for (Steps& steps = m_edits.back()->steps; !steps.empty(); steps.pop_back())
            progress.step();
    }
    removed.run(progress);
}

void History::noteSaved()
{
    dropStale();
    m_savedEdit = lastDone();
    m_repeat = {};
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
    if (isOpen() || !m_document.journal().takeStale())
        return;
    m_edits.clear();
    m_done = 0;
    m_repeat = {};
    m_isChangedOutside = true;
    tell(nullptr, Change::Kind::Outside);
}

void History::tell(const EditPtr& edit, Change::Kind kind, std::size_t firstStep)
{
    m_untold.push_back({edit, kind, firstStep, edit ? edit->steps.size() : 0});
    if (m_isTelling)
        return;
    // An observer may throw: what is untold then is told with the next edit.
    struct Telling {
        explicit Telling(bool& flag) : isOn(flag) { isOn = true; }
        ~Telling() { isOn = false; }
        bool& isOn;
    } const telling(m_isTelling);
    while (!m_untold.empty()) {
        const Untold untold = m_untold.front();
        m_untold.pop_front();
        tellOne(untold);
    }
}

void History::tellOne(const Untold& untold)
{
    const bool isForward = untold.kind != Change::Kind::Undone;
    Change change;
    change.kind = untold.kind;
    if (untold.edit) {
        // It may go on while it is told.
        const Steps& steps = untold.edit->steps;
        const std::size_t count = untold.endStep - untold.firstStep;
        ChangeCollector collector(change);
        for (std::size_t i = 0; i < count; ++i) {
            const Step& step = *steps[isForward ? untold.firstStep + i : untold.endStep - 1 - i];
            step.notify(isForward);
            if (!m_observers.empty())
                step.collect(collector, isForward);
        }
        collector.finish();
        change.name = untold.edit->name;
    }
    const auto isGone = [](const std::weak_ptr<Observer>& observer) { return observer.expired(); };
    m_observers.erase(std::remove_if(m_observers.begin(), m_observers.end(), isGone),
                      m_observers.end());
    // Observers may come and go while they are told; those that come hear of the next edit.
    const std::vector<std::weak_ptr<Observer>> observers = m_observers;
    for (const std::weak_ptr<Observer>& observer : observers) {
        if (const std::shared_ptr<Observer> held = observer.lock())
            (*held)(change);
    }
}

} // namespace shading
