# shellcheck shell=bash
# Cases that a special run of the tests leaves out, in a file of lines "PATTERN REASON": a regular expression for their
# names, and why. Names of cases are as ctest has them, such as acl.Tokenizer.CutsAtRunsOfDelimiters.

each_left_out() { grep -v -e '^#' -e '^$' "$1"; }

# left_out_pattern FILE: one regular expression for all that are left out.
left_out_pattern() { each_left_out "$1" | cut -d' ' -f1 | paste -sd'|'; }

# report_left_out FILE CHOSEN ALL: counts them among the names in the file CHOSEN. Fails when a pattern means none of
# the names in the file ALL.
report_left_out() {
  local pattern reason count status=0
  while read -r pattern reason; do
    count=$(grep -cE "$pattern" "$2" || :)
    ((count == 0)) || echo "left out: $count cases $pattern, because $reason"
    if ! grep -qE "$pattern" "$3"; then
      echo "$1: no case is called $pattern" >&2
      status=1
    fi
  done < <(each_left_out "$1")
  return "$status"
}
