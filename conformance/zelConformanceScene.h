#pragma once

#include "zelConformance.h"

#include <vector>

namespace ZEL::Conformance {

using NodePtr = AddRefWrapper<Node>;
using PortPtr = AddRefWrapper<Port>;
using CompoundPtr = AddRefWrapper<Compound>;
using TypePtr = AddRefWrapper<PortDataType>;

/// A fresh document of the host, and what the rules build in it.
struct Scene {
    explicit Scene(ConformanceHost& theHost);

    /// A node in the compound with ports of the first type; the words are separated by blanks.
    /// Empty, with a failure, when the host refused the node or a port.
    NodePtr addNode(Compound& where, const char* word, const char* inputs, const char* outputs);
    /// A compound inside another, made by its createNewCompound; empty when there is none.
    CompoundPtr addCompound(Compound& where, const char* word);
    /// Adds a port of the first type to the compound and its node. Returns createCompoundPort's
    /// index.
    int addCompoundPort(Compound& compound, PortIOType ioType, const char* word);
    PortPtr input(Node& node, const char* word);
    PortPtr output(Node& node, const char* word);
    /// False, with a failure, when the host refused.
    bool connect(const PortPtr& from, const PortPtr& to);

    std::string name(const char* word) { return host.nameOf(word); }
    TypePtr type(int number);
    /// All nodes, ports, types and connections of the document; the connections of a port sorted.
    std::string text();

    ConformanceHost& host;
    std::unique_ptr<Container> document; ///< Outlives the wrappers below.
    NodePtr root;                        ///< Empty: the document has none.
    CompoundPtr top;                     ///< Empty: the root node owns none.
    bool isWithoutCompounds = false;     ///< createNewCompound made none: a part was not tried.
};

/// The full path name, with " (inner)" for a compound's inner port; "nothing" when empty.
std::string pathOf(const PortPtr& port);
std::string pathOf(Node& node);
std::string inQuotes(const std::string& text);

/// How often the port lists the other one.
int entriesOf(Port& port, const Port& other);

struct Rule {
    const char* name;            ///< A fact, as the name of a test.
    void (*check)(Scene& scene); ///< Fails, in plain words, for a host that breaks the rule.
    bool needsNetwork;           ///< Skipped when the document has no root or no compound.
};

const std::vector<Rule>& documentRules();
const std::vector<Rule>& compoundRules();
const std::vector<Rule>& portRules();
const std::vector<Rule>& nodeRules();
const std::vector<Rule>& commandRules();

} // namespace ZEL::Conformance
