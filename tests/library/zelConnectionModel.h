#pragma once

// Connections beside a plain model of their contract, for zelConnectionDifferenceTest.cpp and
// zelConnectionOrderTest.cpp: the same edits are made in both, with the same answers of the
// listeners and the same edits inside their questions.

#include "zelListModel.h"
#include "zelTestNetwork.h"

#include <unordered_map>

namespace ZEL {

/// One edit of the connections of a port. Ports are named by their number.
struct ConnectionEdit {
    enum Kind {
        Connect,
        Disconnect,
        DisconnectAll,
        LeaveNodes, ///< NodeList::remove of the port's node.
        ReturnNode, ///< NodeList::add of it.
        Forget,     ///< Port::removeFromConnectedList
        MakeForget, ///< Port::onParentNodeDeleted
        AddByHand,  ///< Of connectedTo(), from here on.
        RemoveByHand,
        ForgetByHand,
        MoveByHand,
        AssignByHand,
        MakeForgetByHand,
        kKinds,
    };
    Kind kind = Connect;
    int port = 0;
    int other = 0;
    int from = 0; ///< For moves.
    int to = 0;
};

/// What the listeners answer during one edit, and what they do before they answer.
struct ConnectionPlan {
    int refusesEvery = 0;                               ///< 0: none is refused.
    std::vector<std::pair<int, ConnectionEdit>> inside; ///< By the number of the question, from 1.
};

/// Where a port stands: the inside of the compound, one of two nodes in it, or nowhere.
struct PortPlace {
    enum Owner { Inside, FirstNode, SecondNode, Nobody };
    Owner owner;
    PortIOType ioType;
};

inline std::string portName(int number)
{
    return "p" + std::to_string(number % 40);
}

/// Makes edits and writes down what is asked. The network and the model differ in how they do it.
class ConnectionWorld {
public:
    virtual ~ConnectionWorld() = default;

    bool make(const ConnectionEdit& edit, const ConnectionPlan& plan)
    {
        m_plan = plan;
        m_asked = 0;
        m_current = edit;
        return run(edit);
    }
    std::string takeLog() { return std::exchange(m_log, ""); }
    virtual int size(int port) const = 0;

protected:
    virtual bool run(const ConnectionEdit& edit) = 0;

    bool ask(const char* question, int port, int other)
    {
        const int number = ++m_asked;
        note(question, port, other);
        for (const auto& [place, edit] : m_plan.inside) {
            if (place == number)
                m_log += run(edit) ? "(done) " : "(not done) ";
        }
        return m_plan.refusesEvery == 0 || number % m_plan.refusesEvery != 0;
    }
    /// How long the lists of the edit are shows what was done before.
    void note(const char* what, int port, int other)
    {
        m_log += what;
        for (const int number : {port, other, size(m_current.port), size(m_current.other)})
            m_log += " " + std::to_string(number);
        m_log += "; ";
    }

private:
    ConnectionPlan m_plan;
    ConnectionEdit m_current;
    int m_asked = 0;
    std::string m_log;
};

/// Every port has a vector, and every operation walks over it.
class ModelledConnections : public ConnectionWorld {
public:
    explicit ModelledConnections(std::vector<PortPlace> places)
        : m_places(std::move(places)),
          m_lists(m_places.size())
    {
    }
    std::string takePrinted() { return std::exchange(m_printed, ""); }
    std::vector<int>& list(int port) { return m_lists[static_cast<std::size_t>(port)]; }
    const PortPlace& place(int port) const { return m_places[static_cast<std::size_t>(port)]; }
    int portCount() const { return static_cast<int>(m_places.size()); }
    int size(int port) const override
    {
        return static_cast<int>(m_lists[static_cast<std::size_t>(port)].size());
    }
    int count(int port, int other)
    {
        return static_cast<int>(std::count(list(port).begin(), list(port).end(), other));
    }

protected:
    bool run(const ConnectionEdit& edit) override;

private:
    bool isInner(int port) const { return place(port).owner == PortPlace::Inside; }
    bool isPlainInput(int port) const { return place(port).ioType == PortInput && !isInner(port); }
    bool connect(int called, int other);
    bool disconnect(int called, int other);
    bool remove(int from, int port);
    bool forget(int from, int port);
    void makeForget(int port);
    bool leave(PortPlace::Owner owner);
    bool move(std::vector<int>& entries, int from, int to);

    std::vector<PortPlace> m_places;
    std::vector<std::vector<int>> m_lists;
    int m_standing[4] = {0, 1, 1, 0}; ///< How often a node stands in the compound.
    std::string m_printed;
};

/// The same ports in a document. All are held here, so that none dies while another knows it.
class RealConnections : public ConnectionWorld {
public:
    explicit RealConnections(const std::vector<PortPlace>& places);
    ~RealConnections() override { m_owner->setOwnedCompound(nullptr); }
    RealConnections(const RealConnections&) = delete;
    RealConnections& operator=(const RealConnections&) = delete;

    const AddRefWrapper<Port>& port(int number) const
    {
        return m_ports[static_cast<std::size_t>(number)];
    }
    int size(int number) const override { return list(number).size(); }
    PortList& list(int number) const { return port(number)->connectedTo(); }
    int numberOf(const Port* port) const { return m_numbers.at(port); }
    /// A new port in the place of that one, which nobody knows and which knows nobody. It has no
    /// owner.
    void renew(int number);

protected:
    bool run(const ConnectionEdit& edit) override;

private:
    template <class Base>
    class Asking;

    AddRefWrapper<Node> m_owner = Node::createNew(nullptr, "Top");
    AddRefWrapper<Compound> m_compound;
    AddRefWrapper<Node> m_nodes[2];
    std::vector<AddRefWrapper<Port>> m_ports;
    std::unordered_map<const Port*, int> m_numbers;
};

/// The two side by side.
class ConnectionPair {
public:
    ConnectionPair(const std::vector<PortPlace>& places, unsigned seed)
        : model(places),
          m_real(places),
          m_random(seed)
    {
    }
    /// Makes the edit in both and compares all that is asked, printed and answered, and how long
    /// the lists of the two ports are then.
    void make(const ConnectionEdit& edit, const ConnectionPlan& plan = {});
    void compare(int port, Look look);
    void compareAll(Look look);
    /// Takes everything off the port, unasked, and puts a new one in its place.
    void renew(int port);

    ModelledConnections model;

private:
    RealConnections m_real;
    Random m_random;
};

} // namespace ZEL
