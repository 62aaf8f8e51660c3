#include "console/console.h"

namespace shading {

namespace {

bool runSave(Console& console, const std::vector<std::string>& arguments)
{
    std::vector<SaveProblem> problems;
    Session& session = console.session();
    const std::string path = arguments.empty() ? session.path() : arguments[0];
    const ChangedFile changed =
        console.hasOption("--force") ? ChangedFile::Replace : ChangedFile::Keep;
    const bool isGood = console.hasOption("--dry-run") ? session.maySave(path, problems, changed)
                                                       : session.save(path, problems, changed);
    return console.report(isGood, problems);
}

} // namespace

const std::vector<Command>& fileCommands()
{
    static const std::vector<Command> commands = {
        {"save", "[FILE]",
         "Writes the document into a file. FILE (default: the one that it was opened from, or was\n"
         "    last saved into) is replaced when all is written; nothing is printed. What was not\n"
         "    edited stands byte for byte as it was read. What the format cannot say is refused,\n"
         "    with all paths and reasons, before anything is written; so is a document in which a\n"
         "    look, a material or the like would name what is gone. A file that somebody changed\n"
         "    since it was read or saved last stays, unless --force says so. --dry-run writes\n"
         "    nothing, and says and fails as the save would.",
         0, 1, runSave, "file", "save gate.mtlx", "--force --dry-run"},
    };
    return commands;
}

} // namespace shading
