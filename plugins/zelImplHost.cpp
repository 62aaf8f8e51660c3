#include "zelImplHost.h"

#include "core/zelMadeEarly.h"
#include "core/zelText.h"
#include "zelRuntime.h"

#include <iterator>

namespace ZEL {

ImplHost& registry()
{
    static ImplHost made;
    return made;
}

namespace {
ZEL_MADE_EARLY(registry);
}

void ImplPluginInfo::setUserName(const char* name)
{
    // Copied before the old text is freed: name may point into it.
    std::string copy(orEmpty(name));
    userName.swap(copy);
}

const char* ImplPluginInfo::getUserName() const
{
    return userName.c_str();
}

void ImplHost::registerPlugin(void (*registerFunction)(PluginRegistrar&, PluginInfo&),
                              void (*unregisterFunction)(const PluginInfo&))
{
    if (!registerFunction)
        return;
    ImplPluginInfo info;
    info.registerFunction = registerFunction;
    info.unregisterFunction = unregisterFunction;
    Host registrar;
    registerFunction(registrar, info);
    m_plugins.push_back(info);
}

StatusStr ImplHost::registerRuntime(const PluginInfo& /*info*/, Runtime* runtime)
{
    if (runtime)
        m_runtimes[runtime->getName()] = runtime;
    return {};
}

StatusStr ImplHost::initialize(const char* text)
{
    m_initString = orEmpty(text);
    return {};
}

void ImplHost::terminate()
{
    // Contract: the length is read on every turn; a function may register another plugin. The
    // record is copied for the call because that may move the records.
    for (std::size_t i = 0; i < m_plugins.size(); ++i) {
        const ImplPluginInfo info(m_plugins[i]);
        if (info.unregisterFunction)
            info.unregisterFunction(info);
    }
    // Contract: the runtimes stay.
    m_plugins.clear();
}

int ImplHost::getNumberOfRuntimes()
{
    return static_cast<int>(m_runtimes.size());
}

Runtime* ImplHost::getRuntimeAt(int index)
{
    if (index < 0 || index >= getNumberOfRuntimes())
        return nullptr;
    // Contract: 0 and 1 give the first runtime, any other index the one before its place.
    return std::next(m_runtimes.begin(), index <= 1 ? 0 : index - 1)->second;
}

Runtime* ImplHost::getRuntimeByName(const char* name)
{
    const auto place = m_runtimes.find(orEmpty(name));
    return !name || place == m_runtimes.end() ? nullptr : place->second;
}

} // namespace ZEL
