#pragma once

#include "zel.h"

namespace shading {

class Journal;

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

    // Questions of the inner ports and lists, as those of Node.
    bool onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                             const ZEL::AddRefWrapper<ZEL::Port>& other) override;
    bool onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                const ZEL::AddRefWrapper<ZEL::Port>& other) override;
    bool onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                           const ZEL::AddRefWrapper<ZEL::PortDataType>& type) override;
    bool onPortListPortAdded(const ZEL::PortList& list,
                             const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    /// Disconnects an inner port before it goes, for the reason that Node gives.
    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    bool onPortListPortMove(const ZEL::PortList& list, int from, int to) override;
    /// Moves the port of the compound node likewise.
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override;
    bool onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name) override;
    /// An inner port has the value of the port of the compound node that it mirrors: one value,
    /// kept once. Null when there is no mirror, so that the inner port's own holds.
    const char* onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    /// So the mirror gets a new value, and the inner port keeps none: false, but done.
    bool onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port,
                               const char* value) override;

    /// A node's name is its own among its siblings. Refused otherwise, and for a node of another
    /// class or document, which the host could not save.
    bool onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node) override;
    /// Disconnects a node before it goes. The library makes only the far ends forget.
    bool onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node) override;

    /// In an edit the name is made unique, for the library's commands ask for one name twice; while
    /// a document is opened it is taken as it stands.
    int createCompoundPort(ZEL::PortIOType ioType,
                           const char* name,
                           const ZEL::AddRefWrapper<ZEL::PortDataType>& type) override;
    /// Makes a graph of that name at the end of this compound. The name is made unique as that of a
    /// port. Empty when the node was refused.
    ZEL::AddRefWrapper<ZEL::Compound> createNewCompound(const char* name) override;
    /// The format's word for a compound.
    const char* getSpecializedCompoundTypeName() override;

    /// Told of a move in one of the four lists: does the same in the mirroring one. A list that is
    /// just following, or of another length, is left alone.
    void followMove(const ZEL::PortList& list, int from, int to);

private:
    Journal& journal() const;
    ZEL::PortList& listLike(const ZEL::PortList& list);

    bool m_isFollowing = false; ///< A mirroring list is being moved: its move is not followed.
};

} // namespace shading
