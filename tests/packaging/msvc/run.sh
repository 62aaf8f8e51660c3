#!/usr/bin/env bash
# run.sh FOLDER: builds the library, hosts and plugins as clang has it for Microsoft's target, links them
# with LLVM's linker, and runs them under Wine: slots, thunks, type information, exceptions, imports and
# exports are Microsoft's, the run-time library is Wine's copy of it, and the standard library is libc++,
# of which runtime.cpp holds what is not in headers. FOLDER takes what is made. WINEPREFIX is respected.
set -euo pipefail
mkdir -p "$1"
folder=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/../../.."
source "$here/compiler.sh"
tree=$PWD
cd "$folder"

# compile OBJECT SOURCE OPTIONS...
compile()
{
    local object=$1 source=$2
    shift 2
    "${compiler[@]}" -std=c++17 -O1 -fno-threadsafe-statics -D_LIBCPP_DISABLE_EXTERN_TEMPLATE \
        -D_LIBCPP_DISABLE_VISIBILITY_ANNOTATIONS -I "$tree/include" "$@" -c "$source" -o "$object.obj"
}

# import_library NAME DLL NAMES...: what the linker needs to know of a DLL.
import_library()
{
    local name=$1 dll=$2
    shift 2
    printf '%s\n' "LIBRARY $dll" EXPORTS "$@" >"$name.def"
    llvm-dlltool-14 -m i386:x86-64 -d "$name.def" -l "$name.lib"
}

# link OUT OPTIONS... OBJECTS...
link()
{
    local out=$1
    shift
    lld-link-14 "/out:$out" /nodefaultlib /entry:start "$@" ucrt.lib vcruntime.lib kernel.lib
}

# run PROGRAM [MODULE]: as the program prints it. The module is named by its whole path.
run()
{
    local program=$1 output
    output=$(/usr/lib/wine/wine64 "./$program" ${2:+"Z:$folder/$2"} 2>&1) \
        || { printf '%s: %s\n' "$program" "$output" >&2; return 1; }
    tr -d '\r' <<<"$output"
}

import_library ucrt ucrtbase.dll abort ceil ceilf cosh exit _Exit exp fflush floor free frexp hypot ldexp \
    malloc pow putchar puts sinh strcmp strdup strlen strncmp tanh _configure_narrow_argv \
    __acrt_iob_func __p___argc __p___argv __stdio_common_vfprintf __stdio_common_vsprintf
import_library vcruntime vcruntime140.dll memchr memcmp memcpy memmove memset strchr strrchr strstr \
    _purecall _CxxThrowException __CxxFrameHandler3 __RTDynamicCast __RTtypeid
import_library kernel kernel32.dll FormatMessageA FreeLibrary GetLastError GetProcAddress LoadLibraryA

objects=()
for room in core editor graph plugins commands; do
    printf '#include "%s"\n' "$tree/$room"/*.cpp >"$room.cpp"
    compile "$room" "$room.cpp" -DZEL_EXPORTS -I "$tree"
    objects+=("$room.obj")
done
compile runtime "$here/runtime.cpp"
compile program "$here/runtime.cpp" -DPROGRAM
link ZEL.dll /dll /implib:ZEL.lib "${objects[@]}" runtime.obj

# build_host NAME SOURCES..., build_module NAME SOURCE: both are linked with the library.
build_host()
{
    local name=$1 source objects=()
    shift
    for source; do
        compile "$name-${#objects[@]}" "$source"
        objects+=("$name-${#objects[@]}.obj")
    done
    link "$name.exe" /subsystem:console "${objects[@]}" program.obj ZEL.lib
}

build_module()
{
    compile "$1" "$2"
    link "$1.dll" /dll "$1.obj" runtime.obj ZEL.lib
}

build_host firstHost "$tree/examples/first/firstHost.cpp"
build_module firstPlugin "$tree/examples/first/firstPlugin.cpp"
build_host oldHost "$tree"/tests/abi/compatibility/{host,document}.cpp
build_module oldPlugin "$tree/tests/abi/compatibility/plugin.cpp"
build_host borderHost "$tree/tests/abi/border/host.cpp"
build_module borderModule "$tree/tests/abi/border/module.cpp"
build_host throwing "$here/throwing.cpp"

run firstHost.exe firstPlugin.dll | diff - <(printf '%s\n' "nodes: Blur Load" \
    "connected: Top.Load.Out > Top.Blur.In" "disconnected: Top.Load.Out > Top.Blur.In" \
    "connected: Top.Load.Out > Top.Blur.In")
echo "the first host and its plugin"
run oldHost.exe oldPlugin.dll | diff - "$tree/tests/abi/compatibility/expected.txt"
echo "a host and a plugin that use all of the library: $(wc -l <"$tree/tests/abi/compatibility/expected.txt") lines"
run borderHost.exe borderModule.dll | diff - <(echo "border: all as expected")
echo "types and calls across the border of modules"
run throwing.exe | diff - <(echo "refused: 7, left over: 0")
echo "an exception through the library"
