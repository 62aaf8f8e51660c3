#include "console/console.h"
#include "document/node.h"
#include "document/step.h"
#include "reading/openDocument.h"
#include "saving/save.h"
#include "testDocument.h"
#include "views/report.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using shading::Document;

const char* const kElements =
    "<n name='a' type='t'><input name='i' type='t'/></n><n name='b' type='t'/><nodegraph name='g'>"
    "<input name='x' type='t'/><n name='c' type='t'><input name='i' type='t'/></n><output name='o' "
    "type='t'/></nodegraph><nodegraph name='h'><nodegraph name='g'><output name='o' type='t'/>"
    "</nodegraph><n name='d' type='t'><input name='i' type='t'/></n></nodegraph>"
    "<input name='in' type='t'/><look><materialassign name='m' material='b'/></look>"
    "<implementation name='I' nodegraph='h'/>"
    "<variantset><variant><input name='v' nodegraph='g' output='o'/></variant></variantset>";

shading::NodePtr nodeAt(Document& document, const char* path)
{
    return document.findNodeFromPath(path);
}

shading::PortPtr portAt(Document& document, const char* path, ZEL::PortIOType ioType)
{
    return document.findPortFromPath(path, ioType, ZEL::Container::eSearchNode);
}

shading::PortPtr in(Document& document, const char* path)
{
    return portAt(document, path, ZEL::PortInput);
}

shading::PortPtr out(Document& document, const char* path)
{
    return portAt(document, path, ZEL::PortOutput);
}

shading::PortPtr inner(Document& document, const shading::PortPtr& port)
{
    return document.reverseThisExternalPort(port);
}

void addNode(Document& document, const char* name, const char* type)
{
    const auto node = shading::Node::createNew(&document, name);
    node->setNodeTypeName(type);
    nodeAt(document, "Top")->getAsCompound()->nodes().add(node);
}

// What no command makes; so the library's own calls do.
const struct {
    const char* name;
    std::function<void(Document&)> change;
    const char* problems;
} kSaveRefusals[] = {
    {"all of it is listed",
     [](Document& c) {
         in(c, "Top.a.i")->addConnection(out(c, "Top.a.out"));
         in(c, "Top.a.i")->addConnection(out(c, "Top.b.out"));
         nodeAt(c, "Top.g.c")->setName("1 c");
     },
     "Top.a.i: it has several sources: Top.a.out, Top.b.out\n"
     "Top.g.1 c: a name has letters, digits and _, and begins with no digit\n"},
    {"straight through a compound",
     [](Document& c) { inner(c, in(c, "Top.g.x"))->addConnection(inner(c, out(c, "Top.g.o"))); },
     "Top.g.o: it is fed straight by the compound's input Top.g.x\n"},
    {"across a border", [](Document& c) { in(c, "Top.g.c.i")->addConnection(out(c, "Top.a.out")); },
     "Top.g.c.i: its source Top.a.out is in another compound\n"},
    {"a graph of the document behind one of its name",
     [](Document& c) { in(c, "Top.h.d.i")->addConnection(out(c, "Top.g.o")); },
     "Top.h.d.i: its source Top.g.o is hidden by an earlier one of its name\n"},
    {"a source for the document",
     [](Document& c) { in(c, "Top.in")->addConnection(out(c, "Top.a.out")); },
     "Top.in: its source Top.a.out is in another compound\n"},
    {"names",
     [](Document& c) {
         nodeAt(c, "Top.g.c")->setName("x.y");
         in(c, "Top.a.i")->setName("");
         nodeAt(c, "Top.h.d")->setName("\xFF");
     },
     "Top.a.: a name cannot be empty\nTop.g.x.y: no path reaches a name with a \".\" in it\n"
     "Top.h.\xFF: its name has characters that XML cannot hold\n"},
    {"a name that a sibling has", [](Document& c) { nodeAt(c, "Top.g.c")->setName("x"); },
     "Top.g.x: a sibling has the same name\n"},
    {"characters of values and types",
     [](Document& c) {
         in(c, "Top.a.i")->setPortDefaultValue("\x01");
         in(c, "Top.in")->setDataType(c.dataType("\xC0\x80"));
         inner(c, in(c, "Top.in"))->setDataType(c.dataType("\xC0\x80"));
     },
     "Top.in: its type has characters that XML cannot hold\n"
     "Top.a.i: its value has characters that XML cannot hold\n"},
    {"types of nodes",
     [](Document& c) {
         addNode(c, "n1", "look");
         addNode(c, "n2", "a b");
         addNode(c, "n3", "nodegraph");
         addNode(c, "n4", "x:y");
     },
     "Top.n1: its node type \"look\" means something else in the format\n"
     "Top.n2: its node type \"a b\" is no name for an element\n"
     "Top.n3: its node type \"nodegraph\" means something else in the format\n"
     "Top.n4: its node type \"x:y\" means something else in the format\n"},
    {"an inner port that differs", [](Document& c) { in(c, "Top.g.x")->setName("z"); },
     "Top.g.z: its inner port is another one\n"},
    {"a node that others name",
     [](Document& c) {
         nodeAt(c, "Top")->getAsCompound()->removeNode("b");
         nodeAt(c, "Top")->getAsCompound()->removeNode("h");
         nodeAt(c, "Top.g")->getAsCompound()->deleteCompoundPort(inner(c, out(c, "Top.g.o")));
     },
     "Top.b: it is gone from there, and materialassign \"m\" still names it\n"
     "Top.h: it is gone from there, and implementation \"I\" still names it\n"
     "Top.g.o: it is gone from there, and input \"v\" still names it\n"},
    {"a value for which there are no words",
     [](Document& c) { out(c, "Top.a.out")->setPortDefaultValue("1"); },
     "Top.a.out: its value is read back as \"\"\n"},
};

TEST(SaveRefusal, NamesAllPathsAndReasons)
{
    for (const auto& c : kSaveRefusals) {
        SCOPED_TRACE(c.name);
        const TestDocument test(kElements);
        const TestFile file("old");
        c.change(*test.opened);
        std::vector<shading::SaveProblem> problems;
        EXPECT_FALSE(shading::saveToFile(*test.opened, file.path(), problems));
        std::string text;
        for (const shading::SaveProblem& problem : problems)
            text += problem.path + ": " + problem.reason + "\n";
        EXPECT_EQ(c.problems, text);
        EXPECT_EQ("old", fileBytes(file.path()));
    }
}

TEST(SaveRefusal, ANameThatWasMadeUpIsRefusedLikeAnyOther)
{
    const struct {
        const char* name;
        const char* problem;
    } cases[] = {
        {"add b", "Top.add b: a name has letters, digits and _, and begins with no digit"},
        {"ad", ""},
        {"add7", ""},
        {"x-ray", "Top.x-ray: a name has letters, digits and _, and begins with no digit"},
    };
    for (const auto& c : cases) {
        const TestDocument test("<add type='float'/>");
        nodeAt(*test.opened, "Top.add")->setName(c.name);
        std::string bytes;
        std::vector<shading::SaveProblem> problems;
        shading::saveToBytes(*test.opened, bytes, problems);
        EXPECT_EQ(c.problem, problems.empty() ? "" : problems[0].path + ": " + problems[0].reason);
    }
}

TEST(SaveRefusal, ValuesAreOfUtf8AndOfXml)
{
    const struct {
        const char* value;
        bool isGood;
    } cases[] = {
        {"\t\n\r ~\x7F", true},
        {"\x1F", false},
        {"\xC2\x80", true},
        {"\xC1\xBF", false},
        {"\xE0\xA0\x80", true},
        {"\xE0\x9F\xBF", false},
        {"\xED\x9F\xBF", true},
        {"\xED\xA0\x80", false},
        {"\xEF\xBF\xBD", true},
        {"\xEF\xBF\xBE", false},
        {"\xF0\x90\x80\x80", true},
        {"\xF0\x8F\xBF\xBF", false},
        {"\xF4\x8F\xBF\xBD", true},
        {"\xF4\x90\x80\x80", false},
        {"\xC2", false},
        {"\x80", false},
        {"\xF0\x90\x80", false},
        {"\xC2\x80\x80", false},
    };
    const TestDocument test(kElements);
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.value));
        in(*test.opened, "Top.a.i")->setPortDefaultValue(c.value);
        std::string bytes;
        std::vector<shading::SaveProblem> problems;
        EXPECT_EQ(c.isGood, shading::saveToBytes(*test.opened, bytes, problems));
    }
}

TEST(SaveRefusal, TheCommandReportsEach)
{
    const TestDocument test(kElements);
    in(*test.opened, "Top.a.i")->setName("");
    nodeAt(*test.opened, "Top.g.c")->setName("x.y");
    EXPECT_EQ("error: save: Top.a.: a name cannot be empty\n"
              "error: save: Top.g.x.y: no path reaches a name with a \".\" in it\n",
              test.run("save /nowhere"));
}

int filesBeside(const std::string& path)
{
    int count = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(path).parent_path()))
        count += entry.path() != path ? 1 : 0;
    return count;
}

TEST(SaveFile, ReplacesTheFileAndKeepsItsModeAndLinks)
{
    const TestDocument test(kElements);
    const TestFile file("old");
    const std::string link = file.path() + ".link";
    std::filesystem::create_symlink("t.mtlx", link);
    ASSERT_EQ(0, chmod(file.path().c_str(), 0640));
    EXPECT_EQ("", test.run("save " + link + "\nsave " + file.path() + ".new"));
    EXPECT_EQ("<materialx version=\"1.39\">" + std::string(kElements) + "</materialx>\n",
              fileBytes(file.path()));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    struct stat status = {};
    ASSERT_EQ(0, stat(file.path().c_str(), &status));
    EXPECT_EQ(0640U, status.st_mode & 07777U);
    ASSERT_EQ(0, stat((file.path() + ".new").c_str(), &status));
    const mode_t mask = umask(0);
    umask(mask);
    EXPECT_EQ(0666U & ~mask, status.st_mode & 07777U);
    EXPECT_EQ(2, filesBeside(file.path()));
}

TEST(SaveFile, SaysWhyItCannotWrite)
{
    const TestDocument test(kElements);
    const TestFile file("old");
    const std::string folder = std::filesystem::path(file.path()).parent_path().string();
    std::filesystem::create_symlink("no", folder + "/link");
    const struct {
        std::string path;
        const char* reason;
    } cases[] = {
        {folder + "/no/x", "No such file or directory"},
        {file.path() + "/x", "Not a directory"},
        {folder, "Is a directory"},
        {"/dev/full", "not a regular file"},
        {"/proc/self/x", "No such file or directory"},
        {folder + "/link", "No such file or directory"},
        {folder + "/" + std::string(300, 'x'), "File name too long"},
    };
    for (const auto& c : cases)
        EXPECT_EQ("error: save: " + c.path + ": cannot be written: " + c.reason + "\n",
                  test.run("save " + c.path));
    EXPECT_EQ("old", fileBytes(file.path()));
    EXPECT_EQ(1, filesBeside(file.path()));
    EXPECT_EQ("compound\n", test.run("find Top.g"));
}

/// As a user whom the file's mode binds.
[[noreturn]] void saveAsAnyUser(const std::string& path)
{
    const TestDocument test(kElements);
    if (geteuid() == 0 && seteuid(65534) != 0)
        std::_Exit(1);
    std::fputs(test.run("save " + path).c_str(), stderr);
    std::_Exit(0);
}

TEST(SaveFile, KeepsAFileThatMayNotBeWritten)
{
    const TestFile file("old");
    const std::string folder = std::filesystem::path(file.path()).parent_path().string();
    ASSERT_EQ(0, chmod(folder.c_str(), 0777));
    ASSERT_EQ(0, chmod(file.path().c_str(), 0444));
    EXPECT_EXIT(saveAsAnyUser(file.path()), testing::ExitedWithCode(0),
                "t.mtlx: cannot be written: Permission denied\n");
    EXPECT_EQ("old", fileBytes(file.path()));
}

/// What a full disk does: only the first bytes get into the file.
[[noreturn]] void saveFewBytes(const std::string& path)
{
    const TestDocument test(kElements);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {100, 100};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::fputs(test.run("save " + path + "\nfind Top.g").c_str(), stderr);
    std::_Exit(0);
}

TEST(SaveFile, KeepsTheOldFileWhenNotAllFits)
{
    const TestFile file("old");
    EXPECT_EXIT(saveFewBytes(file.path()), testing::ExitedWithCode(0),
                "t.mtlx: cannot be written: File too large\ncompound\n");
    EXPECT_EQ("old", fileBytes(file.path()));
    EXPECT_EQ(0, filesBeside(file.path()));
}

TEST(SaveFile, KeepsAFileThatSomebodyChanged)
{
    const TestFile file("<materialx/>\n");
    const auto open = [&] {
        std::vector<shading::Message> messages;
        return shading::openDocument(file.path(), {}, messages);
    };
    const auto document = open();
    const auto other = open();
    const std::string link = file.path() + ".link";
    std::filesystem::create_symlink("t.mtlx", link);
    using shading::ChangedFile;
    const auto save = [](Document& saved, const std::string& path, ChangedFile changed) {
        std::vector<shading::SaveProblem> problems;
        const bool isSaved = shading::saveToFile(saved, path, problems, changed);
        return isSaved ? "" : problems.at(0).path + ": " + problems.at(0).reason;
    };
    const std::string reason = ": somebody changed it since it was read or saved last";
    addNode(*document, "mine", "n");
    EXPECT_EQ("", save(*document, file.path(), ChangedFile::Keep));
    EXPECT_EQ("", save(*document, file.path(), ChangedFile::Keep)); // Its own change is none.
    const std::string mine = fileBytes(file.path());
    EXPECT_EQ(file.path() + reason, save(*other, file.path(), ChangedFile::Keep));
    EXPECT_EQ(link + reason, save(*other, link, ChangedFile::Keep));
    EXPECT_EQ(mine, fileBytes(file.path()));
    EXPECT_EQ("", save(*other, file.path() + ".new", ChangedFile::Keep));
    EXPECT_EQ("", save(*other, link, ChangedFile::Replace));
    EXPECT_EQ("<materialx/>\n", fileBytes(file.path()));
    EXPECT_EQ("", save(*other, file.path(), ChangedFile::Keep));
    std::filesystem::remove(file.path());
    EXPECT_EQ("", save(*document, file.path(), ChangedFile::Keep)); // Nothing is lost.
    EXPECT_EQ(mine, fileBytes(file.path()));
}

TEST(SaveFile, TheCommandReplacesAChangedFileWhenForced)
{
    const TestDocument test(kElements);
    const TestFile file("old");
    EXPECT_EQ("", test.run("save " + file.path()));
    std::ofstream(file.path()) << "theirs";
    EXPECT_EQ("error: save: " + file.path() +
                  ": somebody changed it since it was read or saved last\n",
              test.run("save " + file.path()));
    EXPECT_EQ("theirs", fileBytes(file.path()));
    EXPECT_EQ("", test.run("save --force " + file.path()));
    EXPECT_NE("theirs", fileBytes(file.path()));
}

} // namespace
