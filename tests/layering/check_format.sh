#!/bin/sh
# Names every source file that clang-format would change.
#   check_format.sh SOURCE_ROOT
set -eu
cd "$1"
# clang-format tells of every line; the names are enough.
faults=$(find src tests bench -type f \( -name '*.h' -o -name '*.cpp' \) -exec clang-format -n {} + 2>&1 |
  sed -n 's/:[0-9]*:[0-9]*: .*//p' | sort -u)
[ -z "$faults" ] && exit 0
echo "$faults" | sed 's/$/: not formatted. Way out: clang-format -i./'
exit 1
