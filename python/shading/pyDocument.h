#pragma once

#include "shading/work.h"

#include <memory>
#include <pybind11/pybind11.h>
#include <string>
#include <vector>

namespace zelshading {

/// zel.shading.Document: the work, who watches it, and the edits that are open.
class PyDocument {
public:
    explicit PyDocument(std::shared_ptr<Work> work) : m_work(std::move(work)) {}
    PyDocument(const PyDocument&) = delete;
    PyDocument& operator=(const PyDocument&) = delete;
    /// What is open is taken back.
    ~PyDocument();

    Work& work() { return *m_work; }
    const std::shared_ptr<Work>& sharedWork() const { return m_work; }

    /// The callable is told of each change from now on, once even if it is given again.
    void watch(const pybind11::object& function);
    /// False when it does not watch.
    bool unwatch(const pybind11::object& function);

    /// Opens an edit of several; gives its number.
    int openEdit(const std::string& title);
    /// Ends it: keeps what was done, or takes it back. Raises zel.Error when it cannot be kept, and
    /// RuntimeError when edits inside of it are open, which are taken back with it, or when it is
    /// open no more.
    void closeEdit(int number, bool isGood);
    /// Takes it back if it is open, with those inside.
    void dropEdit(int number);

    // For Python's collector.
    int traverse(visitproc visit, void* arg) const;
    void clear() { m_watchers.clear(); }

private:
    struct Watcher {
        pybind11::object function;
        std::shared_ptr<void> observer; ///< Its handle in the history.
    };
    struct OpenEdit {
        int number;
        std::unique_ptr<shading::History::Group> group;
    };

    void tell(PyObject* function, const shading::Change& change);

    // Destroyed in reverse order: the edits before the history that they are open in.
    std::shared_ptr<Work> m_work; ///< Never empty.
    std::vector<Watcher> m_watchers;
    std::vector<OpenEdit> m_edits; ///< Each lies in the one before.
    int m_lastNumber = 0;
};

/// zel.shading.Edit, what doc.edit() gives: a context.
class PyEdit {
public:
    PyEdit(pybind11::object document, std::string title)
        : m_document(std::move(document)),
          m_title(std::move(title))
    {
    }
    PyEdit(const PyEdit&) = delete;
    PyEdit& operator=(const PyEdit&) = delete;
    ~PyEdit();

    /// Raises RuntimeError when it was entered before.
    void enter();
    void exit(bool isGood);

    int traverse(visitproc visit, void* arg) const;
    void clear();

private:
    PyDocument& document() const;

    pybind11::object m_document; ///< Null: cleared by the collector.
    std::string m_title;
    int m_number = 0; ///< 0: not entered.
};

} // namespace zelshading
