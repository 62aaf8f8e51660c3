// A plugin that refuses by an exception, which leaves the library on its way to the host.

#include "zel.h"

#include <cstdio>

namespace {

struct Refusal {
    int reason;
};

int g_alive = 0;

/// Goes when the exception passes by.
struct Witness {
    Witness() { ++g_alive; }
    ~Witness() { --g_alive; }
};

void refuse(ZEL::PluginRegistrar& /*registrar*/, ZEL::PluginInfo& /*info*/)
{
    const Witness witness;
    throw Refusal{7};
}

} // namespace

int main()
{
    try {
        ZEL::selfRegisterPlugin(refuse, nullptr);
    } catch (const Refusal& refusal) {
        std::printf("refused: %d, left over: %d\n", refusal.reason, g_alive);
        return 0;
    }
    return 1;
}
