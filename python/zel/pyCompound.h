#pragma once

#include "binding/half.h"
#include "zel/safeCompound.h"

#include <string>
#include <unordered_map>

namespace zelpython {

/// A compound made in Python, whose class may be written there. As PyNode it has a Python half.
class PyCompound final : public Halved<SafeCompound> {
public:
    using Halved::Halved;

    void setName(const char* name) override;
    void appendString(const char* text) override;

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

    bool onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node) override;
    bool onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node) override;

    ZEL::AddRefWrapper<ZEL::Node> createNodeFromPreset(const char* preset) override;
    ZEL::AddRefWrapper<ZEL::Compound> createNewCompound(const char* name) override;
    bool saveAs(const char* name) override;
    int createCompoundPort(ZEL::PortIOType ioType,
                           const char* name,
                           const ZEL::AddRefWrapper<ZEL::PortDataType>& type) override;
    int deleteCompoundPort(ZEL::AddRefWrapper<ZEL::Port> innerPort) override;
    int createLinkedPort(const char* name,
                         const char* target,
                         const ZEL::AddRefWrapper<ZEL::PortDataType>& type) override;
    const char* getSpecializedCompoundTypeName() override;

private:
    std::string m_typeName; ///< What the override answered last.
    std::unordered_map<const ZEL::Port*, std::string> m_defaultValues; ///< As in PyNode.
};

} // namespace zelpython
