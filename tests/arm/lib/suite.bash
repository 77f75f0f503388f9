# shellcheck shell=bash disable=SC2154
# Running the tests, and saying what was left out.

tree=$work/tree
left_out=$here/left_out

# The names of the tests, or of those that the arguments choose.
names() { in_arm_system ctest --test-dir "$tree" -N "$@" | sed -n 's/^ *Test *#[0-9]*: //p'; }

each_left_out() { grep -v -e '^#' -e '^$' "$left_out"; }

report_left_out() {
  local pattern reason count status=0
  while read -r pattern reason; do
    count=$(grep -cE "$pattern" "$1" || true)
    ((count == 0)) || echo "left out: $count cases $pattern, because $reason"
    grep -qE "$pattern" "$work/all_names" || { echo "tests/arm/left_out: no case is called $pattern" >&2; status=1; }
  done < <(each_left_out)
  return "$status"
}

# run_tests [LABEL...]
run_tests() {
  local labels chosen=() excluded status=0
  labels=$(IFS='|' && echo "$*")
  [[ -z $labels ]] || chosen=(-L "^($labels)\$")
  excluded=$(each_left_out | cut -d' ' -f1 | paste -sd'|')
  names >"$work/all_names"
  names "${chosen[@]}" >"$work/chosen_names"
  in_arm_system ctest --test-dir "$tree" -j "$(nproc)" --output-on-failure --no-tests=error "${chosen[@]}" -E "$excluded" |
    tee "$work/tests.log" || status=1
  if grep -E '\*\*\*(Skipped|Not Run)' "$work/tests.log"; then
    echo "a test was skipped that tests/arm/left_out does not name" >&2
    status=1
  fi
  report_left_out "$work/chosen_names" || status=1
  return "$status"
}
