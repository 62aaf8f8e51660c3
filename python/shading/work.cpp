#include "shading/work.h"

#include "binding/error.h"
#include "binding/keepers.h"
#include "document/names.h"

namespace zelshading {

std::shared_ptr<Work> Work::begin(std::unique_ptr<shading::Session> session,
                                  std::vector<shading::Message> messages)
{
    std::shared_ptr<Work> work(new Work(std::move(session), std::move(messages)));
    zelpython::keep(work->document(), work);
    return work;
}

Work::Work(std::unique_ptr<shading::Session> session, std::vector<shading::Message> messages)
    : m_session(std::move(session)),
      m_messages(std::move(messages))
{
}

Work::~Work()
{
    zelpython::forget(document());
}

void Work::check(bool isDone)
{
    if (!isDone)
        zelpython::raiseError(edits().problem().reason, edits().problem().subject);
}

shading::NodePtr Work::nodeOf(const NodeArgument& argument)
{
    shading::NodePtr node = argument.object ? argument.object : edits().findNode(argument.path);
    check(node && (!argument.object || edits().has(node)));
    return node;
}

shading::CompoundPtr Work::compoundOf(const NodeArgument& argument)
{
    const shading::NodePtr node = nodeOf(argument);
    // The edits know the words for a node that is none.
    const std::string path = argument.object ? shading::pathOf(*node) : argument.path;
    if (!node->isCompound())
        check(edits().findCompound(path) != nullptr);
    return node->getAsCompound();
}

shading::CompoundPtr Work::compoundOf(const std::optional<NodeArgument>& argument)
{
    return argument ? compoundOf(*argument) : document().getRootNode()->getAsCompound();
}

std::vector<shading::NodePtr> Work::nodesOf(const NodesArgument& arguments)
{
    std::vector<shading::NodePtr> nodes;
    for (const NodeArgument& argument : arguments.nodes)
        nodes.push_back(nodeOf(argument));
    return nodes;
}

std::vector<shading::NodePtr> Work::childrenOf(ZEL::Compound& compound,
                                               const NodesArgument& arguments)
{
    std::vector<shading::NodePtr> nodes;
    for (const NodeArgument& argument : arguments.nodes) {
        nodes.push_back(argument.object ? nodeOf(argument)
                                        : edits().findChild(compound, argument.path));
        check(nodes.back() != nullptr);
    }
    return nodes;
}

shading::PortPtr Work::inputOf(const PortArgument& argument)
{
    shading::PortPtr port = argument.object ? argument.object : edits().findInput(argument.path);
    check(port && (!argument.object || edits().has(port)));
    return port;
}

std::string Work::pathOf(const NodeArgument& argument)
{
    if (!argument.object)
        return argument.path;
    check(edits().reaches(argument.object));
    return shading::pathOf(*argument.object);
}

} // namespace zelshading
