// The edits of backdrops.

#include "base/utf8.h"
#include "document/attributes.h"
#include "document/document.h"
#include "document/names.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/positions.h"

#include <cmath>
#include <unordered_set>

namespace shading {

namespace {

AttributeOwner ownerOf(const Backdrop& backdrop)
{
    return {nullptr, nullptr, &backdrop.element()};
}

/// Empty when it is one.
std::string frameProblem(const Frame& frame)
{
    const bool isFinite = std::isfinite(frame.first.x) && std::isfinite(frame.first.y) &&
                          std::isfinite(frame.width) && std::isfinite(frame.height);
    if (!isFinite)
        return "its frame is no number";
    return frame.width > 0 && frame.height > 0 ? "" : "its frame has no width or no height";
}

std::vector<std::string> wordsOf(const Frame& frame)
{
    return {numberText(frame.first.x), numberText(frame.first.y), numberText(frame.width),
            numberText(frame.height)};
}

/// As words behind the name of the backdrop: what begins like an option is the word of one.
std::vector<std::string> wordsOf(const std::string& text)
{
    if (text.compare(0, 2, "--") == 0)
        return {"--text", text};
    return {text};
}

std::vector<std::string> namesOf(const std::vector<NodePtr>& nodes)
{
    std::vector<std::string> names;
    names.reserve(nodes.size());
    for (const NodePtr& node : nodes)
        names.emplace_back(node->getName());
    return names;
}

std::string backdropPath(const Backdrop& backdrop)
{
    return pathOf(*backdrop.owner()) + "." + backdrop.name();
}

const char* titleOf(const Backdrop& backdrop)
{
    return backdrop.name().empty() ? "backdrop" : backdrop.name().c_str();
}

} // namespace

BackdropPtr Edits::backdropAt(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    const NodePtr owner = dot == std::string::npos
                              ? nullptr
                              : m_document.findNodeFromPath(path.substr(0, dot).c_str());
    if (!owner || !owner->isCompound())
        return nullptr;
    return m_document.backdrops().named(*owner->getAsCompound(), path.substr(dot + 1));
}

bool Edits::has(const BackdropPtr& backdrop)
{
    if (!backdrop || !backdrop->owner())
        return fail(backdrop ? backdrop->name() : "", "no such backdrop");
    return has(backdrop->owner());
}

bool Edits::areIn(const CompoundPtr& compound, const std::vector<NodePtr>& nodes)
{
    std::unordered_set<const ZEL::Node*> named;
    for (const NodePtr& node : nodes) {
        if (!hasInner(node))
            return false;
        if (node->getParentCompound() != compound)
            return fail(pathOf(*node), "it is in another compound than the backdrop");
        if (!named.insert(node.get()).second)
            return fail(pathOf(*node), "it is named twice");
    }
    return true;
}

/// Without a line for one that no path leads to.
EditName Edits::backdropName(const BackdropPtr& backdrop,
                             std::string title,
                             const char* verb,
                             const std::vector<std::string>& words)
{
    const std::string owner = pathOf(*backdrop->owner());
    if (backdropAt(owner + "." + backdrop->name()) != backdrop)
        return {std::move(title), {}};
    std::vector<std::string> all = {"backdrop", verb, owner, backdrop->name()};
    all.insert(all.end(), words.begin(), words.end());
    return named(std::move(title), all);
}

bool Edits::createBackdrop(const CompoundPtr& compound,
                           const std::string& name,
                           const std::vector<NodePtr>& nodes,
                           const std::optional<Frame>& frame,
                           const std::string& text,
                           BackdropPtr& created)
{
    const NodePtr owner = compound ? compound->getAsNode() : nullptr;
    if (!has(owner) || !owner)
        return false;
    const std::string path = pathOf(*owner);
    if (!mayName(*compound, name, path) || !areIn(compound, nodes))
        return false;
    std::string problem = frame ? frameProblem(*frame) : "";
    if (!isXmlText(text))
        problem = "its text has characters that XML cannot hold";
    if (!problem.empty())
        return fail(path + "." + name, problem);
    std::vector<std::string> words = {"backdrop", "add", path, name};
    const std::vector<std::string> names = namesOf(nodes);
    words.insert(words.end(), names.begin(), names.end());
    if (frame) {
        const std::vector<std::string> parts = wordsOf(*frame);
        words.insert(words.end(),
                     {"--frame", parts[0] + "," + parts[1] + "," + parts[2] + "," + parts[3]});
    }
    if (!text.empty())
        words.insert(words.end(), {"--text", text});
    return run(named("Create backdrop " + name, words), path + "." + name, [&] {
        created = m_document.backdrops().add();
        m_document.backdrops().set(created, {owner, name, nodes});
        const std::optional<Frame> around = frame ? frame : frameAround(m_document, nodes);
        if (around)
            setFrame(m_document, *created, *around);
        if (!text.empty())
            m_document.attributes().set(ownerOf(*created), "doc", AttributeValue{text, {}});
        return "";
    });
}

bool Edits::deleteBackdrop(const BackdropPtr& backdrop)
{
    if (!has(backdrop))
        return false;
    const EditName name =
        backdropName(backdrop, std::string("Delete ") + titleOf(*backdrop), "delete", {});
    return run(name, backdropPath(*backdrop), [&] {
        Backdrop::State state = backdrop->state();
        state.owner = nullptr;
        m_document.backdrops().set(backdrop, state);
        return "";
    });
}

bool Edits::renameBackdrop(const BackdropPtr& backdrop, const std::string& name)
{
    if (!has(backdrop) ||
        !mayName(*backdrop->owner()->getAsCompound(), name, backdropPath(*backdrop)))
        return false;
    const EditName edit = backdropName(
        backdrop, std::string("Rename ") + titleOf(*backdrop) + " to " + name, "rename", {name});
    return run(edit, backdropPath(*backdrop), [&] {
        Backdrop::State state = backdrop->state();
        state.name = name;
        m_document.backdrops().set(backdrop, state);
        return "";
    });
}

bool Edits::setBackdropNodes(const BackdropPtr& backdrop, const std::vector<NodePtr>& nodes)
{
    if (!has(backdrop) || !areIn(backdrop->owner()->getAsCompound(), nodes))
        return false;
    if (backdrop->nodes() == nodes)
        return fail(backdropPath(*backdrop), "it contains these");
    const std::string title = "Change what " + std::string(titleOf(*backdrop)) + " contains";
    return run(backdropName(backdrop, title, "nodes", namesOf(nodes)), backdropPath(*backdrop),
               [&] {
                   Backdrop::State state = backdrop->state();
                   state.nodes = nodes;
                   m_document.backdrops().set(backdrop, state);
                   return "";
               });
}

bool Edits::setBackdropFrame(const BackdropPtr& backdrop, const Frame& frame)
{
    if (!has(backdrop))
        return false;
    const std::optional<Frame> now = frameOf(m_document, *backdrop);
    std::string problem = frameProblem(frame);
    if (problem.empty() && now && wordsOf(*now) == wordsOf(frame))
        problem = "it is there";
    if (!problem.empty())
        return fail(backdropPath(*backdrop), problem);
    const std::string title = "Change the frame of " + std::string(titleOf(*backdrop));
    return run(backdropName(backdrop, title, "frame", wordsOf(frame)), backdropPath(*backdrop),
               [&] {
                   setFrame(m_document, *backdrop, frame);
                   return "";
               });
}

bool Edits::moveBackdrop(const BackdropPtr& backdrop, const Position& position)
{
    if (!has(backdrop))
        return false;
    const std::string path = backdropPath(*backdrop);
    const std::optional<Frame> now = frameOf(m_document, *backdrop);
    if (!now)
        return fail(path, "it has no place: give it a frame");
    const std::string problem = frameProblem({position, now->width, now->height});
    if (!problem.empty())
        return fail(path, problem);
    const std::vector<std::string> words = {numberText(position.x), numberText(position.y)};
    if (numberText(now->first.x) == words[0] && numberText(now->first.y) == words[1])
        return fail(path, "it is there");
    const EditName name =
        backdropName(backdrop, std::string("Move ") + titleOf(*backdrop), "move", words);
    return run(name, path, [&] {
        shift(m_document, backdrop->nodes(), now->first, position);
        setFrame(m_document, *backdrop, {position, now->width, now->height});
        return "";
    });
}

bool Edits::setBackdropText(const BackdropPtr& backdrop, const std::string& text)
{
    if (!has(backdrop))
        return false;
    const AttributeOwner owner = ownerOf(*backdrop);
    std::string problem;
    if (!isXmlText(text))
        problem = "its text has characters that XML cannot hold";
    else if (m_document.attributes().get(owner, "doc") == text)
        problem = text.empty() ? "it has no text" : "it has that text";
    if (!problem.empty())
        return fail(backdropPath(*backdrop), problem);
    const std::string title = "Change the text of " + std::string(titleOf(*backdrop));
    return run(backdropName(backdrop, title, "text", wordsOf(text)), backdropPath(*backdrop), [&] {
        m_document.attributes().set(owner, "doc", AttributeValue{text, {}});
        return "";
    });
}

} // namespace shading
