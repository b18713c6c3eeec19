#!/usr/bin/env bash
# Reads and writes under valgrind: no errors, no leaks.
#
#     valgrind_test.sh ORVO SESSION
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
check=(valgrind --quiet --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect,possible)

"${check[@]}" "$1" info "$2"
"${check[@]}" "$1" convert "$2" "$folder/session.orvo"
"${check[@]}" "$1" convert "$2" "$folder/session.json"
"${check[@]}" "$1" convert "$folder/session.json" "$folder/again.orvo"
"${check[@]}" "$1" trace --references "$2" >"$folder/trace"
cmp "$folder/session.orvo" "$folder/again.orvo"
