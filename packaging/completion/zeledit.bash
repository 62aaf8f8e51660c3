# bash completion for zeledit                              -*- shell-script -*-

_zeledit_files()
{
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -X "!*.$1" -- "$2"; compgen -d -- "$2")
}

_zeledit()
{
    local word=$2 previous=$3 words
    COMPREPLY=()
    case $previous in
    --plugin) _zeledit_files so "$word"; return ;;
    --library) _zeledit_files mtlx "$word"; return ;;
    --screenshot) _zeledit_files png "$word"; return ;;
    --script) _zeledit_files zeledit "$word"; return ;;
    --theme) mapfile -t COMPREPLY < <(compgen -W "light dark" -- "$word"); return ;;
    --size | --compound) return ;;
    esac
    if [[ $word == -* ]]; then
        words="--compound --help --keys --library --plugin --screenshot --script --size --theme --verbose"
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        _zeledit_files mtlx "$word"
    fi
}

complete -F _zeledit zeledit
