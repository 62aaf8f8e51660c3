#include "format/value.h"

#include "console/console.h"
#include "testDocument.h"
#include "views/report.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

const struct {
    const char* type;
    const char* value;
    const char* problem;
} kValues[] = {
    {"float", "-1.5e3", ""},
    {"float", " .5 ", ""},
    {"float", "1,5", "\"1,5\" is no float"},
    {"float", "nan", "\"nan\" is no float"},
    {"float", "0x1", "\"0x1\" is no float"},
    {"float", "1e999", "\"1e999\" is out of range"},
    {"integer", "-7", ""},
    {"integer", "7.0", "\"7.0\" is no integer"},
    {"integer", "2147483648", "\"2147483648\" is out of range"},
    {"boolean", "true", ""},
    {"boolean", "1", "\"1\" is no boolean"},
    {"color3", "0.1,0.2, 3", ""},
    {"color3", "0.1, 0.2", "color3 takes 3 numbers with commas between, not 2"},
    {"color3", "0.1, 0.2,", "\"\" is no float"},
    {"color3", "0.1 0.2 0.3", "\"0.1 0.2 0.3\" is no float"},
    {"vector2", "0, x", "\"x\" is no float"},
    {"matrix33", "1,0,0, 0,1,0, 0,0,1", ""},
    {"integerarray", "1, 2, 3, 4, 5", ""},
    {"integerarray", "1.5", "\"1.5\" is no integer"},
    {"string", "any, text", ""},
    {"string", "a\x01", "a value cannot have control characters"},
    {"float", "", ""},
};

TEST(Value, IsWhatItsTypeKnows)
{
    for (const auto& c : kValues) {
        SCOPED_TRACE(std::string(c.type) + " " + c.value);
        EXPECT_EQ(c.problem, shading::valueProblem(c.type, c.value));
    }
}

const struct {
    const char* line;
    const char* output; ///< Of that and of `history`.
} kValueEdits[] = {
    {"set Top.g.n.i 2", "set Top.g.n.i 2\n"},
    {"set Top.g.x ' 3'", "set Top.g.x \" 3\"\n"},
    {"set Top.g.x ''", "set Top.g.x \"\"\n"},
    {"set Top.g.x 7", ""},
    {"set Top.g.x seven", "error: set: Top.g.x: \"seven\" is no integer\n"},
    {"set Top.g.n.out 2", "error: set: Top.g.n.out: an output has no value\n"},
    {"set Top.g.n 2", "error: set: Top.g.n: no such input\n"},
    {"set Top.no.i 2", "error: set: Top.no.i: no such input\n"},
};

TEST(Edit, SetGivesAnInputAValueAndIsUndone)
{
    for (const auto& c : kValueEdits) {
        SCOPED_TRACE(c.line);
        const TestDocument document(
            "<nodegraph name='g'><input name='x' type='integer' value='7'/><n name='n' type='t'>"
            "<input name='i' type='integer' interfacename='x'/></n></nodegraph>");
        std::ostringstream out;
        shading::Session session = sessionOn(*document.opened);
        shading::Console shell(session, out, out);
        shell.add(shading::editCommands());
        const auto ports = [&] {
            std::string text;
            for (const char* const path : {"Top.g", "Top.g.n"})
                text +=
                    shading::textOf(shading::portRecords(*document.opened->findNodeFromPath(path)));
            return text;
        };
        const std::string before = ports();
        const bool isDone = shell.run(c.line);
        shell.run("history --commands");
        EXPECT_EQ(c.output, out.str());
        const bool isEdit = out.str().find("set Top") == 0;
        EXPECT_TRUE(isDone || !isEdit);
        EXPECT_EQ(isEdit, before != ports());
        if (isEdit)
            shell.run("undo");
        EXPECT_EQ(before, ports());
    }
}

TEST(ValueParts, StandBetweenCommas)
{
    EXPECT_EQ((std::vector<std::string>{"0.1", "0.2", "3"}), shading::partsOf("0.1,0.2 , 3 "));
    EXPECT_EQ((std::vector<std::string>{"", ""}), shading::partsOf(","));
    EXPECT_EQ(1U, shading::partsOf("").size());
    ASSERT_TRUE(shading::listTypeOf("matrix44"));
    EXPECT_EQ(16, shading::listTypeOf("matrix44")->count);
    EXPECT_STREQ("string", shading::listTypeOf("stringarray")->part);
    EXPECT_FALSE(shading::listTypeOf("float"));
}

} // namespace
