#include "zelPortListPair.h"

#include <new>

namespace ZEL {

template <int place>
void PortListPair::Half<place>::operator delete(void* list)
{
    auto* const half = static_cast<unsigned char*>(list);
    static_cast<PortListPair*>(static_cast<void*>(half - place * sizeof(Half)))->onListDied();
}

PortListPair* PortListPair::createNew()
{
    auto* const pair = new PortListPair;
    pair->addRef();
    return pair;
}

PortListPair::PortListPair()
{
    static_assert(sizeof(PortListPair) == 2 * sizeof(PortList) + sizeof(void*),
                  "one list must lie right behind the other");
}

void PortListPair::addRef()
{
    m_inputs.addRef();
    m_outputs.addRef();
}

void PortListPair::release()
{
    PortList& outputs = m_outputs; // It holds the pair while the inputs go.
    m_inputs.release();
    outputs.release();
}

void PortListPair::onListDied()
{
    if (--m_alive == 0)
        ::operator delete(this);
}

} // namespace ZEL
