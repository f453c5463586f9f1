#!/usr/bin/env bash
# Builds the project and runs every test. ./test.sh [PRESET]: release (default), debug or asan.
source "$(dirname "$0")/tools/setup.sh"
preset=${1:-release}
install_missing "${build_packages[@]}" "${test_packages[@]}"
build "$preset"
ctest --preset "$preset"
