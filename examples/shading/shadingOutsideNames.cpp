#include "shadingOutsideNames.h"

#include "shadingContainer.h"
#include "shadingFormat.h"
#include "shadingXml.h"

#include <algorithm>
#include <cstring>

namespace shading {

namespace {

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

    /// A name that means a node of the document.
    void update(DraftItem& item, pugi::xml_node element, const char* attribute)
    {
        const std::string name = attributeOf(element, attribute);
        const pugi::xml_node meant = nodeNamed(m_root, name);
        if (!meant)
            return;
        ZEL::Node* const node = nodeIn(*m_network.draft().elementAt(offsetOf(m_root)), meant);
        if (node && name != node->getName())
            m_network.draft().setAttribute(item, attribute, node->getName());
        if (node)
            return;
        const std::string own = attributeOf(element, "name");
        m_problems.push_back({pathOf(*m_network.container().getRootNode()) + "." + name,
                              std::string("it is gone from there, and ") + element.name() +
                                  (own.empty() ? "" : " \"" + own + "\"") + " still names it"});
    }

    /// The names of siblings, with commas between them.
    void updateContents(DraftItem& item, pugi::xml_node element)
    {
        const std::string contents = attributeOf(element, "contains");
        std::string after;
        bool isChange = false;
        std::size_t begin = 0;
        while (begin < contents.size()) {
            const std::size_t end = std::min(contents.find(',', begin), contents.size());
            std::string name = contents.substr(begin, end - begin);
            begin = end + 1;
            name.erase(0, name.find_first_not_of(" \t\r\n"));
            name.erase(name.find_last_not_of(" \t\r\n") + 1);
            const pugi::xml_node meant = nodeNamed(element.parent(), name);
            const ZEL::Node* const node = meant ? nodeIn(*item.parent, meant) : nullptr;
            isChange = isChange || (meant && (!node || name != node->getName()));
            if (meant && !node)
                continue;
            after += (after.empty() ? "" : ", ") + (node ? node->getName() : name);
        }
        if (isChange)
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
