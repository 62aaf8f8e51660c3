#pragma once

#include "zel.h"

#include <string>
#include <vector>

namespace shading {

// What a network has, walked once for all that prints it, as text and as JSON. Nothing here knows
// the document format.

struct NodeRecord {
    std::string name;
    std::string type;
    bool isCompound;
};

struct PortRecord {
    bool isInput;
    std::string name;
    std::string type; ///< "none" for a port without a data type.
    std::string value;
    std::vector<std::string> sources; ///< Full path names; of a compound, also from inside.
    std::vector<std::string> targets; ///< Sorted.
};

struct ConnectionRecord {
    std::string source; ///< Full path names.
    std::string target;
};

/// What a check of the network found.
struct FindingRecord {
    std::string path;
    std::string reason;
};

/// Of everything below a compound, at all levels.
struct Statistics {
    int nodes = 0;
    int compounds = 0; ///< Among the nodes.
    int depth = 0;     ///< Levels of nodes; 0 for an empty compound.
    int ports = 0;     ///< Of the nodes; a compound's port and its inner port are one.
    int connections = 0;
};

/// The nodes inside the compound in order.
std::vector<NodeRecord> nodeRecords(ZEL::Compound& compound);

/// The inputs, then the outputs of the node, in order. A compound's own port also has the
/// connections of its inner port, which has the same path.
std::vector<PortRecord> portRecords(ZEL::Node& node);

/// The connections between the nodes and inner ports of the compound and of all compounds below,
/// sorted by the bytes of their lines.
std::vector<ConnectionRecord> connectionRecords(ZEL::Compound& compound);

Statistics statisticsOf(ZEL::Compound& compound);

// The line of each, without its end.

/// Name and node type name, then `compound` for one.
std::string lineOf(const NodeRecord& record);
/// Direction, name, data type, default value in quotes, then where the data comes from (`<-`) and
/// goes to (`->`).
std::string lineOf(const PortRecord& record);
/// `SOURCE -> TARGET`
std::string lineOf(const ConnectionRecord& record);
/// `PATH: REASON`
std::string lineOf(const FindingRecord& record);

/// An array on one line, with its end: every field is there in every object under its name, in the
/// order above; `direction` is "input" or "output". A byte that is no UTF-8 becomes the replacement
/// character. For the four kinds of records.
template <class Record>
std::string jsonText(const std::vector<Record>& records);

/// Their lines, each with its end, or the JSON.
template <class Record>
std::string textOf(const std::vector<Record>& records, bool asJson = false)
{
    std::string text;
    for (std::size_t i = 0; i < records.size() && !asJson; ++i)
        text += lineOf(records[i]) + "\n";
    return asJson ? jsonText(records) : text;
}

/// The text in double quotes, on one line.
std::string quoted(const std::string& text);

// Texts about any network, a line for each thing, each line with its end.

/// The node and everything below, two blanks deeper for each level: lines as of records.
std::string treeText(ZEL::Node& node);

/// All that a document keeps of the network below the node, which has a compound: the connections,
/// then each node with its path, type, ports and inner ports. Equal texts, equal networks, but for
/// the order in which a port feeds its targets where several connections are told in one line.
std::string networkText(ZEL::Node& root);

/// A count on a line, behind its name.
std::string statisticsText(const Statistics& statistics);

/// What the path names: `node` or `compound`, then `input`, then `output`, each that applies on a
/// line; `nothing` when none does.
std::string findText(ZEL::Container& container, const std::string& path);

} // namespace shading
