#pragma once

#include <cstddef>

namespace zelpython {

struct Doc {
    const char* key; ///< "Class.operation"; "Class." for the class itself.
    const char* text;
};

/// Ascending by key, byte for byte. The source is made when this is built; see docstrings.py.
extern const Doc kDocs[];
extern const std::size_t kDocCount;

} // namespace zelpython
