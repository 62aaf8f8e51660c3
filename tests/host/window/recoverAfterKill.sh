#!/usr/bin/env bash
# The program is killed in the middle of its work and started again: what is recovered is, byte for byte,
# what would have been saved.
#   recoverAfterKill.sh ZELEDIT EXAMPLES
set -euo pipefail
zeledit=$1 examples=$2
folder=$(mktemp -d)
program=
trap '[ -z "$program" ] || kill -9 "$program" 2>/dev/null; rm -rf "$folder"' EXIT
export HOME=$folder XDG_CONFIG_HOME=$folder XDG_STATE_HOME=$folder/state QT_QPA_PLATFORM=offscreen
document=$folder/gate.mtlx
cp "$examples/documents/rusty_painted_gate.mtlx" "$document"
steps=$examples/scripts/first_steps.zeledit
kept=$folder/state/zeledit/recovery

# What would have been saved; and a program that ends leaves nothing behind.
{ cat "$steps"; echo "save $folder/expected.mtlx"; } >"$folder/saving"
"$zeledit" "$document" --script "$folder/saving"
if [ -n "$(ls "$kept")" ]; then
    echo "a program that ended left something in $kept"
    exit 1
fi

# The same without saving, and then a script that is busy for long.
{
    cat "$steps"
    echo "screenshot $folder/done.png"
    for _ in $(seq 20000); do echo "key Escape"; done
} >"$folder/working"
"$zeledit" "$document" --script "$folder/working" &
program=$!
for _ in $(seq 600); do
    if [ -s "$folder/done.png" ] && ls "$kept"/*.base >/dev/null 2>&1; then break; fi
    sleep 0.1
done
[ -s "$folder/done.png" ]
# While it lives nobody else is offered its documents.
{ echo "menu File/Recover Documents"; echo "click widget:ok"; } >"$folder/asking"
"$zeledit" --script "$folder/asking"
kill -9 "$program"
wait "$program" 2>/dev/null || true
program=

{
    echo "menu File/Recover Documents"
    echo "click widget:recover"
    echo "expect undo 4"
    echo "save $folder/recovered.mtlx"
    echo "key Ctrl+Z"
    echo "expect undo 3"
} >"$folder/recovering"
"$zeledit" --script "$folder/recovering"
cmp "$folder/expected.mtlx" "$folder/recovered.mtlx"
"$zeledit" --script "$folder/asking"
[ -z "$(ls "$kept")" ]
