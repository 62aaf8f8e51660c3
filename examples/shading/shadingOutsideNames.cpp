#include "shadingOutsideNames.h"

#include "shadingContainer.h"
#include "shadingFormat.h"
#include "shadingXml.h"

#include <algorithm>
#include <cstring>

namespace shading {

namespace {

const char* const kBetweenNames = ", \t\r\n";

class OutsideNames {
public:
    OutsideNames(DraftNetwork& network, std::vector<SaveProblem>& problems)
        : m_network(network),
          m_problems(problems),
          m_root(network.container().xml().documentElement())
    {
    }

    void run() { visit(m_root); }

private:
    void visit(pugi::xml_node parent)
    {
        for (const pugi::xml_node element : parent.children()) {
            if (element.type() != pugi::node_element)
                continue;
            DraftItem* const item = m_network.draft().elementAt(offsetOf(element));
            if (isThere(*item)) {
                if (std::strcmp(element.name(), "materialassign") == 0)
                    update(*item, element, "material");
                else if (std::strcmp(element.name(), "implementation") == 0)
                    update(*item, element, "nodegraph");
                else if (std::strcmp(element.name(), "backdrop") == 0)
                    updateContents(*item, element);
                else if (std::strcmp(parent.name(), "variant") == 0)
                    updateReference(*item, element);
            }
            visit(element);
        }
    }

    bool isThere(const DraftItem& item)
    {
        const DraftItem* top = &item;
        while (top->parent)
            top = top->parent;
        return top == &m_network.draft().top();
    }

    /// The element below the parent that the name means; empty when none has it.
    static pugi::xml_node nodeNamed(pugi::xml_node parent, const std::string& name)
    {
        for (const pugi::xml_node child : parent.children()) {
            const ElementKind kind = kindOf(child);
            if ((kind == ElementKind::Node || kind == ElementKind::Graph) &&
                attributeOf(child, "name") == name)
                return child;
        }
        return {};
    }

    /// The node that the document called so below the parent, if it is a child of that item now.
    ZEL::Node* nodeIn(const DraftItem& around, pugi::xml_node element)
    {
        DraftItem* const item = m_network.draft().elementAt(offsetOf(element));
        return item->parent == &around ? m_network.nodeOf(item) : nullptr;
    }

    /// What an input gets when a variant is chosen.
    void updateReference(DraftItem& item, pugi::xml_node element)
    {
        for (const char* const attribute : {"nodename", "nodegraph"}) {
            const pugi::xml_node meant = update(item, element, attribute);
            const std::string name = attributeOf(element, "output");
            const pugi::xml_node output =
                meant.find_child_by_attribute("output", "name", name.c_str());
            if (!output)
                continue;
            const ZEL::Port* const port =
                m_network.portOf(m_network.draft().elementAt(offsetOf(output)));
            if (port && name != port->getName())
                m_network.draft().setAttribute(item, "output", port->getName());
            if (!port)
                refuse(attributeOf(meant, "name") + "." + name, element);
        }
    }

    /// A name that means a node of the document: its element. Empty when there is none, or not any
    /// more: that is a problem.
    pugi::xml_node update(DraftItem& item, pugi::xml_node element, const char* attribute)
    {
        const std::string name = attributeOf(element, attribute);
        const pugi::xml_node meant = nodeNamed(m_root, name);
        if (!meant)
            return {};
        ZEL::Node* const node = nodeIn(*m_network.draft().elementAt(offsetOf(m_root)), meant);
        if (node && name != node->getName())
            m_network.draft().setAttribute(item, attribute, node->getName());
        if (node)
            return meant;
        refuse(name, element);
        return {};
    }

    /// The element names what is gone.
    void refuse(const std::string& name, pugi::xml_node element)
    {
        const std::string own = attributeOf(element, "name");
        m_problems.push_back({pathOf(*m_network.container().getRootNode()) + "." + name,
                              std::string("it is gone from there, and ") + element.name() +
                                  (own.empty() ? "" : " \"" + own + "\"") + " still names it"});
    }

    /// Names of siblings, with commas or blanks between them. One that left takes those before it
    /// along.
    void updateContents(DraftItem& item, pugi::xml_node element)
    {
        const std::string contents = attributeOf(element, "contains");
        std::string after;
        std::size_t begin = 0;
        while (begin < contents.size()) {
            const std::size_t name = contents.find_first_not_of(kBetweenNames, begin);
            const std::size_t end =
                std::min(contents.find_first_of(kBetweenNames, name), contents.size());
            if (name >= end)
                break;
            const std::string read = contents.substr(name, end - name);
            const pugi::xml_node meant = nodeNamed(element.parent(), read);
            const ZEL::Node* const node = meant ? nodeIn(*item.parent, meant) : nullptr;
            if (!meant || node)
                after += (after.empty() && begin > 0 ? "" : contents.substr(begin, name - begin)) +
                         (node ? node->getName() : read);
            begin = end;
        }
        after += begin < contents.size() ? contents.substr(begin) : "";
        if (after != contents)
            m_network.draft().setAttribute(item, "contains", after);
    }

    DraftNetwork& m_network;
    std::vector<SaveProblem>& m_problems;
    pugi::xml_node m_root;
};

} // namespace

void updateOutsideNames(DraftNetwork& network, std::vector<SaveProblem>& problems)
{
    OutsideNames(network, problems).run();
}

} // namespace shading
