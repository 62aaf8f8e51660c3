#include "zel/propertyTree.h"

#include "zel/classes.h"

#include <utility>

namespace zelpython {

PropertyTree::PropertyTree() : m_root(std::make_unique<ZEL::PropertyList>()), m_list(m_root.get())
{
}

PropertyTree::PropertyTree(const PropertyTree& other)
    : std::enable_shared_from_this<PropertyTree>(other),
      m_root(std::make_unique<ZEL::PropertyList>(other.list())),
      m_list(m_root.get())
{
}

PropertyTree::PropertyTree(std::shared_ptr<PropertyTree> parent, ZEL::PropertyList* list)
    : m_parent(std::move(parent)),
      m_list(list)
{
}

PropertyTree::~PropertyTree()
{
    // A long chain of parents that only this one keeps goes one by one, not one in the other.
    std::shared_ptr<PropertyTree> parent = std::move(m_parent);
    while (parent && parent.use_count() == 1)
        parent = std::move(parent->m_parent);
}

ZEL::PropertyList& PropertyTree::list() const
{
    // Children lie on the heap: an addition moves none of them.
    if (!m_list)
        raiseReferenceError("the property list is gone: its parent removed it");
    return *m_list;
}

std::shared_ptr<PropertyTree> PropertyTree::child(int index)
{
    const auto place = static_cast<std::size_t>(index);
    if (place >= m_children.size())
        m_children.resize(place + 1);
    std::shared_ptr<PropertyTree> known = m_children[place].lock();
    if (known)
        return known;
    const char* name = nullptr;
    ZEL::PropertyList* found = nullptr;
    list().getChildListAt(index, &name, &found);
    known.reset(new PropertyTree(shared_from_this(), found));
    m_children[place] = known;
    return known;
}

void PropertyTree::removeAll()
{
    list().removeAll();
    std::vector<std::shared_ptr<PropertyTree>> gone;
    const auto take = [&gone](PropertyTree& tree) {
        for (const auto& looked : std::exchange(tree.m_children, {})) {
            if (auto child = looked.lock())
                gone.push_back(std::move(child));
        }
    };
    take(*this);
    for (std::size_t i = 0; i < gone.size(); ++i) {
        gone[i]->m_list = nullptr;
        const std::shared_ptr<PropertyTree> tree = gone[i]; // The vector grows.
        take(*tree);
    }
}

} // namespace zelpython
