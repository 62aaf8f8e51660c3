#include "shading/pyDocument.h"

#include "binding/entry.h"
#include "binding/error.h"
#include "shading/records.h"

#include <algorithm>
#include <stdexcept>

namespace zelshading {

namespace py = pybind11;

PyDocument::~PyDocument()
{
    if (!m_edits.empty())
        dropEdit(m_edits.front().number);
}

void PyDocument::watch(const py::object& function)
{
    for (const Watcher& watcher : m_watchers) {
        if (watcher.function.equal(function))
            return;
    }
    // The function is held by the watcher, and that holds the observer.
    PyObject* const plain = function.ptr();
    m_watchers.push_back({function, m_work->history().observe([this, plain](const auto& change) {
                              tell(plain, change);
                          })});
}

bool PyDocument::unwatch(const py::object& function)
{
    for (std::size_t i = 0; i < m_watchers.size(); ++i) {
        if (!m_watchers[i].function.equal(function))
            continue;
        const Watcher gone = m_watchers[i]; // Its end may call anything.
        m_watchers.erase(m_watchers.begin() + static_cast<std::ptrdiff_t>(i));
        return true;
    }
    return false;
}

/// What one raises waits for the end of the call; the others are told all the same.
void PyDocument::tell(PyObject* function, const shading::Change& change)
{
    if (!zelpython::isInterpreterAlive())
        return;
    const auto held = py::reinterpret_borrow<py::object>(function); // It may end its watch.
    try {
        held(PyChange(m_work, change));
    } catch (py::error_already_set& error) {
        error.restore();
        zelpython::putAwayError(function);
    }
}

int PyDocument::openEdit(const std::string& title)
{
    if (m_work->history().isHeld())
        throw std::runtime_error("the document is being saved");
    m_edits.push_back({++m_lastNumber, std::make_unique<shading::History::Group>(
                                           m_work->history(), shading::EditName{title, {}})});
    return m_lastNumber;
}

void PyDocument::closeEdit(int number, bool isGood)
{
    const auto isMeant = [&](const OpenEdit& edit) { return edit.number == number; };
    const auto found = std::find_if(m_edits.begin(), m_edits.end(), isMeant);
    if (found == m_edits.end())
        throw std::runtime_error("the edit is not open: one around it ended, and took it back");
    if (found + 1 != m_edits.end()) {
        dropEdit(number);
        throw std::runtime_error("an edit inside of this one is open: both were taken back");
    }
    const std::unique_ptr<shading::History::Group> group = std::move(m_edits.back().group);
    m_edits.pop_back();
    std::string problem;
    if (!group->finish(isGood, problem) && isGood)
        zelpython::raiseError(problem);
}

void PyDocument::dropEdit(int number)
{
    // The innermost first.
    while (!m_edits.empty() && m_edits.back().number >= number)
        m_edits.pop_back();
}

int PyDocument::traverse(visitproc visit, void* arg) const
{
    for (const Watcher& watcher : m_watchers)
        Py_VISIT(watcher.function.ptr());
    return 0;
}

PyEdit::~PyEdit()
{
    if (m_number != 0 && m_document && zelpython::isInterpreterAlive())
        document().dropEdit(m_number);
}

PyDocument& PyEdit::document() const
{
    return m_document.cast<PyDocument&>();
}

void PyEdit::enter()
{
    if (m_number != 0)
        throw std::runtime_error("an edit is entered once: ask the document for another one");
    m_number = document().openEdit(m_title);
}

void PyEdit::exit(bool isGood)
{
    if (m_number == 0)
        throw std::runtime_error("the edit was not entered");
    document().closeEdit(m_number, isGood);
}

int PyEdit::traverse(visitproc visit, void* arg) const
{
    Py_VISIT(m_document.ptr());
    return 0;
}

void PyEdit::clear()
{
    if (m_number != 0 && m_document)
        document().dropEdit(m_number);
    m_document = py::object();
}

} // namespace zelshading
