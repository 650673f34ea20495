#!/usr/bin/env bash
# What bash completes with the script that is given.
# Usage: tests/completion_test.sh SCRIPT
set -euo pipefail
export LC_ALL=C
compopt() { said="$*"; } # what readline is to add
. "$1"
failures=0
# check EXPECTED WORD...: what is proposed for the last word, with a comma between two; in brackets what is left to readline.
check() {
  local expected=$1 found said='[files]'
  shift
  COMP_WORDS=(tsl "$@") COMP_CWORD=$#
  _tsl
  said=${said/#+o default -o dirnames/[folders]}
  found=$(printf '%s,' ${COMPREPLY[@]+"${COMPREPLY[@]}"})${said#+o default}
  [ "$found" = "$expected" ] || { echo "tsl $*: $found, not $expected" >&2; failures=$((failures + 1)); }
}
IFS=, # the user's own
check '--help,--version,links,entities,external,search,replace,colours,init,undo,' ''
check 'search,' s
check ',' x
check '--cgi-name,--check-cgi,' links --c
check '--case,' search --c
check '--allow-uppercase,--ask,--answers,' links --a
check ',[files]' links ''
check ',[files]' search text p
check ',[files]' links --report ''
check ',[files]' links --report =
check ',[files]' links --report = p
check ',[folders]' links --data ''
check ',' links --filter ''
check 'classic,today,' links --rules ''
check 'today,' entities --rules = t
check ',[files]' init ''
check 'sarif,' links --format s
check 'text,json,sarif,junit,github,' links --format =
check ',[files]' search -- --c
exit $((failures > 0))
