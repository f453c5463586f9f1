#!/usr/bin/env bash
# The tests of the core under valgrind: wrong accesses, values that were never set, and leaks. From a
# debug build, two programs at a time. tools/valgrind.sh [TEST...]
source "$(dirname "$0")/setup.sh"
install_missing "${build_packages[@]}" "${test_packages[@]}" valgrind
build debug --target core_tests >/dev/null
SECONDS=0
tests=("$@")
[ $# -gt 0 ] || mapfile -t tests <build/debug/tests/core_tests.txt

# check TEST: the report only when there is something to report. A death test dies in a child, which
# must not report its leaks.
check() {
  local log start=$SECONDS
  log=$(mktemp)
  if valgrind --quiet --error-exitcode=99 --leak-check=full --child-silent-after-fork=yes \
    "build/debug/tests/$1" --gtest_brief=1 >"$log" 2>&1; then
    echo "$1: clean, $((SECONDS - start)) s"
    rm "$log"
  else
    cat "$log"
    rm "$log"
    echo "$1: FAILED under valgrind"
    return 1
  fi
}
export -f check
printf '%s\n' "${tests[@]}" | xargs -P 2 -I TEST bash -c 'check TEST'
echo "valgrind: ${#tests[@]} programs clean in $SECONDS s"
