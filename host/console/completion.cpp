#include "console/completion.h"

#include "base/commandLine.h"
#include "console/console.h"
#include "document/backdrops.h"
#include "document/rules.h"
#include "shadingDefinition.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace shading {

namespace {

/// A word that may be meant.
struct Candidate {
    std::string word;
    bool isWhole; ///< False: more has to follow in the same word.
    bool leadsOn; ///< Whole, and a "." with more may follow.
};

/// Which things a kind of path may lead to.
struct PathKind {
    const char* name;
    bool isPlainNode;
    bool isCompound;
    bool isInput;
    bool isOutput;

    bool isPort() const { return isInput || isOutput; }
};

constexpr PathKind kPathKinds[] = {
    {"node", true, true, false, false}, {"compound", false, true, false, false},
    {"port", false, false, true, true}, {"input", false, false, true, false},
    {"any", true, true, true, true},
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

/// Collects the words that begin with what was typed.
class Candidates {
public:
    Candidates(std::string typed, Document& document)
        : m_typed(std::move(typed)),
          m_document(document)
    {
    }

    void add(const std::string& word, bool isWhole = true, bool leadsOn = false)
    {
        if (!word.empty() && word.compare(0, m_typed.size(), m_typed) == 0)
            m_found.push_back({word, isWhole, leadsOn});
    }

    /// Adds the words of that kind, as `Command::kinds` names them, but for commands. The compound
    /// is the path that an earlier argument gives; empty when none does.
    void addKind(const std::string& kind, const std::string& compound)
    {
        for (const PathKind& known : kPathKinds) {
            if (kind == known.name)
                addPaths(known);
        }
        ZEL::Runtime& runtime = *m_document.getRuntime();
        if (kind == "child" || kind == "inner")
            addNames(compound, kind == "inner");
        else if (kind == "backdrop")
            addBackdrops(compound);
        else if (kind == "type")
            addTypes(runtime);
        else if ((kind == "nodetype" || kind == "library") && runtime.getNodeLibrary())
            addLibrary(*runtime.getNodeLibrary(), kind == "nodetype");
        else if (kind == "file")
            addFiles();
    }

    /// Sorted by bytes, each once. A single one that leads on is there also with its ".". Called
    /// last.
    std::vector<Candidate> take()
    {
        std::sort(m_found.begin(), m_found.end(),
                  [](const Candidate& a, const Candidate& b) { return a.word < b.word; });
        const auto isSame = [](const Candidate& a, const Candidate& b) { return a.word == b.word; };
        m_found.erase(std::unique(m_found.begin(), m_found.end(), isSame), m_found.end());
        if (m_found.size() == 1 && m_found.front().leadsOn)
            m_found.push_back({m_found.front().word + ".", false, false});
        return std::move(m_found);
    }

private:
    void addNode(ZEL::Node& node, const std::string& path, const PathKind& kind)
    {
        const bool isMeant = node.isCompound() ? kind.isCompound : kind.isPlainNode;
        const bool isFolder = leadsOn(node, kind);
        if (isMeant)
            add(path, true, isFolder);
        else if (isFolder)
            add(path + ".", false);
    }

    void addPorts(ZEL::PortList& list, const std::string& folder)
    {
        for (ZEL::Port* const port : list) {
            if (isReachable(port->getName()))
                add(folder + port->getName());
        }
    }

    void addPaths(const PathKind& kind)
    {
        const std::size_t dot = m_typed.rfind('.');
        if (dot == std::string::npos) {
            const NodePtr root = m_document.getRootNode();
            addNode(*root, root->getName(), kind);
            return;
        }
        const NodePtr node = m_document.findNodeFromPath(m_typed.substr(0, dot).c_str());
        if (!node)
            return;
        const std::string folder = m_typed.substr(0, dot + 1);
        if (kind.isInput)
            addPorts(node->inputs(), folder);
        if (kind.isOutput)
            addPorts(node->outputs(), folder);
        if (!node->isCompound())
            return;
        for (const NodePtr& inner : node->getAsCompound()->nodes()) {
            if (isReachable(inner->getName()))
                addNode(*inner, folder + inner->getName(), kind);
        }
    }

    /// The names of what the compound at the path has: of its nodes, or of its ports.
    void addNames(const std::string& path, bool isPort)
    {
        const NodePtr node = m_document.findNodeFromPath(path.c_str());
        if (!node || !node->isCompound())
            return;
        if (isPort) {
            addPorts(node->inputs(), "");
            addPorts(node->outputs(), "");
            return;
        }
        for (const NodePtr& inner : node->getAsCompound()->nodes())
            add(inner->getName());
    }

    void addBackdrops(const std::string& path)
    {
        const NodePtr node = m_document.findNodeFromPath(path.c_str());
        if (!node || !node->isCompound())
            return;
        for (const BackdropPtr& backdrop : m_document.backdrops().in(*node->getAsCompound()))
            add(backdrop->name());
    }

    /// The names of the library and of those below, or of the node types and definitions in them.
    void addLibrary(ZEL::NodeLibrary& library, bool isNodeType)
    {
        if (!isNodeType)
            add(library.getName());
        for (int i = 0; isNodeType && i < library.getNumberOfNodes(); ++i) {
            const ZEL::AddRefWrapper<ZEL::NodeDefinition> definition = library.getNodeAt(i);
            const DefinitionPtr known = Definition::from(definition);
            add(definition->getName());
            if (known)
                add(known->record().name);
        }
        for (int i = 0; i < library.getNumberOfSubLibraries(); ++i)
            addLibrary(*library.getSubLibraryAt(i), isNodeType);
    }

    void addTypes(ZEL::Runtime& runtime)
    {
        for (int i = 0; i < runtime.getNumberOfPortDataTypes(); ++i)
            add(runtime.getPortDataType(i)->getName());
    }

    /// A folder that cannot be read has no files.
    void addFiles()
    {
        const std::string folder = m_typed.substr(0, m_typed.rfind('/') + 1);
        const bool isHiddenMeant = m_typed.compare(folder.size(), 1, ".") == 0;
        std::error_code error;
        std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error);
        for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            std::error_code ignored;
            const bool isFolder = entry->is_directory(ignored);
            if (isHiddenMeant || name.front() != '.')
                add(folder + name + (isFolder ? "/" : ""), !isFolder);
        }
    }

    std::string m_typed;
    Document& m_document;
    std::vector<Candidate> m_found;
};

Arguments splitAt(const std::string& text, char separator)
{
    Arguments parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        if (!part.empty())
            parts.push_back(part);
    }
    return parts;
}

/// The words that the kind lists; none when it is another one.
Arguments wordsOf(const std::string& kind)
{
    return splitAt(kind.substr(0, 1) == "=" ? kind.substr(1) : "", ',');
}

/// The kind at the index; that of the last ones where they repeat; empty behind the last.
std::string kindAt(const Arguments& kinds, std::size_t index)
{
    if (kinds.empty())
        return "";
    const std::string& last = kinds.back();
    if (last == "..." && kinds.size() > 1)
        return kinds[index % (kinds.size() - 1)];
    const bool repeats = last.size() > 3 && last.compare(last.size() - 3, 3, "...") == 0;
    if (repeats && index + 1 >= kinds.size())
        return last.substr(0, last.size() - 3);
    return index < kinds.size() ? kinds[index] : "";
}

/// Adds what a form of a command takes behind the arguments: nothing when they are of another form.
void addForm(const Arguments& kinds,
             const Arguments& arguments,
             const std::vector<Command>& commands,
             Candidates& candidates)
{
    std::string compound;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Arguments known = wordsOf(kindAt(kinds, i));
        if (!known.empty() && std::find(known.begin(), known.end(), arguments[i]) == known.end())
            return;
        if (compound.empty() && kindAt(kinds, i) == "compound")
            compound = arguments[i];
    }
    const std::string kind = kindAt(kinds, arguments.size());
    candidates.addKind(kind, compound);
    for (const std::string& word : wordsOf(kind))
        candidates.add(word);
    for (std::size_t i = 0; i < commands.size() && kind == "command"; ++i)
        candidates.add(commands[i].name);
}

void addArguments(const Command& command,
                  const UnfinishedLine& line,
                  const std::vector<Command>& commands,
                  Candidates& candidates)
{
    const auto options = optionsOf(command);
    Arguments arguments;
    const std::string* awaited = nullptr; // The kind of the word that an option takes.
    for (std::size_t i = 1; i < line.words.size(); ++i) {
        const auto option = std::find_if(options.begin(), options.end(),
                                         [&](const auto& o) { return o.first == line.words[i]; });
        if (awaited)
            awaited = nullptr;
        else if (option == options.end())
            arguments.push_back(line.words[i]);
        else if (!option->second.empty())
            awaited = &option->second;
    }
    if (awaited)
        return candidates.addKind(*awaited, "");
    for (const std::string& form : splitAt(command.kinds, '|'))
        addForm(splitAt(form, ' '), arguments, commands, candidates);
    // Options are offered to who begins to type one.
    for (const auto& option : options) {
        if (!line.word.empty())
            candidates.add(option.first);
    }
}

/// As far as all agree; never less than what they were chosen by.
std::string commonStart(const std::vector<Candidate>& candidates)
{
    std::string start = candidates.front().word;
    for (const Candidate& candidate : candidates) {
        const std::size_t size = std::min(start.size(), candidate.word.size());
        const auto end = std::mismatch(start.begin(), start.begin() + static_cast<long>(size),
                                       candidate.word.begin());
        start.erase(end.first, start.end());
    }
    // Not within a character of several bytes.
    const std::string& first = candidates.front().word;
    while (start.size() < first.size() && (first[start.size()] & 0xC0) == 0x80)
        start.pop_back();
    return start;
}

} // namespace

Completion
complete(const std::vector<Command>& commands, Document& document, const std::string& line)
{
    const UnfinishedLine unfinished = splitUnfinished(line);
    Completion completion;
    completion.start = unfinished.start;
    if (unfinished.isComment)
        return completion;

    Candidates candidates(unfinished.word, document);
    if (unfinished.words.empty())
        addForm({"command"}, {}, commands, candidates);
    for (const Command& command : commands) {
        if (!unfinished.words.empty() && unfinished.words.front() == command.name)
            addArguments(command, unfinished, commands, candidates);
    }

    const std::vector<Candidate> found = candidates.take();
    if (found.empty())
        return completion;
    const bool isWhole = found.size() == 1 && found.front().isWhole;
    completion.text = quoteWord(commonStart(found), isWhole) + (isWhole ? " " : "");
    for (const Candidate& candidate : found)
        completion.candidates.push_back(quoteWord(candidate.word, candidate.isWhole));
    return completion;
}

} // namespace shading
