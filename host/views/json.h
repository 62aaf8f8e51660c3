#pragma once

#include "views/records.h"

#include <string>
#include <vector>

namespace shading {

// The records as JSON: an array on one line, with its end. Every key is there in every object, in
// the order given here. A byte that is no UTF-8 becomes the replacement character.

/// [{"name", "type", "compound": true or false}]
std::string jsonText(const std::vector<NodeRecord>& records);
/// [{"direction": "input" or "output", "name", "type", "value", "sources": [], "targets": []}]
std::string jsonText(const std::vector<PortRecord>& records);
/// [{"source", "target"}]
std::string jsonText(const std::vector<ConnectionRecord>& records);
/// [{"path", "reason"}]
std::string jsonText(const std::vector<FindingRecord>& records);

} // namespace shading
