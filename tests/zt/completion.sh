#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The script for bash, asked as the shell asks it:  completion.sh SCRIPT
set -euo pipefail
. "$1"

failures=0
# expect WORDS EXPECTED: the candidates for the last word.
expect() {
  COMP_WORDS=($1)
  [[ $1 == *' ' ]] && COMP_WORDS+=('')
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  _zt || true
  if [[ ${COMPREPLY[*]-} != "$2" ]]; then
    echo "'$1' gives '${COMPREPLY[*]-}', not '$2'" >&2
    failures=1
  fi
}
expect 'zt tr' tree
expect 'zt p' 'profile path process'
expect 'zt tree ' 'delete prune copy --help'
expect 'zt file wr' write
expect 'zt tree delete --d' --dry-run
expect 'zt file copy --' '--overwrite --help --json --quiet'
expect 'zt file copy C' ''
expect 'zt bananas x' ''
exit $failures
