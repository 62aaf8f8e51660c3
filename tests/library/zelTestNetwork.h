#pragma once

#include "zel.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace ZEL {

using PortArg = const AddRefWrapper<Port>&;
using TypeArg = const AddRefWrapper<PortDataType>&;
using NodeArg = const AddRefWrapper<Node>&;

/// A base that counts the objects alive; a test compares the count before and after.
struct Live {
    Live() { ++count; }
    Live(const Live& /*other*/) { ++count; }
    Live& operator=(const Live& /*other*/) = default;
    ~Live() { --count; }
    inline static int count = 0;
};

/// The questions that the recording listeners were asked, as text, and how they answer.
struct Questions {
    bool ask(const std::string& question);
    /// The questions since the last call, joined by "; ".
    std::string take() { return std::exchange(log, ""); }

    std::string refused;                ///< Questions that contain it are refused. Empty: none.
    std::function<void()> during;       ///< Runs once, inside the next question.
    const char* defaultValue = nullptr; ///< The answer to onPortGetDefaultValue.
    std::string log;
};

/// The names of the ports, separated by blanks.
std::string names(const PortList& list);
/// The full path name, with " inner" for a compound-internal port; "-" when empty.
std::string pathOf(NodeArg node);
std::string pathOf(PortArg port);
/// The connections inside the compound and below, one "SOURCE > TARGET" a line, sorted.
std::string text(Compound& compound);

/// What the action prints on standard output.
template <class Action>
std::string printed(Action action)
{
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

/// One word of a question.
struct Word {
    Word(const char* word) : text(word) {}
    Word(int number) : text(std::to_string(number)) {}
    Word(const PortList& list) : text(names(list)) {}
    template <class T>
    Word(const AddRefWrapper<T>& object) : text(object ? object->getName() : "-")
    {
    }
    std::string text;
};

/// A listener that records: a plain one, a node, or a compound, which is marked "{}" in the log.
/// It touches nothing of its own after a question: it may die in one.
template <class Base>
class Recording : public Base, public Live {
public:
    template <class... Args>
    explicit Recording(Questions& questions, Args&&... args)
        : Base(std::forward<Args>(args)...),
          m_questions(questions)
    {
    }
    using Base::operator=;

    bool onPortAddConnection(PortArg port, PortArg to) override { return ask("connect", port, to); }
    bool onPortRemoveConnection(PortArg port, PortArg other) override
    {
        return ask("disconnect", port, other);
    }
    bool onPortSetDataType(PortArg port, TypeArg type) override { return ask("type", port, type); }
    bool onPortListPortAdded(const PortList& list, PortArg port) override
    {
        return ask("add", port, "to", list);
    }
    bool onPortListPortRemoved(const PortList& list, PortArg port) override
    {
        return ask("remove", port, "from", list);
    }
    bool onPortListPortMove(const PortList& list, int from, int to) override
    {
        return ask("move", from, to, "in", list);
    }
    void onPortListPortMoved(const PortList& list, int from, int to) override
    {
        ask("moved", from, to, "in", list);
    }
    const char* onPortGetDefaultValue(PortArg /*port*/) override
    {
        return m_questions.defaultValue;
    }
    bool onPortSetDefaultValue(PortArg port, const char* value) override
    {
        return ask("value", port, value);
    }
    bool onPortSetName(PortArg port, const char* name) override { return ask("name", port, name); }
    Namable onGetParentFullPathName() override
    {
        if constexpr (std::is_abstract_v<Base>)
            return Namable("listener");
        else
            return Base::onGetParentFullPathName();
    }

protected:
    template <class... Words>
    bool ask(const char* verb, const Words&... words)
    {
        std::string who = "listener";
        if constexpr (!std::is_abstract_v<Base>)
            who = this->getName();
        return m_questions.ask((who + (std::is_same_v<Base, Compound> ? "{}: " : ": ") + verb) +
                               (... + (" " + Word(words).text)));
    }

    Questions& m_questions;
};

using TestListener = Recording<PortNotification>;

class TestNode : public Recording<Node> {
public:
    using Recording::Recording;
    using Node::operator=;
    void onThisNodeDeleted() override;
};

class TestCompound : public Recording<Compound> {
public:
    using Recording::Recording;
    using Compound::operator=;
    bool onNodeAdd(NodeArg node) override { return ask("add node", node); }
    bool onNodeRemove(NodeArg node) override { return ask("remove node", node); }
    AddRefWrapper<Compound> createNewCompound(const char* name) override;
};

/// A port that adds its name to lastWords when it dies.
class TestPort : public Port, public Live {
public:
    static AddRefWrapper<Port> make(const char* name, PortIOType ioType = PortInput)
    {
        return new TestPort(name, ioType);
    }
    ~TestPort() override { lastWords += getName(); }
    inline static std::string lastWords;

protected:
    using Port::Port;
};

/// A document with the root node "Top", which owns a compound. Every node and compound records in
/// questions; what the building functions cause is not kept in the log. Names of ports are given in
/// one text, separated by blanks; their type is "Float".
class TestNetwork : public Container {
public:
    explicit TestNetwork(const char* inputs = "", const char* outputs = "");

    AddRefWrapper<Node> getRootNode() override { return root; }
    void rebuildCompounds() override { ++rebuilds; }
    Runtime* getRuntime() override { return runtime; }

    /// Adds a node, or a compound node, to the compound at the path.
    AddRefWrapper<Node>
    addNode(const char* path, const char* name, const char* inputs = "", const char* outputs = "");
    AddRefWrapper<Compound> addCompound(const char* path,
                                        const char* name,
                                        const char* inputs = "",
                                        const char* outputs = "");
    void connect(const char* pathA, const char* pathB);

    AddRefWrapper<Compound> compound(const char* path = "Top");
    /// The node's own output or else input of that path, and the inner port that mirrors it.
    AddRefWrapper<Port> port(const char* path);
    AddRefWrapper<Port> inner(const char* path) { return reverseThisExternalPort(port(path)); }
    std::string text() { return ZEL::text(*compound()); }

    Questions questions;
    AddRefWrapper<Node> root;
    Runtime* runtime = nullptr; ///< Not owned.
    int rebuilds = 0;
};

} // namespace ZEL
