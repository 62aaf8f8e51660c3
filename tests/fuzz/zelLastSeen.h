#pragma once

#include "zel.h"

#include <string>

namespace zelFuzz {

class Universe;

using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;
using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;
using CompoundPtr = ZEL::AddRefWrapper<ZEL::Compound>;
using TypePtr = ZEL::AddRefWrapper<ZEL::PortDataType>;

/// Who an object is and where it stands, as it says itself. Noted before an end, and compared in
/// the destructor: while a document, compound or node dies, what dies inside finds all as it was.
class LastSeen {
public:
    template <class Object>
    void note(int moment, Object& object)
    {
        m_state = stateOf(object);
        m_moment = moment;
    }
    /// Once; does nothing when something has changed since it was noted.
    template <class Object>
    void compare(int moment, Object& object)
    {
        if (m_moment == moment)
            expectSame(stateOf(object));
        m_moment = 0;
    }

private:
    struct State {
        std::string name;
        std::string path;
        const void* node = nullptr;     ///< The owner, or the parent node of a port.
        const void* compound = nullptr; ///< The parent compound.
        const void* parent = nullptr;   ///< Of a port.
    };

    static State stateOf(ZEL::Node& node);
    static State stateOf(ZEL::Compound& compound);
    static State stateOf(ZEL::Port& port);
    void expectSame(const State& now) const;

    State m_state;
    int m_moment = 0; ///< 0: never noted.
};

/// Notes the state of all that goes with the top, which somebody is about to let go.
void remember(const Universe& universe, ZEL::Node& top);
void remember(const Universe& universe, ZEL::Compound& top);

} // namespace zelFuzz
