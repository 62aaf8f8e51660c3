#include "base/commandLine.h"
#include "base/file.h"
#include "console/console.h"
#include "console/picture.h"

namespace shading {

namespace {

bool runDraw(Console& console, const Arguments& arguments)
{
    const std::string& file = arguments.front();
    const std::string depth = console.optionValue("--depth");
    PictureChoice choice;
    choice.isAll = console.hasOption("--all");
    if (console.hasOption("--depth") && !readNumber(depth, 0, choice.depth))
        return console.fail("--depth " + depth, "needs a number of levels, from 0");
    std::string problem = pictureNameProblem(file);
    if (!problem.empty())
        return console.fail(file, problem);
    const CompoundPtr compound = console.compoundAt(arguments, 1);
    if (!compound)
        return false;
    std::string svg;
    if (!drawPicture(*compound, choice, svg, problem))
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
