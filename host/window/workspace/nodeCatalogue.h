#pragma once

#include "definitions/definitionIndex.h"

#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace shading {

class Document;

/// What nodes can be made in a document, and the search for one by a few letters.
class NodeCatalogue {
public:
    struct Entry {
        DefinitionPtr definition; ///< Empty: a graph.
        QString type;             ///< The node type: "mix".
        QString output;           ///< The data type that it makes: "color3"; empty for a graph.
        QString category;         ///< The library that has it: "math".
        /// What tells it from others that make the same: "in2 float". Empty where none does.
        QString inputs = {};

        /// What it is called in edits and settings: "ND_mix_color3", "nodegraph".
        QString name() const;
        /// The name that a new node of it gets, to be made unique.
        std::string stem() const { return type.toStdString(); }
    };

    /// Nodes that a wire can be led to.
    struct Filter {
        std::string dataType;
        bool isInput = true; ///< They need an input of that type; else an output.
    };

    enum class Rank { Exact, Prefix, WordStart, Part, Subsequence, Category, None };

    struct Hit {
        int entry = -1;
        Rank rank = Rank::None;
        int variants = 1; ///< How many of the type are hidden behind this one, with it.
        std::string port; ///< The first one that the filter takes.
    };

    /// Reads the definitions that the document has now; those of old versions are left out.
    explicit NodeCatalogue(Document& document);

    /// By category, then type; a type's variants stand together, the commonest first.
    const std::vector<Entry>& entries() const { return m_entries; }
    const Entry& entry(const Hit& hit) const
    {
        return m_entries[static_cast<std::size_t>(hit.entry)];
    }

    /// What fits the text, the best first. The first word is looked for in the types; those behind
    /// it also in the data types: "mix color3". While many types fit, one variant of each is given.
    /// Without a text all fit, those called as one of the recent first, in that order.
    std::vector<Hit> search(const QString& text,
                            const std::optional<Filter>& filter = {},
                            const std::vector<QString>& recent = {}) const;

    /// How well the word fits the name.
    static Rank rankOf(const QString& word, const QString& name);

private:
    Rank rankOf(const std::vector<QString>& words, const Entry& entry) const;

    std::vector<Entry> m_entries;
};

/// The first port of the definition that the filter takes; empty when it has none.
std::string fittingPort(const DefinitionPtr& definition, const NodeCatalogue::Filter& filter);

} // namespace shading
