#!/usr/bin/env bash
# changelog.sh FILE VERSION: the newest entry of a Debian changelog is of that version.
set -euo pipefail
read -r package version rest <"$1"
if [[ $version != "($2-"*")" ]]; then
    printf '%s:1: %s %s %s: the version is %s\n' "$1" "$package" "$version" "$rest" "$2" >&2
    exit 1
fi
