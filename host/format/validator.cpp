#include "format/validator.h"

#include "format/nodeDefs.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

namespace shading {

namespace {

using Rule = FormatFault::Rule;

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isName(const std::string& name)
{
    return !isDigit(name.front()) && std::all_of(name.begin(), name.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == ':';
    });
}

bool has(const Piece& element, const char* attribute)
{
    return element.attribute(attribute) != nullptr;
}

/// What stands inside an element, by name: the first of each.
struct Scope {
    std::unordered_map<std::string, const Piece*> nodes; ///< All that have no other place here.
    std::unordered_map<std::string, const Piece*> graphs;
    std::unordered_map<std::string, const Piece*> inputs;
    std::unordered_map<std::string, const Piece*> outputs;
};

const Piece* find(const std::unordered_map<std::string, const Piece*>& elements,
                  const std::string& name)
{
    const auto found = elements.find(name);
    return found == elements.end() ? nullptr : found->second;
}

class Validator {
public:
    explicit Validator(const Piece& root) : m_root(root), m_nodeDefs(root) {}

    std::vector<FormatFault> run()
    {
        checkChildren(m_root, "Top");
        checkGraph(m_root, "Top");
        return std::move(m_faults);
    }

private:
    /// What an element means by its reference.
    struct Source {
        const Piece* element = nullptr; ///< A node, or an input or output of a graph.
        std::string type;               ///< Empty: not known here.
        std::string problem;
    };

    void add(Rule rule, const std::string& path, const std::string& text)
    {
        m_faults.push_back({rule, path, text});
    }

    static std::string pathTo(const std::string& path, const Piece& child)
    {
        const std::string name = attributeOf(child, "name");
        return path + "." + (name.empty() ? std::string(child.text) : name);
    }

    /// Names, of all elements at all depths.
    void checkChildren(const Piece& parent, const std::string& path)
    {
        std::unordered_set<std::string> names;
        for (const Piece& child : ElementsIn(parent)) {
            const std::string name = attributeOf(child, "name");
            const std::string childPath = pathTo(path, child);
            if (!name.empty() && !isName(name))
                add(Rule::Name, childPath, "the format has no such name");
            if (!name.empty() && !names.insert(name).second)
                add(Rule::Sibling, childPath, "a sibling has the same name");
            checkChildren(child, childPath);
        }
    }

    const Scope& scopeOf(const Piece& parent)
    {
        const auto [entry, isNew] = m_scopes.try_emplace(&parent);
        Scope& scope = entry->second;
        for (const Piece* child = isNew ? parent.first : nullptr; child; child = child->next) {
            if (!child->isElement())
                continue;
            const ElementKind kind = kindOf(*child);
            const std::string name = attributeOf(*child, "name");
            if (kind == ElementKind::Input)
                scope.inputs.emplace(name, child);
            else if (kind == ElementKind::Output)
                scope.outputs.emplace(name, child);
            else
                scope.nodes.emplace(name, child); // Nodes of a name space, too.
            if (kind == ElementKind::Graph)
                scope.graphs.emplace(name, child);
        }
        return scope;
    }

    void checkGraph(const Piece& graph, const std::string& path)
    {
        const bool isTied = m_nodeDefs.tieOf(graph) != nullptr;
        for (const Piece& child : ElementsIn(graph)) {
            const std::string childPath = pathTo(path, child);
            switch (kindOf(child)) {
            case ElementKind::Input:
                if (isTied)
                    add(Rule::Interface, childPath, "its graph has the inputs of its nodedef");
                checkPort(child, *graph.parent, childPath);
                break;
            case ElementKind::Output:
                checkPort(child, graph, childPath);
                break;
            case ElementKind::Graph:
                checkGraph(child, childPath);
                break;
            case ElementKind::Node:
                checkNode(child, graph, childPath);
                break;
            case ElementKind::Other:
                if (child.text == "backdrop")
                    checkContents(child, graph, childPath);
                checkOther(child, childPath);
                break;
            }
        }
    }

    void checkNode(const Piece& node, const Piece& graph, const std::string& path)
    {
        for (const Piece& child : ElementsIn(node)) {
            if (kindOf(child) != ElementKind::Input)
                continue;
            const std::string childPath = pathTo(path, child);
            const bool isEmpty =
                std::all_of(child.attributes.begin(), child.attributes.end(),
                            [](const auto& a) { return a.name == "name" || a.name == "type"; });
            if (isEmpty && !child.first)
                add(Rule::Empty, childPath, "it says nothing");
            checkPort(child, graph, childPath);
        }
        follow(node, path);
    }

    /// Looks and what they assign, as far as they name materials and collections.
    void checkOther(const Piece& element, const std::string& path)
    {
        for (const Piece& child : ElementsIn(element)) {
            const std::string childPath = pathTo(path, child);
            for (const char* const attribute : {"material", "collection"}) {
                const std::string name = attributeOf(child, attribute);
                if (child.text == "materialassign" && !isThere(name))
                    add(Rule::Reference, childPath,
                        std::string("no ").append(attribute).append(" \"").append(name).append(
                            "\""));
            }
            checkOther(child, childPath);
        }
    }

    /// A backdrop contains what is beside it.
    void checkContents(const Piece& backdrop, const Piece& graph, const std::string& path)
    {
        const Scope& scope = scopeOf(graph);
        for (const std::string& name : namesIn(attributeOf(backdrop, "contains"))) {
            const bool isBeside =
                find(scope.nodes, name) || find(scope.inputs, name) || find(scope.outputs, name);
            const bool isFree = m_hasInclude || name.find(':') != std::string::npos ||
                                m_nodeDefs.tieOf(graph); // Its inputs are elsewhere.
            if (!isBeside && !isFree)
                add(Rule::Reference, path, "nothing beside it is called \"" + name + "\"");
        }
    }

    bool isThere(const std::string& name)
    {
        return name.empty() || name.find(':') != std::string::npos || m_hasInclude ||
               find(scopeOf(m_root).nodes, name);
    }

    /// The graph is the one whose children the port's reference means.
    void checkPort(const Piece& port, const Piece& graph, const std::string& path)
    {
        const bool isInput = kindOf(port) == ElementKind::Input;
        int bindings = isInput && has(port, "value") ? 1 : 0;
        for (const char* const attribute : {"nodename", "nodegraph", "interfacename"})
            bindings += has(port, attribute) ? 1 : 0;
        if (bindings > 1)
            add(Rule::Binding, path, "too many bindings");
        if (!hasReference(port))
            return;
        const Source source = sourceOf(port, graph);
        if (!source.problem.empty() && !m_hasInclude)
            add(Rule::Reference, path, source.problem);
        const std::string type = attributeOf(port, "type");
        if (source.element && !source.type.empty() && !type.empty() && source.type != type &&
            !has(port, "channels"))
            add(Rule::Type, path, "it is " + type + ", its source is " + source.type);
        follow(port, path);
    }

    Source sourceOf(const Piece& port, const Piece& graph)
    {
        const std::string interface = attributeOf(port, "interfacename");
        const std::string graphName = attributeOf(port, "nodegraph");
        const std::string node = attributeOf(port, "nodename");
        const std::string output = attributeOf(port, "output");
        if (!interface.empty())
            return interfaceOf(graph, interface);
        const std::string& name = graphName.empty() ? node : graphName;
        if (name.find(':') != std::string::npos)
            return {};
        if (!graphName.empty()) {
            const Piece* found = find(scopeOf(graph).graphs, name);
            found = found ? found : find(scopeOf(m_root).graphs, name);
            return found ? outputOf(*found, output) : missing("nodegraph", name);
        }
        if (node.empty()) {
            const Piece* const found = find(scopeOf(m_root).outputs, output);
            return found ? portSource(found) : missing("output", output);
        }
        const Piece* const found = find(scopeOf(graph).nodes, name);
        return found ? outputOf(*found, output) : missing("node", name);
    }

    static Source missing(const char* kind, const std::string& name)
    {
        Source source;
        source.problem = std::string("no ").append(kind).append(" \"").append(name).append("\"");
        return source;
    }

    static Source portSource(const Piece* port)
    {
        Source source;
        source.element = port;
        source.type = attributeOf(*port, "type");
        return source;
    }

    Source interfaceOf(const Piece& graph, const std::string& name)
    {
        if (const Piece* const found = find(scopeOf(graph).inputs, name))
            return portSource(found);
        const Tie* const tie = m_nodeDefs.tieOf(graph);
        if (!tie)
            return missing("input", name);
        if (!tie->nodeDef)
            return {};
        for (const Piece* const input : m_nodeDefs.inputsOf(*tie)) {
            if (attributeOf(*input, "name") == name)
                return portSource(input);
        }
        // What a nodedef inherits may be elsewhere.
        return attributeOf(*tie->nodeDef, "inherit").empty() ? missing("input", name) : Source();
    }

    Source outputOf(const Piece& node, const std::string& output)
    {
        Source source;
        source.element = &node;
        const bool isGraph = kindOf(node) == ElementKind::Graph;
        const std::string type = attributeOf(node, "type");
        if (!isGraph && type != kMultiOutput) {
            source.type = type;
            return source;
        }
        for (const Piece& child : ElementsIn(node)) {
            if (kindOf(child) == ElementKind::Output &&
                (output.empty() || attributeOf(child, "name") == output))
                return portSource(&child);
        }
        // The definition of a node may have more outputs.
        if (isGraph)
            source.problem =
                output.empty() ? "its source has no output" : missing("output", output).problem;
        return source;
    }

    /// Goes along the sources, each element once.
    void follow(const Piece& element, const std::string& path)
    {
        if (m_states.count(&element) > 0)
            return;
        struct Way {
            const Piece* element;
            std::vector<const Piece*> sources;
        };
        std::vector<Way> ways;
        const auto enter = [&](const Piece& next) {
            if (m_states.emplace(&next, State::Entered).second)
                ways.push_back({&next, sourcesOf(next)});
            else if (m_states[&next] == State::Entered)
                add(Rule::Cycle, path, "it depends on itself");
        };
        enter(element);
        while (!ways.empty()) {
            Way& way = ways.back();
            if (way.sources.empty()) {
                m_states[way.element] = State::Left;
                ways.pop_back();
                continue;
            }
            const Piece& source = *way.sources.back();
            way.sources.pop_back();
            enter(source);
        }
    }

    std::vector<const Piece*> sourcesOf(const Piece& element)
    {
        std::vector<const Piece*> sources;
        const auto addSource = [&](const Piece& port, const Piece& graph) {
            const Piece* const source =
                hasReference(port) ? sourceOf(port, graph).element : nullptr;
            if (source)
                sources.push_back(source);
        };
        const ElementKind kind = kindOf(element);
        const Piece& parent = *element.parent;
        if (kind == ElementKind::Node) {
            for (const Piece& input : ElementsIn(element)) {
                if (kindOf(input) == ElementKind::Input)
                    addSource(input, parent);
            }
        } else if (kind == ElementKind::Output && kindOf(parent) == ElementKind::Node) {
            sources.push_back(&parent);
        } else if (kind == ElementKind::Output) {
            addSource(element, parent);
        } else if (kind == ElementKind::Input && kindOf(parent) == ElementKind::Graph) {
            addSource(element, *parent.parent);
        }
        return sources;
    }

    enum class State {
        Entered,
        Left,
    };

    static bool hasIncludes(const Piece& root)
    {
        for (const Piece& child : ElementsIn(root)) {
            if (child.text == "xi:include")
                return true;
        }
        return false;
    }

    const Piece& m_root;
    const NodeDefs m_nodeDefs;
    const bool m_hasInclude = hasIncludes(m_root); ///< What is named may be there.
    std::unordered_map<const Piece*, Scope> m_scopes;
    std::unordered_map<const Piece*, State> m_states;
    std::vector<FormatFault> m_faults;
};

} // namespace

const char* nameOf(FormatFault::Rule rule)
{
    static const std::array<const char*, 8> names = {"name",      "sibling", "binding", "interface",
                                                     "reference", "type",    "cycle",   "empty"};
    return names[static_cast<std::size_t>(rule)];
}

std::vector<FormatFault> formatFaults(const Piece& documentElement)
{
    return Validator(documentElement).run();
}

} // namespace shading
