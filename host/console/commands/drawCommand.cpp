#include "base/commandLine.h"
#include "base/file.h"
#include "console/console.h"
#include "document/names.h"
#include "draw/zelPicture.h"
#include "session/shown.h"

#include <strings.h>

namespace shading {

namespace {

/// A picture never takes the place of a document or a script by a slip.
bool isPictureName(const std::string& file)
{
    const std::string ending = ".svg";
    return file.size() >= ending.size() &&
           strcasecmp(file.c_str() + file.size() - ending.size(), ending.c_str()) == 0;
}

bool runDraw(Console& console, const Arguments& arguments)
{
    const std::string& file = arguments.front();
    const std::string depth = console.optionValue("--depth");
    zelDraw::PictureOptions options;
    if (console.hasOption("--depth") && !readNumber(depth, 0, options.depth))
        return console.fail("--depth " + depth, "needs a number of levels, from 0");
    if (!isPictureName(file))
        return console.fail(file, "the name of a picture ends in .svg");
    const CompoundPtr compound = console.compoundAt(arguments, 1);
    if (!compound)
        return false;
    if (!console.hasOption("--all"))
        options.isShown = isTelling;
    options.hiddenSource = hiddenSourceOf;
    options.isUnknown = isUnknown;
    std::string svg;
    std::string problem;
    if (!zelDraw::drawCompound(*compound, options, svg, problem))
        return console.fail(file, problem);
    return replaceFile(file, svg, problem) || console.fail(file, "cannot be written: " + problem);
}

} // namespace

const std::vector<Command>& drawCommands()
{
    static const std::vector<Command> commands = {
        {"draw", "FILE.svg [PATH]",
         "Draws a compound as a picture. PATH is the compound (default: the root). Its nodes\n"
         "    stand with their ports in order, coloured by data type, from left to right along\n"
         "    the connections. Compounds in it are closed boxes; with --depth they are open "
         "frames,\n"
         "    N levels down. Inputs that say no more than the node's definition are counted, and\n"
         "    drawn with --all. FILE.svg is replaced when all is written; nothing is printed. Its "
         "name\n"
         "    ends in .svg.",
         1, 2, runDraw, "file compound", "draw gate.svg Top.NG_gate --depth 2", "--all --depth=n"},
    };
    return commands;
}

} // namespace shading
