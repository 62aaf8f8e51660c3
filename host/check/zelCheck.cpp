#include "check/zelCheck.h"

#include "document/flow.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace zelCheck {

namespace {

std::string typeText(ZEL::Port& port)
{
    const ZEL::AddRefWrapper<ZEL::PortDataType> type = port.getDataType();
    return type ? type->getName() : "";
}

bool haveSameType(ZEL::Port& a, ZEL::Port& b)
{
    const ZEL::AddRefWrapper<ZEL::PortDataType> typeOfA = a.getDataType();
    const ZEL::AddRefWrapper<ZEL::PortDataType> typeOfB = b.getDataType();
    return typeOfA && typeOfB ? *typeOfA == *typeOfB : !typeOfA && !typeOfB;
}

int countOf(ZEL::PortList& list, ZEL::Port& port)
{
    int count = 0;
    for (ZEL::Port* const entry : list)
        count += entry == &port ? 1 : 0;
    return count;
}

template <class List>
std::vector<std::string> namesIn(List& list)
{
    std::vector<std::string> names;
    for (const auto& entry : list)
        names.emplace_back(entry->getName());
    return names;
}

/// Walks a network twice: the ports that stand in it must be known before a connection is followed.
class Checker {
public:
    std::vector<Finding> run(const ZEL::AddRefWrapper<ZEL::Node>& root)
    {
        if (root) {
            collect(*root);
            checkNames({root->getName()}, "");
            m_visited.clear();
            checkNode(*root);
            for (ZEL::Port* const port : m_ports)
                checkCycles(*port);
        }
        return std::move(m_findings);
    }

private:
    void add(Kind kind, const std::string& path, const std::string& text)
    {
        m_findings.push_back({kind, path, text});
    }

    void collect(ZEL::Node& node)
    {
        if (!m_visited.insert(&node).second)
            return;
        collect(node.inputs());
        collect(node.outputs());
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (!compound)
            return;
        collect(compound->innerInputs());
        collect(compound->innerOutputs());
        for (const ZEL::AddRefWrapper<ZEL::Node>& inner : compound->nodes())
            collect(*inner);
    }

    void collect(ZEL::PortList& list)
    {
        for (ZEL::Port* const port : list)
            if (m_known.insert(port).second && port->getPortIOType() == ZEL::PortOutput)
                m_ports.push_back(port);
    }

    void checkNode(ZEL::Node& node)
    {
        const std::string path = node.getFullPathName().getName();
        if (!m_visited.insert(&node).second) {
            add(Kind::WrongOwner, path, "the node stands in two places");
            return;
        }
        ZEL::PortNotification* const parent = &node;
        checkNames(namesIn(node.inputs()), path + ".");
        checkNames(namesIn(node.outputs()), path + ".");
        checkList(node.inputs(), parent, path);
        checkList(node.outputs(), parent, path);
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node.getAsCompound();
        if (compound)
            checkCompound(*compound, node, path);
    }

    void checkCompound(ZEL::Compound& compound, ZEL::Node& owner, const std::string& path)
    {
        if (compound.getAsNode() != &owner)
            add(Kind::WrongOwner, path, "the compound belongs to another node");
        checkList(compound.innerInputs(), &compound, path);
        checkList(compound.innerOutputs(), &compound, path);
        checkMirror(owner.inputs(), compound.innerInputs(), path, "input");
        checkMirror(owner.outputs(), compound.innerOutputs(), path, "output");
        checkNames(namesIn(compound.nodes()), path + ".");
        for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
            if (node->getParentCompound() != &compound)
                add(Kind::WrongOwner, path + "." + node->getName(),
                    "the node's compound is another one");
            checkNode(*node);
        }
    }

    /// The names of siblings; the prefix and a name make a path.
    void checkNames(const std::vector<std::string>& names, const std::string& prefix)
    {
        std::unordered_map<std::string, int> counts;
        for (const std::string& name : names) {
            const std::string path = prefix + name;
            if (name.empty())
                add(Kind::Unreachable, path, "no path reaches an empty name");
            if (name.find('.') != std::string::npos)
                add(Kind::Unreachable, path, "no path reaches a name with a \".\" in it");
            if (++counts[name] == 2)
                add(Kind::Unreachable, path, "several siblings have this name");
        }
    }

    void checkList(ZEL::PortList& list, ZEL::PortNotification* parent, const std::string& path)
    {
        for (ZEL::Port* const port : list) {
            const std::string portPath = path + "." + port->getName();
            if (port->getParent() != parent)
                add(Kind::WrongOwner, portPath, "the port's parent is another one");
            checkConnections(*port, portPath);
        }
    }

    void checkConnections(ZEL::Port& port, const std::string& path)
    {
        ZEL::PortList& others = port.connectedTo();
        const bool isReceiver = port.getPortIOType() == ZEL::PortInput;
        if (isReceiver && others.size() > 1)
            add(Kind::SeveralSources, path, std::to_string(others.size()) + " sources");
        std::unordered_set<ZEL::Port*> seen;
        for (ZEL::Port* const other : others) {
            if (!seen.insert(other).second)
                continue;
            if (m_known.count(other) == 0) {
                add(Kind::OneEnded, path, "connected to a port that is not in the network");
                continue;
            }
            checkPair(port, *other, path);
        }
    }

    void checkPair(ZEL::Port& port, ZEL::Port& other, const std::string& path)
    {
        const std::string otherPath = other.getFullPathName().getName();
        const int here = countOf(port.connectedTo(), other);
        const int there = countOf(other.connectedTo(), port);
        if (here > there)
            add(Kind::OneEnded, path, otherPath + " does not know of the connection");
        // A pair is looked at from its sending end.
        if (port.getPortIOType() == ZEL::PortInput)
            return;
        if (other.getPortIOType() == ZEL::PortOutput)
            add(Kind::OneEnded, path, otherPath + " sends as well: no end receives");
        if (!haveSameType(port, other))
            add(Kind::TypesDiffer, path,
                "is \"" + typeText(port) + "\", feeds " + otherPath + ", which is \"" +
                    typeText(other) + "\"");
    }

    /// Follows what the port gives to where it comes from, each way once.
    void checkCycles(ZEL::Port& port)
    {
        struct Way {
            ZEL::Port* sender;
            std::vector<ZEL::Port*> sources;
        };
        std::vector<Way> ways;
        const auto enter = [&](ZEL::Port& sender) {
            if (m_states.emplace(&sender, State::Entered).second)
                ways.push_back({&sender, sourcesOf(sender)});
            else if (m_states[&sender] == State::Entered)
                add(Kind::Cycle, sender.getFullPathName().getName(),
                    "what it gives comes from itself");
        };
        enter(port);
        while (!ways.empty()) {
            Way& way = ways.back();
            if (way.sources.empty()) {
                m_states[way.sender] = State::Left;
                ways.pop_back();
                continue;
            }
            ZEL::Port& source = *way.sources.back();
            way.sources.pop_back();
            enter(source);
        }
    }

    std::vector<ZEL::Port*> sourcesOf(ZEL::Port& sender) const
    {
        std::vector<ZEL::Port*> sources;
        for (ZEL::Port* const receiver : shading::receiversBehind(sender)) {
            if (m_known.count(receiver) == 0)
                continue;
            for (ZEL::Port* const source : receiver->connectedTo()) {
                if (m_known.count(source) > 0)
                    sources.push_back(source);
            }
        }
        return sources;
    }

    void checkMirror(ZEL::PortList& outer,
                     ZEL::PortList& inner,
                     const std::string& path,
                     const std::string& word)
    {
        if (outer.size() != inner.size())
            add(Kind::OutOfStep, path,
                std::to_string(outer.size()) + " " + word + "s, but " +
                    std::to_string(inner.size()) + " inner " + word + "s");
        for (int i = 0; i < std::min(outer.size(), inner.size()); ++i) {
            const std::string name = outer[i]->getName();
            std::string text;
            if (name != inner[i]->getName())
                text = "the inner " + word + " at its place is called \"" + inner[i]->getName();
            else if (!haveSameType(*outer[i], *inner[i]))
                text = "is \"" + typeText(*outer[i]) + "\", its inner " + word + " is \"" +
                       typeText(*inner[i]);
            if (!text.empty())
                add(Kind::OutOfStep, std::string(path).append(".").append(name), text.append("\""));
        }
    }

    enum class State {
        Entered, ///< Being followed.
        Left,    ///< Followed to all ends.
    };

    std::unordered_set<ZEL::Port*> m_known; ///< All ports that stand in lists of the network.
    std::vector<ZEL::Port*> m_ports;        ///< Those of them that send, as they stand.
    std::unordered_map<const ZEL::Port*, State> m_states;
    std::unordered_set<ZEL::Node*> m_visited;
    std::vector<Finding> m_findings;
};

} // namespace

std::vector<Finding> checkNetwork(const ZEL::AddRefWrapper<ZEL::Node>& root)
{
    return Checker().run(root);
}

std::vector<Finding> checkNetwork(ZEL::Container& container)
{
    return checkNetwork(container.getRootNode());
}

std::string findingText(const Finding& finding)
{
    return finding.path + ": " + finding.text;
}

} // namespace zelCheck
