#!/usr/bin/env bash
# The first steps in the window, by a script of input events: what they save is, byte for byte, what the
# shell saves after the commands that the window prints.
#   firstSteps.sh ZELEDIT ZELSH EXAMPLES
set -euo pipefail
zeledit=$1 zelsh=$2 examples=$3
document=$examples/documents/rusty_painted_gate.mtlx
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CONFIG_HOME=$folder XDG_STATE_HOME=$folder QT_QPA_PLATFORM=offscreen

{
    cat "$examples/scripts/first_steps.zeledit"
    echo "save $folder/window.mtlx"
} >"$folder/steps"
"$zeledit" "$document" --script "$folder/steps" --verbose >"$folder/commands"
{
    cat "$folder/commands"
    echo "save $folder/shell.mtlx"
} | "$zelsh" "$document" >/dev/null
cmp "$folder/window.mtlx" "$folder/shell.mtlx"
if cmp -s "$folder/window.mtlx" "$document"; then
    echo "the steps changed nothing"
    exit 1
fi
