#include "window/gestures/canvasActions.h"

#include "window/canvas/canvas.h"
#include "window/gestures/arranging.h"
#include "window/gestures/clipboard.h"
#include "window/gestures/gestures.h"
#include "window/gestures/selecting.h"
#include "window/workspace/actions.h"
#include "window/workspace/workspace.h"

namespace shading {

namespace {

using Front = std::function<Gestures*()>;
using Run = std::function<void(Gestures& gestures)>;
using Ask = std::function<bool(Gestures& gestures)>;

constexpr double kZoomStep = 1.25;

/// Adds actions of one menu that work on the document in front.
class Adder {
public:
    Adder(Actions& actions, Front front, QString menu)
        : m_actions(actions),
          m_front(std::move(front)),
          m_menu(std::move(menu))
    {
    }

    /// Keys: "Delete, Backspace"; none when empty. Without an own question there must be a
    /// document.
    Actions::Added add(const char* id,
                       const QString& text,
                       const char* keys,
                       const Run& run,
                       const Ask& isEnabled = nullptr)
    {
        const Front front = m_front;
        Actions::Added added = m_actions.add(
            id, m_menu, text, QKeySequence::listFromString(keys, QKeySequence::PortableText),
            [front, run] {
                if (Gestures* const gestures = front())
                    run(*gestures);
            });
        added.onCanvas().when([front, isEnabled] {
            Gestures* const gestures = front();
            return gestures && (!isEnabled || isEnabled(*gestures));
        });
        return added;
    }

private:
    Actions& m_actions;
    Front m_front;
    QString m_menu;
};

bool hasNodes(Gestures& gestures)
{
    return !gestures.desk().workspace.selection().empty();
}

bool hasTwo(Gestures& gestures)
{
    return gestures.desk().workspace.selection().size() >= 2;
}

bool hasSelection(Gestures& gestures)
{
    return gestures.commands().hasSelection();
}

bool hasWires(Gestures& gestures)
{
    return gestures.commands().hasWires();
}

bool hasPorts(Gestures& gestures)
{
    return hasNodes(gestures) || gestures.commands().selectedPort();
}

void addEditing(Actions& actions, const Front& front)
{
    Adder edit(actions, front, "&Edit");
    edit.add(
            "edit.cut", "Cu&t", "Ctrl+X", [](Gestures& g) { cutSelection(g.desk()); }, hasNodes)
        .group();
    edit.add(
        "edit.copy", "&Copy", "Ctrl+C", [](Gestures& g) { copySelection(g.desk()); }, hasNodes);
    edit.add("edit.paste", "&Paste", "Ctrl+V", [](Gestures& g) { paste(g.desk(), false); });
    edit.add("edit.pasteWires", "Paste with &Incoming Wires", "Ctrl+Shift+V",
             [](Gestures& g) { paste(g.desk(), true); });
    edit.add(
        "edit.duplicate", "&Duplicate", "Ctrl+D", [](Gestures& g) { duplicate(g.desk()); },
        hasNodes);
    edit.add(
            "edit.delete", "De&lete", "Del; Backspace",
            [](Gestures& g) { g.commands().remove(true); }, hasSelection)
        .help("Deletes what is selected; what fed a deleted node feeds what comes after it");
    edit.add(
        "edit.deleteOnly", "Delete &without Healing", "Shift+Del",
        [](Gestures& g) { g.commands().remove(false); }, hasSelection);
    edit.add(
            "edit.rename", "&Rename", "F2", [](Gestures& g) { g.commands().rename(); },
            [](Gestures& g) { return g.commands().canRename(); })
        .group();
    edit.add("edit.selectAll", "Select &All", "Ctrl+A",
             [](Gestures& g) { selectAll(g.desk().workspace); });
    edit.add("canvas.cancel", "Cancel", "Esc", [](Gestures& g) { g.cancel(); });
}

void addNodes(Actions& actions, const Front& front)
{
    Adder node(actions, front, "&Node");
    node.add("canvas.add", "&Add...", "Tab", [](Gestures& g) { g.commands().add(); })
        .help("Searches for a node to be made where the mouse is");
    node.add(
            "canvas.group", "&Group", "Ctrl+G", [](Gestures& g) { g.commands().group(); }, hasNodes)
        .group();
    node.add(
        "canvas.ungroup", "&Ungroup", "Ctrl+Shift+G", [](Gestures& g) { g.commands().ungroup(); },
        [](Gestures& g) { return g.commands().canUngroup(); });
    node.add(
        "canvas.enter", "&Enter", "Return; Enter", [](Gestures& g) { g.commands().enter(); },
        [](Gestures& g) { return g.commands().canEnter(); });
    node.add(
        "canvas.leave", "Leave to the Graph A&round", "U",
        [](Gestures& g) { g.desk().workspace.leave(); },
        [](Gestures& g) {
            return static_cast<bool>(
                g.desk().workspace.compound()->getAsNode()->getParentCompound());
        });
    node.add(
        "canvas.backdrop", "&Backdrop around It", "C", [](Gestures& g) { g.commands().wrap(); },
        hasNodes);
    node.add(
            "canvas.fold", "&Fold", "H", [](Gestures& g) { g.commands().fold(); }, hasNodes)
        .group()
        .help("Shows all ports, those that are connected, or none");
    node.add(
            "canvas.arrange", "A&rrange", "Ctrl+L", [](Gestures& g) { arrange(g.desk()); }, hasTwo)
        .help("Puts the selected nodes into layers along their connections");
    node.add("canvas.menu", "&Menu of the Selection", "Menu; Shift+F10",
             [](Gestures& g) { g.showMenu(); });
}

void addAligning(Actions& actions, const Front& front)
{
    Adder menu(actions, front, "&Node/A&lign");
    const auto add = [&](const char* id, const char* text, Align edge) {
        return menu.add(
            id, text, "", [edge](Gestures& g) { align(g.desk(), edge); }, hasTwo);
    };
    add("align.left", "&Left", Align::Left);
    add("align.centre", "&Centres in a Column", Align::Centre);
    add("align.right", "&Right", Align::Right);
    add("align.top", "&Top", Align::Top).group();
    add("align.middle", "&Middles in a Row", Align::Middle);
    add("align.bottom", "&Bottom", Align::Bottom);
    menu.add(
            "distribute.across", "Distribute A&cross", "",
            [](Gestures& g) { distribute(g.desk(), Qt::Horizontal); }, hasTwo)
        .group();
    menu.add(
        "distribute.down", "Distribute &Down", "",
        [](Gestures& g) { distribute(g.desk(), Qt::Vertical); }, hasTwo);
}

void addSteps(Actions& actions, const Front& front)
{
    Adder nudges(actions, front, "&Node/&Nudge");
    const auto addNudge = [&](const char* id, const char* text, const char* key, int x, int y) {
        nudges.add(
            id, text, key, [x, y](Gestures& g) { nudge(g.desk(), x, y); }, hasNodes);
    };
    addNudge("nudge.left", "&Left", "Ctrl+Left", -1, 0);
    addNudge("nudge.right", "&Right", "Ctrl+Right", 1, 0);
    addNudge("nudge.up", "&Up", "Ctrl+Up", 0, -1);
    addNudge("nudge.down", "&Down", "Ctrl+Down", 0, 1);
    Adder focus(actions, front, "&Node/&Select the Nearest");
    const auto addFocus = [&](const QString& id, const QString& text, const QString& key,
                              Direction way) {
        for (const bool isAdded : {false, true}) {
            const QString name = isAdded ? text + QObject::tr(" Too") : text;
            focus.add((isAdded ? "extend." + id : "focus." + id).toUtf8().constData(), name,
                      (isAdded ? "Shift+" + key : key).toUtf8().constData(),
                      [way, isAdded](Gestures& g) {
                          selectNeighbour(g.desk().canvas, g.desk().workspace, way, isAdded);
                      });
        }
    };
    addFocus("left", "To the &Left", "Left", Direction::Left);
    addFocus("right", "To the &Right", "Right", Direction::Right);
    addFocus("up", "&Above", "Up", Direction::Up);
    addFocus("down", "&Below", "Down", Direction::Down);
}

void addConnections(Actions& actions, const Front& front)
{
    Adder menu(actions, front, "&Connection");
    menu.add(
            "canvas.wire", "&Connect...", "W", [](Gestures& g) { g.commands().connect(); },
            hasPorts)
        .help("Lists the ports that those of the selected nodes may be connected to");
    menu.add(
        "canvas.unwire", "&Disconnect...", "Shift+W",
        [](Gestures& g) { g.commands().disconnect(); }, hasPorts);
    menu.add(
        "canvas.reroute", "&Move All to Another Output...", "Ctrl+Shift+W",
        [](Gestures& g) { g.commands().reroute(); }, hasPorts);
    menu.add(
        "canvas.insert", "&Insert the Node into One...", "I",
        [](Gestures& g) { g.commands().insert(); },
        [](Gestures& g) { return g.desk().workspace.selection().size() == 1; });
    menu.add(
            "canvas.cut", "Cu&t Wires", "X", [](Gestures& g) { g.prepareToCut(); }, nullptr)
        .help("Cuts the wires that the next drag strikes");
    menu.add(
            "canvas.source", "Go to &Source", "", [](Gestures& g) { g.commands().goToEnd(true); },
            hasWires)
        .group();
    menu.add(
        "canvas.target", "Go to &Target", "", [](Gestures& g) { g.commands().goToEnd(false); },
        hasWires);
    menu.add(
            "canvas.upstream", "Select &Upstream", "Shift+Alt+U",
            [](Gestures& g) {
                selectStream(g.desk().workspace, g.desk().workspace.selection(), true);
            },
            hasNodes)
        .group();
    menu.add(
        "canvas.downstream", "Select Do&wnstream", "Ctrl+Alt+U",
        [](Gestures& g) {
            selectStream(g.desk().workspace, g.desk().workspace.selection(), false);
        },
        hasNodes);
}

void addViews(Actions& actions, const Front& front)
{
    Adder view(actions, front, "&View");
    view.add("view.selection", "Frame &Selection", "F",
             [](Gestures& g) { g.desk().canvas.frameSelection(); });
    view.add("view.all", "Frame &All", "A; Home", [](Gestures& g) { g.desk().canvas.frameAll(); });
    const auto zoom = [](double factor) {
        return [factor](Gestures& g) {
            Canvas& canvas = g.desk().canvas;
            canvas.zoomAt(g.desk().mouse.value_or(QRectF(canvas.rect()).center()), factor);
        };
    };
    view.add("view.in", "Zoom &In", "+; =; Ctrl++; Ctrl+=", zoom(kZoomStep));
    view.add("view.out", "Zoom &Out", "-; Ctrl+-", zoom(1 / kZoomStep));
    view.add("view.life", "&Life Size", "0; Ctrl+0",
             [](Gestures& g) { g.desk().canvas.setView(1, g.desk().canvas.view().centre()); });
    view.add("canvas.snap", "Snap to the &Grid", "", [](Gestures&) { setSnapping(!isSnapping()); })
        .checkedWhen([] { return isSnapping(); })
        .group();
    view.add(
            "view.back", "&Back", "Alt+Left", [](Gestures& g) { g.desk().workspace.goBack(); },
            [](Gestures& g) { return g.desk().workspace.canGoBack(); })
        .group();
    view.add(
        "view.forward", "For&ward", "Alt+Right",
        [](Gestures& g) { g.desk().workspace.goForward(); },
        [](Gestures& g) { return g.desk().workspace.canGoForward(); });
}

} // namespace

void addCanvasActions(Actions& actions, const std::function<Gestures*()>& front)
{
    addEditing(actions, front);
    addNodes(actions, front);
    addAligning(actions, front);
    addSteps(actions, front);
    addConnections(actions, front);
    addViews(actions, front);
}

} // namespace shading
