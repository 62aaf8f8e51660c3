#pragma once

#include "binding/half.h"
#include "binding/shared.h"
#include "zel.h"

namespace zelpython {

/// A runtime made in Python, which owns it. Whoever is registered with it holds it.
class PyRuntime final : public ZEL::Runtime, public Half {
public:
    PyRuntime() : m_live("zel.Runtime") {}

    void setName(const char* name) override;
    void appendString(const char* text) override;
    void setNodeLibrary(ZEL::AddRefWrapper<ZEL::NodeLibrary>& library) override;
    ZEL::AddRefWrapper<ZEL::NodeLibrary> getNodeLibrary() override;
    ZEL::AddRefWrapper<ZEL::NodeLibrary> findLibrary(const char* path) override;
    int getNumberOfPortDataTypes() override;
    ZEL::AddRefWrapper<ZEL::PortDataType> getPortDataType(int index) override;
    ZEL::AddRefWrapper<ZEL::PortDataType> getPortDataType(const char* name) override;
    ZEL::AddRefWrapper<ZEL::PortDataType> createPortDataType(const char* name) override;

private:
    LiveCount m_live;
};

} // namespace zelpython
