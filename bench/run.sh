#!/usr/bin/env bash
# Measures everything in one run and prints one table. About a minute, most of it at wire speed.
source "$(dirname "$0")/../tools/setup.sh"
install_missing "${build_packages[@]}" "${test_packages[@]}"
build release --target bench >&2
build/release/bin/bench
