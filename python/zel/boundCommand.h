#pragma once

#include "binding/half.h"
#include "binding/shared.h"
#include "zel.h"

#include <optional>

namespace zelpython {

/// One reference that a command of the library has of a node or compound. While the command rests
/// the Python half is held instead, where there is one: so the collector sees who holds what.
template <class T>
class CommandHold {
public:
    /// The command has just taken the reference.
    explicit CommandHold(T& object)
        : m_object(&object),
          m_counted(dynamic_cast<CountedHalf*>(&object)),
          m_half(PyRef::borrow(m_counted ? m_counted->self() : nullptr))
    {
    }

    T* get() const { return m_object; }
    /// Borrowed; null when the object has no Python half.
    PyObject* half() const { return m_half.get(); }

    /// The command works: the reference is there.
    void work()
    {
        if (!m_half)
            return;
        m_object->addRef();
        m_counted->toCpp();
    }
    void rest()
    {
        if (m_half)
            m_object->release();
    }

private:
    T* m_object; ///< Held by the command, or by the Python half.
    CountedHalf* m_counted;
    PyRef m_half;
};

/// The document as a command sees it: the one of Python, which it holds, with one node, which owns
/// the compound that was found there.
class CommandDocument final : public ZEL::Container {
public:
    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override { return m_found; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return m_real ? m_real->getRuntime() : nullptr; }

    /// Null: no document.
    void aim(ZEL::Container* real);
    /// The path of a node that owns the compound, which may be null, until hide.
    const char* show(ZEL::Compound* compound);
    void hide() { m_found = nullptr; }

    /// The Python object of the document, borrowed; null without one.
    PyObject* half() const { return m_half.get(); }

private:
    PyRef m_half;
    ZEL::Container* m_real = nullptr; ///< Held by the Python object.
    ZEL::AddRefWrapper<ZEL::Node> m_found;
};

/// What the commands on the ports and nodes of one compound have in common.
class BoundCommand {
public:
    BoundCommand() = default;
    BoundCommand(const BoundCommand&) = delete;
    BoundCommand& operator=(const BoundCommand&) = delete;
    virtual ~BoundCommand() = default;

    /// For the collector.
    virtual int traverse(visitproc visit, void* arg) const;

protected:
    /// One call. A command is not used from a callback that it causes: RuntimeError, unless the
    /// call may nest.
    class Use {
    public:
        explicit Use(BoundCommand& command, bool mayNest = false);
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        ~Use();

    private:
        BoundCommand& m_command;
    };

    /// The compound that the path names: empty when it names no node.
    struct Found {
        ZEL::AddRefWrapper<ZEL::Node> node;
        ZEL::AddRefWrapper<ZEL::Compound> compound;
    };
    /// Raises ValueError when there is a path and no container.
    static Found find(ZEL::Container* container, const char* path);
    /// Gives the command of the library what was found, as its setParentCompound.
    template <class Command>
    bool give(Command& command, ZEL::Container* container, const Found& found)
    {
        m_document.aim(container);
        const char* const path = found.node ? m_document.show(found.compound.get()) : "";
        const bool answer = command.setParentCompound(container ? &m_document : nullptr, path);
        m_document.hide();
        if (found.node)
            m_compound.reset();
        if (found.compound)
            m_compound.emplace(*found.compound);
        return answer;
    }

    // All that the command holds.
    virtual void work();
    virtual void rest();

    CommandDocument m_document;
    std::optional<CommandHold<ZEL::Compound>> m_compound; ///< As the command has it.

private:
    int m_uses = 0; ///< Calls under way.
};

} // namespace zelpython
