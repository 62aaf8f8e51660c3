#!/usr/bin/env bash
# The completions of bash offer what fits, and files by what they are called; the pages and the other
# shells' completions are well formed, as far as there are programs that say so.
set -euo pipefail
packaging=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../../packaging" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
touch one.mtlx "two words.mtlx" three.so four.png five.zeledit six.txt
mkdir seven

# offers WANTED WORD...: the words are typed up to the last, which is to be completed.
offers()
{
    local wanted=$1 shown
    shift
    # bash -i has no terminal here; compopt, which works only while a line is completed, does nothing.
    shown=$(bash --norc -c 'compopt() { :; }; source "$1" && shift
        name=$1; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
        function=$(complete -p "$name" | sed "s/.*-F \([^ ]*\) .*/\1/")
        "$function" "$name" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
        printf "%s\n" "${COMPREPLY[@]}" | sort | paste -sd,' \
        offers "$packaging/completion/$1.bash" "$@")
    if [[ $shown != "$wanted" ]]; then
        printf 'for "%s": "%s" instead of "%s"\n' "$*" "$shown" "$wanted"
        exit 1
    fi
}

export LC_ALL=C.UTF-8
offers "one.mtlx,seven,two words.mtlx" zelsh ""
offers "two words.mtlx" zelsh tw
offers "--strict" zelsh --s
offers "seven,three.so" zelsh --plugin ""
offers "one.mtlx,seven,two words.mtlx" zelsh one.mtlx --library ""
offers "disconnect,disconnect-all" zelsh one.mtlx -c disc
offers "" zelsh one.mtlx -c nothing
offers "one.mtlx,seven,two words.mtlx" zeledit one.mtlx ""
offers "dark,light" zeledit --theme ""
offers "four.png,seven" zeledit --screenshot ""
offers "five.zeledit,seven" zeledit --script ""
offers "" zeledit --size ""
offers "--screenshot,--script" zeledit --sc

# checks PROGRAM ARGUMENT...: it says nothing, where it is there.
checks()
{
    local said
    if ! command -v "$1" >/dev/null; then
        echo "No $1: not checked by it"
        return 0
    fi
    said=$("$@" 2>&1 >/dev/null) && [[ -z $said ]] || { printf '%s:\n%s\n' "$*" "$said"; exit 1; }
}

for file in "$packaging"/completion/*; do
    case $file in
    *.zsh) checks zsh -n "$file" ;;
    *.fish) checks fish --no-execute "$file" ;;
    esac
done
for page in "$packaging"/man/*; do
    checks man --warnings -E UTF-8 -l -Tutf8 -Z "$page"
    checks mandoc -T lint -W warning "$page"
done
if command -v fish >/dev/null; then
    shown=$(HOME=$work fish --no-config -c "source '$packaging/completion/zelsh.fish'; complete -C 'zelsh one.mtlx -c disc'" \
        | cut -f 1 | sort | paste -sd,)
    [[ $shown == disconnect,disconnect-all ]] || { echo "fish offers: $shown"; exit 1; }
fi
