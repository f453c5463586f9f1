# Sourced by run.sh, test.sh and bench/run.sh: installs what is missing and builds a preset.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-serialport-dev libcli11-dev nlohmann-json3-dev)
window_packages=(qt6-wayland fonts-dejavu-core)  # what the window needs on a bare desktop
test_packages=(libgtest-dev xvfb xdotool)
package_packages=(appstream bsdextrautils debootstrap desktop-file-utils dpkg-dev fakeroot file libxml2-utils
                  lintian man-db shared-mime-info udev util-linux zsh)

# install_missing PACKAGE...: with apt, through sudo unless we are root.
install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Please install as root: ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET [CMAKE_BUILD_ARGUMENT...]
build() {
  local preset=$1
  shift
  cmake --preset "$preset" -DBUILD_TESTING="${build_testing:-ON}" >/dev/null
  cmake --build --preset "$preset" "$@"
}
