#!/usr/bin/env bash
# dump.sh LIBRARY: prints the library's binary interface as host programs depend on it: exported symbols, records,
# parameters. Nothing in it depends on the machine, on the project's folder or on sanitizers. The interface that is
# checked in is renewed with
#
#   tests/abi/dump.sh build/dev/lib/libnasshare.so.1 >tests/abi/libnasshare.abi
#   tests/abi/dump.sh build/dev/platform/libnasplatform.so.1 >tests/abi/libnasplatform.abi
set -euo pipefail

library=$1
include=$(dirname "$0")/../../include/nasshare

cannot() {
  echo "$*" >&2
  exit 77
}

# Types of other libraries' headers, such as xmlNode, are only ever pointed to: they go without their fields. It is this
# label that makes libabigail do so; under any other, a parameter of such a type would be gone altogether.
foreign_types_are_opaque() {
  local headers
  headers=$(cd "$include" && printf '%s, ' *.h)
  printf '%s\n' '[suppress_type]' 'label = Artificial private types suppression specification' \
    "source_location_not_in = ${headers%, }" 'drop = yes'
}

sections=$(readelf --sections --wide "$library")
[[ $sections == *' .debug_info '* ]] || cannot "$library has no debug information: build it as Debug or RelWithDebInfo"
command -v abidw >/dev/null || cannot 'abidw is missing (Debian: package abigail-tools)'

rules=$(mktemp)
trap 'rm -f "$rules"' EXIT
foreign_types_are_opaque >"$rules"
abidw --exported-interfaces-only --suppressions "$rules" --no-corpus-path --no-comp-dir-path --no-show-locs \
  --no-elf-needed --no-parameter-names --type-id-style hash "$library" |
  sed -E "s|( path=')[^']*/(lib/\|platform/)|\1\2|"
