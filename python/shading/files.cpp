// Documents from files and into files.

#include "binding/entry.h"
#include "binding/error.h"
#include "shading/bind.h"
#include "shading/environments.h"
#include "shading/problems.h"

#include <pybind11/stl.h>

namespace zelshading {

namespace py = pybind11;
using zelpython::guarded;

namespace {

/// True: the standard one. False: none. A path: that.
PluginChoice pluginOf(const py::object& plugin)
{
    PluginChoice choice;
    FileArgument file;
    if (py::isinstance<py::bool_>(plugin)) {
        choice.kind = plugin.cast<bool>() ? PluginChoice::Kind::Standard : PluginChoice::Kind::None;
        choice.path = py::module_::import("zel.shading._paths").attr("plugin").cast<std::string>();
    } else if (toFile(plugin, file)) {
        choice.kind = PluginChoice::Kind::File;
        choice.path = file.path;
    } else {
        throw py::type_error("plugin: True, False, or the path of one");
    }
    return choice;
}

Opening openingOf(const std::vector<FileArgument>& libraries, const py::object& plugin)
{
    std::vector<std::string> paths;
    paths.reserve(libraries.size());
    for (const FileArgument& library : libraries)
        paths.push_back(library.path);
    return openingWith(pluginOf(plugin), paths);
}

py::object open(const FileArgument& path,
                const std::vector<FileArgument>& libraries,
                const py::object& plugin,
                bool isStrict)
{
    Opening opening = openingOf(libraries, plugin);
    shading::OpenOptions options;
    options.isStrict = isStrict;
    std::vector<shading::Message> messages;
    std::unique_ptr<shading::Session> session =
        shading::Session::open(opening.environment, path.path, options, messages);
    if (!session)
        raiseMessages(messages, path.path);
    opening.messages.insert(opening.messages.end(), messages.begin(), messages.end());
    return toDocument(std::move(session), std::move(opening.messages));
}

py::object createNew(const std::optional<FileArgument>& path,
                     const std::vector<FileArgument>& libraries,
                     const py::object& plugin)
{
    Opening opening = openingOf(libraries, plugin);
    const std::string file = path ? path->path : "";
    if (path && file.empty())
        throw py::value_error("path: the name of a file, or None");
    std::vector<shading::Message> messages;
    std::unique_ptr<shading::Session> session =
        shading::Session::createNew(opening.environment, file, messages);
    if (!session)
        raiseMessages(messages, file);
    return toDocument(std::move(session), std::move(opening.messages));
}

void save(PyDocument& self, const std::optional<FileArgument>& path, bool isForced, bool isDryRun)
{
    shading::Session& session = self.work().session();
    const std::string file = path ? path->path : session.path();
    if (file.empty())
        throw py::value_error("path: the document has no file yet, name one");
    const shading::ChangedFile changed =
        isForced ? shading::ChangedFile::Replace : shading::ChangedFile::Keep;
    std::vector<shading::SaveProblem> problems;
    const bool isGood =
        isDryRun ? session.maySave(file, problems, changed) : session.save(file, problems, changed);
    if (!isGood)
        raiseProblems(problems);
}

} // namespace

py::object toDocument(std::unique_ptr<shading::Session> session,
                      std::vector<shading::Message> messages)
{
    return py::cast(
        std::make_unique<PyDocument>(Work::begin(std::move(session), std::move(messages))));
}

void bindFiles(py::module_& module, DocumentClass& document)
{
    module.def("open", guarded(open), py::arg("path"), py::arg("libraries") = py::tuple(),
               py::arg("plugin") = true, py::arg("strict") = false,
               "Opens the document in that file. Libraries are files with more data types and "
               "definitions, for the documents that are opened with them. The plugin is the "
               "standard one, none for False, or that of a path; a process has one. With strict, a "
               "document with warnings does not open. Raises OSError for a file that cannot be "
               "read, and zel.Error for what is no document.");
    module.def("new", guarded(createNew), py::arg("path") = py::none(),
               py::arg("libraries") = py::tuple(), py::arg("plugin") = true,
               "An empty document, to be saved into that file. Raises FileExistsError when the "
               "file is there.");
    document.def("save", guarded(save), py::arg("path") = py::none(), py::kw_only(),
                 py::arg("force") = false, py::arg("dryRun") = false,
                 "Writes the document into a file, which is its own from then on: replaced when "
                 "all is written. A file that somebody changed since it was read or saved last "
                 "stays, unless forced. With dryRun it writes nothing, and raises what the save "
                 "would. Raises OSError where the file cannot be written, and zel.Error for what "
                 "the format cannot say.");
}

} // namespace zelshading
