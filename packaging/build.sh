#!/usr/bin/env bash
# Builds the two Debian packages into build/package/packaging/debs, with the flags that Debian hardens
# its own with. The same commit gives the same bytes, wherever and whenever it is built.
source "$(dirname "$0")/../tools/setup.sh"
install_missing "${build_packages[@]}" dpkg-dev file
umask 022  # or the folders in the packages are as closed as this user's

# Debian's, less the debugging information, which the packages do not carry.
flags() { DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP=-g dpkg-buildflags --get "$1"; }
rm -rf build/package/packaging/debs
cmake --preset package -DCMAKE_CXX_FLAGS="$(flags CPPFLAGS) $(flags CXXFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(flags LDFLAGS)" >/dev/null
cmake --build --preset package
(cd build/package && cpack)
