#!/usr/bin/env bash
# Fuzzes the core under the sanitizers: ./fuzz.sh SECONDS [TARGET...], two targets at a time. Starts
# from fuzz/seeds and fuzz/regressions and goes on with what earlier runs left in build/fuzz/corpus.
# Inputs with which a target fails are kept in build/fuzz/findings.
source "$(dirname "$0")/tools/setup.sh"
seconds=${1:?usage: ./fuzz.sh SECONDS [TARGET...]}
shift
all=()
for folder in fuzz/seeds/*/; do all+=("$(basename "$folder")"); done
targets=("${@:-${all[@]}}")
install_missing "${build_packages[@]}" libgtest-dev clang-14 libclang-rt-14-dev
build fuzz

root=$PWD
# Some targets write the same few files thousands of times a second: to memory, where there is any.
memory=${TMPDIR:-/tmp}
if [ -w /dev/shm ]; then memory=/dev/shm; fi
TMPDIR=$(mktemp -d "$memory/rxq40-fuzz-XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
# Small bookkeeping, so that the time goes into runs.
export ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=10
findings() { echo "$root/build/fuzz/findings/$1"; }
log() { echo "$root/build/fuzz/$1.log"; }

fuzz() {  # TARGET
  local corpus=$root/build/fuzz/corpus/$1 stored=() folder options=()
  rm -rf "$(findings "$1")"
  mkdir -p "$corpus" "$(findings "$1")"
  for folder in "$root/fuzz/seeds/$1" "$root/fuzz/regressions/$1"; do
    if [ -d "$folder" ]; then stored+=("$folder"); fi
  done
  if [ -f "fuzz/$1.dict" ]; then options+=("-dict=fuzz/$1.dict"); fi
  "build/fuzz/fuzz/fuzz_$1" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
    -artifact_prefix="$(findings "$1")/" "${options[@]}" "$corpus" "${stored[@]}" >"$(log "$1")" 2>&1
}

failed=0
for target in "${targets[@]}"; do
  while [ "$(jobs -rp | wc -l)" -ge 2 ]; do wait -n || failed=1; done
  fuzz "$target" &
done
while [ -n "$(jobs -p)" ]; do wait -n || failed=1; done

printf '%-16s %12s %9s %9s\n' target runs coverage findings
for target in "${targets[@]}"; do
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$(log "$target")")
  coverage=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$(log "$target")" | tail -n 1)
  found=$(find "$(findings "$target")" -type f | wc -l)
  printf '%-16s %12s %9s %9s\n' "$target" "${runs:--}" "${coverage:--}" "$found"
  if [ -z "$runs" ] || [ "$found" -ne 0 ]; then
    failed=1
    grep -m 1 -E '^broken promise|^SUMMARY|runtime error' "$(log "$target")" || true
    find "$(findings "$target")" -type f
  fi
done
exit $failed
