#!/usr/bin/env bash
# Plants includes that are not allowed, each in a copy of the tree's headers, and expects rooms.sh to
# name file, line and include, and nothing else.
#   planted.sh WORK    the folder for the copy
set -euo pipefail
work=${1:?usage: $0 WORK}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$(cd "$here/../.." && pwd)

rm -rf "$work"
mkdir -p "$work"
cp -r "$tree"/{include,core,editor,graph,plugins,commands,host,python} "$work"
mkdir -p "$work/docs" "$work"/host/window "$work"/python/{binding,zel,shading}
cp "$tree"/docs/house.{md,svg} "$work/docs"

faults=0
# expect FILE INCLUDE [MESSAGE]: the file with that line, and what is said; nothing if it may stand.
expect()
{
    local file=$1 include=$2 message=${3:-} shown wanted=
    [[ -z $message ]] || wanted="$file:2: $message"
    printf '#pragma once\n#include %s\n' "$include" >"$work/$file"
    shown=$("$here/rooms.sh" check "$work" | grep -v '^[<>0-9]\|^docs/' || true)
    if [[ $shown != "$wanted" ]]; then
        printf '%s with %s\n  shows:   %s\n  instead: %s\n' "$file" "$include" "$shown" "$wanted"
        faults=$((faults + 1))
    fi
    rm "$work/$file"
}

expect host/document/planted.h '"reading/openDocument.h"' "document may not include reading/openDocument.h"
expect host/document/planted.h '<shell/shell.h>' "document may not include shell/shell.h"
expect host/base/planted.h '"format/value.h"' "base may not include format/value.h"
expect host/session/planted.h '"views/report.h"' "session may not include views/report.h"
expect host/window/planted.h '"shell/terminal.h"' "window may not include shell/terminal.h"
expect host/views/planted.h '"document/node.h"' "views may not include document/node.h"
expect host/check/planted.h '"draw/zelPicture.h"' "check may not include draw/zelPicture.h"
expect host/edits/planted.h '"edits.h"' "edits may not include edits.h"
expect host/edits/planted.h '"../shell/shell.h"' "edits may not include ../shell/shell.h"
expect host/edits/planted.h '"graph/zelPortOrder.h"' "edits may not include graph/zelPortOrder.h"
expect core/zelPlanted.h '"graph/zelPortOrder.h"' "core may not include graph/zelPortOrder.h"
expect include/zelPlanted.h '"core/zelText.h"' "include may not include core/zelText.h"
expect graph/zelPlanted.h '"document/node.h"' "graph may not include document/node.h"
expect host/planted.h '"zel.h"' "the room planted.h is in no list"
expect python/zel/planted.h '"document/node.h"' "zel may not include document/node.h"
expect python/zel/planted.h '"graph/zelPortOrder.h"' "zel may not include graph/zelPortOrder.h"
expect python/zel/planted.h '"shading/module.h"' "zel may not include shading/module.h"
expect python/binding/planted.h '"zel/module.h"' "binding may not include zel/module.h"
expect python/binding/planted.h '"views/json.h"' "binding may not include views/json.h"
expect python/shading/planted.h '"zel/module.h"' "shading may not include zel/module.h"
expect python/shading/planted.h '"shell/watcher.h"' "shading may not include shell/watcher.h"
expect host/session/planted.h '<pybind11/pybind11.h>' "session may not include pybind11/pybind11.h"
expect host/session/planted.h '"shading/module.h"' "session may not include shading/module.h"
expect graph/zelPlanted.h '<Python.h>' "graph may not include Python.h"
expect host/window/planted.h '"session/session.h"'
expect python/zel/planted.h '<pybind11/pybind11.h>'
expect python/zel/planted.h '"zelNode.h"'
expect python/binding/planted.h '<Python.h>'
expect python/shading/planted.h '"binding/planted.h"'
expect python/shading/planted.h '"console/console.h"'
expect python/shading/planted.h '"draw/zelPicture.h"'
expect host/draw/planted.h '"document/names.h"'
expect host/reading/planted.h '<sys/stat.h>'
((faults == 0)) || exit 1
