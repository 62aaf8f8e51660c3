#pragma once

#include "binding/shared.h"
#include "zel.h"

#include <memory>
#include <string>
#include <vector>

namespace zelpython {

/// A property list as Python holds it: a root, or a child list of one. A child belongs to its
/// parent, which it keeps; when the parent removes its children, the child is gone for Python too.
class PropertyTree : public std::enable_shared_from_this<PropertyTree> {
public:
    PropertyTree();
    /// A root with a deep copy of the other. Raises ReferenceError.
    explicit PropertyTree(const PropertyTree& other);
    PropertyTree& operator=(const PropertyTree&) = delete;
    ~PropertyTree();

    /// The list of the library. Raises ReferenceError when a parent has removed it.
    ZEL::PropertyList& list() const;
    /// The child at the index, which must be in range: the same one as long as anybody holds it.
    std::shared_ptr<PropertyTree> child(int index);
    /// Removes all pairs and children.
    void removeAll();

private:
    PropertyTree(std::shared_ptr<PropertyTree> parent, ZEL::PropertyList* list);

    std::unique_ptr<ZEL::PropertyList> m_root; ///< Null in a child.
    std::shared_ptr<PropertyTree> m_parent;    ///< Null in a root.
    ZEL::PropertyList* m_list;                 ///< Not owned: of the root. Null: it was removed.
    std::vector<std::weak_ptr<PropertyTree>> m_children; ///< By index; those that are looked at.
    LiveCount m_live{"zel.PropertyList"};
};

} // namespace zelpython
