#pragma once

#include "zelFuzzUniverse.h"

namespace zelFuzz {

struct Step {
    const char* name; ///< For the trace that ZEL_FUZZ_TRACE in the environment asks for.
    void (*run)(Universe&);
};

/// Makes the step that the next byte names.
void makeStep(Universe& universe);

/// The steps, by theme. A step keeps the rules of callerRules; where it calls an object it holds no
/// wrapper of it, so that a question may be the end of the object. What it gives as an argument it
/// holds and lets go afterwards: a wrapper that the call makes would be the last one unnoticed.
extern const std::vector<Step> kGraphSteps;
extern const std::vector<Step> kHostSteps;
extern const std::vector<Step> kCommandSteps;
extern const std::vector<Step> kValueSteps;
extern const std::vector<Step> kKinSteps;
extern const std::vector<Step> kCrowdSteps;
extern const std::vector<Step> kListSteps;
extern const std::vector<Step> kConnectionSteps;
extern const std::vector<Step> kEditorSteps;

// What the next byte chooses from all that is there; null when there is none.
ZEL::Port* pickPort(Universe& universe);
ZEL::Node* pickNode(Universe& universe);
ZEL::Compound* pickCompound(Universe& universe);
ZEL::PortList* pickList(Universe& universe);
TypePtr pickType(Universe& universe);
template <class Array>
auto& pickSlot(Universe& universe, Array& slots)
{
    return slots.at(
        static_cast<std::size_t>(universe.input.number(static_cast<int>(slots.size()))));
}

/// Room for another one, so that an input stays fast.
bool hasRoom(Universe& universe);
/// The same for a new compound of the node, which is null or lets go of the one it has.
bool prepareCompound(Universe& universe, ZEL::Node* node);

// Empties a place of the host; what goes with it is disconnected before.
void letGo(Universe& universe, PortPtr& port);
void letGo(Universe& universe, NodePtr& node);
void letGo(Universe& universe, CompoundPtr& compound);
void letGo(Universe& universe, std::unique_ptr<CollapseSlot>& slot);
void letGo(Universe& universe, std::unique_ptr<ModifySlot>& slot);

/// What a step holds while it works. The universe knows of it, so that what a step inside a
/// question lets go is disconnected from what this one holds; at the end it is let go.
template <class T>
class Held {
public:
    Held(Universe& universe, ZEL::AddRefWrapper<T> object)
        : m_universe(universe),
          m_object(std::move(object))
    {
        if (m_object)
            known().push_back(m_object.get());
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held()
    {
        if (!m_object)
            return;
        known().erase(std::find(known().begin(), known().end(), m_object.get()));
        letGo(m_universe, m_object);
    }

    explicit operator bool() const { return m_object != nullptr; }
    const ZEL::AddRefWrapper<T>& wrapper() const { return m_object; }
    T& operator*() const { return *m_object; }
    T* operator->() const { return m_object.get(); }

private:
    std::vector<T*>& known()
    {
        if constexpr (std::is_same_v<T, ZEL::Port>)
            return m_universe.heldPorts;
        else if constexpr (std::is_same_v<T, ZEL::Node>)
            return m_universe.heldNodes;
        else
            return m_universe.heldCompounds;
    }

    Universe& m_universe;
    ZEL::AddRefWrapper<T> m_object;
};

/// A list of ports that a step holds while it works. The universe knows of its ports. When nobody
/// else holds the list at the end, they go with it, disconnected.
class HeldList {
public:
    HeldList(Universe& universe, ZEL::PortList* list);
    HeldList(const HeldList&) = delete;
    HeldList& operator=(const HeldList&) = delete;
    ~HeldList();

    /// False when its owner is gone: a parent of the list's that is no node or compound is, too.
    bool isOwned() const { return m_list->getRefCount() > 1; }
    ZEL::PortList& operator*() const { return *m_list; }
    ZEL::PortList* operator->() const { return m_list.get(); }

private:
    Universe& m_universe;
    ZEL::AddRefWrapper<ZEL::PortList> m_list;
};

/// Fills a place of the host. The new object is held already when the former goes: the two may
/// share what is below them.
template <class T>
void swapIn(Universe& universe, T& slot, T object)
{
    slot.swap(object);
    letGo(universe, object);
}

} // namespace zelFuzz
