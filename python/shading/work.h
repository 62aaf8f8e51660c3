#pragma once

#include "session/session.h"
#include "shading/arguments.h"

#include <memory>
#include <string>
#include <vector>

namespace zelshading {

/// A session for Python: whoever has an object of its document keeps it.
class Work {
public:
    /// The session is not empty.
    static std::shared_ptr<Work> begin(std::unique_ptr<shading::Session> session,
                                       std::vector<shading::Message> messages);
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work();

    shading::Session& session() { return *m_session; }
    shading::Document& document() { return m_session->document(); }
    shading::Edits& edits() { return m_session->edits(); }
    shading::History& history() { return edits().history(); }
    /// What was said when it was opened.
    const std::vector<shading::Message>& messages() const { return m_messages; }

    /// Raises zel.Error, with the problem of the edits, unless it is done.
    void check(bool isDone);

    // What arguments name, in this document. Each raises zel.Error when they name nothing.
    shading::NodePtr nodeOf(const NodeArgument& argument);
    shading::CompoundPtr compoundOf(const NodeArgument& argument);
    /// The root node's without an argument.
    shading::CompoundPtr compoundOf(const std::optional<NodeArgument>& argument);
    std::vector<shading::NodePtr> nodesOf(const NodesArgument& arguments);
    /// Nodes of the compound: texts are their names.
    std::vector<shading::NodePtr> childrenOf(ZEL::Compound& compound,
                                             const NodesArgument& arguments);
    /// An input as `set` takes it.
    shading::PortPtr inputOf(const PortArgument& argument);
    /// A path that leads to the node. Of a text it is that.
    std::string pathOf(const NodeArgument& argument);

private:
    Work(std::unique_ptr<shading::Session> session, std::vector<shading::Message> messages);

    std::unique_ptr<shading::Session> m_session; ///< Never empty.
    std::vector<shading::Message> m_messages;
};

} // namespace zelshading
