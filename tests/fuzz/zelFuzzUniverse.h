#pragma once

#include "zelFuzzCensus.h"
#include "zelFuzzHost.h"
#include "zelFuzzInput.h"
#include "zelRegistrations.h"

#include <array>
#include <map>
#include <memory>

namespace zelFuzz {

/// A command and what it holds, which the library does not show. Nobody uses or destroys it while
/// it is at work.
struct ConnectSlot {
    ZEL::ConnectCommand command;
    bool isBusy = false;
};
struct CollapseSlot {
    ZEL::CreateCompoundCommand command;
    std::map<std::string, ZEL::Node*> nodes; ///< Held by the command.
    ZEL::Compound* parent = nullptr;         ///< Held by the command until doit succeeds.
    bool isBusy = false;
};
struct ModifySlot {
    ZEL::ModifyCompoundPortCommand command;
    ZEL::Compound* compound = nullptr; ///< Held by the command.
    bool isBusy = false;
};

/// All that one input plays with: a document, what a host holds of it, and how its listeners
/// answer.
class Universe final : public ZEL::Container {
public:
    explicit Universe(Input& bytes);
    ~Universe() override;

    NodePtr getRootNode() override { return root; }
    void rebuildCompounds() override { ask(nullptr); }
    ZEL::Runtime* getRuntime() override { return &runtime; }

    /// Makes steps until the input ends, and checks everything after each.
    void run();

    /// A question of a listener, or a callback of an editor, about that port, which may be null.
    /// Now and then makes a step of its own before it answers.
    bool ask(ZEL::Port* port);
    /// Everything that the host and its commands hold, directly or not.
    Census census() const;

    Input& input;

    // What the host holds. The listener lives longest, the root is let go before it.
    Listener listener;
    ZEL::Runtime runtime;
    ZEL::AddRefWrapper<ZEL::PortList> listenerList; ///< Its parent is the listener.
    NodePtr root;
    std::array<NodePtr, 6> nodes;
    std::array<PortPtr, 6> ports;
    std::array<CompoundPtr, 3> compounds;
    ZEL::AddRefWrapper<ZEL::PortList> freeList; ///< Without a parent: holds nothing.
    std::vector<PortPtr> freePorts;             ///< What stands in it, or did.
    PortPtr stranger;                           ///< Stands in no list, ever.
    Registrations registrations;                ///< Outlives all nodes and editors.
    std::array<std::unique_ptr<FuzzEditor>, 40> editors;
    std::vector<std::unique_ptr<FuzzEditor>> manyEditors;
    std::vector<SideListener*> sides; ///< All that there are.
    std::array<std::unique_ptr<ConnectSlot>, 3> connects;
    std::array<std::unique_ptr<CollapseSlot>, 2> collapses;
    std::array<std::unique_ptr<ModifySlot>, 2> modifies;

    // What the steps at work hold, see Held, and the ports of the questions that are open: the
    // library holds those.
    std::vector<ZEL::Port*> heldPorts;
    std::vector<ZEL::PortList*> heldLists;
    std::vector<ZEL::Node*> heldNodes;
    std::vector<ZEL::Compound*> heldCompounds;
    std::vector<ZEL::Port*> askedPorts;

    // How the listeners answer.
    int refusals = 0;    ///< Bit by bit; 0 agrees to everything.
    int questions = 0;   ///< So many were asked.
    int countdown = 0;   ///< The question in which a step is made; 0: none.
    int quiet = 0;       ///< Above 0 the host itself is at work and agrees.
    int depth = 0;       ///< Steps that are made inside a question.
    int mirrorDepth = 0; ///< Above 0 the library makes or deletes a compound port.
    int troubles = 0;    ///< So many refusals, and steps inside questions.
    int collapsing = 0;  ///< Above 0 a collapse is at work.
    int moment = 1;      ///< Another one after every change, see LastSeen.
    /// The list that a step edits by itself, which keeps the rules.
    const void* scripted = nullptr;
    ZEL::Port* asked = nullptr; ///< The port of the question in which a step is made.
};

/// While it lives the host is at work itself, and its listeners agree.
class Agreement {
public:
    explicit Agreement(Universe& universe) : m_universe(universe) { ++m_universe.quiet; }
    Agreement(const Agreement&) = delete;
    Agreement& operator=(const Agreement&) = delete;
    ~Agreement() { --m_universe.quiet; }

private:
    Universe& m_universe;
};

} // namespace zelFuzz
