#pragma once

#include "zelAddRefWrapper.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZEL {

class Node;

namespace CmdImpl {

/// Nodes by name, one for each: walked in ascending byte order of the names, searched by hash.
class NodesToMove {
public:
    NodesToMove();
    NodesToMove(const NodesToMove&) = delete;
    NodesToMove& operator=(const NodesToMove&) = delete;
    ~NodesToMove();

    /// Adds the node; it takes the place of one under the same name.
    void set(const char* name, const AddRefWrapper<Node>& node);
    bool contains(std::string_view name) const { return find(name).isThere; }
    /// The entries by name, as they are now; they belong to this object and stay until a set.
    const std::vector<const AddRefWrapper<Node>*>& inOrder();

private:
    struct Entry {
        std::string name;
        AddRefWrapper<Node> node;
    };

    /// A place of the table.
    struct Place {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; ///< Of the entry, from 1; 0: free.
    };
    /// The place of the entry of a name, or the one where it would stand.
    struct Found {
        std::size_t place = 0;
        std::uint32_t hash = 0;
        bool isThere = false;
    };

    Found find(std::string_view name) const;
    void grow();

    std::vector<Entry> m_entries; ///< In the order in which their names were first set.
    std::vector<Place> m_table;   ///< By hash: a power of two, more than half of them free.
    /// By name. Empty: not sorted yet, or there is none.
    std::vector<const AddRefWrapper<Node>*> m_sorted;
};

} // namespace CmdImpl
} // namespace ZEL
