// Undo and redo, edits of several, and who watches.

#include "binding/entry.h"
#include "shading/bind.h"
#include "shading/collected.h"
#include "shading/records.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using zelpython::guarded;
using zelpython::Text;
using zelpython::toPython;

namespace {

using Replay = bool (shading::Edits::*)(int, std::vector<std::string>&);

/// Undoes or redoes; those that are done stay where one is refused.
template <Replay replay>
py::list runReplay(PyDocument& self, int count)
{
    if (count < 0)
        throw py::value_error("count: a number of edits");
    Work& work = self.work();
    std::vector<std::string> titles;
    work.check(count == 0 || (work.edits().*replay)(count, titles));
    return toList(titles);
}

py::list history(PyDocument& self)
{
    shading::History& history = self.work().history();
    const int done = history.undoCount();
    py::list entries;
    for (const shading::EditName& name : history.names()) {
        entries.append(makeRecord("HistoryEntry", toPython(name.title), toList(name.lines),
                                  static_cast<int>(entries.size()) >= done));
    }
    return entries;
}

void checkCallable(const py::object& function)
{
    if (PyCallable_Check(function.ptr()) == 0)
        throw py::type_error("a watcher is called with each change: it is no callable");
}

py::object watch(PyDocument& self, const py::object& function)
{
    checkCallable(function);
    self.watch(function);
    return function;
}

void unwatch(PyDocument& self, const py::object& function)
{
    if (!self.unwatch(function))
        throw py::value_error("it does not watch the document");
}

} // namespace

void bindHistory(py::module_& module, DocumentClass& document)
{
    py::class_<PyEdit> edit(module, "Edit", py::is_final(), givenAndCollected<PyEdit>(),
                            "Several edits as one, for `with`; see Document.edit.");
    edit.def("__enter__", [](py::object self) {
        guarded([](PyEdit& entered) { entered.enter(); })(self.cast<PyEdit&>());
        return self;
    });
    edit.def("__exit__",
             guarded([](PyEdit& self, const py::object& type, const py::object& /*value*/,
                        const py::object& /*trace*/) {
                 self.exit(type.is_none());
                 return false;
             }),
             py::arg("type"), py::arg("value"), py::arg("trace"));
    document.def(
        "edit",
        [](py::object self, const Text& title) {
            return std::make_unique<PyEdit>(std::move(self), title.string());
        },
        py::arg("title"),
        "Several edits as one: `with doc.edit(\"title\"):`. An exception takes back what was done "
        "in it. Edits may lie in edits, and the inner one becomes a part of the outer.");
    document.def("undo", guarded(runReplay<&shading::Edits::undo>), py::arg("count") = 1,
                 "Takes the last edits back, and gives their titles.");
    document.def("redo", guarded(runReplay<&shading::Edits::redo>), py::arg("count") = 1,
                 "Does undone edits again, and gives their titles.");
    document.def("undoCount",
                 guarded([](PyDocument& self) { return self.work().history().undoCount(); }),
                 "How many edits can be taken back.");
    document.def("redoCount",
                 guarded([](PyDocument& self) { return self.work().history().redoCount(); }),
                 "How many undone edits can be done again.");
    document.def("history", guarded(history), "All edits, the oldest first.");
    document.def("isModified",
                 guarded([](PyDocument& self) { return !self.work().session().isSaved(); }),
                 "False when the document is as it was opened, made or last saved.");
    document.def("watch", guarded(watch), py::arg("function"),
                 "Calls the function with a Change after each edit, undo and redo, until unwatch. "
                 "Gives the function. One that raises does not stop the others.");
    document.def("unwatch", guarded(unwatch), py::arg("function"),
                 "The function watches no more. Raises ValueError when it did not.");
}

} // namespace zelshading
