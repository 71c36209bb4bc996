# Sums up the results of the different kinds of tests. Sourced by script/test.

passed=0 failed=0 skipped=0

Count() {
  local name=$1 good=$2 bad=$3
  passed=$((passed + good)) failed=$((failed + bad))
  printf '%-28s %4d passed, %d failed\n' "$name" "$good" "$bad"
}

# Counts a command as one test; its output is shown only when it fails.
Check() {
  local name=$1
  shift
  if Quietly "$@"; then Count "$name" 1 0; else Count "$name" 0 1; fi
}

Skip() {
  skipped=$((skipped + $2))
  printf '%-28s %4d skipped: %s\n' "$1" "$2" "$3"
}

# Parses the counts from the output of a test program; a crash without output counts as one failure.
CountOrFail() {
  local name=$1 output=$2 good=$3 bad=$4
  if [[ -z $good ]]; then good=0 bad=1; fi
  Count "$name" "$good" "$bad"
  if ((bad)); then printf '%s\n' "$output"; fi
}

CountCTest() {
  local all bad
  all=$(sed -n 's/.* tests failed out of \([0-9]*\)$/\1/p' <<<"$2" | tail -n 1)
  bad=$(sed -n 's/.*, \([0-9]*\) tests failed out of .*/\1/p' <<<"$2" | tail -n 1)
  CountOrFail "unit tests, $1" "$2" "${all:+$((all - bad))}" "${bad:-0}"
}

CountGoogleTest() {
  local all good left_out
  all=$(sed -n 's/^\[=*\] Running \([0-9]*\) tests\? from.*/\1/p' <<<"$2" | tail -n 1)
  good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\?\..*/\1/p' <<<"$2" | tail -n 1)
  left_out=$(sed -n 's/^\[  SKIPPED \] \([0-9]*\) tests\?, listed below.*/\1/p' <<<"$2" | tail -n 1)
  # Tests that did not finish because the program crashed have failed.
  CountOrFail "$1" "$2" "${all:+${good:-0}}" "$((${all:-0} - ${good:-0} - ${left_out:-0}))"
  ((${left_out:-0} == 0)) || Skip "$1" "$left_out" "$(grep -m 1 -A 1 ': Skipped$' <<<"$2" | tail -n 1)"
}

CountPlain() {
  local good bad
  good=$(sed -n 's/^\([0-9]*\) passed, [0-9]* failed$/\1/p' <<<"$2" | tail -n 1)
  bad=$(sed -n 's/^[0-9]* passed, \([0-9]*\) failed$/\1/p' <<<"$2" | tail -n 1)
  CountOrFail "$1" "$2" "$good" "${bad:-0}"
}

# Prints the last line and sets the exit status.
Summarise() {
  if ((skipped)); then
    echo "$passed passed, $failed failed, $skipped skipped"
  else
    echo "$passed passed, $failed failed"
  fi
  ((failed == 0)) && { ((skipped == 0)) || [[ ${CI:-} != true ]]; }
}
