// The compounds: createNewCompound, and the ports that a compound and its node have in common.
#include "zelConformanceScene.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace ZEL::Conformance {

namespace {

PortList& outerList(Compound& compound, PortIOType ioType)
{
    const NodePtr node = compound.getAsNode();
    return ioType == PortInput ? node->inputs() : node->outputs();
}

PortList& innerList(Compound& compound, PortIOType ioType)
{
    return ioType == PortInput ? compound.innerInputs() : compound.innerOutputs();
}

const char* wordOf(PortIOType ioType)
{
    return ioType == PortInput ? "input" : "output";
}

std::string namesOf(PortList& list)
{
    std::string names;
    for (Port* const port : list)
        names += (names.empty() ? "" : " ") + std::string(port->getName());
    return inQuotes(names);
}

/// Inner and outer ports mirror each other by position: the same number, names and types.
void expectInStep(Compound& compound, PortIOType ioType, const std::string& after)
{
    PortList& outer = outerList(compound, ioType);
    PortList& inner = innerList(compound, ioType);
    if (namesOf(outer) != namesOf(inner)) {
        ADD_FAILURE() << "after " << after << " the " << wordOf(ioType)
                      << "s of the compound's node are " << namesOf(outer) << ", the inner "
                      << wordOf(ioType) << "s " << namesOf(inner)
                      << ": the mirror of a port is found by its position";
        return;
    }
    for (int i = 0; i < inner.size(); ++i) {
        if (compound.getReversePort(inner[i]) != outer[i] ||
            compound.getReversePort(outer[i]) != inner[i])
            ADD_FAILURE() << "after " << after << " getReversePort does not lead from "
                          << pathOf(outer[i])
                          << " to its inner port and back: the parent of an inner port is its "
                             "compound";
    }
}

/// A compound with three inputs and three outputs; empty when there is none.
CompoundPtr makeSub(Scene& scene)
{
    CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    if (!sub || !sub->getAsNode())
        return nullptr;
    for (const char* const word : {"in1", "in2", "in3"})
        scene.addCompoundPort(*sub, PortInput, word);
    for (const char* const word : {"out1", "out2", "out3"})
        scene.addCompoundPort(*sub, PortOutput, word);
    return sub;
}

void expectOwnClass(Scene& scene, Compound& made, Node& node)
{
    const Compound& top = *scene.top;
    if (typeid(made) == typeid(Compound) && typeid(top) != typeid(Compound))
        ADD_FAILURE() << "createNewCompound made a compound of the library's own class, that of "
                         "the root node is the host's: commands make compounds through it";
    const NodePtr plain = scene.host.makeNode(*scene.document, scene.name("alpha").c_str());
    const Node& ordinary = plain ? *plain : node;
    if (typeid(node) == typeid(Node) && typeid(ordinary) != typeid(Node))
        ADD_FAILURE() << "createNewCompound made a node of the library's own class, those that "
                         "makeNode makes are the host's";
    const char* const kind = made.getSpecializedCompoundTypeName();
    if (!kind || *kind == '\0')
        ADD_FAILURE() << "getSpecializedCompoundTypeName is empty";
}

void newCompoundStandsInItsPlace(Scene& scene)
{
    const int before = scene.top->nodes().size();
    const CompoundPtr made = scene.addCompound(*scene.top, "sub");
    if (!made) {
        ADD_FAILURE() << "createNewCompound made nothing: override it, the command that collapses "
                         "nodes needs it";
        return;
    }
    const NodePtr node = made->getAsNode();
    if (!node || node->getAsCompound() != made) {
        ADD_FAILURE() << "the compound that createNewCompound made and its node do not know each "
                         "other: it is made with that node, which lives on";
        return;
    }
    NodeList& nodes = scene.top->nodes();
    if (nodes.size() != before + 1 || nodes[before] != node)
        ADD_FAILURE() << "createNewCompound did not add the new node, and it alone, at the end of "
                         "nodes()";
    if (node->getParentCompound() != scene.top)
        ADD_FAILURE() << "getParentCompound of the new node is not the compound that made it";
    if (node->getContainer() != scene.document.get())
        ADD_FAILURE() << "getContainer of the new node is not the document";
    if (node->getName() != scene.name("sub"))
        ADD_FAILURE() << "createNewCompound(" << inQuotes(scene.name("sub"))
                      << ") made a node called " << inQuotes(node->getName());
    expectOwnClass(scene, *made, *node);
}

void compoundKeepsItsLists(Scene& scene)
{
    const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    for (const CompoundPtr& compound : {scene.top, sub}) {
        if (!compound)
            continue;
        const std::pair<const char*, bool> lists[] = {
            {"nodes", &compound->nodes() == &compound->Compound::nodes()},
            {"innerInputs", &compound->innerInputs() == &compound->Compound::innerInputs()},
            {"innerOutputs", &compound->innerOutputs() == &compound->Compound::innerOutputs()}};
        for (const auto& [name, isOwn] : lists) {
            if (!isOwn)
                ADD_FAILURE() << name << "() of " << pathOf(*compound->getAsNode())
                              << " gives another list than Compound::" << name
                              << "(): what lies in it keeps a pointer to the compound that is gone";
        }
    }
}

void compoundIsNamedAsItsNode(Scene& scene)
{
    const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    const NodePtr node = sub ? sub->getAsNode() : nullptr;
    if (!node)
        return;
    const auto expectOneName = [&](const char* after) {
        const Namable& compoundName = *sub;
        const Namable& nodeName = *node;
        if (compoundName != nodeName)
            ADD_FAILURE() << "after " << after << " the compound is called "
                          << inQuotes(compoundName.getName()) << ", its node "
                          << inQuotes(nodeName.getName()) << ": a compound has no name of its own";
    };
    expectOneName("createNewCompound");
    static_cast<Namable&>(*sub).setName(scene.name("alpha").c_str());
    expectOneName("setName of the compound");
    static_cast<Namable&>(*node).setName(scene.name("beta").c_str());
    expectOneName("setName of the node");
}

void createdPortsMirrorEachOther(Scene& scene)
{
    const CompoundPtr sub = scene.addCompound(*scene.top, "sub");
    if (!sub || !sub->getAsNode())
        return;
    for (const PortIOType ioType : {PortInput, PortInput, PortOutput, PortOutput}) {
        PortList& outer = outerList(*sub, ioType);
        PortList& inner = innerList(*sub, ioType);
        const int place = inner.size();
        const std::string word = wordOf(ioType) + std::to_string(place);
        const int index = scene.addCompoundPort(*sub, ioType, word.c_str());
        const std::string call = "createCompoundPort of the " + std::string(wordOf(ioType)) + " " +
                                 inQuotes(scene.name(word.c_str()));
        if (index == -1 && outer.size() == place && inner.size() == place) {
            ADD_FAILURE() << call << " was refused: let dataTypeName and nameOf give the kit what "
                          << "the host accepts";
            return;
        }
        if (index != place || inner.size() != place + 1)
            ADD_FAILURE() << call << " returned " << index << ", but the new port is not at index "
                          << index << " of the inner " << wordOf(ioType) << "s, which are "
                          << namesOf(inner);
        expectInStep(*sub, ioType, call);
        const PortPtr port = inner[place];
        const PortIOType crossed = ioType == PortInput ? PortOutput : PortInput;
        if (port && port->getPortIOType() != crossed)
            ADD_FAILURE() << call << " made an inner port of the wrong direction: an inner "
                          << wordOf(ioType) << " is crossed, so that it "
                          << (ioType == PortInput ? "feeds" : "is fed by") << " the nodes inside";
        const TypePtr type = port ? port->getDataType() : nullptr;
        if (port && (!type || !(*type == *scene.type(0))))
            ADD_FAILURE() << call << " gave the inner port another data type than "
                          << inQuotes(scene.host.dataTypeName(0));
    }
}

void deletedPortsAreGoneOnBothSides(Scene& scene)
{
    const CompoundPtr sub = makeSub(scene);
    if (!sub)
        return;
    for (const PortIOType ioType : {PortInput, PortOutput}) {
        PortList& inner = innerList(*sub, ioType);
        const PortPtr port = inner[1];
        if (!port)
            return;
        const std::string name = port->getName();
        const std::string call =
            "deleteCompoundPort of the inner " + std::string(wordOf(ioType)) + " " + inQuotes(name);
        const int index = sub->deleteCompoundPort(port);
        const bool isThere = inner.findPort(port) >= 0;
        if (index != (isThere ? -1 : 1))
            ADD_FAILURE() << call << " returned " << index << ", but the port "
                          << (isThere ? "is still there" : "stood at index 1 and is gone");
        if (!isThere && outerList(*sub, ioType)[name.c_str()])
            ADD_FAILURE() << call << " left the port of the compound's node";
        expectInStep(*sub, ioType, call);
    }
    const std::string before = scene.text();
    const PortPtr outer = scene.root->inputs().size() > 0 ? scene.root->inputs()[0]
                                                          : Port::createNew("stranger", PortOutput);
    if (sub->deleteCompoundPort(outer) != -1 || scene.text() != before)
        ADD_FAILURE() << "deleteCompoundPort of a port that is in neither inner list did not "
                         "return -1 and leave all as it was";
}

void movedPortsAreMirrored(Scene& scene)
{
    const CompoundPtr sub = makeSub(scene);
    if (!sub)
        return;
    for (const PortIOType ioType : {PortInput, PortOutput}) {
        for (PortList* const list : {&innerList(*sub, ioType), &outerList(*sub, ioType)}) {
            const std::string kind = list == &innerList(*sub, ioType) ? "an inner " : "an ";
            const std::string before = namesOf(*list);
            const bool isMoved = list->movePort(2, 0);
            if (!isMoved && namesOf(*list) != before)
                ADD_FAILURE() << "the move of " << kind << wordOf(ioType)
                              << " was refused, but the list was " << before << " and is "
                              << namesOf(*list);
            expectInStep(*sub, ioType,
                         "the move of " + kind + wordOf(ioType) +
                             " (repeat it on the other list in onPortListPortMoved, or refuse it "
                             "in onPortListPortMove)");
        }
    }
}

} // namespace

const std::vector<Rule>& compoundRules()
{
    static const std::vector<Rule> rules = {
        {"NewCompoundStandsInItsPlace", &newCompoundStandsInItsPlace, true},
        {"CompoundKeepsItsLists", &compoundKeepsItsLists, true},
        {"CompoundIsNamedAsItsNode", &compoundIsNamedAsItsNode, true},
        {"CreatedPortsMirrorEachOther", &createdPortsMirrorEachOther, true},
        {"DeletedPortsAreGoneOnBothSides", &deletedPortsAreGoneOnBothSides, true},
        {"MovedPortsAreMirrored", &movedPortsAreMirrored, true},
    };
    return rules;
}

} // namespace ZEL::Conformance
