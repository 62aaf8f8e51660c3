#include "zel/registry.h"

#include "binding/owned.h"
#include "binding/wrapperCaster.h"
#include "zel/pyContainer.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <unordered_set>
#include <vector>

namespace zelpython {

namespace py = pybind11;

namespace {

/// Never destroyed: the registry knows its runtimes until the process ends.
struct RegistryState {
    std::unordered_set<const ZEL::Runtime*> gone; ///< Compared only.
    /// What is still to be taken out of the registry, by the name that it has there.
    std::map<std::string, const ZEL::Runtime*> toBury;
    std::vector<PyRef> kept; ///< The runtimes of Python.
    ZEL::Runtime grave;      ///< Stands in the registry for what is gone.
    bool hasLast = false;    ///< The grave stands behind all others, too.
    bool isWatched = false;  ///< Until the next terminate.
    int unregistrations = 0; ///< Under way.
};

RegistryState& registryState()
{
    static RegistryState& state = *new RegistryState;
    return state;
}

/// Behind all names that people give.
constexpr const char* kLastName = "\xff\xff\xff\xff\xff\xff\xff\xff";

/// The plugin of the bindings has nothing of its own.
void registerNothing(ZEL::PluginRegistrar& /*registrar*/, ZEL::PluginInfo& /*info*/) {}

void fileGrave(const char* name)
{
    class Info final : public ZEL::PluginInfo {
    public:
        void setUserName(const char* /*name*/) override {}
        const char* getUserName() const override { return ""; }
    };
    ZEL::Runtime& grave = registryState().grave;
    grave.setName(name);
    ZEL::Host().registerRuntime(Info(), &grave);
}

/// The runtimes of C++ that the registry has.
std::vector<ZEL::Runtime*> foreignRuntimes()
{
    // The last of several is not to be had by its index: so there must be one behind it.
    ZEL::Host host;
    RegistryState& state = registryState();
    if (!state.hasLast && host.getNumberOfRuntimes() > 1) {
        fileGrave(kLastName);
        state.hasLast = true;
    }
    std::vector<ZEL::Runtime*> found;
    for (int i = 0; i < host.getNumberOfRuntimes(); ++i) {
        ZEL::Runtime* const runtime = host.getRuntimeAt(i);
        if (runtime != &state.grave && state.gone.count(runtime) == 0 &&
            !dynamic_cast<Half*>(runtime))
            found.push_back(runtime);
    }
    return found;
}

/// The Python objects of the runtime are nobody's from now on.
void forgetWrappers(ZEL::Runtime* runtime)
{
    const py::detail::type_info* const type = typeOf<ZEL::Runtime>();
    std::vector<py::detail::instance*> wrappers;
    const auto range = py::detail::get_internals().registered_instances.equal_range(runtime);
    for (auto it = range.first; it != range.second; ++it) {
        if (PyType_IsSubtype(Py_TYPE(it->second), type->type) != 0)
            wrappers.push_back(it->second);
    }
    for (py::detail::instance* const wrapper : wrappers) {
        py::detail::value_and_holder place = wrapper->get_value_and_holder(type);
        if (place.holder_constructed()) {
            using Holder = PyUnique<ZEL::Runtime>;
            place.holder<Holder>().~Holder();
            place.set_holder_constructed(false);
        }
        py::detail::deregister_instance(wrapper, runtime, type);
        place.set_instance_registered(false);
        place.value_ptr() = nullptr;
    }
}

/// The first of all plugins to be told: the others delete their runtimes.
void onTerminate(const ZEL::PluginInfo& /*info*/)
{
    RegistryState& state = registryState();
    state.isWatched = false;
    if (Py_IsInitialized() == 0)
        return;
    ZEL::Host host;
    for (ZEL::Runtime* const runtime : foreignRuntimes()) {
        for (PyContainer* const container : PyContainer::all())
            container->leave(*runtime);
        forgetWrappers(runtime);
        if (host.getRuntimeByName(runtime->getName()) == runtime)
            state.toBury[runtime->getName()] = runtime;
        state.gone.insert(runtime);
    }
}

/// Takes what is gone out of the registry, so that one that is registered later at the same address
/// is found.
void bury()
{
    RegistryState& state = registryState();
    if (state.unregistrations > 0)
        return;
    ZEL::Host host;
    for (const auto& [name, runtime] : std::exchange(state.toBury, {})) {
        if (host.getRuntimeByName(name.c_str()) != runtime)
            continue;
        fileGrave(name.c_str());
        state.gone.erase(runtime);
    }
}

ZEL::Runtime* unlessGone(ZEL::Runtime* runtime)
{
    const RegistryState& state = registryState();
    return runtime == &state.grave || state.gone.count(runtime) > 0 ? nullptr : runtime;
}

} // namespace

void watchRegistry()
{
    RegistryState& state = registryState();
    if (state.isWatched || state.unregistrations > 0)
        return;
    bury();
    state.isWatched = true;
    ZEL::selfRegisterPlugin(registerNothing, onTerminate);
}

int countRuntimes()
{
    return ZEL::Host().getNumberOfRuntimes() - (registryState().hasLast ? 1 : 0);
}

ZEL::Runtime* runtimeAt(int index)
{
    watchRegistry();
    return index < countRuntimes() ? unlessGone(ZEL::Host().getRuntimeAt(index)) : nullptr;
}

ZEL::Runtime* runtimeNamed(const char* name)
{
    watchRegistry();
    return unlessGone(ZEL::Host().getRuntimeByName(name));
}

void keepForRegistry(ZEL::Runtime& runtime)
{
    const auto* const half = dynamic_cast<Half*>(&runtime);
    std::vector<PyRef>& kept = registryState().kept;
    const auto isIt = [&](const PyRef& known) { return known.get() == half->self(); };
    if (half && std::none_of(kept.begin(), kept.end(), isIt))
        kept.push_back(PyRef::borrow(half->self()));
}

void terminateRegistry()
{
    Unregistration::forbid("the plugins are being unregistered already");
    if (PyContainer::isAnyBeingRebuilt())
        throw std::runtime_error("compounds are being rebuilt: end the plugins afterwards");
    if (shared().runtimesInUse > 0)
        throw std::runtime_error("a plugin's runtime is in use until the process ends");
    watchRegistry();
    ZEL::Host().terminate();
    watchRegistry();
}

Unregistration::Unregistration()
{
    ++registryState().unregistrations;
}

Unregistration::~Unregistration()
{
    --registryState().unregistrations;
}

void Unregistration::forbid(const char* reason)
{
    if (registryState().unregistrations > 0)
        throw std::runtime_error(reason);
}

} // namespace zelpython
