#!/usr/bin/env bash
# The program as people start it: on a screen, with a window manager, by mouse and keyboard.
#   underXvfb.sh ZELEDIT DOCUMENT
# Selects a node by the keyboard, renames it, saves by Ctrl+S, undoes that, and is asked before it ends.
set -euo pipefail
zeledit=$1 document=$2
for program in Xvfb openbox xdotool xprop; do
    command -v "$program" >/dev/null || {
        echo "there is no $program here"
        exit 77
    }
done

home=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home XDG_STATE_HOME=$home XDG_RUNTIME_DIR=$home
# What libraries of the desktop keep to the end, where leaks are looked for.
printf 'leak:libdbus\nleak:libfontconfig\n' >"$home/leaks"
export LSAN_OPTIONS=suppressions=$home/leaks:print_suppressions=0
unset WAYLAND_DISPLAY QT_QPA_PLATFORM
cp "$document" "$home/gate.mtlx"

fail()
{
    echo "$*"
    xdotool search --name . getwindowname %@ 2>/dev/null | sort -u || true
    sed 's/^/zeledit: /' "$home/err" || true
    exit 1
}

# Runs a check until it holds.
wait_for()
{
    local what=$1 tries
    shift
    for ((tries = 0; tries < 200; ++tries)); do
        if "$@" >/dev/null 2>&1; then
            return
        fi
        sleep 0.1
    done
    fail "did not happen: $what"
}

exec 3<>"$home/display"
Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp >/dev/null 2>&1 &
wait_for "the display" test -s "$home/display"
DISPLAY=:$(tr -d '\n' <"$home/display")
export DISPLAY
openbox >/dev/null 2>&1 &
managed()
{
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}
wait_for "the window manager" managed
"$zeledit" "$home/gate.mtlx" >"$home/out" 2>"$home/err" &
program=$!

titled()
{
    xdotool search --onlyvisible --name "$1"
}
wait_for "a window with the name of the file" titled '^gate.mtlx - zeledit$'
window=$(titled '^gate.mtlx - zeledit$' | head -n 1)
xdotool windowactivate --sync "$window"
xdotool windowsize --sync "$window" 1400 900

# The middle of the window belongs to the canvas.
xdotool mousemove --window "$window" 700 450 click 1
sleep 0.3
xdotool key Escape # Nothing is selected.
sleep 0.3
xdotool key Right # The nearest node is.
sleep 0.3
xdotool key F2
sleep 0.5
xdotool key ctrl+a type --delay 30 renamed_here
xdotool key Return
wait_for "the mark of an edit in the title" titled '^gate.mtlx\* - zeledit$'
xdotool key ctrl+s
wait_for "the title without the mark" titled '^gate.mtlx - zeledit$'
grep -q 'name="renamed_here"' "$home/gate.mtlx" || fail "the file does not have the new name"

xdotool key ctrl+z
wait_for "the mark of an undone edit" titled '^gate.mtlx\* - zeledit$'
xdotool key ctrl+q
sleep 1
kill -0 "$program" 2>/dev/null || fail "the program ended without asking"
xdotool key alt+d # Discard.
for ((tries = 0; tries < 100; ++tries)); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.1
done
if kill -0 "$program" 2>/dev/null; then
    fail "the program did not end"
fi
wait "$program" || fail "the program failed"
if grep -qiE 'sanitizer|runtime error|critical|warning' "$home/err"; then
    fail "the program complained"
fi
