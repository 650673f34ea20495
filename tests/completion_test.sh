#!/usr/bin/env bash
# What bash completes with the script that is given.
# Usage: tests/completion_test.sh SCRIPT
set -euo pipefail
export LC_ALL=C
compopt() { :; } # is for a real completion only
. "$1"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
mkdir site 'old site'
touch page.htm 'a page.htm'

failures=0
# check EXPECTED WORD...: what is proposed for the last word, sorted, with a comma between two.
check() {
  local expected=$1 found
  shift
  COMP_WORDS=(tsl "$@") COMP_CWORD=$# COMPREPLY=()
  _tsl
  found=$(printf '%s\n' ${COMPREPLY[@]+"${COMPREPLY[@]}"} | sort | paste -sd,)
  [ "$found" = "$expected" ] || { echo "tsl $*: $found, not $expected" >&2; failures=$((failures + 1)); }
}
check '--help,--version,colours,entities,external,links,replace,search' ''
check 'search' s
check '--cgi-name,--check-cgi' links --c
check '--case' search --c
check '--allow-uppercase,--answers,--ask' links --a
check 'a page.htm,old site,page.htm,site' links ''
check 'page.htm' search text p
check 'a page.htm,old site,page.htm,site' links --report ''
check 'old site,site' links --data ''
check '' links --filter ''
check 'a page.htm,old site,page.htm,site' links --report =
check 'page.htm' links --report = p
check 'page.htm' search -- p
check '' search -- --c
exit $((failures > 0))
