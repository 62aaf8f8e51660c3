#include "binding/error.h"
#include "zel/classes.h"
#include "zel/moduleFile.h"
#include "zel/registry.h"

#include <deque>
#include <memory>

namespace zelpython {

namespace {

/// What a function of a plugin is given, for as long as the call lasts: Python may keep it.
template <class T>
class Lent {
public:
    explicit Lent(T& object) : m_object(&object) {}

    /// Raises ReferenceError after the call.
    T& get() const
    {
        if (!m_object)
            raiseReferenceError("it was for the call of the plugin's function only");
        return *m_object;
    }
    void takeBack() { m_object = nullptr; }

private:
    T* m_object;
};

/// An info may only be read where the library hands it out so.
struct LentInfo : Lent<const ZEL::PluginInfo> {
    explicit LentInfo(const ZEL::PluginInfo& info) : Lent(info) {}

    bool isFinal = true;
};

using LentRegistrar = Lent<ZEL::PluginRegistrar>;

/// Makes the Python object for one call.
template <class L>
class Lending {
public:
    template <class Object>
    explicit Lending(Object& object) : m_lent(std::make_shared<L>(object))
    {
    }
    Lending(const Lending&) = delete;
    Lending& operator=(const Lending&) = delete;
    ~Lending() { m_lent->takeBack(); }

    const std::shared_ptr<L>& get() const { return m_lent; }

private:
    std::shared_ptr<L> m_lent;
};

// The library calls plain functions: which Python function it is stands here.
const py::object* g_registering = nullptr;

/// Of the plugins of Python, in the order of their registration. Never destroyed.
std::deque<PyRef>& unregisterFunctions()
{
    static std::deque<PyRef>& functions = *new std::deque<PyRef>;
    return functions;
}

/// What is raised here leaves the plugin out, and goes on to whoever registers it.
void registerFromPython(ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info)
{
    const py::object function = *std::exchange(g_registering, nullptr);
    const Lending<LentRegistrar> lentRegistrar(registrar);
    const Lending<LentInfo> lentInfo(info);
    lentInfo.get()->isFinal = false;
    function(lentRegistrar.get(), lentInfo.get());
}

void unregisterFromPython(const ZEL::PluginInfo& info)
{
    if (unregisterFunctions().empty() || !isInterpreterAlive())
        return;
    const PyRef function = std::move(unregisterFunctions().front());
    unregisterFunctions().pop_front();
    const Unregistration call;
    const Lending<LentInfo> lent(info);
    callBack(py::reinterpret_borrow<py::function>(function.get()), py::cast(lent.get()));
}

void selfRegisterPlugin(const py::object& registerFunction, const py::object& unregisterFunction)
{
    for (const py::object& function : {registerFunction, unregisterFunction}) {
        if (!function.is_none() && PyCallable_Check(function.ptr()) == 0)
            throw py::type_error("a plugin is two functions, each of which may be None");
    }
    if (registerFunction.is_none())
        return;
    watchRegistry();
    g_registering = &registerFunction;
    const bool isTold = !unregisterFunction.is_none();
    ZEL::selfRegisterPlugin(registerFromPython, isTold ? unregisterFromPython : nullptr);
    if (isTold)
        unregisterFunctions().push_back(PyRef::borrow(unregisterFunction.ptr()));
}

void registerRuntime(ZEL::PluginRegistrar& registrar, const LentInfo& info, ZEL::Runtime* runtime)
{
    const ZEL::StatusStr status = registrar.registerRuntime(info.get(), runtime);
    if (!status)
        raiseError(status.getErrorString());
    if (runtime)
        keepForRegistry(*runtime);
}

/// Raises OSError when the module cannot be loaded.
void loadModule(const py::object& path)
{
    Unregistration::forbid("the plugins are being unregistered");
    const ModuleFile file(path);
    watchRegistry();
    file.load();
}

void bindInfo(py::module_& module)
{
    using Class = py::class_<LentInfo, std::shared_ptr<LentInfo>>;
    Binding<Class>(module, "PluginInfo", py::is_final())
        .def(
            "setUserName",
            [](const LentInfo& self, const OptionalText& name) {
                const ZEL::PluginInfo& info = self.get();
                if (self.isFinal)
                    throw std::runtime_error("a plugin is named in its registration function");
                const_cast<ZEL::PluginInfo&>(info).setUserName(name);
            },
            py::arg("name").none(true))
        .def("getUserName",
             [](const LentInfo& self) { return toPython(self.get().getUserName()); });
}

void bindRegistrar(py::module_& module)
{
    using Class = py::class_<LentRegistrar, std::shared_ptr<LentRegistrar>>;
    Binding<Class>(module, "PluginRegistrar", py::is_final())
        .def(
            "registerRuntime",
            [](const LentRegistrar& self, const LentInfo& info, ZEL::Runtime* runtime) {
                registerRuntime(self.get(), info, runtime);
            },
            py::arg("info").none(false), py::arg("runtime").none(true));
}

void bindHost(py::module_& module)
{
    using Class = py::class_<ZEL::Host, std::unique_ptr<ZEL::Host>>;
    Binding<Class>(module, "Host", py::is_final())
        .defInit([](py::detail::value_and_holder& place) { initialise(place, new ZEL::Host); })
        .def(
            "initialize",
            [](ZEL::Host& self, const OptionalText& text) {
                const ZEL::StatusStr status = self.initialize(text);
                if (!status)
                    raiseError(status.getErrorString());
            },
            py::arg("text").none(true))
        .def("terminate", [](ZEL::Host& /*self*/) { terminateRegistry(); })
        .def(
            "registerRuntime",
            [](ZEL::Host& self, const LentInfo& info, ZEL::Runtime* runtime) {
                registerRuntime(self, info, runtime);
            },
            py::arg("info").none(false), py::arg("runtime").none(true))
        .def("getNumberOfRuntimes", [](ZEL::Host& /*self*/) { return countRuntimes(); })
        .def(
            "getRuntimeAt",
            [](ZEL::Host& /*self*/, int index) { return toObject(runtimeAt(index)); },
            py::arg("index"))
        .def(
            "getRuntimeByName",
            [](ZEL::Host& /*self*/, const OptionalText& name) {
                return toObject(runtimeNamed(name));
            },
            py::arg("name").none(true))
        .defStatic("loadModule", loadModule, py::arg("path"));
}

} // namespace

void bindPlugins(py::module_& module)
{
    bindInfo(module);
    bindRegistrar(module);
    bindHost(module);
    defineLater([module]() mutable {
        module.def("selfRegisterPlugin", guarded(selfRegisterPlugin), py::arg("registerFunction"),
                   py::arg("unregisterFunction") = py::none(), docOf("", "selfRegisterPlugin"));
    });
    watchRegistry();
}

} // namespace zelpython
