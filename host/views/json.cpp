#include "views/report.h"

#include <nlohmann/json.hpp>

namespace shading {

namespace {

using Json = nlohmann::ordered_json;

Json valueOf(const NodeRecord& record)
{
    return {{"name", record.name}, {"type", record.type}, {"compound", record.isCompound}};
}

Json valueOf(const PortRecord& record)
{
    return {{"direction", record.isInput ? "input" : "output"},
            {"name", record.name},
            {"type", record.type},
            {"value", record.value},
            {"sources", record.sources},
            {"targets", record.targets}};
}

Json valueOf(const ConnectionRecord& record)
{
    return {{"source", record.source}, {"target", record.target}};
}

Json valueOf(const FindingRecord& record)
{
    return {{"path", record.path}, {"reason", record.reason}};
}

} // namespace

template <class Record>
std::string jsonText(const std::vector<Record>& records)
{
    Json array = Json::array();
    for (const Record& record : records)
        array.push_back(valueOf(record));
    return array.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

template std::string jsonText(const std::vector<NodeRecord>& records);
template std::string jsonText(const std::vector<PortRecord>& records);
template std::string jsonText(const std::vector<ConnectionRecord>& records);
template std::string jsonText(const std::vector<FindingRecord>& records);

} // namespace shading
