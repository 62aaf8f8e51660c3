#include "zel/classes.h"
#include "zel/docTable.h"

#include <algorithm>

namespace zelpython {

const char* docOf(const char* className, const char* name)
{
    const std::string key = std::string(className) + '.' + name;
    const Doc* const end = kDocs + kDocCount;
    const Doc* const found =
        std::lower_bound(kDocs, end, key, [](const Doc& doc, const std::string& wanted) {
            return doc.key < wanted;
        });
    return found != end && found->key == key ? found->text : "";
}

} // namespace zelpython
