#pragma once

#include "zel.h"

#include <string>
#include <vector>

namespace shading {

// What a network has, walked once for all that prints it. Nothing here knows the document format.

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

/// `SOURCE -> TARGET`, without a line end.
std::string lineOf(const ConnectionRecord& record);

/// The connections between the nodes and inner ports of the compound and of all compounds below,
/// sorted by the bytes of their lines.
std::vector<ConnectionRecord> connectionRecords(ZEL::Compound& compound);

Statistics statisticsOf(ZEL::Compound& compound);

} // namespace shading
