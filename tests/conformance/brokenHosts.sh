#!/usr/bin/env bash
# Compares what the kit says of the broken hosts with brokenHosts.txt.
#   brokenHosts.sh PROGRAM...
set -euo pipefail
expected=$(dirname "${BASH_SOURCE[0]}")/brokenHosts.txt
# One of the hosts leaks, on purpose.
shown=$(ASAN_OPTIONS=detect_leaks=0 "$@" | tr -d '\r')
diff -u --label expected --label shown "$expected" - <<<"$shown"
