#pragma once

#include "binding/half.h"
#include "zel/safeNode.h"

#include <string>
#include <unordered_map>

namespace zelpython {

/// A node made in Python, whose class may be written there. Every one has a Python half: a wrapper
/// that came and went would hold a reference that hides from the collector who holds the node.
class PyNode final : public Halved<SafeNode> {
public:
    using Halved::Halved;

    void setName(const char* name) override;
    void appendString(const char* text) override;
    bool isCompound() override;
    ZEL::AddRefWrapper<ZEL::Compound> getAsCompound() override;
    ZEL::Namable getFullPathName() override;
    const char* getNodeTypeName() const override;
    void setNodeTypeName(const char* name) override;
    void onThisNodeDeleted() override;

    bool onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                             const ZEL::AddRefWrapper<ZEL::Port>& other) override;
    bool onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                const ZEL::AddRefWrapper<ZEL::Port>& other) override;
    bool onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                           const ZEL::AddRefWrapper<ZEL::PortDataType>& type) override;
    bool onPortListPortAdded(const ZEL::PortList& list,
                             const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    bool onPortListPortMove(const ZEL::PortList& list, int from, int to) override;
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override;
    const char* onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    bool onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port,
                               const char* value) override;
    bool onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name) override;
    ZEL::Namable onGetParentFullPathName() override;

protected:
    void onLetGo() override;

private:
    mutable std::string m_typeName; ///< What the override answered last.
    /// What the override answered last for each port.
    std::unordered_map<const ZEL::Port*, std::string> m_defaultValues;
};

} // namespace zelpython
