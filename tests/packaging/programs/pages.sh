#!/usr/bin/env bash
# What --help of a program lists, its man page and its completions list too, and nothing else.
#   pages.sh PROGRAM...
set -euo pipefail
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
packaging=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../../packaging" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" # There is no file that could be completed.

options() # The options in a text; what programs have in common without listing it is -h.
{
    grep -oE -- '(^|[^-[:alnum:]])--?[a-z][a-z-]*' | grep -oE -- '--?[a-z][a-z-]*' | grep -vx -- -h | sort -u
}

section() # A section of the man page, with hyphens as they are read.
{
    sed -n "/^\.SH $2\$/,/^\.SH /{s/\\\\-/-/g;p}" "$packaging/man/$1.1"
}

replies() # What bash offers for the last of the words.
{
    local -a COMP_WORDS=("$@") COMPREPLY=()
    "_$1" "$1" "${@: -1}" "${@: -2:1}" 2>/dev/null
    printf '%s\n' "${COMPREPLY[@]}"
}

expect() # WHAT WANTED-FILE: standard input holds the same lines.
{
    diff -u --label "wanted of $1" --label "$1" "$2" - || touch "$work/failed"
}

for path; do
    program=${path##*/}
    # shellcheck source=/dev/null
    source "$packaging/completion/$program.bash"
    "$path" --help | options >"$work/options"
    [[ $(wc -l <"$work/options") -ge 6 ]] || { echo "$program --help lists too little"; exit 1; }
    section "$program" OPTIONS | grep '^\.B' | options | expect "$program.1" "$work/options"
    replies "$program" - | options | expect "$program.bash" "$work/options"
    sed -n '/^_arguments/,$p' "$packaging/completion/$program.zsh" \
        | grep -oE -- "^ *'[^[]*\[|\{-h,--help\}" | options | expect "$program.zsh" "$work/options"
    grep -oE -- ' -(s [a-z]|l [a-z-]+)' "$packaging/completion/$program.fish" \
        | sed 's/-s / -/; s/-l / --/' | options | expect "$program.fish" "$work/options"
    if [[ $program != zelsh ]]; then
        continue
    fi
    "$path" --new none.mtlx -c help | sed -n 's/^  \([a-z-]*\) .*/\1/p' | sort >"$work/commands"
    [[ $(wc -l <"$work/commands") -ge 20 ]] || { echo "zelsh lists too few commands"; exit 1; }
    section zelsh COMMANDS | sed '1,/^tells more/d' | grep '^\.B' | grep -oE '[a-z][a-z-]+' | sort \
        | expect "the commands in zelsh.1" "$work/commands"
    replies zelsh -c "" | sort | expect "the commands in zelsh.bash" "$work/commands"
    grep -oE "^    '[a-z-]+:" "$packaging/completion/zelsh.zsh" | tr -d " ':" | sort \
        | expect "the commands in zelsh.zsh" "$work/commands"
    grep -oE '^        [a-z-]+\\t' "$packaging/completion/zelsh.fish" | tr -d ' ' | sed 's/\\t//' | sort \
        | expect "the commands in zelsh.fish" "$work/commands"
done
[[ ! -e $work/failed ]]
