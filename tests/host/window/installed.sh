#!/usr/bin/env bash
# The installed program, from a prefix that was moved: finds its libraries and its plugin, opens a document
# and paints it; what a desktop needs lies where it looks.
#   installed.sh CMAKE BUILD-FOLDER DOCUMENT
set -euo pipefail
cmake=$1 build=$2 document=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CONFIG_HOME=$folder XDG_STATE_HOME=$folder QT_QPA_PLATFORM=offscreen
unset LD_LIBRARY_PATH
"$cmake" --install "$build" --prefix "$folder/first" >/dev/null
mv "$folder/first" "$folder/moved"
share=$folder/moved/share
for file in applications/zeledit.desktop icons/hicolor/scalable/apps/zeledit.svg mime/packages/zeledit-mime.xml; do
    [[ -s $share/$file ]] || {
        echo "not installed: $file"
        exit 1
    }
done
"$folder/moved/bin/zeledit" "$document" --screenshot "$folder/window.png" --compound Top.NG_gate 2>"$folder/err"
if [[ ! -s $folder/window.png || -s $folder/err ]]; then
    cat "$folder/err"
    exit 1
fi
