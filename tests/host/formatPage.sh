#!/usr/bin/env bash
# The page on the rules of the format against the tests and the rules that there are.
#   formatPage.sh TESTS    prints what does not fit and fails: TESTS is the program hostTests
set -euo pipefail
export LC_ALL=C
tests=${1:?usage: $0 TESTS}
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
page=docs/format.md
faults=0

present=$("$tests" --gtest_list_tests | awk '/^[^ ]/ { suite = $1; next } { print suite $1 }')
while read -r name; do
    grep -qxF "$name" <<<"$present" || { echo "$page: there is no test $name"; faults=1; }
done < <(grep -oE '`[A-Z][A-Za-z]*\.[A-Z][A-Za-z]*`' "$page" | tr -d '`' | sort -u)

# A row for each rule, and a rule for each row that names a test.
rules=$(sed -n '/enum class Rule {/,/};/s/^ *\([A-Z][a-z]*\),.*/\L\1/p' host/format/validator.h | sort)
rows=$(awk -F ' *[|] *' '/^[|] [a-z]+ [|].*`[A-Z]/ { print $2 }' "$page" | sort)
[[ -n $rules ]] || { echo "no rules in host/format/validator.h"; faults=1; }
diff <(echo "$rules") <(echo "$rows") || { echo "$page: < rules, > rows with a test"; faults=1; }
exit $faults
