#include "window/drive/expectations.h"

#include "document/document.h"
#include "document/names.h"
#include "window/mainWindow.h"

#include <QLabel>

namespace shading {

namespace {

QString found(const QStringList& words, const QString& what)
{
    return "expected " + words.join(' ') + ", found " + what;
}

/// All ports that a path may mean, of a node and the inner ones of a compound, that send: seen from
/// where their connections lie, those are outputs.
std::vector<PortPtr> portsAt(Document& document, const QString& path, bool isSender)
{
    std::vector<PortPtr> ports;
    const std::string text = path.toStdString();
    const std::size_t dot = text.rfind('.');
    const NodePtr node =
        dot == std::string::npos ? nullptr : document.findNodeFromPath(text.substr(0, dot).c_str());
    if (!node)
        return ports;
    const std::string name = text.substr(dot + 1);
    const auto addFrom = [&](ZEL::PortList& list) {
        const PortPtr port = list[name.c_str()];
        if (port && (port->getPortIOType() == ZEL::PortOutput) == isSender)
            ports.push_back(port);
    };
    addFrom(node->inputs());
    addFrom(node->outputs());
    if (const CompoundPtr compound = node->getAsCompound()) {
        addFrom(compound->innerInputs());
        addFrom(compound->innerOutputs());
    }
    return ports;
}

QString askConnection(Document& document, const QStringList& words)
{
    const bool isWanted = words[0] != "not";
    const QStringList ends = words.mid(isWanted ? 1 : 2);
    if (ends.size() != 3 || ends[1] != "->")
        return "expected PATH -> PATH, found " + ends.join(' ');
    const std::vector<PortPtr> sources = portsAt(document, ends[0], true);
    const std::vector<PortPtr> targets = portsAt(document, ends[2], false);
    if (sources.empty() || targets.empty())
        return found(words, "no port " + (sources.empty() ? ends[0] : ends[2]));
    QStringList fed;
    for (const PortPtr& source : sources) {
        for (const PortPtr& target : source->connectedTo()) {
            fed.append(QString::fromStdString(shading::pathOf(*target)));
            if (std::find(targets.begin(), targets.end(), target) != targets.end())
                return isWanted ? QString() : found(words, "the connection");
        }
    }
    if (!isWanted)
        return {};
    return found(words, fed.isEmpty() ? "no connection of " + ends[0]
                                      : ends[0] + " connected to " + fed.join(", "));
}

QString askSelection(Workspace& workspace, const QStringList& words)
{
    QStringList selected;
    for (const NodePtr& node : workspace.selection())
        selected.append(QString::fromStdString(shading::pathOf(*node)));
    QStringList wanted = words.mid(1);
    selected.sort();
    wanted.sort();
    if (wanted == selected)
        return {};
    return found(words, selected.isEmpty() ? "nothing selected" : selected.join(' '));
}

} // namespace

QString askExpectation(MainWindow& window, const QStringList& words)
{
    if (words.isEmpty())
        return "expected a word behind expect, found none";
    Workspace* const workspace = window.workspace();
    if (!workspace)
        return found(words, "no document");
    Document& document = workspace->document();
    const QString what = words[0];
    const QString rest = words.mid(1).join(' ');
    if (what == "connected" || (what == "not" && words.value(1) == "connected"))
        return askConnection(document, words);
    if (what == "selected")
        return askSelection(*workspace, words);
    if (what == "node")
        return document.findNodeFromPath(rest.toUtf8()) ? QString() : found(words, "no such node");
    if (what == "no" && words.value(1) == "node")
        return document.findNodeFromPath(words.value(2).toUtf8()) ? found(words, "that node")
                                                                  : QString();
    if (what == "undo") {
        const QString count = QString::number(workspace->history().undoCount());
        return rest == count ? QString() : found(words, count);
    }
    if (what == "status") {
        const QString text = window.findChild<QLabel*>("status")->text();
        return text.contains(rest) ? QString() : found(words, '"' + text + '"');
    }
    if (what == "compound") {
        const QString path =
            QString::fromStdString(shading::pathOf(*workspace->compound()->getAsNode()));
        return rest == path ? QString() : found(words, path);
    }
    return "expected connected, not connected, node, no node, selected, undo, status or compound, "
           "found " +
           what;
}

} // namespace shading
