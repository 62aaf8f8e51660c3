#pragma once

#include <unordered_map>
#include <vector>

namespace ZEL {

/// Drops the references that a list holds as its owner dies, first to last; at(i) gives the object
/// of the i-th. What dies finds its owner as it was. What lives on, because others hold it, is
/// given to orphan(object) when all the others have died.
template <class At, class Orphan>
void releaseEach(int count, At at, Orphan orphan)
{
    using Object = decltype(at(0));
    std::vector<Object> held;
    for (int i = 0; i < count; ++i) {
        const Object object = at(i);
        if (object->getRefCount() > 1)
            held.push_back(object);
        else
            object->release();
    }
    if (held.empty())
        return;
    std::unordered_map<Object, int> ownReferences;
    for (const Object object : held)
        ++ownReferences[object];
    for (const Object object : held) {
        if (object->getRefCount() > ownReferences[object]--)
            orphan(*object);
        object->release();
    }
}

} // namespace ZEL
