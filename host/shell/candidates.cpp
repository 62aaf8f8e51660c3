#include "shell/candidates.h"

#include "document/rules.h"
#include "shadingDefinition.h"
#include "shell/shell.h"

#include <algorithm>
#include <filesystem>

namespace shading {

namespace {

/// Which things a kind of path may lead to.
struct PathKind {
    bool isPlainNode;
    bool isCompound;
    bool isInput;
    bool isOutput;

    bool isPort() const { return isInput || isOutput; }
};

const struct {
    const char* name;
    PathKind kind;
} kPathKinds[] = {
    {"node", {true, true, false, false}}, {"compound", {false, true, false, false}},
    {"port", {false, false, true, true}}, {"input", {false, false, true, false}},
    {"any", {true, true, true, true}},
};

/// True when a path of the kind may lead on from the node.
bool leadsOn(ZEL::Node& node, const PathKind& kind)
{
    if ((kind.isInput && node.inputs().size() > 0) || (kind.isOutput && node.outputs().size() > 0))
        return true;
    if (!node.isCompound())
        return false;
    for (const NodePtr& inner : node.getAsCompound()->nodes()) {
        if (kind.isPlainNode || inner->isCompound() || (kind.isPort() && leadsOn(*inner, kind)))
            return true;
    }
    return false;
}

void addNode(ZEL::Node& node, const std::string& path, const PathKind& kind, Candidates& candidates)
{
    const bool isMeant = node.isCompound() ? kind.isCompound : kind.isPlainNode;
    const bool isFolder = leadsOn(node, kind);
    if (isMeant)
        candidates.add(path, true, isFolder);
    else if (isFolder)
        candidates.add(path + ".", false);
}

void addPorts(ZEL::PortList& list, const std::string& folder, Candidates& candidates)
{
    for (ZEL::Port* const port : list) {
        if (isReachable(port->getName()))
            candidates.add(folder + port->getName());
    }
}

void addPaths(const PathKind& kind,
              const std::string& typed,
              Document& document,
              Candidates& candidates)
{
    const std::size_t dot = typed.rfind('.');
    if (dot == std::string::npos) {
        const NodePtr root = document.getRootNode();
        addNode(*root, root->getName(), kind, candidates);
        return;
    }
    const NodePtr node = document.findNodeFromPath(typed.substr(0, dot).c_str());
    if (!node)
        return;
    const std::string folder = typed.substr(0, dot + 1);
    if (kind.isInput)
        addPorts(node->inputs(), folder, candidates);
    if (kind.isOutput)
        addPorts(node->outputs(), folder, candidates);
    if (!node->isCompound())
        return;
    for (const NodePtr& inner : node->getAsCompound()->nodes()) {
        if (isReachable(inner->getName()))
            addNode(*inner, folder + inner->getName(), kind, candidates);
    }
}

/// The names of what the compound at the path has: of its nodes, or of its ports.
void addNames(const std::string& path, bool isPort, Document& document, Candidates& candidates)
{
    const NodePtr node = document.findNodeFromPath(path.c_str());
    if (!node || !node->isCompound())
        return;
    if (isPort) {
        addPorts(node->inputs(), "", candidates);
        addPorts(node->outputs(), "", candidates);
        return;
    }
    for (const NodePtr& inner : node->getAsCompound()->nodes())
        candidates.add(inner->getName());
}

/// The names of the library and of those below, or of the node types and definitions in them.
void addLibrary(ZEL::NodeLibrary& library, bool isNodeType, Candidates& candidates)
{
    if (!isNodeType)
        candidates.add(library.getName());
    for (int i = 0; isNodeType && i < library.getNumberOfNodes(); ++i) {
        const ZEL::AddRefWrapper<ZEL::NodeDefinition> definition = library.getNodeAt(i);
        const ZEL::AddRefWrapper<Definition> known = Definition::from(definition);
        candidates.add(definition->getName());
        if (known)
            candidates.add(known->record().name);
    }
    for (int i = 0; i < library.getNumberOfSubLibraries(); ++i)
        addLibrary(*library.getSubLibraryAt(i), isNodeType, candidates);
}

void addTypes(ZEL::Runtime& runtime, Candidates& candidates)
{
    for (int i = 0; i < runtime.getNumberOfPortDataTypes(); ++i)
        candidates.add(runtime.getPortDataType(i)->getName());
}

/// A folder that cannot be read has no files.
void addFiles(const std::string& typed, Candidates& candidates)
{
    const std::size_t slash = typed.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : typed.substr(0, slash + 1);
    const bool isHiddenMeant = typed.compare(folder.size(), 1, ".") == 0;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code ignored;
        const bool isFolder = entry->is_directory(ignored);
        if (isHiddenMeant || name.front() != '.')
            candidates.add(folder + name + (isFolder ? "/" : ""), !isFolder);
    }
}

} // namespace

void Candidates::add(const std::string& word, bool isWhole, bool leadsOn)
{
    if (!word.empty() && word.compare(0, m_typed.size(), m_typed) == 0)
        m_found.push_back({word, isWhole, leadsOn});
}

std::vector<Candidate> Candidates::take()
{
    std::sort(m_found.begin(), m_found.end(),
              [](const Candidate& a, const Candidate& b) { return a.word < b.word; });
    const auto isSame = [](const Candidate& a, const Candidate& b) { return a.word == b.word; };
    m_found.erase(std::unique(m_found.begin(), m_found.end(), isSame), m_found.end());
    if (m_found.size() == 1 && m_found.front().leadsOn)
        m_found.push_back({m_found.front().word + ".", false, false});
    return std::move(m_found);
}

void addCandidates(const std::string& kind,
                   const std::string& typed,
                   const std::string& compound,
                   const CandidateSources& sources,
                   Candidates& candidates)
{
    ZEL::Runtime& runtime = *sources.document.getRuntime();
    for (const auto& known : kPathKinds) {
        if (kind == known.name)
            addPaths(known.kind, typed, sources.document, candidates);
    }
    if (kind == "child" || kind == "inner")
        addNames(compound, kind == "inner", sources.document, candidates);
    else if (kind == "type")
        addTypes(runtime, candidates);
    else if ((kind == "nodetype" || kind == "library") && runtime.getNodeLibrary())
        addLibrary(*runtime.getNodeLibrary(), kind == "nodetype", candidates);
    else if (kind == "file")
        addFiles(typed, candidates);
    for (const Command& command : sources.commands) {
        if (kind == "command")
            candidates.add(command.name);
    }
    std::size_t start = 1;
    while (kind.front() == '=' && start < kind.size()) {
        const std::size_t end = std::min(kind.find(',', start), kind.size());
        candidates.add(kind.substr(start, end - start));
        start = end + 1;
    }
}

} // namespace shading
