#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The leanest network that does the measured jobs: plain structs, one open-addressing table of
/// names in each compound, connections as records linked at both ends, so that their order is kept.
/// No listeners, no counts, no commands, nothing is checked.
namespace baseline {

struct Compound;
struct Node;
struct Port;

struct Type {
    std::string name;
};

struct Link {
    Port* from;
    Port* to;
    Link* previousOfFrom;
    Link* nextOfFrom;
    Link* previousOfTo;
    Link* nextOfTo;
};

struct Port {
    std::string name;
    Node* node = nullptr;
    const Type* type = nullptr;
    Link* first = nullptr;
    Link* last = nullptr;
    bool isOutput = false;
};

struct Node {
    std::string name;
    std::vector<std::unique_ptr<Port>> inputs; ///< Connections point to ports: they never move.
    std::vector<std::unique_ptr<Port>> outputs;
    Compound* parent = nullptr;
    std::unique_ptr<Compound> compound;
    std::uint32_t place = 0; ///< Index in the parent's nodes.

    ~Node();
};

/// Nodes by name; names are unique.
class NameTable {
public:
    void insert(Node* node)
    {
        if ((m_count + 1) * 2 > m_entries.size())
            grow();
        put({hashOf(node->name), node});
        ++m_count;
    }
    Node* find(std::string_view name) const
    {
        if (m_entries.empty())
            return nullptr;
        const std::uint32_t hash = hashOf(name);
        for (std::size_t i = hash & mask(); m_entries[i].node; i = (i + 1) & mask()) {
            if (m_entries[i].hash == hash && m_entries[i].node->name == name)
                return m_entries[i].node;
        }
        return nullptr;
    }
    void erase(const Node* node)
    {
        std::size_t hole = hashOf(node->name) & mask();
        while (m_entries[hole].node != node)
            hole = (hole + 1) & mask();
        for (std::size_t i = (hole + 1) & mask(); m_entries[i].node; i = (i + 1) & mask()) {
            if (((i - m_entries[i].hash) & mask()) >= ((i - hole) & mask())) {
                m_entries[hole] = m_entries[i];
                hole = i;
            }
        }
        m_entries[hole] = {};
        --m_count;
    }

private:
    struct Entry {
        std::uint32_t hash = 0;
        Node* node = nullptr;
    };
    static std::uint32_t hashOf(std::string_view name)
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
    }
    std::size_t mask() const { return m_entries.size() - 1; }
    void put(const Entry& entry)
    {
        std::size_t i = entry.hash & mask();
        while (m_entries[i].node)
            i = (i + 1) & mask();
        m_entries[i] = entry;
    }
    void grow()
    {
        std::vector<Entry> old(m_entries.empty() ? 16 : m_entries.size() * 2);
        old.swap(m_entries);
        for (const Entry& entry : old) {
            if (entry.node)
                put(entry);
        }
    }

    std::vector<Entry> m_entries;
    std::size_t m_count = 0;
};

struct Compound {
    Node* owner = nullptr;
    std::vector<std::unique_ptr<Node>> nodes;
    NameTable names;
};

inline void connect(Port* from, Port* to)
{
    auto* const link = new Link{from, to, from->last, nullptr, to->last, nullptr};
    (from->last ? from->last->nextOfFrom : from->first) = link;
    (to->last ? to->last->nextOfTo : to->first) = link;
    from->last = link;
    to->last = link;
}

inline void disconnect(Link* link)
{
    (link->previousOfFrom ? link->previousOfFrom->nextOfFrom : link->from->first) =
        link->nextOfFrom;
    (link->nextOfFrom ? link->nextOfFrom->previousOfFrom : link->from->last) = link->previousOfFrom;
    (link->previousOfTo ? link->previousOfTo->nextOfTo : link->to->first) = link->nextOfTo;
    (link->nextOfTo ? link->nextOfTo->previousOfTo : link->to->last) = link->previousOfTo;
    delete link;
}

/// The one connection of an input that has one.
inline void disconnectInput(Port* to)
{
    disconnect(to->first);
}

inline Node::~Node()
{
    for (auto* const ports : {&inputs, &outputs}) {
        for (const std::unique_ptr<Port>& port : *ports) {
            while (port->first)
                disconnect(port->first);
        }
    }
}

inline Node* addNode(Compound& parent, std::string name)
{
    auto node = std::make_unique<Node>();
    node->name = std::move(name);
    node->parent = &parent;
    node->place = static_cast<std::uint32_t>(parent.nodes.size());
    parent.names.insert(node.get());
    parent.nodes.push_back(std::move(node));
    return parent.nodes.back().get();
}

inline void addPort(Node* node, const char* name, const Type* type, bool isOutput)
{
    auto port = std::make_unique<Port>();
    port->name = name;
    port->node = node;
    port->type = type;
    port->isOutput = isOutput;
    (isOutput ? node->outputs : node->inputs).push_back(std::move(port));
}

inline Port* findPort(const std::vector<std::unique_ptr<Port>>& ports, std::string_view name)
{
    for (const std::unique_ptr<Port>& port : ports) {
        if (port->name == name)
            return port.get();
    }
    return nullptr;
}

inline void rename(Node* node, const char* name)
{
    node->parent->names.erase(node);
    node->name = name;
    node->parent->names.insert(node);
}

inline Port* findPortFromPath(Node& root, std::string_view path, bool isOutput)
{
    Node* node = nullptr;
    for (;;) {
        const std::size_t dot = path.find('.');
        const std::string_view name = path.substr(0, dot);
        if (dot == std::string_view::npos)
            return node ? findPort(isOutput ? node->outputs : node->inputs, name) : nullptr;
        path.remove_prefix(dot + 1);
        if (!node)
            node = root.name == name ? &root : nullptr;
        else
            node = node->compound ? node->compound->names.find(name) : nullptr;
        if (!node)
            return nullptr;
    }
}

inline std::string fullPathName(const Port& port)
{
    std::size_t length = port.name.size();
    for (const Node* node = port.node; node; node = node->parent ? node->parent->owner : nullptr)
        length += node->name.size() + 1;
    std::string path(length, '.');
    std::size_t end = length - port.name.size();
    std::memcpy(&path[end], port.name.data(), port.name.size());
    for (const Node* node = port.node; node; node = node->parent ? node->parent->owner : nullptr) {
        end -= node->name.size() + 1;
        std::memcpy(&path[end], node->name.data(), node->name.size());
    }
    return path;
}

} // namespace baseline
