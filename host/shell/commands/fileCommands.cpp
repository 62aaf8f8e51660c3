#include "shell/shell.h"

namespace shading {

namespace {

bool runSave(Shell& shell, const std::vector<std::string>& arguments)
{
    std::vector<SaveProblem> problems;
    Session& session = shell.session();
    const std::string path = arguments.empty() ? session.path() : arguments[0];
    const ChangedFile changed =
        shell.hasOption("--force") ? ChangedFile::Replace : ChangedFile::Keep;
    const bool isGood = shell.hasOption("--dry-run") ? session.maySave(path, problems, changed)
                                                     : session.save(path, problems, changed);
    return shell.report(isGood, problems);
}

} // namespace

const std::vector<Command>& fileCommands()
{
    static const std::vector<Command> commands = {
        {"save", "[FILE]",
         "Writes the document into a file. FILE (default: the one that it was opened from, or was\n"
         "    last saved into) is replaced when all is written; nothing is printed. What was not "
         "edited stands byte for byte as it was read. What the format\n"
         "    cannot say is refused, with all paths and reasons, before anything is written; so is "
         "a\n"
         "    document in which a look, a material or the like would name what is gone, or in "
         "which a\n"
         "    graph would no longer have the ports of the nodedef that it implements. A renamed "
         "port is\n"
         "    renamed in the nodedef too when nothing else in the document uses that. A file that\n"
         "    somebody changed since it was read or saved last stays, unless --force says so. "
         "--dry-run\n"
         "    writes nothing, and says and fails as the save would.",
         0, 1, runSave, "file", "save gate.mtlx", "--force --dry-run"},
    };
    return commands;
}

} // namespace shading
