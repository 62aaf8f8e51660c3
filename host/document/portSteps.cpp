// The steps that change lists of ports, and connections.

#include "document/change.h"
#include "document/rules.h"
#include "document/step.h"

namespace shading {

namespace {

/// The node that shows the port to its editors: the owner of the compound around it.
NodePtr viewerOf(ZEL::Port& port)
{
    const CompoundPtr level = levelOf(port);
    return level ? level->getAsNode() : nullptr;
}

/// Moves the last entry to the index: a backward move, which the library does as one expects.
bool moveLastTo(ZEL::PortList& list, int index)
{
    return list.movePort(list.size() - 1, index);
}

class ConnectionStep : public Step {
public:
    ConnectionStep(const PortPtr& a, const PortPtr& b, bool isAdding)
        : m_sender(a->getPortIOType() == ZEL::PortOutput ? a : b),
          m_receiver(a->getPortIOType() == ZEL::PortOutput ? b : a),
          m_viewer(viewerOf(*m_receiver)),
          m_isAdding(isAdding)
    {
        ZEL::PortList& targets = m_sender->connectedTo();
        ZEL::PortList& sources = m_receiver->connectedTo();
        m_place = isAdding ? targets.size() : targets.findPort(m_receiver);
        m_placeAtReceiver = isAdding ? sources.size() : sources.findPort(m_sender);
    }

    bool run(bool isForward) override
    {
        if (isForward != m_isAdding)
            return m_sender->removeConnection(m_receiver);
        // Connecting appends; the order of connecting is part of the network.
        return m_sender->addConnection(m_receiver) &&
               moveLastTo(m_sender->connectedTo(), m_place) &&
               moveLastTo(m_receiver->connectedTo(), m_placeAtReceiver);
    }

    bool isDone() const override
    {
        return (m_sender->connectedTo().findPort(m_receiver) >= 0) == m_isAdding;
    }

    void notify(bool isForward) const override
    {
        if (!m_viewer)
            return;
        const ZEL::ECnxChangeType change =
            isForward == m_isAdding ? ZEL::eCnxAdded : ZEL::eCnxRemoved;
        if (m_sender->isCompoundInternalPort() || m_receiver->isCompoundInternalPort())
            m_viewer->notifyCompoundConnectionChange(change, m_sender, m_receiver);
        else
            m_viewer->notifyConnectionChange(change, m_sender, m_receiver);
    }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        changes.changeEnd(*m_sender);
        changes.changeEnd(*m_receiver);
    }

private:
    PortPtr m_sender;
    PortPtr m_receiver;
    NodePtr m_viewer; ///< Where the connection shows; the ports may have moved since.
    int m_place = 0;  ///< Of the receiver among the targets of the sender.
    int m_placeAtReceiver = 0;
    bool m_isAdding;
};

class PortStep : public Step {
public:
    PortStep(ZEL::PortList& list, const PortPtr& port, bool isAdding)
        : m_list(&list),
          m_node(port->getParentNode()),
          m_port(port),
          m_place(isAdding ? list.size() : list.findPort(port)),
          m_isAdding(isAdding)
    {
    }

    bool run(bool isForward) override
    {
        if (isForward != m_isAdding)
            return m_list->remove(m_port);
        if (!m_list->add(m_port))
            return false;
        if (moveLastTo(*m_list, m_place))
            return true;
        m_list->remove(m_port);
        return false;
    }

    bool isDone() const override { return (m_list->findPort(m_port) >= 0) == m_isAdding; }

    void notify(bool isForward) const override
    {
        notifyPort(m_port,
                   isForward == m_isAdding ? ZEL::eCompoundPortAdded : ZEL::eCompoundPortRemoved);
    }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        changes.changePort(*m_port);
    }

private:
    ZEL::AddRefWrapper<ZEL::PortList> m_list;
    NodePtr m_node; ///< Keeps the list's parent alive.
    PortPtr m_port;
    int m_place;
    bool m_isAdding;
};

class MovePortStep : public Step {
public:
    MovePortStep(ZEL::PortList& list, int from, int to)
        : m_list(&list),
          m_port(list[from]),
          m_node(m_port->getParentNode()),
          m_from(from),
          m_to(to)
    {
    }

    bool run(bool isForward) override
    {
        if (isForward)
            return m_list->movePort(m_from, m_to);
        // Back again: a forward move repeats a port, so the ports between are moved instead.
        int place = m_to;
        while (place < m_from && m_list->movePort(place + 1, place))
            ++place;
        if (place == m_from)
            return true;
        m_list->movePort(place, m_to);
        return false;
    }

    bool isDone() const override { return m_list->findPort(m_port) == m_to; }

    void notify(bool /*isForward*/) const override { notifyPort(m_port, ZEL::eCompoundPortMoved); }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        changes.changePort(*m_port);
    }

private:
    ZEL::AddRefWrapper<ZEL::PortList> m_list;
    PortPtr m_port;
    NodePtr m_node; ///< Keeps the list's parent alive.
    int m_from;
    int m_to; ///< Not above m_from.
};

} // namespace

std::unique_ptr<Step> makeConnectStep(const PortPtr& a, const PortPtr& b)
{
    return std::make_unique<ConnectionStep>(a, b, true);
}

std::unique_ptr<Step> makeDisconnectStep(const PortPtr& a, const PortPtr& b)
{
    return std::make_unique<ConnectionStep>(a, b, false);
}

std::unique_ptr<Step> makeAddPortStep(ZEL::PortList& list, const PortPtr& port)
{
    return std::make_unique<PortStep>(list, port, true);
}

std::unique_ptr<Step> makeRemovePortStep(ZEL::PortList& list, const PortPtr& port)
{
    return std::make_unique<PortStep>(list, port, false);
}

std::unique_ptr<Step> makeMovePortStep(ZEL::PortList& list, int from, int to)
{
    return std::make_unique<MovePortStep>(list, from, to);
}

} // namespace shading
