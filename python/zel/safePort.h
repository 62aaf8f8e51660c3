#pragma once

#include "binding/severPort.h"
#include "binding/shared.h"

namespace zelpython {

/// A port made in Python. It takes its connections along when it dies.
class SafePort final : public ZEL::Port {
public:
    SafePort(const char* name, ZEL::PortIOType ioType) : Port(name, ioType), m_live("zel.Port") {}
    ~SafePort() override { sever(*this); }

private:
    LiveCount m_live;
};

} // namespace zelpython
