#pragma once

#include "binding/overrides.h"

#include <string>
#include <unordered_map>

namespace zelpython {

/// The questions of ports and lists of ports as a Python class answers them; the same for a node
/// and a compound. Base is the library's class, Safe the one that answers without an override.
template <class Base, class Safe, class Self>
class PortQuestions {
public:
    using Port = ZEL::AddRefWrapper<ZEL::Port>;
    using List = ZEL::AddRefWrapper<ZEL::PortList>;
    using Texts = std::unordered_map<const ZEL::Port*, std::string>;

    explicit PortQuestions(Self& self) : m_self(self) {}

    bool addConnection(const Port& port, const Port& other)
    {
        static const Override override = Override::of<Base>("onPortAddConnection");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortAddConnection(port, other); }, port,
            other);
    }
    bool removeConnection(const Port& port, const Port& other)
    {
        static const Override override = Override::of<Base>("onPortRemoveConnection");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortRemoveConnection(port, other); },
            port, other);
    }
    bool setDataType(const Port& port, const ZEL::AddRefWrapper<ZEL::PortDataType>& type)
    {
        static const Override override = Override::of<Base>("onPortSetDataType");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortSetDataType(port, type); }, port,
            type);
    }
    bool added(const ZEL::PortList& list, const Port& port)
    {
        static const Override override = Override::of<Base>("onPortListPortAdded");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortListPortAdded(list, port); },
            wrap(list), port);
    }
    /// The answer only: the caller lets the port go.
    bool removed(const ZEL::PortList& list, const Port& port)
    {
        static const Override override = Override::of<Base>("onPortListPortRemoved");
        return ask(
            m_self, override, [] { return true; }, wrap(list), port);
    }
    bool move(const ZEL::PortList& list, int from, int to)
    {
        static const Override override = Override::of<Base>("onPortListPortMove");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortListPortMove(list, from, to); },
            wrap(list), from, to);
    }
    void moved(const ZEL::PortList& list, int from, int to)
    {
        static const Override override = Override::of<Base>("onPortListPortMoved");
        tell(
            m_self, override, [&] { m_self.Safe::onPortListPortMoved(list, from, to); }, wrap(list),
            from, to);
    }
    const char* getDefaultValue(const Port& port, Texts& texts)
    {
        static const Override override = Override::of<Base>("onPortGetDefaultValue");
        std::string kept;
        const char* const answer = askText(
            m_self, override, kept, true, [&] { return m_self.Safe::onPortGetDefaultValue(port); },
            port);
        if (answer != kept.c_str())
            return answer;
        return (texts[port.get()] = std::move(kept)).c_str();
    }
    bool setDefaultValue(const Port& port, const char* value)
    {
        static const Override override = Override::of<Base>("onPortSetDefaultValue");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortSetDefaultValue(port, value); }, port,
            value);
    }
    bool setName(const Port& port, const char* name)
    {
        static const Override override = Override::of<Base>("onPortSetName");
        return ask(
            m_self, override, [&] { return m_self.Safe::onPortSetName(port, name); }, port, name);
    }
    ZEL::Namable parentFullPathName()
    {
        static const Override override = Override::of<Base>("onGetParentFullPathName");
        return askName(override, [&] { return m_self.Safe::onGetParentFullPathName(); });
    }

    /// A question for a name: empty when the override raised.
    template <class Instead>
    ZEL::Namable askName(const Override& override, Instead instead)
    {
        std::string kept;
        ZEL::Namable name;
        const char* const text = askText(m_self, override, kept, false, [&]() -> const char* {
            name = instead();
            return nullptr;
        });
        return text ? ZEL::Namable(text) : name;
    }

private:
    static List wrap(const ZEL::PortList& list) { return const_cast<ZEL::PortList*>(&list); }

    Self& m_self;
};

} // namespace zelpython
