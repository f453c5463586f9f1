#!/usr/bin/env bash
# Builds and tests the work tree in a fresh system of another Debian, with its Qt and its compilers, every
# warning an error: tools/elsewhere.sh [CODENAME], trixie without one. By hand: it takes long and
# needs what tools/fresh_system.sh says.
#   1. ./test.sh, as the README promises it
#   2. the same from a debug build with clang
#   3. the command line alone, after Qt's windows and tests were taken away
source "$(dirname "$0")/setup.sh"
suite=${1:-trixie}
work=$PWD/build/elsewhere
source tools/fresh_system.sh

# as_developer SCRIPT: as a user without rights, in a copy of the work tree.
as_developer() {
  in_root setpriv --reuid=65534 --regid=65534 --clear-groups env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 \
    HOME=/home/developer bash -euo pipefail -c "cd ~/project; $1" || fail "see above"
}

install_missing debootstrap git util-linux
trap remove_root EXIT
mkdir -p "$work"
remove_root

say "A fresh $suite"
make_root "$suite" || fail "no fresh system"
apt_in_root update
apt_in_root install clang "${build_packages[@]}" "${test_packages[@]}" zsh
"${as_root[@]}" install -d -o 65534 -g 65534 "$root/home/developer/project"
"${as_root[@]}" install -d -m 1777 "$root/tmp/.X11-unix"
git ls-files -z --cached --others --exclude-standard | tar -c --null -T - |
  as_developer "tar -x --no-same-owner"
in_root sh -c '. /etc/os-release; echo "$PRETTY_NAME"; g++ --version | head -n 1; clang++ --version | head -n 1
               dpkg-query -W -f "Qt \${Version}\n" qt6-base-dev'

say "With g++"
as_developer "./test.sh release; cmake --build --preset release --target screenshots bench"

say "With clang"
as_developer "CXX=clang++ ./test.sh debug"

say "The command line, where there is no Qt Widgets and no Qt Test"
in_root sh -c 'rm -rf /usr/include/*/qt6/Qt*Widgets /usr/include/*/qt6/QtTest /usr/include/*/qt6/QtGui \
  /usr/lib/*/cmake/Qt6*Widgets /usr/lib/*/cmake/Qt6Test /usr/lib/*/cmake/Qt6Gui \
  /usr/lib/*/libQt6*Widgets.* /usr/lib/*/libQt6Test.* /usr/lib/*/libQt6Gui.*'
as_developer "cmake --preset release -B build/tool -DBUILD_WINDOW=OFF >/dev/null
  cmake --build build/tool
  ctest --test-dir build/tool --output-on-failure --no-tests=error"
