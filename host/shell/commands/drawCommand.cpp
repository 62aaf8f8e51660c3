#include "shell/commands/drawCommand.h"

#include "base/fileReplace.h"
#include "draw/zelPicture.h"
#include "session/shown.h"

#include <charconv>
#include <strings.h>

namespace shading {

namespace {

using Words = std::vector<std::string>;

struct DrawArguments {
    std::string file;
    Words path; ///< Empty, or the one path.
    int depth = 0;
    bool showsAll = false;
};

bool readDepth(const std::string& text, int& depth)
{
    const char* const end = text.data() + text.size();
    const std::from_chars_result read = std::from_chars(text.data(), end, depth);
    return read.ec == std::errc() && read.ptr == end && depth >= 0;
}

/// A picture never takes the place of a document or a script by a slip.
bool isPictureName(const std::string& file)
{
    const std::string ending = ".svg";
    return file.size() >= ending.size() &&
           strcasecmp(file.c_str() + file.size() - ending.size(), ending.c_str()) == 0;
}

/// False, and reported, when the words are none of the command's.
bool readArguments(Shell& shell, const Words& words, DrawArguments& arguments)
{
    Words names;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--all") {
            arguments.showsAll = true;
        } else if (words[i] == "--depth") {
            const std::string depth = ++i < words.size() ? words[i] : "";
            if (!readDepth(depth, arguments.depth))
                return shell.fail("--depth " + depth, "needs a number of levels, from 0");
        } else if (words[i].rfind("--", 0) == 0) {
            return shell.fail(words[i], "no such option");
        } else {
            names.push_back(words[i]);
        }
    }
    if (names.empty() || names.size() > 2)
        return shell.fail(std::to_string(names.size()) + " names",
                          "needs a file and one path at most");
    arguments.file = names.front();
    if (!isPictureName(arguments.file))
        return shell.fail(arguments.file, "the name of a picture ends in .svg");
    arguments.path.assign(names.begin() + 1, names.end());
    return true;
}

bool runDraw(Shell& shell, const Words& words)
{
    DrawArguments arguments;
    if (!readArguments(shell, words, arguments))
        return false;
    const ZEL::AddRefWrapper<ZEL::Compound> compound = shell.compoundAt(arguments.path);
    if (!compound)
        return false;
    zelDraw::PictureOptions options;
    options.depth = arguments.depth;
    if (!arguments.showsAll)
        options.isShown = isTelling;
    std::string svg;
    std::string problem;
    if (!zelDraw::drawCompound(*compound, options, svg, problem))
        return shell.fail(arguments.file, problem);
    return replaceFile(arguments.file, svg, problem) ||
           shell.fail(arguments.file, "cannot be written: " + problem);
}

} // namespace

const std::vector<Command>& drawCommands()
{
    static const std::vector<Command> commands = {
        {"draw", "FILE.svg [PATH] [--depth N] [--all]",
         "Draws a compound as a picture. PATH is the compound (default: the root). Its nodes\n"
         "    stand with their ports in order, coloured by data type, from left to right along\n"
         "    the connections. Compounds in it are closed boxes; with --depth they are open "
         "frames,\n"
         "    N levels down. Inputs that say no more than the node's definition are counted, and\n"
         "    drawn with --all. FILE.svg is replaced when all is written; nothing is printed. Its "
         "name\n"
         "    ends in .svg.",
         1, 5, runDraw, "file compound =--depth,--all", "draw gate.svg Top.NG_gate --depth 2"},
    };
    return commands;
}

} // namespace shading
