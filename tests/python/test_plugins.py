"""The registry of the process: plugins in C++ and in Python. Each test has a process of its own, for
the registry forgets no runtime."""

import subprocess
import sys
import textwrap

import pytest

try:
    from zel.shading._paths import plugin as PLUGIN
except ImportError:
    PLUGIN = ""

needs_plugin = pytest.mark.skipif(not PLUGIN, reason="the sample plugin is not built")


PRELUDE = """
import gc, sys, zel
host = zel.Host()

class Document(zel.Container):
    rebuilt = 0
    def getRootNode(self): return None
    def getRuntime(self): return None
    def rebuildCompounds(self): self.rebuilt += 1

def raises(kind, call, *arguments):
    try:
        call(*arguments)
    except kind as error:
        return str(error)
    raise AssertionError("nothing was raised")
"""


def run(code):
    code = PRELUDE + textwrap.dedent(code)
    done = subprocess.run(
        [sys.executable, "-c", code, PLUGIN], capture_output=True, text=True, timeout=120
    )
    assert (done.returncode, done.stderr) == (0, ""), done.stdout + done.stderr
    return done.stdout.splitlines()


def test_a_plugin_in_python_registers_a_runtime_that_stays():
    assert run("""
        class Mine(zel.Runtime):
            def getNumberOfPortDataTypes(self): return 42

        def register(registrar, info):
            info.setUserName("mine")
            runtime = Mine()
            runtime.setName("Mine")
            assert registrar.registerRuntime(info, runtime) is None
            runtime.setName("Renamed")
            host.registerRuntime(info, None)
            register.kept = registrar, info

        def unregister(info):
            print(info.getUserName())
            print(raises(RuntimeError, info.setUserName, "other"))
            print(raises(RuntimeError, host.terminate))
            unregister.kept = info

        zel.selfRegisterPlugin(register, unregister)
        gc.collect()
        assert host.initialize("text") is None
        assert host.getNumberOfRuntimes() == 1 and host.getRuntimeByName("Renamed") is None
        runtime = host.getRuntimeByName("Mine")
        assert type(runtime) is Mine and host.getRuntimeAt(0) is runtime
        assert runtime.getNumberOfPortDataTypes() == 42 and host.getRuntimeAt(1) is None
        registrar, info = register.kept
        for call in (info.getUserName, lambda: info.setUserName("late"),
                     lambda: registrar.registerRuntime(info, runtime),
                     lambda: host.registerRuntime(info, runtime)):
            raises(ReferenceError, call)
        host.terminate()
        raises(ReferenceError, unregister.kept.getUserName)
        host.terminate()
        assert zel.Host().getRuntimeByName("Mine") is runtime
    """) == [
        "mine",
        "a plugin is named in its registration function",
        "the plugins are being unregistered already",
    ]


def test_plugins_are_unregistered_once_in_the_order_of_registration():
    assert run("""
        def plugin(name, inner=None, raising=None):
            def register(registrar, info):
                info.setUserName(name)
                if inner:
                    zel.selfRegisterPlugin(*inner)
                if raising:
                    raise raising
            def unregister(info):
                print(name, info.getUserName())
                if name == "b":
                    zel.selfRegisterPlugin(*plugin("late"))
                if name in "ac":
                    raise LookupError(name)
            return register, unregister

        zel.selfRegisterPlugin(None)
        zel.selfRegisterPlugin(plugin("a")[0])  # Nobody tells it of the end.
        zel.selfRegisterPlugin(*plugin("a", plugin("inner")))
        try:
            zel.selfRegisterPlugin(*plugin("failed", plugin("stays"), KeyError("no")))
            print("nothing was raised")
        except KeyError:
            pass
        zel.selfRegisterPlugin(*plugin("b"))
        zel.selfRegisterPlugin(*plugin("c"))
        sys.unraisablehook = lambda entry: print("unraisable", entry.exc_value)
        try:
            host.terminate()
        except LookupError as error:
            print("raised", error)
        host.terminate()
        for wrong in ((1,), (print, 2)):
            try:
                zel.selfRegisterPlugin(*wrong)
                print("nothing was raised")
            except TypeError:
                pass
    """) == [
        "inner inner", "a a", "stays stays", "b b", "c c", "unraisable c", "late late", "raised a"
    ]


@needs_plugin
def test_a_plugin_in_cpp_is_used_from_python():
    run("""
        assert zel.Host.loadModule(sys.argv[1]) is None
        runtime = host.getRuntimeByName("Shading")
        assert host.getNumberOfRuntimes() == 1 and host.getRuntimeAt(1) is None
        assert host.getRuntimeAt(0) is runtime and runtime.getName() == "Shading"
        assert runtime.getPortDataType("color3").getName() == "color3"
        assert runtime.getPortDataType(0) is not None and runtime.getPortDataType("no") is None
        library = runtime.getNodeLibrary()
        first = library.getSubLibraryAt(0).getNodeAt(0)
        assert type(first) is zel.NodeDefinition and first.getName()
        document = Document()
        runtime.registerContainer(document)
        runtime.forceRebuildCompounds()
        assert document.rebuilt == 1
        raises(TypeError, zel.Host.loadModule, 7)
    """)


@needs_plugin
def test_what_a_plugin_deleted_is_gone_for_python():
    run("""
        import pathlib
        host.loadModule(pathlib.Path(sys.argv[1]))

        def register(registrar, info):
            for name in ("A", "Z"):
                own = zel.Runtime()
                own.setName(name)
                registrar.registerRuntime(info, own)

        seen = []
        def unregister(info):
            seen.append(host.getRuntimeByName("Shading"))
            seen.append(raises(RuntimeError, host.loadModule, sys.argv[1]))
            seen.append(raises(TypeError, runtime.getNodeLibrary))

        zel.selfRegisterPlugin(register, unregister)
        runtime = host.getRuntimeByName("Shading")
        definition = runtime.getNodeLibrary().getSubLibraryAt(0).getNodeAt(0)
        own = host.getRuntimeByName("Z")
        document, other = Document(), Document()
        for each in (runtime, own):
            each.registerContainer(document)
        runtime.registerContainer(other)
        class InRebuild(Document):
            def rebuildCompounds(self):
                seen.append(raises(RuntimeError, host.terminate))
        rebuilding = InRebuild()
        runtime.registerContainer(rebuilding)
        runtime.forceRebuildCompounds()
        assert len(seen) == 1 and host.getRuntimeByName("Shading") is runtime
        host.terminate()
        assert seen[1] is None and len(seen) == 4
        assert host.getNumberOfRuntimes() == 3
        assert host.getRuntimeByName("Shading") is None
        assert [host.getRuntimeAt(i) for i in (0, 1, 2)][:2] == [host.getRuntimeByName("A")] * 2
        for call in (runtime.getName, runtime.forceRebuildCompounds,
                     lambda: runtime.registerContainer(document),
                     lambda: own.sameName(runtime)):
            assert "C++ destroyed it" in raises(TypeError, call)
        assert definition.getName()
        del runtime, other
        own.forceRebuildCompounds()
        assert document.rebuilt == 2
        del document
        gc.collect()
        host.terminate()
        assert host.getRuntimeByName("Shading") is None
    """)


@needs_plugin
def test_the_last_runtime_of_several_goes_too():
    run("""
        def register(registrar, info):
            own = zel.Runtime()
            own.setName("A")
            registrar.registerRuntime(info, own)
        zel.selfRegisterPlugin(register)
        host.loadModule(sys.argv[1])
        assert host.getNumberOfRuntimes() == 2
        host.terminate()  # Nobody looked at it before.
        assert host.getRuntimeByName("Shading") is None and host.getNumberOfRuntimes() == 2
        assert host.getRuntimeAt(2) is None
    """)


def test_what_is_no_module_is_an_os_error(tmp_path):
    (tmp_path / "text.so").write_text("no module")
    assert run(f"""
        for path in ({str(tmp_path / "none.so")!r}, {str(tmp_path / "text.so")!r}, ""):
            print(raises(OSError, host.loadModule, path))
        raises(ValueError, host.loadModule, "a\\0b")
    """) == [
        f"{tmp_path}/none.so: cannot open shared object file: No such file or directory",
        f"{tmp_path}/text.so: file too short",
        "a module needs a path",
    ]


def test_a_plugin_and_its_runtime_outlive_the_interpreter():
    assert run("""
        class Mine(zel.Runtime):
            def __del__(self): print("never")
        def register(registrar, info):
            own = Mine()
            own.setName("Mine")
            own.library = zel.NodeLibrary("root")
            own.document = Document()
            own.registerContainer(own.document)
            own.setNodeLibrary(own.library)
            registrar.registerRuntime(info, own)
            registrar.registerRuntime(info, own)
        zel.selfRegisterPlugin(register, lambda info: None)
    """) == []


def test_infos_and_registrars_are_not_made_in_python():
    run("""
        for kind in (zel.PluginInfo, zel.PluginRegistrar):
            raises(TypeError, kind)
            raises(TypeError, kind.__new__(kind).__reduce_ex__, 2)
        raises(TypeError, lambda: type("Mine", (zel.Host,), {}))
        raises(TypeError, zel.PluginInfo.__new__(zel.PluginInfo).getUserName)
    """)
