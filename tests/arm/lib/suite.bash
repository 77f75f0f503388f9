# shellcheck shell=bash disable=SC2154
# Running the tests, and saying what was left out.

# shellcheck source=../../lib/left_out.bash
. "$here/../lib/left_out.bash"

tree=$work/tree
left_out=$here/left_out

# The names of the tests, or of those that the arguments choose.
names() { in_arm_system ctest --test-dir "$tree" -N "$@" | sed -n 's/^ *Test *#[0-9]*: //p'; }

# run_tests [LABEL...]
run_tests() {
  local labels chosen=() status=0
  labels=$(IFS='|' && echo "$*")
  [[ -z $labels ]] || chosen=(-L "^($labels)\$")
  names >"$work/all_names"
  names "${chosen[@]}" >"$work/chosen_names"
  in_arm_system ctest --test-dir "$tree" -j "$(nproc)" --output-on-failure --no-tests=error "${chosen[@]}" \
    -E "$(left_out_pattern "$left_out")" | tee "$work/tests.log" || status=1
  if grep -E '\*\*\*(Skipped|Not Run)' "$work/tests.log"; then
    echo "a test was skipped that $left_out does not name" >&2
    status=1
  fi
  report_left_out "$left_out" "$work/chosen_names" "$work/all_names" || status=1
  return "$status"
}
