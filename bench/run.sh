#!/usr/bin/env bash
# Measures everything in one run and prints one table; with --write also into docs/performance.md.
# About four minutes, most of it at wire speed. Wants a quiet machine.
source "$(dirname "$0")/../tools/setup.sh"
install_missing "${build_packages[@]}" "${test_packages[@]}"
build release --target bench >&2
if [ "${1:-}" != --write ]; then
  build/release/bin/bench
  exit
fi
table=$(build/release/bin/bench)
cat >docs/performance.md <<END
# What it costs

Measured by \`bench/run.sh --write\` in one run: $(nproc) cores, $(c++ --version | head -1). Times are
medians; "limit" is what a figure is meant to stay below. No test asserts a time.

"The wire's time" is what the bytes of an exchange (10 bits each at 9600 baud) and the prescribed pauses
take: nothing that talks this protocol can be faster than 1.

$table
END
echo "$table"
