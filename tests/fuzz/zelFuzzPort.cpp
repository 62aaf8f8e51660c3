#include "zelFuzzPort.h"

#include "zelFuzzUniverse.h"

namespace zelFuzz {

FuzzPort::FuzzPort(Universe& universe, const char* name, ZEL::PortIOType ioType)
    : Port(name, ioType),
      m_universe(universe)
{
    ++live;
}

FuzzPort::~FuzzPort()
{
    compareSeen();
    --live;
}

void FuzzPort::compareSeen()
{
    seen.compare(m_universe.moment, *this);
}

TitledPort::TitledPort(Universe& universe, const char* name, ZEL::PortIOType ioType)
    : FuzzPort(universe, name, ioType),
      m_title(std::string("t") + name)
{
}

TitledPort::~TitledPort()
{
    compareSeen();
}

void TitledPort::setName(const char* name)
{
    FuzzPort::setName(name);
    m_title = std::string("t") + FuzzPort::getName();
}

void TitledPort::appendString(const char* text)
{
    FuzzPort::appendString(text);
    m_title = std::string("t") + FuzzPort::getName();
}

} // namespace zelFuzz
