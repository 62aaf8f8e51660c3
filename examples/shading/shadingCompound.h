#pragma once

#include "zel.h"

namespace shading {

/// The network inside the document or inside a `nodegraph` of it.
///
/// A host derives from ZEL::Compound so that compounds made by the library's commands are its own,
/// and to answer the questions about inner ports and nodes.
class Compound : public ZEL::Compound {
public:
    /// A new compound of that node, held by the node and the wrapper.
    static ZEL::AddRefWrapper<Compound> createNew(const ZEL::AddRefWrapper<ZEL::Node>& owner);
    explicit Compound(const ZEL::AddRefWrapper<ZEL::Node>& owner);
    /// The virtual assignment of the base, which every derived class would hide otherwise.
    using ZEL::Compound::operator=;

    /// Disconnects an inner port before it goes, for the reason that Node gives.
    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    /// An inner port has the value of the port of the compound node that it mirrors: one value,
    /// kept once. Null when there is no mirror, so that the inner port's own holds.
    const char* onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port) override;

    /// Makes a graph of that name at the end of this compound. Names are not made unique: a
    /// document is opened as it stands. Empty when the node was refused.
    ZEL::AddRefWrapper<ZEL::Compound> createNewCompound(const char* name) override;
    /// The format's word for a compound.
    const char* getSpecializedCompoundTypeName() override;
};

} // namespace shading
