#!/usr/bin/env bash
# Builds the two Debian packages, twice, checks what is in them, installs them in a fresh system, uses
# the programs there, removes them, and looks for anything left behind.
#
# The fresh system is a new root made with debootstrap, which needs root and the mirror of this
# machine's apt. Where that cannot be had, the packages are unpacked into a folder instead and the
# programs run with this machine's libraries; the last line says which of the two it was.
# "packaging/check.sh folder" takes the second way at once.
source "$(dirname "$0")/../tools/setup.sh"
work=$PWD/build/package-check
tree=$work/tree  # the packages, unpacked
debs=$PWD/build/package/packaging/debs
place=           # "root" or "folder": where the programs are tried
source tools/fresh_system.sh
source packaging/desktop.sh

clean_up() {
  remove_root
  "${as_root[@]}" rm -rf --one-file-system "$tree" "$work/home" "$work/copy"
}

# ---- the packages

make_packages() {
  say "Building the packages"
  packaging/build.sh
  version=$(dpkg-deb -f "$debs"/rxq40_*.deb Version)
  local package
  for package in rxq40 rxq40ctl; do dpkg-deb -x "$debs/${package}"_*.deb "$tree"; done
  ls -l "$debs"
}

# The same tree gives the same packages: in another folder, later, in another place of the world, for
# a user who shares nothing.
check_same_again() {
  say "The same packages once more, from a copy of the tree"
  local copy=$work/copy/of/the/tree package
  mkdir -p "$copy"
  tar -c --exclude=./build . | tar -x -m -C "$copy"
  (umask 077 && TZ=Asia/Tokyo LC_ALL=C "$copy/packaging/build.sh" >"$work/copy.log" 2>&1) ||
    { tail -n 20 "$work/copy.log"; fail "building the copy"; }
  for package in "$debs"/*.deb; do
    cmp "$package" "$copy/build/package/packaging/debs/${package##*/}" || fail "$package is another one"
  done
  rm -rf "$work/copy"
}

check_documents() {
  say "Documents"
  local doc=$tree/usr/share/doc document link
  for document in "$doc"/rxq40/{guide,csv,clone-file,protocol}.md "$doc"/rxq40ctl/{csv,clone-file,protocol}.md; do
    [ -s "$document" ] || fail "no $document"
  done
  for document in "$doc"/*/*.md; do
    while read -r link; do
      [ -e "${document%/*}/$link" ] || fail "$document leads to $link"
    done < <(grep -oP '\]\(\K[^)#]+' "$document")
  done
}

check_descriptions() {
  say "Desktop entry, AppStream, MIME type, icons, rule of the cables"
  local share=$tree/usr/share
  desktop-file-validate "$share"/applications/*.desktop
  appstreamcli validate --no-net "$share"/metainfo/*.xml
  xmllint --noout "$share"/metainfo/*.xml "$share"/mime/packages/*.xml \
    "$share"/icons/hicolor/scalable/*/*.svg
  local icon size
  for icon in "$share"/icons/hicolor/*x*/*/*.png; do
    size=${icon#*/hicolor/}
    file "$icon" | grep -q "PNG image data, ${size%%x*} x ${size%%x*}," || fail "size of $icon"
  done
  if udevadm verify --help >/dev/null 2>&1; then
    udevadm verify "$tree"/usr/lib/udev/rules.d/*.rules
  else
    echo "This udevadm cannot verify rules."
  fi
}

check_manuals() {
  say "Manual pages"
  local page text program command option
  for page in "$tree"/usr/share/man/man1/*.gz; do
    LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>"$work/man.log" >/dev/null
    [ ! -s "$work/man.log" ] || { cat "$work/man.log"; fail "$page"; }
  done
  # They name every command and option that the programs have.
  for program in rxq40ctl rxq40sim; do
    text=$(LC_ALL=C.UTF-8 MANWIDTH=100 man -l "$tree/usr/share/man/man1/$program.1.gz" | col -bx)
    while read -r command option; do
      grep -qw -e "${command#-}" <<<"$text" && grep -qw -e "${option#-}" <<<"$text" ||
        fail "$program.1 says nothing of $command $option"
    done < <(build/package/bin/rxq40completion options "$program")
  done
}

check_completions() {
  say "Completions"
  tests/completion_test.sh "$tree/usr/share/bash-completion/completions" \
    "$tree/usr/share/zsh/vendor-completions"
}

check_with_lintian() {
  say "Lintian: nothing to say"
  # Two tags guess. Of what the programs call, only read(), fread() and poll() could be fortified, and not
  # where the compiler can see that the buffer is large enough, or not see how large it is. And what looks
  # like a misspelled word in a program is a word that the compiler has cut in two: " mor", "e".
  local options=(--display-info --fail-on error,warning,info
    --suppress-tags hardening-no-fortify-functions,spelling-error-in-binary)
  [ "$(id -u)" -ne 0 ] || options+=(--allow-root)
  lintian "${options[@]}" "$debs"/*.deb
}

# ---- a fresh system

# as_user SCRIPT: with the installed programs, as a user without rights, in an empty home.
as_user() {
  local variables=(LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen "version=$version")
  if [ "$place" = root ]; then
    "${as_root[@]}" install -d -m 700 -o 65534 -g 65534 "$root/tmp/home"
    in_root setpriv --reuid=65534 --regid=65534 --clear-groups env -i PATH=/usr/bin:/bin \
      HOME=/tmp/home XDG_RUNTIME_DIR=/tmp/home "${variables[@]}" \
      bash -euo pipefail -c "cd; $1" || fail "the programs, see above"
    "${as_root[@]}" rm -rf "$root/tmp/home"
  else
    mkdir -m 700 "$work/home"
    env -i "PATH=$tree/usr/bin:/usr/bin:/bin" "HOME=$work/home" "XDG_RUNTIME_DIR=$work/home" \
      "${variables[@]}" bash -euo pipefail -c "cd; $1" || fail "the programs, see above"
    rm -rf "$work/home"
  fi
}

# What lies in a system: kind, rights, owner, path, target; and the sums of the files. Without what apt
# and dpkg write down about themselves.
inventory() {
  (
    cd "$1"
    "${as_root[@]}" find . -xdev \( -path ./proc -o -path ./var/log -o -path ./var/cache/apt -o \
      -path ./var/lib/apt -o -path './var/lib/dpkg/status*' -o -path './var/lib/dpkg/lock*' -o \
      -path ./var/lib/dpkg/triggers -o -path ./var/cache/ldconfig \) -prune -o \
      \( -printf '%y %m %U:%G %p %l\n' -type f -exec sha256sum {} + \)
  ) | LC_ALL=C sort -k 4 >"$2"
}

compare_inventories() {
  diff "$work/before" "$work/after" || fail "this is left of the packages, or was changed"
  echo "Nothing is left of them."
}

# ---- what is tried with the installed programs

try_tool() {
  echo "A radio is read with the installed tool."
  as_user '
    [ "$(rxq40ctl --version)" = "rxq40ctl $version" ]
    rxq40ctl new --model RX-Q40E --version-a radio.Q40
    rxq40ctl check radio.Q40
    rxq40sim --load radio.Q40 --link radio >/dev/null &
    for _ in $(seq 100); do [ -e radio ] && break; sleep 0.05; done
    [ "$(rxq40ctl --quiet identify -p radio)" = "RX-Q40E version A" ]
    RXQ40_COM3=$HOME/radio rxq40ctl --quiet read -p 3 again.Q40
    rxq40ctl diff radio.Q40 again.Q40
    kill %1
    wait %1'
}

try_window() {
  echo "The window opens, without a display, and stays."
  as_user '
    [ "$(rxq40 --version)" = "rxq40 $version" ]
    rxq40ctl new --model RX-Q40T radio.Q40
    code=0
    # The offscreen platform always says that it knows no size hints.
    timeout 5 rxq40 radio.Q40 2> >(grep -v propagateSizeHints >messages) || code=$?
    cat messages
    [ $code -eq 124 ] && [ ! -s messages ]  # still there, and no complaints'
}

# What paints the card comes with the window, and the fonts with neither.
try_card() {
  echo "The installed tool makes a channel card."
  as_user '
    rxq40ctl new --model RX-Q40E radio.Q40
    rxq40ctl card --special --pocket radio.Q40 card.pdf
    [ "$(head -c 5 card.pdf)" = %PDF- ]
    grep -aq /FontFile2 card.pdf'
}

# The desktop knows a clone file by its name, and by its first line.
try_file_type() {
  echo "The desktop knows the clone files of every model."
  as_user '
    type_of() { gio info -a standard::content-type "$1" | sed -n "s/.*content-type: //p"; }
    for model in RX-Q40T RX-Q40E RX-Q40T1 RX-Q20A; do
      for version in "" --version-a; do
        rxq40ctl new --force --model $model $version clone
        [ "$(type_of clone)" = application/x-rxq40-clone ] || { echo "$model $version"; exit 1; }
      done
    done
    for name in one.Q40 one.q40; do
      echo x >$name  # no clone, but called one
      [ "$(type_of $name)" = application/x-rxq40-clone ] || { echo $name; exit 1; }
    done
    echo "Korvex RX-Q40T manual" >other
    [ "$(type_of other)" = text/plain ]
    grep -q "x-rxq40-clone=rxq40.desktop" /usr/share/applications/mimeinfo.cache'
}

# ---- the two ways

depends_of() { dpkg-deb -f "$debs/$1"_*.deb Depends; }

# install_in_root PACKAGE...: of those that were built, and nothing else that they may recommend.
install_in_root() {
  local package files=()
  "${as_root[@]}" mkdir -p "$root/tmp/debs"
  for package in "$@"; do
    "${as_root[@]}" cp "$debs/$package"_*.deb "$root/tmp/debs/"
    files+=("/tmp/debs/$(basename "$debs/$package"_*.deb)")
  done
  apt_in_root install "${files[@]}"
  "${as_root[@]}" rm -r "$root/tmp/debs"
}

# The libraries are there before the first inventory. They come by the packages' own Depends, and for
# the tool before those of the window, which would hide one that is missing.
try_in_root() {
  place=root
  say "rxq40ctl alone"
  apt_in_root update
  apt_in_root satisfy "$(depends_of rxq40ctl)"
  inventory "$root" "$work/before"
  install_in_root rxq40ctl
  if in_root sh -c '[ -c /dev/pts/ptmx ]'; then
    try_tool
  else
    echo "No terminals in the fresh system: the tool is tried unpacked, with this machine's libraries."
    as_user '[ "$(rxq40ctl --version)" = "rxq40ctl $version" ]'
    place=folder try_tool
  fi
  apt_in_root purge rxq40ctl
  inventory "$root" "$work/after"
  compare_inventories

  say "Both packages"
  apt_in_root satisfy "$(depends_of rxq40)"
  apt_in_root install shared-mime-info desktop-file-utils hicolor-icon-theme libglib2.0-bin \
    qt6-gtk-platformtheme fonts-dejavu-core
  inventory "$root" "$work/before"
  install_in_root rxq40 rxq40ctl
  try_window
  try_card
  try_file_type
  if in_root sh -c '[ -c /dev/pts/ptmx ]'; then
    try_desktop
    try_native_dialogs
  fi
  apt_in_root purge rxq40 rxq40ctl
  inventory "$root" "$work/after"
  compare_inventories
  echo "Tried in a fresh system, installed and removed with apt."
}

try_in_folder() {
  place=folder
  say "Both packages, unpacked into a folder"
  local dpkg=(fakeroot dpkg "--root=$tree" --force-depends --force-script-chrootless --log=/dev/null)
  clean_up
  mkdir -p "$tree/var/lib/dpkg/info" "$tree/var/lib/dpkg/updates"
  touch "$tree/var/lib/dpkg/status"
  # The first removal makes files of dpkg's own: it comes before the inventory.
  "${dpkg[@]}" -i "$debs"/*.deb >"$work/dpkg.log" 2>&1 || { cat "$work/dpkg.log"; fail dpkg; }
  "${dpkg[@]}" --purge rxq40 rxq40ctl >>"$work/dpkg.log" 2>&1
  inventory "$tree" "$work/before"
  "${dpkg[@]}" -i "$debs"/*.deb >>"$work/dpkg.log" 2>&1
  try_tool
  try_window
  try_card
  "${dpkg[@]}" --purge rxq40 rxq40ctl >>"$work/dpkg.log" 2>&1
  inventory "$tree" "$work/after"
  compare_inventories
  echo "Tried UNPACKED INTO A FOLDER with this machine's libraries; not installed in a fresh system."
}

install_missing "${build_packages[@]}" "${package_packages[@]}" xvfb xdotool
trap clean_up EXIT
mkdir -p "$work"
clean_up
make_packages
check_same_again
check_documents
check_descriptions
check_manuals
check_completions
check_with_lintian
say "A fresh system"
if [ "${1:-}" != folder ] && make_root "$(codename_of_this_machine)"; then try_in_root; else try_in_folder; fi
