#pragma once

#include "binding/shared.h"
#include "zel/sever.h"

namespace zelpython {

/// A port made in Python. It takes its connections along when it dies.
class SafePort final : public ZEL::Port {
public:
    SafePort(const char* name, ZEL::PortIOType ioType) : Port(name, ioType), m_live("zel.Port") {}
    ~SafePort() override
    {
        for (ZEL::Port* const other : connectedTo())
            other->connectedTo().onPortDeleted(this);
    }

private:
    LiveCount m_live;
};

} // namespace zelpython
