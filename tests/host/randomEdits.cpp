#include "randomEdits.h"

#include "document/backdrops.h"
#include "document/names.h"
#include "document/node.h"
#include "document/rules.h"
#include "edits/positions.h"
#include "saving/save.h"
#include "views/report.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>

using shading::pathOf;

namespace {

void addTargets(ZEL::PortList& list, std::string& text)
{
    for (ZEL::Port* const port : list) {
        for (ZEL::Port* const target : port->connectedTo())
            text += pathOf(*target) + "\n";
    }
}

/// What each port sends to, in its order.
void addTargets(ZEL::Node& node, std::string& text)
{
    addTargets(node.outputs(), text);
    const shading::CompoundPtr compound = node.getAsCompound();
    if (!compound)
        return;
    addTargets(compound->innerInputs(), text);
    for (const shading::NodePtr& inner : compound->nodes())
        addTargets(*inner, text);
}

} // namespace

std::string networkText(shading::Document& document)
{
    std::string text = shading::networkText(*document.getRootNode());
    addTargets(*document.getRootNode(), text);
    return text + backdropsText(document);
}

std::string backdropsText(shading::Document& document)
{
    std::set<std::string> lines;
    for (const shading::BackdropPtr& backdrop : document.backdrops().all()) {
        if (!backdrop->owner() || !document.has(backdrop->owner()))
            continue;
        std::set<std::string> names;
        for (const shading::NodePtr& node : backdrop->nodes())
            names.insert(node->getName());
        std::string line = "backdrop " + pathOf(*backdrop->owner()) + " " + backdrop->name();
        for (const std::string& name : names)
            line += " " + name;
        lines.insert(line + "\n");
    }
    return std::accumulate(lines.begin(), lines.end(), std::string());
}

RandomEdits::RandomEdits(shading::Document& document, unsigned seed)
    : m_document(document),
      m_own(std::make_unique<shading::Edits>(document)),
      m_edits(*m_own),
      m_random(seed)
{
    collect(document.getRootNode());
    m_mostNodes = m_nodes.size() + 60;
}

RandomEdits::RandomEdits(shading::Session& session, unsigned seed)
    : m_document(session.document()),
      m_edits(session.edits()),
      m_random(seed)
{
    collect(m_document.getRootNode());
    m_mostNodes = m_nodes.size() + 60;
}

int RandomEdits::number(int limit)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(limit));
}

void RandomEdits::collect(const shading::NodePtr& node)
{
    if (node->getParentCompound())
        m_nodes.push_back(node);
    if (!node->isCompound())
        return;
    m_compounds.push_back(node->getAsCompound());
    for (const shading::NodePtr& inner : node->getAsCompound()->nodes())
        collect(inner);
}

shading::NodePtr RandomEdits::anyNode()
{
    return m_nodes.empty()
               ? m_document.getRootNode()
               : m_nodes[static_cast<std::size_t>(number(static_cast<int>(m_nodes.size())))];
}

shading::CompoundPtr RandomEdits::anyCompound()
{
    return m_compounds[static_cast<std::size_t>(number(static_cast<int>(m_compounds.size())))];
}

/// A port of a node in the compound, or an inner port; mostly one of the type, if there is one.
shading::PortPtr
RandomEdits::anyPort(bool isSource, const shading::CompoundPtr& compound, ZEL::Port* like)
{
    ZEL::NodeList& nodes = compound->nodes();
    shading::PortPtr port;
    for (int i = 0; i < 20; ++i) {
        const shading::NodePtr node = nodes[number(nodes.size() + 1)];
        ZEL::PortList& list = node
                                  ? (isSource ? node->outputs() : node->inputs())
                                  : (isSource ? compound->innerInputs() : compound->innerOutputs());
        if (list.size() == 0)
            continue;
        port = list[number(list.size())];
        if (!like || *port->getDataType() == *like->getDataType())
            break;
    }
    return port;
}

/// By the library's definition of a node that is there; now and then one that no definition knows.
bool RandomEdits::createNode(std::string& line)
{
    const shading::CompoundPtr compound = anyCompound();
    const std::string path = pathOf(*compound->getAsNode());
    const std::string name = anyName();
    const std::string type = anyNode()->getNodeTypeName();
    shading::HostNodePtr created;
    if (!m_own || (number(4) > 0 && m_edits.definitionFor(type))) {
        line = "create " + type + " " + name + " " + path;
        return m_edits.createNode(path, type, name, created);
    }
    line = "made " + path + " " + name;
    return m_edits.run({line, {}}, name, [&] {
        const std::string problem = shading::newNameProblem(*compound, name);
        created = shading::Node::createNew(&m_document, name.c_str());
        created->setNodeTypeName("made");
        created->inputs().addPort("in", m_document.dataType("float"));
        created->outputs().addPort("out", m_document.dataType("float"));
        return problem.empty() && !compound->nodes().add(created.get()) ? "refused" : problem;
    });
}

/// A value that the type of the port may know, or none.
bool RandomEdits::setValue(std::string& line)
{
    static const char* const values[] = {"0.5", "1", "0.1, 0.2, 0.3", "true", "a <b> & \"c\"", ""};
    const shading::NodePtr node = anyNode();
    ZEL::PortList& inputs = node->inputs();
    const std::string path =
        inputs.size() > 0 ? pathOf(*inputs[number(inputs.size())]) : pathOf(*node) + ".none";
    const std::string value = values[number(6)];
    line = "set " + path + " '" + value + "'";
    return m_edits.setValue(path, value);
}

std::string RandomEdits::anyName()
{
    static const char* const names[] = {"a",   "b",   "in",        "out", "position",
                                        "mix", "a.b", "two words", ""};
    // Mostly new ones.
    return number(3) == 0 ? names[number(9)] : "n" + std::to_string(number(100000));
}

bool RandomEdits::editPort(std::string& line)
{
    const shading::CompoundPtr compound = anyCompound();
    const std::string path = pathOf(*compound->getAsNode());
    const bool isInput = number(2) == 0;
    ZEL::PortList& list = isInput ? compound->innerInputs() : compound->innerOutputs();
    const std::string present =
        list.size() > 0 ? list[number(list.size())]->getName() : std::string("none");
    const std::string name = anyName();
    switch (number(4)) {
    case 0:
        line = "port add " + path + " " + name;
        return m_edits.addPort(path, isInput ? ZEL::PortInput : ZEL::PortOutput, name,
                               number(2) == 0 ? "float" : "color3");
    case 1:
        line = "port delete " + path + " " + present;
        return m_edits.deletePort(path, present);
    case 2: {
        const int place = number(list.size() + 1) + 1;
        line = "port move " + path + " " + present + " " + std::to_string(place);
        return m_edits.movePort(path, present, place);
    }
    default:
        line = "port rename " + path + " " + present + " " + name;
        return m_edits.renamePort(path, present, name);
    }
}

bool RandomEdits::expandOrCollapse(bool isExpand, std::string& line)
{
    shading::Renamings renamed;
    if (isExpand) {
        const std::string path = pathOf(*anyCompound()->getAsNode());
        line = "expand " + path;
        return m_edits.expand(path, renamed);
    }
    const shading::CompoundPtr compound = anyCompound();
    ZEL::NodeList& nodes = compound->nodes();
    std::vector<std::string> names;
    for (int i = number(4); i >= 0 && nodes.size() > 0; --i)
        names.emplace_back(nodes[number(nodes.size())]->getName());
    line = "collapse " + pathOf(*compound->getAsNode());
    std::string created;
    for (const std::string& name : names)
        line += " " + name;
    return m_edits.collapse(pathOf(*compound->getAsNode()), anyName(), names, created);
}

bool RandomEdits::setAttribute(std::string& line)
{
    static const char* const names[] = {"colorspace", "doc", "xpos", "version", "value"};
    static const char* const values[] = {"1", "a <b> & \"c\"", ""};
    const shading::NodePtr node = anyNode();
    ZEL::PortList& ports = number(2) == 0 ? node->inputs() : node->outputs();
    const bool isPort = number(2) == 0 && ports.size() > 0;
    const std::string path = isPort ? pathOf(*ports[number(ports.size())]) : pathOf(*node);
    const std::string name = names[number(5)];
    const std::string value = values[number(3)];
    line = "attribute " + path + " " + name + " '" + value + "'";
    return m_edits.setAttribute(path, name, value);
}

bool RandomEdits::moveNodes(std::string& line)
{
    const shading::CompoundPtr from = anyCompound();
    const shading::CompoundPtr to = anyCompound();
    line = "reparent " + pathOf(*to->getAsNode());
    std::vector<shading::NodePtr> nodes;
    for (int i = number(3); i >= 0 && from->nodes().size() > 0; --i) {
        nodes.push_back(from->nodes()[number(from->nodes().size())]);
        line += " " + pathOf(*nodes.back());
    }
    return m_edits.reparent(to, nodes);
}

/// A copy of a node, or of two that are beside each other.
bool RandomEdits::paste(std::string& line)
{
    const shading::CompoundPtr from = anyCompound();
    const shading::CompoundPtr to = anyCompound();
    const int size = from->nodes().size();
    line = "paste " + pathOf(*to->getAsNode());
    if (size == 0)
        return false;
    std::vector<shading::NodePtr> nodes = {from->nodes()[number(size)]};
    const shading::NodePtr second = from->nodes()[number(size)];
    if (second != nodes.front())
        nodes.push_back(second);
    std::string text;
    std::vector<shading::SaveProblem> problems;
    std::vector<shading::NodePtr> made;
    if (!shading::copyToText(m_document, nodes, text, problems))
        return false;
    line += " '" + text + "'";
    return m_edits.paste(to, text, made);
}

/// A node into a connection, or connections to another port.
bool RandomEdits::editWires(std::string& line)
{
    const shading::CompoundPtr compound = anyCompound();
    const shading::PortPtr from = anyPort(true, compound, nullptr);
    if (!from)
        return false;
    if (number(2) == 0 || !from->isConnected()) {
        const bool isSource = number(2) == 0;
        const shading::PortPtr old = isSource ? from : anyPort(false, compound, from.get());
        const shading::PortPtr next = anyPort(isSource, compound, from.get());
        if (!old || !next)
            return false;
        line = "reroute " + pathOf(*old) + " " + pathOf(*next);
        return number(2) == 0 ? m_edits.reroute(old, next)
                              : m_edits.reroute(pathOf(*old), pathOf(*next), number(2) == 0);
    }
    const shading::NodePtr node = anyNode();
    const shading::PortPtr to = from->connectedTo()[number(from->connectedTo().size())];
    line = "insert " + pathOf(*node) + " " + pathOf(*from) + " " + pathOf(*to);
    return m_edits.insertNode(node, from, to);
}

/// Some nodes, mostly healed; one may lie in another.
bool RandomEdits::deleteNodes(std::string& line)
{
    std::vector<shading::NodePtr> nodes;
    const bool isHealed = number(3) > 0;
    line = isHealed ? "delete --heal" : "delete";
    for (int i = number(4); i >= 0; --i) {
        nodes.push_back(anyNode());
        line += " " + pathOf(*nodes.back());
    }
    return m_edits.deleteNodes(nodes, isHealed);
}

/// Some nodes, now and then as nudges that go on.
bool RandomEdits::placeNodes(std::string& line)
{
    std::vector<shading::NodePlace> places;
    line = "move";
    for (int i = number(4); i >= 0; --i) {
        places.push_back({anyNode(), {number(100) / 4.0, number(100) / 4.0}});
        line += " " + pathOf(*places.back().node);
    }
    if (number(2) == 0)
        return m_edits.moveNodes(places);
    const shading::History::Repeating repeating(m_edits.history(), line);
    if (!m_edits.moveNodes(places))
        return false;
    for (shading::NodePlace& place : places)
        place.position.x += 0.25;
    return m_edits.moveNodes(places);
}

/// A new one, or another name, place, content or text for one that is there.
bool RandomEdits::editBackdrop(std::string& line)
{
    const shading::CompoundPtr compound = anyCompound();
    const shading::Backdrops& backdrops = m_document.backdrops();
    std::vector<shading::NodePtr> nodes;
    for (int i = number(4); i > 0 && compound->nodes().size() > 0; --i)
        nodes.push_back(compound->nodes()[number(compound->nodes().size())]);
    const std::vector<shading::BackdropPtr> present = backdrops.in(*compound);
    line = "backdrop in " + pathOf(*compound->getAsNode());
    if (present.empty() || number(3) == 0) {
        shading::BackdropPtr made;
        return m_edits.createBackdrop(compound, anyName(), nodes, std::nullopt, "a <text>", made);
    }
    const shading::BackdropPtr one =
        present[static_cast<std::size_t>(number(static_cast<int>(present.size())))];
    line += " " + one->name();
    const double place = number(20) / 4.0;
    switch (number(6)) {
    case 0:
        return m_edits.deleteBackdrop(one);
    case 1:
        return m_edits.renameBackdrop(one, anyName());
    case 2:
        return m_edits.setBackdropNodes(one, nodes);
    case 3:
        return m_edits.setBackdropFrame(one, {{place, place}, 2, 3});
    case 4:
        return m_edits.moveBackdrop(one, {place, 1});
    default:
        return m_edits.setBackdropText(one, number(2) == 0 ? "" : "other");
    }
}

bool RandomEdits::edit(std::string& line)
{
    m_nodes.clear();
    m_compounds.clear();
    collect(m_document.getRootNode());
    const shading::CompoundPtr compound = anyCompound();
    const std::string node = pathOf(*anyNode());
    const shading::PortPtr from = anyPort(true, compound, nullptr);
    const shading::PortPtr to =
        anyPort(false, number(10) == 0 ? anyCompound() : compound, from.get());
    const std::string source = from ? from->getFullPathName().getName() : "Top.none";
    const std::string target = to ? to->getFullPathName().getName() : "Top.none";
    const std::string name = anyName();
    // However many steps there are, the network stays of about one size: each step looks at all.
    if (m_nodes.size() > m_mostNodes) {
        line = "delete " + node;
        return m_edits.deleteNode(node);
    }
    switch (number(28)) {
    case 0:
    case 1:
    case 2:
        line = "connect " + source + " " + target;
        return number(2) == 0 ? m_edits.connect(source, target) : m_edits.connect(target, source);
    case 3: {
        const std::string other = from && from->isConnected()
                                      ? from->connectedTo()[0]->getFullPathName().getName()
                                      : target.c_str();
        line = "disconnect " + other + " " + source;
        return m_edits.disconnect(other, source);
    }
    case 4:
        line = "disconnect-all " + source;
        return m_edits.disconnectAll(source);
    case 5:
        return expandOrCollapse(true, line);
    case 6:
    case 7:
    case 8:
        return editPort(line);
    case 9:
        line = "delete " + node;
        return m_edits.deleteNode(node);
    case 10:
        line = "rename " + node + " " + name;
        return m_edits.renameNode(node, name);
    case 11:
        return expandOrCollapse(false, line);
    case 12:
    case 13:
        return setValue(line);
    case 14:
        return setAttribute(line);
    case 15:
    case 16:
        return moveNodes(line);
    case 17:
        return paste(line);
    case 18:
        return editWires(line);
    case 19:
        return deleteNodes(line);
    case 20:
        return placeNodes(line);
    case 21:
    case 22:
        return editBackdrop(line);
    default:
        return createNode(line);
    }
}

/// Some edits as one, which now and then is given up, with all that was done in it.
bool RandomEdits::editGroup(std::string& line)
{
    shading::History::Group group(m_edits.history(), {"Group", {}});
    line = "group";
    std::string inner;
    for (int i = number(4); i >= 0; --i) {
        const std::string before = networkText(m_document);
        const bool isDone = number(4) == 0 ? editGroup(inner) : edit(inner);
        EXPECT_TRUE(isDone || before == networkText(m_document)) << line << " [" << inner;
        line += " [" + inner + (isDone ? "]" : ": not done]");
    }
    std::string problem;
    return group.finish(number(3) > 0, problem);
}

std::string RandomEdits::step()
{
    std::string line;
    std::string problem;
    shading::History& history = m_edits.history();
    const int kind = number(8);
    if (kind > 1) {
        const bool isDone = number(8) == 0 ? editGroup(line) : edit(line);
        return isDone ? line : line + ": refused: " + m_edits.problem().reason;
    }
    // Now and then far back.
    for (int i = number(number(20) == 0 ? 100 : 4); i >= 0; --i)
        kind == 0 ? history.undo(line, problem) : history.redo(line, problem);
    return kind == 0 ? "undo" : "redo";
}
