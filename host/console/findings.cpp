#include "console/findings.h"

#include "check/zelCheck.h"
#include "console/console.h"
#include "document/names.h"

#include <set>
#include <string>

namespace shading {

namespace {

/// The graphs inside graphs; the depth counts those around the compound.
void addNested(ZEL::Compound& compound, int depth, std::vector<FindingRecord>& records)
{
    for (const NodePtr& node : compound.nodes()) {
        if (!node->isCompound())
            continue;
        if (depth > 0)
            records.push_back({pathOf(*node), std::string("note: ") + kNested});
        addNested(*node->getAsCompound(), depth + 1, records);
    }
}

} // namespace

Findings findingsOf(Document& document)
{
    Findings findings;
    std::set<std::string> told;
    for (const zelCheck::Finding& finding : zelCheck::checkNetwork(document)) {
        told.insert(finding.path);
        findings.records.push_back({finding.path, finding.text});
    }
    // Of what is wrong in the network the file says nothing new.
    for (const SaveProblem& problem : checkDocument(document)) {
        if (told.count(problem.path) == 0)
            findings.records.push_back({problem.path, problem.reason});
    }
    findings.faults = findings.records.size();
    addNested(*document.getRootNode()->getAsCompound(), 0, findings.records);
    return findings;
}

} // namespace shading
