#pragma once

#include "document/attributes.h"
#include "document/backdrops.h"
#include "document/step.h"

#include <string>
#include <unordered_map>

namespace shading {

/// Hears every change of a document before it happens, as the listener of all nodes and compounds:
/// they pass on what the library asks them. While an edit runs it checks the rules and writes the
/// steps down; so an edit is taken back exactly, whichever command of the library makes it.
class Journal {
public:
    Journal() = default;
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    // One edit at a time, in levels: a part of it that is done whole or not at all is a level.
    /// Begins an edit, or a level inside the present one. From now on steps are written down and
    /// the rules hold. With keepsTypes, connections are only led another way: those of a document
    /// that joins different types are left as they are. Not while steps are replayed.
    void begin(bool keepsTypes);
    /// Ends the innermost level. False when it is not good, or a rule or a listener refused a step:
    /// then its steps are taken back, those of the levels around stay, and problem is the first
    /// reason given, if any.
    bool end(bool isGood, std::string& problem);
    /// The steps of the edit that has ended.
    Steps takeSteps();
    /// Runs the steps; the listeners agree to all and write nothing down.
    bool replay(const Steps& steps, bool isForward);

    /// True while an edit runs: names are made unique.
    bool isRecording() const { return m_mode == Mode::Recording; }
    bool isReplaying() const { return m_mode == Mode::Replaying; }
    /// True once after changes outside of edits: what was written down before fits no more. A new
    /// document has changed so.
    bool takeStale();

    /// Another number after each change that was asked about.
    std::size_t changes() const { return m_changes; }

    /// Refuses the change that is asked about. The first reason is what the user sees. Returns
    /// false.
    bool refuse(const std::string& reason);

    // The questions. A host class that refuses more asks itself first, or calls refuse.
    /// Refused at any time when the two are not in one document.
    bool mayConnect(const PortPtr& a, const PortPtr& b);
    bool mayDisconnect(const PortPtr& a, const PortPtr& b);
    bool mayAddPort(ZEL::PortList& list, const PortPtr& port);
    bool mayRemovePort(ZEL::PortList& list, const PortPtr& port);
    bool mayMovePort(ZEL::PortList& list, int from, int to);
    bool maySetType(const PortPtr& port, const TypePtr& type);
    bool maySetValue(const PortPtr& port, const char* value);
    bool mayRenamePort(ZEL::PortList& list, const PortPtr& port, const char* name);
    bool mayAddNode(ZEL::Compound& compound, const NodePtr& node);
    bool mayRemoveNode(ZEL::Compound& compound, const NodePtr& node);
    bool mayRenameNode(const NodePtr& node, const char* name);
    /// Told, not asked: the definition is the host's own.
    void setsDefinition(const HostNodePtr& node, const ZEL::AddRefWrapper<Definition>& definition);
    /// Likewise.
    void setsAttribute(Attributes& attributes,
                       const AttributeOwner& owner,
                       const std::string& name,
                       const std::optional<AttributeValue>& value);
    /// Likewise.
    void
    setsBackdrop(Backdrops& backdrops, const BackdropPtr& backdrop, const Backdrop::State& state);

private:
    enum class Mode {
        Idle,
        Recording,
        Replaying,
    };

    /// What goes on around a level.
    struct Level {
        std::size_t firstStep; ///< Of the level itself.
        bool keepsTypes;
        std::string refusal;
    };

    bool isWanted(const NodePtr& node);
    bool mayLeaveSources(ZEL::Compound& compound, const NodePtr& node);
    bool mayChangeInterface(const PortPtr& port, bool isRemoval = false);
    bool write(std::unique_ptr<Step> step);
    void checkLastStep();
    bool takeBack(std::size_t firstStep);

    Steps m_steps;
    /// How many nodes the steps remove since a level began, by compound.
    std::unordered_map<const ZEL::Compound*, int> m_removals;
    std::vector<Level> m_levels;
    std::string m_refusal; ///< Of the innermost level. Empty: nothing was refused.
    Mode m_mode = Mode::Idle;
    bool m_keepsTypes = false;
    bool m_isStale = true;
    std::size_t m_changes = 0;
};

} // namespace shading
