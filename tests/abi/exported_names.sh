#!/usr/bin/env bash
# exported_names.sh LIBRARY HEADER...: the library exports exactly what these headers declare.
set -euo pipefail

library=$1
shift
include=$(dirname "$0")/../../include/nasshare

declared() {
  for header; do
    # Comments, directives and the bodies of structures go; then a name before "(" is an operation, one behind "extern" an object.
    gcc -fpreprocessed -E -P "$include/$header.h" | grep -vE '^#|^extern "C" \{' | tr '\n' ' ' | sed 's/{[^{}]*}/ /g' | tr ';' '\n' |
      sed -nE -e 's/^[^(]*[ *]([A-Za-z_][A-Za-z_0-9]*)\(.*/\1/p' \
              -e 's/^.*\bextern [^(]*[ *]([A-Za-z_][A-Za-z_0-9]*)(\[[0-9]*\])* *$/\1/p'
  done | sort
}

exported() {
  nm -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort
}

names=$(declared "$@")
[ "$(wc -l <<<"$names")" -ge 7 ] || { echo "found too few declarations: $names"; exit 1; }
diff --label declared <(echo "$names") --label exported <(exported)
