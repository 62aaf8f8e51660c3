#!/usr/bin/env bash
# Who may include whom, and the page and the picture that say so: docs/house.md, docs/house.svg.
#   rooms.sh check [TREE]    prints FILE:LINE and each include that is not allowed, and fails; then
#                            compares the picture with the includes, and the page with the files
#   rooms.sh edges [TREE]    prints "ROOM OTHER" for each room that includes another
set -euo pipefail
export LC_ALL=C
action=${1:?usage: $0 check|edges [TREE]}
cd "${2:-"$(dirname "${BASH_SOURCE[0]}")/../.."}"
faults=0

# The rooms in their order: each may include what stands before it.
library=(core editor graph plugins commands)
host=(base format definitions document reading edits saving session)
aside=(check draw views)     # For any host: no state; of the host they know names, flow, base.
tops=(shell window shading)  # None knows another. Under them: the console. shading is Python's.
binding=(binding zel)        # Python's view of the library: its public headers alone.
users=(conformance examples) # They use the library as everybody does.

declare -A may
before=
for room in include "${users[@]}"; do
    may[$room]=" "
done
for room in "${library[@]}"; do
    may[$room]=" $before "
    before+=" $room"
done
before=
for room in "${host[@]}"; do
    may[$room]=" $before "
    before+=" $room"
    # The class of the definitions, for the host and the plugin.
    if [[ $room == format ]]; then
        before+=" shadingDefinition.h"
    fi
done
for room in "${aside[@]}"; do
    may[$room]=" base document/flow.h document/names.h "
done
may[views]+="shadingDefinition.h "
for room in console "${tops[@]}"; do
    may[$room]=" $before ${aside[*]} "
done
for room in "${tops[@]}"; do
    may[$room]+="console "
done
for room in "${binding[@]}" shading; do
    may[$room]+=" pybind11 Python.h "
done
for room in zel shading; do
    may[$room]+=" binding "
done

# The room of a file: a folder of host/, of python/, or of the tree.
room_of()
{
    room=${1#host/}
    room=${room#python/}
    room=${room%%/*}
}

# Whether the room may include the path, written with that first sign: < or ".
allowed()
{
    local room=$1 sign=$2 path=$3 first=${3%%/*}
    if [[ $path == *..* ]]; then
        return 1
    elif [[ $first == pybind11 || $first == Python.h ]]; then
        [[ ${may[$room]} == *" $first "* ]]
    elif [[ $path != */* ]]; then # A header of the library or of the system, or of the folder itself.
        [[ $sign == '<' || -e include/$path || ${may[$room]} == *" $path "* ]] \
            || [[ " include ${library[*]} ${users[*]} " == *" $room "* ]]
    elif [[ -z ${may[$first]+known} ]]; then
        [[ $sign == '<' || $room == examples ]]
    else
        [[ $first == "$room" || ${may[$room]} == *" $first "* || ${may[$room]} == *" $path "* ]]
    fi
}

folders=()
for folder in include "${library[@]}" "${users[@]}" host python; do
    if [[ -d $folder ]]; then
        folders+=("$folder")
    fi
done
edges=
while IFS=: read -r file line text; do
    [[ $text =~ include[[:space:]]*([\"\<])([^\">]+) ]] || continue
    sign=${BASH_REMATCH[1]} path=${BASH_REMATCH[2]}
    room_of "$file"
    if [[ -z ${may[$room]+known} ]]; then
        echo "$file:$line: the room $room is in no list"
        faults=$((faults + 1))
    elif ! allowed "$room" "$sign" "$path"; then
        echo "$file:$line: $room may not include $path"
        faults=$((faults + 1))
    fi
    other=${path%%/*}
    if [[ $file == @(host|python)/* && $path == */* && $other != "$room" ]] \
        && [[ -d host/$other || -d python/$other ]]; then
        edges+="$room $other"$'\n'
    fi
done < <(grep -rnE --include='*.h' --include='*.cpp' '^[[:space:]]*#[[:space:]]*include' "${folders[@]}")
edges=$(sort -u <<<"${edges%$'\n'}")

if [[ $action == edges ]]; then
    printf '%s\n' "$edges"
    exit
fi
drawn=$(sed -n 's|^<title>\([a-z]*\)&#45;&gt;\([a-z]*\)</title>$|\1 \2|p' docs/house.svg | sort -u)
if [[ $drawn != "$edges" ]]; then
    echo "docs/house.svg does not show the includes of today: draw it with scripts/draw-rooms"
    diff <(printf '%s\n' "$drawn") <(printf '%s\n' "$edges") || true
    faults=$((faults + 1))
fi
while read -r path; do
    if [[ ! -e $path ]]; then
        echo "docs/house.md: there is no $path"
        faults=$((faults + 1))
    fi
done < <(grep -ohE '`(host|python|scripts|tests|tools)/[A-Za-z/.-]+`' docs/house.md | tr -d '`' | sort -u)
((faults == 0)) || exit 1
