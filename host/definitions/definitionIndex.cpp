#include "definitions/definitionIndex.h"

#include "format/format.h"

#include <algorithm>
#include <climits>

namespace shading {

namespace {

/// Counts the ports that the definition does not have. False when one has another type there.
bool countUnknown(const std::vector<Signature::Port>& ports,
                  const std::vector<PortDescription>& known,
                  int& count)
{
    for (const Signature::Port& port : ports) {
        const auto found = std::find_if(known.begin(), known.end(), [&](const PortDescription& k) {
            return k.name == port.name;
        });
        if (found == known.end())
            ++count;
        else if (!port.type.empty() && port.type != found->type)
            return false;
    }
    return true;
}

bool hasOutputType(const DefinitionRecord& record, const std::string& type)
{
    if (type.empty())
        return true;
    const bool isMultiOutput = record.outputs.size() > 1;
    return type == (isMultiOutput ? kMultiOutput : record.outputs.front().type);
}

/// How far the definition is from the signature: -1 when it does not fit.
int distanceOf(const DefinitionRecord& record, const Signature& signature)
{
    int unknown = 0;
    if (!hasOutputType(record, signature.type) ||
        !countUnknown(signature.inputs, record.inputs, unknown) ||
        !countUnknown(signature.outputs, record.outputs, unknown))
        return -1;
    if (!signature.version.empty())
        return signature.version == record.version ? unknown : -1;
    const bool isDefault = record.version.empty() || record.isDefaultVersion;
    return isDefault ? unknown : INT_MAX / 2 + unknown;
}

} // namespace

DefinitionIndex::DefinitionIndex(ZEL::Runtime& runtime)
{
    const ZEL::AddRefWrapper<ZEL::NodeLibrary> root = runtime.getNodeLibrary();
    if (root)
        add(*root);
    for (auto& [nodeType, definitions] : m_byNodeType) {
        std::sort(definitions.begin(), definitions.end(),
                  [](const DefinitionPtr& a, const DefinitionPtr& b) {
                      return a->record().name < b->record().name;
                  });
    }
}

DefinitionPtr DefinitionIndex::named(const std::string& name) const
{
    const auto found = m_byName.find(name);
    return found == m_byName.end() ? nullptr : found->second;
}

const std::vector<DefinitionPtr>& DefinitionIndex::ofNodeType(const std::string& nodeType) const
{
    static const std::vector<DefinitionPtr> none;
    const auto found = m_byNodeType.find(nodeType);
    return found == m_byNodeType.end() ? none : found->second;
}

DefinitionPtr DefinitionIndex::matching(const Signature& signature) const
{
    DefinitionPtr named = this->named(signature.nodeDef);
    if (named && signature.nodeType == named->getName())
        return named;
    DefinitionPtr best;
    int bestDistance = INT_MAX;
    for (const DefinitionPtr& definition : ofNodeType(signature.nodeType)) {
        const int distance = distanceOf(definition->record(), signature);
        if (distance < 0 || distance >= bestDistance)
            continue;
        best = definition;
        bestDistance = distance;
    }
    return best;
}

void DefinitionIndex::add(ZEL::NodeLibrary& library)
{
    for (int i = 0; i < library.getNumberOfNodes(); ++i) {
        // A plugin may offer definitions of another kind, or one without an output, which no node
        // of the format lacks: this host can make nothing of them.
        const DefinitionPtr definition = Definition::from(library.getNodeAt(i));
        if (definition && !definition->record().outputs.empty() &&
            m_byName.emplace(definition->record().name, definition).second)
            m_byNodeType[definition->getName()].push_back(definition);
    }
    for (int i = 0; i < library.getNumberOfSubLibraries(); ++i)
        add(*library.getSubLibraryAt(i));
}

} // namespace shading
