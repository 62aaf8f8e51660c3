#pragma once

#include "zelLastSeen.h"

namespace zelFuzz {

class Universe;

/// A port of the host's own class: it asks who it is when it dies.
class FuzzPort : public ZEL::Port {
public:
    FuzzPort(Universe& universe, const char* name, ZEL::PortIOType ioType);
    FuzzPort(const FuzzPort&) = delete;
    FuzzPort& operator=(const FuzzPort&) = delete;
    ~FuzzPort() override;

    LastSeen seen;
    inline static int live = 0; ///< How many there are.

protected:
    void compareSeen();

private:
    Universe& m_universe;
};

/// It goes by another name than the library has.
class TitledPort final : public FuzzPort {
public:
    TitledPort(Universe& universe, const char* name, ZEL::PortIOType ioType);
    ~TitledPort() override;

    const char* getName() const override { return m_title.c_str(); }
    void setName(const char* name) override;
    void appendString(const char* text) override;

private:
    std::string m_title;
};

} // namespace zelFuzz
