#include "zelPlugin.h"

#include "zelRuntime.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace ZEL {
namespace {

std::string g_log;

/// A plugin that gives itself a name of one letter, and logs its registration and its end.
template <char name>
void enter(PluginRegistrar& /*registrar*/, PluginInfo& info)
{
    const char text[] = {name, '\0'};
    info.setUserName(text);
    g_log += std::string("+") + text;
}

void leave(const PluginInfo& info)
{
    g_log += std::string("-") + info.getUserName();
}

struct EarlyPlugin {
    EarlyPlugin() { selfRegisterPlugin(enter<'E'>, leave); }
} g_earlyPlugin;

struct TestInfo : PluginInfo {
    void setUserName(const char* /*name*/) override {}
    const char* getUserName() const override { return ""; }
};

/// A host with an empty registry. Runtimes stay registered for the life of the process: each test
/// needs a process of its own, which ctest gives it.
struct HostTest : testing::Test {
    HostTest() { EXPECT_EQ(0, host.getNumberOfRuntimes()) << "needs a process of its own"; }
    void add(Runtime& runtime, const char* name)
    {
        runtime.setName(name);
        EXPECT_FALSE(!host.registerRuntime(TestInfo(), &runtime));
    }
    Host host;
    inline static Runtime runtimes[4];
};

TEST_F(HostTest, GivesTheFirstRuntimeAtZeroAndOneAndTheLastByNameOnly)
{
    const char* const names[] = {"b", "B", "c", "a"};
    const char* const atMinusOneToFive[] = {"-b-----", "-BB----", "-BBb---", "-BBab--"};
    for (int i = 0; i < 4; ++i) {
        add(runtimes[i], names[i]);
        std::string found;
        for (int index = -1; index <= 5; ++index) {
            Runtime* const runtime = Host().getRuntimeAt(index);
            found += runtime ? runtime->getName() : "-";
        }
        EXPECT_EQ(atMinusOneToFive[i], found);
        EXPECT_EQ(&runtimes[i], Host().getRuntimeByName(names[i]));
    }
}

TEST_F(HostTest, FilesTheLastRuntimeUnderTheNameItHasAtRegistration)
{
    for (int i = 0; i < 2; ++i) {
        add(runtimes[i], "Shading");
        runtimes[i].setName("Other");
        EXPECT_EQ(&runtimes[i], host.getRuntimeByName("Shading"));
    }
    EXPECT_FALSE(!host.registerRuntime(TestInfo(), nullptr));
    EXPECT_EQ(1, host.getNumberOfRuntimes());
    for (const char* miss : {"Other", "shading", "Shad", "Shading ", ""})
        EXPECT_EQ(nullptr, host.getRuntimeByName(miss)) << miss;
}

TEST_F(HostTest, TerminateUnregistersEachPluginOnceInOrderAndKeepsTheRuntimes)
{
    static Runtime* owned = new Runtime;
    const auto enterOwner = [](PluginRegistrar& registrar, PluginInfo& info) {
        EXPECT_STREQ("", info.getUserName());
        info.setUserName("A long name of a plugin");
        info.setUserName(info.getUserName() + 2);
        EXPECT_FALSE(!registrar.registerRuntime(info, owned));
    };
    const auto leaveOwner = [](const PluginInfo& info) {
        delete owned;
        // Many more plugins move the records; the one given here stays valid.
        for (int i = 0; i < 8; ++i)
            selfRegisterPlugin(enter<'M'>, i == 7 ? leave : nullptr);
        leave(info);
    };
    selfRegisterPlugin(enterOwner, leaveOwner);
    selfRegisterPlugin(enter<'B'>, leave);
    EXPECT_FALSE(!host.initialize("text"));
    Host().terminate();
    EXPECT_EQ("+E+B-E+M+M+M+M+M+M+M+M-long name of a plugin-B-M", g_log);
    EXPECT_EQ(1, host.getNumberOfRuntimes());
    EXPECT_EQ(owned, host.getRuntimeAt(0));

    g_log.clear();
    selfRegisterPlugin(enter<'D'>, leave);
    host.terminate();
    host.terminate();
    EXPECT_EQ("+D-D", g_log);
}

TEST_F(HostTest, StoresAPluginWhenItsRegistrationFunctionHasReturned)
{
    const auto throwing = [](PluginRegistrar& registrar, PluginInfo& info) {
        registrar.registerRuntime(info, &runtimes[0]);
        throw std::runtime_error("no");
    };
    EXPECT_THROW(selfRegisterPlugin(throwing, leave), std::runtime_error);
    EXPECT_EQ(&runtimes[0], host.getRuntimeByName(""));
    const auto nesting = [](PluginRegistrar& registrar, PluginInfo& info) {
        enter<'O'>(registrar, info);
        selfRegisterPlugin(enter<'I'>, leave);
    };
    selfRegisterPlugin(nesting, leave);
    host.terminate();
    EXPECT_EQ("+E+O+I-E-I-O", g_log);
}

TEST_F(HostTest, TheEndOfTheProcessCallsNoPluginAndDeletesNoRuntime)
{
    const auto runAndExit = [this] {
        selfRegisterPlugin(enter<'A'>, [](const PluginInfo&) { std::abort(); });
        add(runtimes[0], "A");
        std::exit(0);
    };
    EXPECT_EXIT(runAndExit(), testing::ExitedWithCode(0), "^$");
}

} // namespace
} // namespace ZEL
