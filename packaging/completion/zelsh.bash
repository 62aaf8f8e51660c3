# bash completion for zelsh                                -*- shell-script -*-

_zelsh_files()
{
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -X "!*.$1" -- "$2"; compgen -d -- "$2")
}

_zelsh()
{
    local word=$2 previous=$3 words
    COMPREPLY=()
    case $previous in
    --plugin) _zelsh_files so "$word"; return ;;
    --library | --new) _zelsh_files mtlx "$word"; return ;;
    -c)
        words="arrange attribute backdrop check collapse connect connections copy create delete
            disconnect disconnect-all draw dump duplicate expand find help history insert
            library ls move paste port ports quit rebuild redo rename reparent reroute runtimes
            save set source stats tree types undo"
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
        return
        ;;
    esac
    if [[ $word == -* ]]; then
        words="-c -h --help --library --new --plugin --strict --watch"
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        _zelsh_files mtlx "$word"
    fi
}

complete -F _zelsh zelsh
