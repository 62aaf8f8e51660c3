#include "definitions/pluginModule.h"
#include "document/definedNode.h"
#include "paths.h"
#include "testLibrary.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <regex>
#include <sys/wait.h>

namespace {

bool isLoaded()
{
    void* const module = dlopen(paths::kShadingPlugin, RTLD_NOW | RTLD_NOLOAD);
    if (module)
        dlclose(module);
    return module != nullptr;
}

/// The file that holds the code of the object's class.
std::string codeOf(const void* object)
{
    Dl_info info = {};
    dladdr(*static_cast<void* const*>(object), &info);
    return std::filesystem::path(info.dli_fname ? info.dli_fname : "").filename().string();
}

const char* const kAdd = "<add name='a' type='float'/><add name='b' type='float'>"
                         "<input name='in1' type='float' nodename='a'/></add>";

TEST(PluginModule, IsLoadedUsedTerminatedAndUnloaded)
{
    ASSERT_FALSE(isLoaded());
    {
        shading::PluginModule plugin;
        std::string problem;
        ASSERT_TRUE(plugin.load(paths::kShadingPlugin, problem));
        EXPECT_TRUE(isLoaded());
        ZEL::Host host;
        EXPECT_EQ(plugin.runtime(), host.getRuntimeByName("Shading"));
        const auto document = openWith(plugin.runtime(), kAdd);
        EXPECT_EQ(plugin.runtime(), document->getRuntime());
        EXPECT_EQ("Top.s ND_standard_surface_surfaceshader\nTop.a.out -> Top.b.in1\n",
                  runIn(*document, "create standard_surface s\nrebuild\nconnections"));
    }
    EXPECT_FALSE(isLoaded());
}

#if defined(ZEL_STATIC)
const char* const kLibraryFile = "hostTests"; // The library is a part of this program.
#else
const char* const kLibraryFile = "libZEL.so";
#endif

// Why the module goes last: the code of the runtime is in it, and what the host holds besides is
// not.
TEST(PluginModule, HoldsTheCodeOfItsRuntimeOnly)
{
    ZEL::AddRefWrapper<ZEL::PortDataType> type;
    ZEL::AddRefWrapper<shading::Definition> definition;
    {
        shading::PluginModule plugin;
        std::string problem;
        ASSERT_TRUE(plugin.load(paths::kShadingPlugin, problem));
        type = plugin.runtime()->getPortDataType("color3");
        definition = shading::DefinitionIndex(*plugin.runtime()).named("ND_add_float");
        EXPECT_EQ("shadingPlugin.so", codeOf(plugin.runtime()));
        EXPECT_EQ(0U, codeOf(type.get()).find(kLibraryFile));
        EXPECT_EQ(0U, codeOf(definition.get()).find("libshadingDefinitions.so"));
    }
    EXPECT_STREQ("color3", type->getName());
    EXPECT_EQ("in1", definition->record().inputs[0].name);
}

void unloadTooEarly()
{
    void* const module = dlopen(paths::kShadingPlugin, RTLD_NOW | RTLD_LOCAL);
    dlclose(module);
    ZEL::Host().terminate();
}

TEST(PluginModuleDeathTest, UnloadedBeforeTerminateTheProgramDies)
{
    EXPECT_DEATH(unloadTooEarly(), "");
}

std::string problemOf(const std::string& path)
{
    shading::PluginModule plugin;
    std::string problem;
    EXPECT_FALSE(plugin.load(path, problem));
    EXPECT_EQ(nullptr, plugin.runtime());
    return problem;
}

TEST(PluginModule, SaysWhyThereIsNoRuntime)
{
    const TestFile text("no module");
    EXPECT_EQ("no such file", problemOf("/no/such.so"));
    EXPECT_EQ("no such file", problemOf(""));
    EXPECT_EQ("no such file", problemOf("/"));
    EXPECT_EQ(0U, problemOf(text.path()).find("cannot be loaded: " + text.path()));
    EXPECT_EQ("no plugin: it registers no runtime", problemOf(paths::kNoPlugin));
    EXPECT_EQ("registers no runtime \"Shading\"", problemOf(paths::kOtherPlugin));
}

/// As one word of a shell's line.
std::string quoted(const std::string& path)
{
    return "'" + path + "'";
}

std::string runProgram(const std::string& arguments)
{
    const TestFile file(std::string("<materialx>") + kAdd + "</materialx>");
    const std::string line =
        quoted(paths::kZelsh) + " " + arguments + " " + quoted(file.path()) + " 2>&1";
    std::FILE* const pipe = popen(line.c_str(), "r");
    std::string output;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(c);
    const int status = pclose(pipe);
    return output + "status " + std::to_string(WEXITSTATUS(status)) + "\n";
}

TEST(Program, LoadsThePluginBesideItOrGoesOnWithout)
{
    EXPECT_EQ("index 0 Shading\nname Shading in use\nstatus 0\n", runProgram("-c runtimes"));
    EXPECT_EQ("zelsh: plugin /no/such.so: no such file; going on without it\nno runtimes\n"
              "output out float \"\" -> Top.b.in1\nstatus 0\n",
              runProgram("--plugin /no/such.so -c runtimes -c 'ports Top.a'"));
    EXPECT_EQ("zelsh: plugin " + std::string(paths::kOtherPlugin) +
                  ": registers no runtime \"Shading\"; going on without "
                  "it\nindex 0 Other\nname Other\nfloat\nstatus 0\n",
              runProgram("--plugin " + quoted(paths::kOtherPlugin) + " -c runtimes -c types"));
}

TEST(Program, ReadsLibrariesAlsoWithoutAPlugin)
{
    const TestFile library("<materialx><nodedef name='ND_x' node='x'><output name='o' type='t'/>"
                           "</nodedef></materialx>");
    const std::string option = "--plugin /no/such.so --library " + quoted(library.path());
    EXPECT_EQ("zelsh: plugin /no/such.so: no such file; going on without it\n"
              "Definitions 0\n  other 1\nstatus 0\n",
              runProgram(option + " -c library"));
    EXPECT_EQ("/no/lib.mtlx:1:1: error: cannot be read: No such file or directory\nstatus 1\n",
              runProgram("--library /no/lib.mtlx -c ls"));
}

TEST(Document, IsRegisteredWhileItLives)
{
    ZEL::Runtime runtime;
    auto document = openWith(&runtime, "<x name='x' type='t'/>");
    const std::string uuid = document->uuid();
    const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
    EXPECT_NE(uuid, openWith(&runtime, "")->uuid());
    EXPECT_EQ(document.get(), ZEL::Container::getFromUUID(uuid.c_str()));
    EXPECT_EQ("", readInto(runtime, "<nodedef name='ND_x' node='x'><input name='i' type='t'/>"
                                    "<output name='out' type='t'/></nodedef>"));
    runtime.forceRebuildCompounds();
    EXPECT_EQ("input i t \"\"\noutput out t \"\"\n", runIn(*document, "ports Top.x"));
    document.reset();
    EXPECT_EQ(nullptr, ZEL::Container::getFromUUID(uuid.c_str()));
    runtime.forceRebuildCompounds(); // Reaches no dead document.
}

TEST(Document, IsRebuiltOnlyWhenItIsWhole)
{
    std::string text = "<materialx>";
    for (int i = 0; i < 2000; ++i)
        text += "<x type='t'/>";
    const TestFile file(text + "</materialx>");
    ZEL::Runtime runtime;
    shading::OpenOptions options;
    options.runtime = &runtime;
    options.progress = [&](int) {
        runtime.forceRebuildCompounds();
        return true;
    };
    std::vector<shading::Message> messages;
    const auto document = shading::openDocument(file.path(), options, messages);
    ASSERT_TRUE(document);
    shading::Message error;
    const auto other = shading::openText("<materialx/>", *document, error);
    ASSERT_TRUE(other);
    EXPECT_EQ("", other->uuid());
    EXPECT_EQ(&runtime, other->getRuntime());
    EXPECT_EQ(&document->definitions(), &other->definitions());
}

TEST(Document, HasARuntimeOfItsOwnOtherwise)
{
    const auto document = openWith(nullptr, "<x name='x' type='t'/>");
    EXPECT_EQ("t\nerror: library: runtime: it has no node library\n",
              runIn(*document, "types\nlibrary"));
}

// The table against the format's own definitions, where a folder has them.
TEST(Table, IsWhatTheFormatDefines)
{
    const char* const folder = std::getenv("SHADING_EXTRA_DOCUMENTS");
    if (!folder)
        GTEST_SKIP() << "SHADING_EXTRA_DOCUMENTS names no folder";
    shading::PluginModule plugin;
    std::string problem;
    ASSERT_TRUE(plugin.load(paths::kShadingPlugin, problem));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::vector<shading::Message> messages;
        if (entry.path().extension() == ".mtlx")
            shading::readDefinitions(entry.path().string(), *plugin.runtime(), messages);
        for (const shading::Message& message : messages)
            ADD_FAILURE() << shading::messageText(message);
    }
}

} // namespace
