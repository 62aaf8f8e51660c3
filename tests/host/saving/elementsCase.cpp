#include "saving/elementsCase.h"

#include "saving/save.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// Opens a document of those elements, runs the commands, one a line, and saves. Gives the
/// elements, or each problem on a line; what the first command that is refused says.
std::string savedElements(const std::string& elements, const std::string& commands)
{
    const TestDocument test(elements);
    std::string said = test.edit(commands);
    if (said.find("error: ") != std::string::npos)
        return said;
    std::string result;
    std::vector<shading::SaveProblem> problems;
    if (shading::saveToBytes(*test.opened, result, problems)) {
        const std::size_t begin = result.find('>') + 1;
        return result.substr(begin, result.rfind('<') - begin);
    }
    for (const shading::SaveProblem& problem : problems)
        result += problem.path + ": " + problem.reason + "\n";
    return result;
}

} // namespace

void checkElements(const std::vector<ElementsCase>& cases)
{
    for (const ElementsCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.expected, savedElements(c.elements, c.commands));
        if (c.expected.compare(0, 7, "error: ") == 0)
            continue;
        std::string undone = c.commands;
        undone += "\nundo " + std::to_string(std::count(undone.begin(), undone.end(), '\n') + 1);
        EXPECT_EQ(c.elements, savedElements(c.elements, undone));
    }
}
