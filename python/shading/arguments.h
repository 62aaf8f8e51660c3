#pragma once

#include "binding/text.h"
#include "binding/wrapperCaster.h"
#include "document/pointers.h"

#include <optional>
#include <pybind11/pybind11.h>
#include <string>
#include <vector>

namespace zelshading {

/// A thing of the document as Python names it: by its path, or itself.
template <class Object>
struct Argument {
    std::string path;                  ///< Counts without an object.
    ZEL::AddRefWrapper<Object> object; ///< Empty: it is named.
};

/// A compound is named by its node too.
using NodeArgument = Argument<ZEL::Node>;
using PortArgument = Argument<ZEL::Port>;

/// What has attributes: a path, a node or a port.
struct OwnerArgument {
    NodeArgument node;
    shading::PortPtr port; ///< Empty: it is the node, or the path.
};

/// One thing, or any number of them.
struct NodesArgument {
    std::vector<NodeArgument> nodes;
};

/// The name of a file: str, bytes or what os.fspath makes one of.
struct FileArgument {
    std::string path; ///< The bytes of it.
};

/// False when the object is none. Raises what its own conversion raises.
bool toNode(pybind11::handle object, NodeArgument& node);
bool toPort(pybind11::handle object, PortArgument& port);
bool toOwner(pybind11::handle object, OwnerArgument& owner);
bool toNodes(pybind11::handle object, NodesArgument& nodes);
bool toFile(pybind11::handle object, FileArgument& file);

} // namespace zelshading

namespace pybind11::detail {

template <>
struct type_caster<zelshading::NodeArgument> {
    PYBIND11_TYPE_CASTER(zelshading::NodeArgument,
                         const_name("Union[str, zel.Node, zel.Compound]"));
    bool load(handle source, bool /*convert*/) { return zelshading::toNode(source, value); }
};

template <>
struct type_caster<zelshading::PortArgument> {
    PYBIND11_TYPE_CASTER(zelshading::PortArgument, const_name("Union[str, zel.Port]"));
    bool load(handle source, bool /*convert*/) { return zelshading::toPort(source, value); }
};

template <>
struct type_caster<zelshading::OwnerArgument> {
    PYBIND11_TYPE_CASTER(zelshading::OwnerArgument,
                         const_name("Union[str, zel.Node, zel.Compound, zel.Port]"));
    bool load(handle source, bool /*convert*/) { return zelshading::toOwner(source, value); }
};

template <>
struct type_caster<zelshading::NodesArgument> {
    PYBIND11_TYPE_CASTER(zelshading::NodesArgument,
                         const_name("Union[str, zel.Node, Iterable[Union[str, zel.Node]]]"));
    bool load(handle source, bool /*convert*/) { return zelshading::toNodes(source, value); }
};

template <>
struct type_caster<zelshading::FileArgument> {
    PYBIND11_TYPE_CASTER(zelshading::FileArgument, const_name("Union[str, bytes, os.PathLike]"));
    bool load(handle source, bool /*convert*/) { return zelshading::toFile(source, value); }
};

} // namespace pybind11::detail
