#pragma once

#include "document/pointers.h"

#include <string>
#include <vector>

namespace shading {

/// What a path may mean. A compound node's port and its inner port bear one path.
struct PathPorts {
    PortPtr input;
    PortPtr output;
    PortPtr innerInput;
    PortPtr innerOutput;

    /// Those that send what they get, the outer one first; null where there is none.
    std::vector<PortPtr> senders() const { return {output, innerInput}; }
    std::vector<PortPtr> receivers() const { return {input, innerOutput}; }
    bool isEmpty() const { return !input && !output; }
};

PathPorts findPorts(ZEL::Container& container, const std::string& path);

/// Ports as an edit is given them: those that a path may mean, or one.
struct GivenPorts {
    std::string path;
    PortPtr port; ///< Empty: they are those of the path.
    PathPorts ports;
};
GivenPorts givenPorts(ZEL::Container& container, const std::string& path);
GivenPorts givenPorts(const PortPtr& port);

/// The pair of ports that the paths mean: one that is connected (isPresent), or else may be.
/// Prefers ends in one compound to the connections between graphs that the format also knows. False
/// without one.
bool choosePair(
    const PathPorts& a, const PathPorts& b, bool isPresent, PortPtr& sender, PortPtr& receiver);

/// The paths of the two ends, in an order in which choosePair gives them. Empty when both orders
/// mean another pair.
std::vector<std::string>
pairPaths(ZEL::Container& container, const PortPtr& sender, const PortPtr& receiver);

} // namespace shading
