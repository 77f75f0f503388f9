#!/usr/bin/env bash
# unchanged.sh LIBRARY DUMP: the library's binary interface is the one that is checked in, without any addition either.
set -euo pipefail

library=$1
expected=$2
here=$(dirname "$0")

found=$(mktemp --suffix=.abi)
trap 'rm -f "$found"' EXIT
"$here/dump.sh" "$library" >"$found"
abidiff --harmless "$expected" "$found" && exit 0

cat >&2 <<END
Host programs are not rebuilt with the library: the interface can be added to, and any other change takes a new version
of the library. When this change is meant, check it in:
  $here/dump.sh $library >$expected
END
exit 1
