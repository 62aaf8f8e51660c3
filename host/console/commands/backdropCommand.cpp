#include "console/console.h"
#include "document/attributes.h"
#include "document/names.h"
#include "edits/positions.h"

#include <sstream>

namespace shading {

namespace {

/// Numbers with blanks or commas between them; false when there are not so many.
bool readNumbers(const std::string& text, const std::vector<double*>& numbers)
{
    std::string words = text;
    for (char& c : words)
        c = c == ',' ? ' ' : c;
    std::istringstream stream(words);
    std::string word;
    for (double* const number : numbers) {
        if (!(stream >> word) || !readFloat(word, *number))
            return false;
    }
    return !(stream >> word);
}

bool readFrame(Console& console, const std::string& text, Frame& frame)
{
    return readNumbers(text, {&frame.first.x, &frame.first.y, &frame.width, &frame.height}) ||
           console.fail(text, "not a frame: X,Y,WIDTH,HEIGHT");
}

/// From here on the words are: verb, compound, and mostly the name of the backdrop.
BackdropPtr backdropNamed(Console& console, const Arguments& arguments)
{
    BackdropPtr found = console.edits().backdropAt(arguments[1] + "." + arguments[2]);
    if (!found)
        console.fail(arguments[1] + "." + arguments[2], "no such backdrop");
    return found;
}

bool list(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments, 1);
    if (!compound)
        return false;
    Document& document = console.document();
    for (const BackdropPtr& backdrop : document.backdrops().in(*compound)) {
        console.out() << (backdrop->name().empty() ? "-" : backdrop->name());
        if (const std::optional<Frame> frame = frameOf(document, *backdrop))
            console.out() << " " << numberText(frame->first.x) << "," << numberText(frame->first.y)
                          << "," << numberText(frame->width) << "," << numberText(frame->height);
        console.out() << ":";
        for (const NodePtr& node : backdrop->nodes())
            console.out() << " " << node->getName();
        console.out() << "\n";
    }
    return true;
}

bool add(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments, 1);
    std::vector<NodePtr> nodes;
    std::optional<Frame> frame;
    if (!compound || !console.childrenOf(*compound, arguments, 3, nodes))
        return false;
    if (console.hasOption("--frame") &&
        !readFrame(console, console.optionValue("--frame"), frame.emplace()))
        return false;
    BackdropPtr created;
    return console.report(console.edits().createBackdrop(compound, arguments[2], nodes, frame,
                                                         console.optionValue("--text"), created));
}

bool setNodes(Console& console, const Arguments& arguments)
{
    const BackdropPtr backdrop = backdropNamed(console, arguments);
    std::vector<NodePtr> nodes;
    return backdrop &&
           console.childrenOf(*backdrop->owner()->getAsCompound(), arguments, 3, nodes) &&
           console.report(console.edits().setBackdropNodes(backdrop, nodes));
}

bool setFrame(Console& console, const Arguments& arguments)
{
    const BackdropPtr backdrop = backdropNamed(console, arguments);
    Frame frame;
    const std::string text =
        arguments[3] + "," + arguments[4] + "," + arguments[5] + "," + arguments[6];
    return backdrop && readFrame(console, text, frame) &&
           console.report(console.edits().setBackdropFrame(backdrop, frame));
}

bool move(Console& console, const Arguments& arguments)
{
    const BackdropPtr backdrop = backdropNamed(console, arguments);
    Position place;
    if (!backdrop)
        return false;
    if (!readNumbers(arguments[3] + "," + arguments[4], {&place.x, &place.y}))
        return console.fail(arguments[3] + "," + arguments[4], "not a place: X Y");
    return console.report(console.edits().moveBackdrop(backdrop, place));
}

bool runBackdrop(Console& console, const Arguments& arguments)
{
    Edits& edits = console.edits();
    const std::string& verb = arguments[0];
    const std::size_t count = arguments.size();
    if (verb == "list" && count <= 2)
        return list(console, arguments);
    if (verb == "add" && count >= 3)
        return add(console, arguments);
    if (verb == "nodes" && count >= 3)
        return setNodes(console, arguments);
    if (verb == "frame" && count == 7)
        return setFrame(console, arguments);
    if (verb == "move" && count == 5)
        return move(console, arguments);
    const bool isDeletion = verb == "delete" && count == 3;
    const bool hasText = verb == "text" && count == 3 && console.hasOption("--text");
    if (!isDeletion && !hasText && ((verb != "rename" && verb != "text") || count != 4))
        return console.fail(verb, "usage: backdrop add PATH NAME [NODE...], backdrop nodes PATH "
                                  "NAME [NODE...], backdrop frame PATH NAME X Y WIDTH HEIGHT, "
                                  "backdrop move PATH NAME X Y, backdrop text PATH NAME TEXT, "
                                  "backdrop rename PATH OLD NEW, backdrop delete PATH NAME, "
                                  "backdrop list [PATH]");
    const BackdropPtr backdrop = backdropNamed(console, arguments);
    if (!backdrop)
        return false;
    return console.report(isDeletion         ? edits.deleteBackdrop(backdrop)
                          : verb == "rename" ? edits.renameBackdrop(backdrop, arguments[3])
                          : hasText ? edits.setBackdropText(backdrop, console.optionValue("--text"))
                                    : edits.setBackdropText(backdrop, arguments[3]));
}

} // namespace

const std::vector<Command>& backdropCommands()
{
    static const int kAny = 1 << 20;
    static const std::vector<Command> commands = {
        {"backdrop",
         "add PATH NAME [NODE...] | nodes PATH NAME [NODE...] | frame PATH NAME X Y WIDTH HEIGHT | "
         "move PATH NAME X Y | text PATH NAME TEXT | rename PATH OLD NEW | delete PATH NAME | "
         "list [PATH]",
         "Changes the frames that are drawn around nodes. PATH is the compound that has them, "
         "NODE\n"
         "    are names of its nodes; a new frame is around their places, or X,Y,WIDTH,HEIGHT of\n"
         "    --frame, and says --text. `nodes` are those that it contains from then on; `move` "
         "takes\n"
         "    them along, and `frame` does not. `list` prints name, frame and nodes, a line each.",
         1, kAny, runBackdrop,
         "=add compound name child... | =nodes compound backdrop child... | =frame compound "
         "backdrop | =move compound backdrop | =text compound backdrop | =rename compound backdrop "
         "name | =delete compound backdrop | =list compound",
         "backdrop add Top.NG_wall rust_look rust stains --text \"How it rusts\"",
         "--frame=x,y,width,height --text=text"},
    };
    return commands;
}

} // namespace shading
