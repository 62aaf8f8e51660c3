#pragma once

#include "binding/half.h"
#include "binding/shared.h"
#include "zel.h"

namespace zelpython {

/// An editor made in Python. Nodes know it by a plain pointer: it lives as long as Python holds it,
/// and may die in its own callback.
class PyEditor final : public ZEL::HostEditor, public Half {
public:
    PyEditor() : m_live("zel.HostEditor") {}

    void zel_onConnectionChange(ZEL::ECnxChangeType type,
                                const ZEL::AddRefWrapper<ZEL::Port>& first,
                                const ZEL::AddRefWrapper<ZEL::Port>& second) override;
    void zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                        const ZEL::AddRefWrapper<ZEL::Port>& first,
                                        const ZEL::AddRefWrapper<ZEL::Port>& second) override;
    void zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                  const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                          const ZEL::AddRefWrapper<ZEL::Node>& node) override;

private:
    LiveCount m_live;
};

} // namespace zelpython
