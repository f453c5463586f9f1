#!/usr/bin/env bash
# Line and branch coverage of the core by its own tests. tools/coverage.sh [--missed]
#
# Branches are those of the source, counted by clang: both ways of every condition. What a compiler
# adds for exceptions is none of them. Assertions are compiled out, so that the behaviour that the
# headers promise behind them counts. A file that no test links is 0 %.
#   --missed  also lists every line and every branch that no test reaches
# Fails when base, radio, document, files or link fall below 100 % of the lines or 95 % of the branches.
source "$(dirname "$0")/setup.sh"
install_missing "${build_packages[@]}" "${test_packages[@]}" clang-14 llvm-14 libclang-rt-14-dev \
  python3
folder=build/coverage

cmake -S . -B $folder -G Ninja -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_BUILD_TYPE= \
  -DCMAKE_CXX_FLAGS="-O0 -DNDEBUG -fprofile-instr-generate -fcoverage-mapping" >/dev/null
cmake --build $folder -j 2 --target core_tests programs_test >/dev/null

# profile NAME TEST...: runs the tests and everything that they start, into NAME.profdata.
profile() {
  local name=$1 test
  shift
  rm -rf "$folder/$name.raw"
  for test in "$@"; do
    echo "$test" >&2
    LLVM_PROFILE_FILE=$PWD/$folder/$name.raw/$test-%p.profraw "$folder/tests/$test" >/dev/null
  done
  llvm-profdata-14 merge -o "$folder/$name.profdata" "$folder/$name.raw"/*.profraw
}
mapfile -t core_tests <$folder/tests/core_tests.txt
profile core "${core_tests[@]}"
profile port programs_test

# The objects of the core too: they hold what no program linked.
mapfile -t objects < <(find $folder/src/{base,radio,document,files,checkup,link,serial,sim} -name '*.o'
                       find $folder/tests $folder/bin -type f \( -name '*_test' -o -name 'rxq40*' \))
for name in core port; do
  # It warns of functions that one object declares and another one defines.
  llvm-cov-14 export -instr-profile $folder/$name.profdata "${objects[0]}" \
    "${objects[@]/#/-object=}" src >$folder/$name.json 2>$folder/$name.log ||
    { cat $folder/$name.log >&2; exit 1; }
done
python3 tools/coverage_table.py $folder "$@"
