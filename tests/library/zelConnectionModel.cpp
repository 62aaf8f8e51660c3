#include "zelConnectionModel.h"

namespace ZEL {

bool ModelledConnections::run(const ConnectionEdit& edit)
{
    switch (edit.kind) {
    case ConnectionEdit::Connect:
        return connect(edit.port, edit.other);
    case ConnectionEdit::Disconnect:
        return disconnect(edit.port, edit.other);
    case ConnectionEdit::DisconnectAll:
        for (int i = size(edit.port) - 1; i >= 0; --i) {
            if (i < size(edit.port))
                disconnect(edit.port, list(edit.port)[static_cast<std::size_t>(i)]);
        }
        return true;
    case ConnectionEdit::LeaveNodes:
        return leave(place(edit.port).owner);
    case ConnectionEdit::ReturnNode:
        ++m_standing[place(edit.port).owner];
        return true;
    case ConnectionEdit::MakeForget:
        makeForget(edit.port);
        return true;
    case ConnectionEdit::AddByHand:
        list(edit.port).push_back(edit.other);
        return true;
    case ConnectionEdit::RemoveByHand:
        return remove(edit.port, edit.other);
    case ConnectionEdit::MoveByHand:
        return move(list(edit.port), edit.from, edit.to);
    case ConnectionEdit::AssignByHand:
        list(edit.port) = std::vector<int>(list(edit.other));
        return true;
    case ConnectionEdit::MakeForgetByHand:
        for (int i = 0; i < size(edit.port); ++i)
            makeForget(list(edit.port)[static_cast<std::size_t>(i)]);
        return true;
    default:
        forget(edit.port, edit.other);
        return true;
    }
}

bool ModelledConnections::connect(int called, int other)
{
    if (isPlainInput(called) && isPlainInput(other))
        return false;
    if (isInner(called) && isInner(other) && place(called).ioType == place(other).ioType)
        return false;
    bool calledSends = !isPlainInput(called);
    if (isInner(other))
        calledSends = isInner(called) && place(called).ioType == PortOutput;
    const int sender = calledSends ? called : other;
    const int receiver = calledSends ? other : called;
    if (place(sender).owner != PortPlace::Nobody && !ask("connect", sender, receiver))
        return false;
    list(sender).push_back(receiver);
    list(receiver).push_back(sender);
    return true;
}

bool ModelledConnections::disconnect(int called, int other)
{
    if (isPlainInput(called))
        return !isPlainInput(other) && disconnect(other, called);
    if (place(called).owner != PortPlace::Nobody && !ask("disconnect", called, other))
        return false;
    return remove(called, other) && remove(other, called);
}

bool ModelledConnections::remove(int from, int port)
{
    if (forget(from, port))
        return true;
    const PortPlace::Owner owner = place(port).owner;
    if (owner != PortPlace::Nobody)
        note("path", owner, owner);
    m_printed += "ZEL::did not find a connection to remove to ";
    m_printed += (owner == PortPlace::Nobody ? "" : "owner.") + portName(port) + "\n";
    return false;
}

bool ModelledConnections::forget(int from, int port)
{
    auto& entries = list(from);
    const auto end = std::remove(entries.begin(), entries.end(), port);
    const bool isFound = end != entries.end();
    entries.erase(end, entries.end());
    return isFound;
}

void ModelledConnections::makeForget(int port)
{
    for (int i = 0; i < size(port);) {
        const int other = list(port)[static_cast<std::size_t>(i)];
        forget(other, port);
        i += other == port ? 0 : 1;
    }
}

bool ModelledConnections::leave(PortPlace::Owner owner)
{
    if (m_standing[owner] == 0)
        return false;
    --m_standing[owner];
    for (const PortIOType ioType : {PortInput, PortOutput}) {
        for (int port = 0; port < portCount(); ++port) {
            if (place(port).owner == owner && place(port).ioType == ioType)
                makeForget(port);
        }
    }
    return true;
}

bool ModelledConnections::move(std::vector<int>& entries, int from, int to)
{
    const int count = static_cast<int>(entries.size());
    if (from < 0 || from > count || to < 0 || to > count)
        return false;
    if (from == to || from == count)
        return from == to;
    const int moved = entries[static_cast<std::size_t>(from)];
    if (from > to)
        entries.erase(entries.begin() + from);
    entries.insert(entries.begin() + to, moved);
    if (from < to)
        entries.erase(entries.begin() + from + 1);
    return true;
}

/// Passes questions on by the numbers of the ports.
template <class Base>
class RealConnections::Asking : public Base {
public:
    template <class Argument>
    Asking(RealConnections& world, int owner, Argument argument)
        : Base(argument),
          m_world(world),
          m_number(owner)
    {
    }
    using Base::operator=;
    bool onPortAddConnection(PortArg port, PortArg other) override
    {
        return m_world.ask("connect", m_world.numberOf(port.get()), m_world.numberOf(other.get()));
    }
    bool onPortRemoveConnection(PortArg port, PortArg other) override
    {
        return m_world.ask("disconnect", m_world.numberOf(port.get()),
                           m_world.numberOf(other.get()));
    }
    Namable onGetParentFullPathName() override
    {
        m_world.note("path", m_number, m_number);
        return Namable("owner");
    }

private:
    RealConnections& m_world;
    int m_number;
};

RealConnections::RealConnections(const std::vector<PortPlace>& places)
    : m_compound(new Asking<Compound>(*this, PortPlace::Inside, m_owner))
{
    for (int i = 0; i < 2; ++i) {
        m_nodes[i] = new Asking<Node>(*this, PortPlace::FirstNode + i, nullptr);
        m_compound->nodes().add(m_nodes[i]);
    }
    for (const PortPlace& place : places) {
        const int number = static_cast<int>(m_ports.size());
        const bool isInput = place.ioType == PortInput;
        m_ports.push_back(Port::createNew(portName(number).c_str(), place.ioType));
        m_numbers[m_ports.back().get()] = number;
        if (place.owner == PortPlace::Inside) { // Crossed: an inner input sends.
            (isInput ? m_compound->innerOutputs() : m_compound->innerInputs()).add(m_ports.back());
        } else if (place.owner != PortPlace::Nobody) {
            Node& node = *m_nodes[place.owner - PortPlace::FirstNode];
            (isInput ? node.inputs() : node.outputs()).add(m_ports.back());
        }
    }
}

void RealConnections::renew(int number)
{
    auto& port = m_ports[static_cast<std::size_t>(number)];
    const PortIOType ioType = port->getPortIOType();
    m_numbers.erase(port.get());
    port = nullptr;
    port = Port::createNew(portName(number).c_str(), ioType);
    m_numbers[port.get()] = number;
}

bool RealConnections::run(const ConnectionEdit& edit)
{
    Port& port = *m_ports[static_cast<std::size_t>(edit.port)];
    const AddRefWrapper<Port>& other = m_ports[static_cast<std::size_t>(edit.other)];
    switch (edit.kind) {
    case ConnectionEdit::Connect:
        return port.addConnection(other);
    case ConnectionEdit::Disconnect:
        return port.removeConnection(other);
    case ConnectionEdit::DisconnectAll:
        port.removeAllConnections();
        return true;
    case ConnectionEdit::LeaveNodes:
        return m_compound->nodes().remove(port.getParentNode());
    case ConnectionEdit::ReturnNode:
        return m_compound->nodes().add(port.getParentNode());
    case ConnectionEdit::Forget:
        port.removeFromConnectedList(other.get());
        return true;
    case ConnectionEdit::MakeForget:
        port.onParentNodeDeleted();
        return true;
    case ConnectionEdit::AddByHand:
        return port.connectedTo().add(other);
    case ConnectionEdit::RemoveByHand:
        return port.connectedTo().remove(other);
    case ConnectionEdit::ForgetByHand:
        port.connectedTo().onPortDeleted(other.get());
        return true;
    case ConnectionEdit::MoveByHand:
        return port.connectedTo().movePort(edit.from, edit.to);
    case ConnectionEdit::AssignByHand:
        port.connectedTo() = other->connectedTo();
        return true;
    default:
        port.connectedTo().onParentNodeDeleted();
        return true;
    }
}

void ConnectionPair::make(const ConnectionEdit& edit, const ConnectionPlan& plan)
{
    const bool isDone = model.make(edit, plan);
    const std::string expected = model.takePrinted();
    bool isReallyDone = false;
    const auto action = [&] { isReallyDone = m_real.make(edit, plan); };
    if (!expected.empty() || m_random.oneIn(64))
        ASSERT_EQ(expected, printed(action));
    else
        action();
    ASSERT_EQ(isDone, isReallyDone);
    ASSERT_EQ(model.takeLog(), m_real.takeLog());
    compare(edit.port, Look::Blind);
    compare(edit.other, Look::Blind);
}

void ConnectionPair::compare(int port, Look look)
{
    const std::vector<int>& expected = model.list(port);
    PortList& list = m_real.list(port);
    const int count = static_cast<int>(expected.size());
    ASSERT_EQ(count, list.size()) << port;
    ASSERT_EQ(count > 0, m_real.port(port)->isConnected());
    if (look == Look::Blind || count == 0)
        return;
    const auto checkAt = [&](int place) {
        const int other = expected[static_cast<std::size_t>(place)];
        ASSERT_EQ(m_real.port(other), list[place]) << port << " at " << place;
    };
    for (int i = 0; i < 3; ++i) {
        checkAt(m_random.below(count));
        const int other = m_random.below(model.portCount());
        const auto found = std::find(expected.begin(), expected.end(), other);
        const int place = found == expected.end() ? -1 : static_cast<int>(found - expected.begin());
        ASSERT_EQ(place, list.findPort(m_real.port(other)));
        const std::string name = portName(other);
        const auto named = std::find_if(expected.begin(), expected.end(),
                                        [&](int number) { return portName(number) == name; });
        ASSERT_EQ(named == expected.end() ? nullptr : m_real.port(*named), list[name.c_str()]);
    }
    for (int i = 0; look == Look::Whole && i < count; ++i)
        checkAt(i);
    int place = 0;
    for (auto entry = list.begin(); look == Look::Whole && entry != list.end(); ++entry, ++place)
        ASSERT_EQ(expected[static_cast<std::size_t>(place)], m_real.numberOf(*entry)) << place;
}

void ConnectionPair::compareAll(Look look)
{
    for (int port = 0; port < model.portCount(); ++port)
        compare(port, look);
}

void ConnectionPair::renew(int port)
{
    for (int other = 0; other < model.portCount(); ++other) {
        make({ConnectionEdit::Forget, other, port});
        if (model.count(port, other) > 0)
            make({ConnectionEdit::Forget, port, other});
    }
    m_real.renew(port);
}

} // namespace ZEL
