#pragma once

#include "zel.h"

#include <functional>
#include <memory>
#include <string>

namespace ZEL {

/// What the conformance kit needs to know of a host: how to make a document, and what the host
/// accepts. The kit builds networks in fresh documents and checks that the host's classes keep what
/// the library and its commands rely on. It asks for nothing that a host may refuse by right, but
/// it must be able to work: names, ports and connections of the kinds given here are agreed to.
class ConformanceHost {
public:
    ConformanceHost() = default;
    ConformanceHost(const ConformanceHost&) = delete;
    ConformanceHost& operator=(const ConformanceHost&) = delete;
    virtual ~ConformanceHost();

    /// A new document, never null. Its root node owns a compound, which may hold nodes.
    virtual std::unique_ptr<Container> makeDocument() = 0;
    /// A new node of the host's class for that document, of that name and in no list.
    virtual AddRefWrapper<Node> makeNode(Container& document, const char* name) = 0;

    /// Adds a port to a node that makeNode made. The default asks the node's list.
    virtual AddRefWrapper<Port> addPort(Node& node,
                                        PortIOType ioType,
                                        const char* name,
                                        const AddRefWrapper<PortDataType>& type);
    /// The data type of that name. The default asks the document's runtime, and makes a type of its
    /// own when there is none.
    virtual AddRefWrapper<PortDataType> makeDataType(Container& document, const char* name);
    /// The names of two types, for number 0 and 1. The host connects ports of the first with each
    /// other; what it does with ports of two types is its own affair. By default "float" and
    /// "color3".
    virtual const char* dataTypeName(int number);
    /// Makes a name that the host accepts for a node or port from a word of lower-case letters and
    /// digits: another name for another word. The default is the word.
    virtual std::string nameOf(const char* word);
    /// The text under which the host registers the document; empty, the default, when it does not.
    virtual std::string uuidOf(Container& document);
    /// The path of a file that Compound::saveAs may write; empty, the default: it is not tried.
    virtual std::string savePath();
    /// Runs the change. A host that allows changes in an edit only overrides it to open and close
    /// one.
    virtual void edit(Container& document, const std::function<void()>& change);
};

/// Makes the host anew for each test; it and its documents end with the test.
using ConformanceFactory = std::function<std::unique_ptr<ConformanceHost>()>;

/// Registers one GoogleTest for each rule, all in the suite of that name. Call it before
/// RUN_ALL_TESTS, in main or from the initialiser of a static variable. Always true.
bool registerConformanceTests(const char* suite, const ConformanceFactory& factory);

} // namespace ZEL
