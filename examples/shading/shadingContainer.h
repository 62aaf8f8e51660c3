#pragma once

#include "shadingMessage.h"
#include "zel.h"

#include <memory>
#include <string>
#include <vector>

namespace shading {

struct OpenOptions {
    bool isStrict = false; ///< Warnings become errors: the document does not open.
};

/// One shading document: the XML of its file and the network made from it, below a root node named
/// `Top`. What is no part of the network stays in the XML.
///
/// The library asks a host for this class: it gives the lookups by path, the host gives the root.
/// The container must outlive every wrapper of its nodes.
class Container : public ZEL::Container {
public:
    /// Opens the document in that file. Adds what is wrong with it to messages, in the order of
    /// lines. Empty when there is an error among them.
    static std::unique_ptr<Container>
    open(const std::string& path, const OpenOptions& options, std::vector<Message>& messages);
    ~Container() override;

    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override;
    /// Without a runtime there are no definitions that nodes could be rebuilt from: the network is
    /// what the document says, and stays as it is.
    void rebuildCompounds() override;
    /// Null: the document brings its own data types.
    ZEL::Runtime* getRuntime() override;

    /// The type of that name, made at the first call: all ports of one type share it.
    ZEL::AddRefWrapper<ZEL::PortDataType> dataType(const std::string& name);

private:
    Container();

    struct Impl;
    std::unique_ptr<Impl> m_impl; ///< Never empty.
};

} // namespace shading
