# Sourced by packaging/check.sh and tools/elsewhere.sh: a fresh Debian in a folder of its own, made with
# debootstrap. Needs root, or sudo, and the mirror that this machine's apt uses. The caller sets "work".
root=$work/root  # the fresh system
as_root=()
enter=()         # command that runs others in the fresh system

say() { printf '\n== %s\n' "$*"; }
fail() { echo "FAILED: $*" >&2; exit 1; }

# All mounts are made in a name space of their own; should one be left, it is not followed.
remove_root() { "${as_root[@]}" rm -rf --one-file-system "$root"; }

codename_of_this_machine() { (. /etc/os-release && echo "${VERSION_CODENAME:-}"); }

# Where this machine's apt has its distribution from.
mirror_of_this_machine() {
  apt-get indextargets --format '$(CODENAME) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    awk -v suite="$(codename_of_this_machine)" '$1 == suite && $2 == "main" {print $3; found = 1; exit}
                                                END {exit !found}'
}

# make_root CODENAME: that release of Debian. Reasons go to standard output: they are part of the result.
make_root() {
  local mirror isolate=(unshare --mount --pid --fork --kill-child)
  if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo -n)
    "${as_root[@]}" true 2>/dev/null || { as_root=(); echo "Not root, and no sudo."; return 1; }
  fi
  mirror=$(mirror_of_this_machine) || { echo "Apt has no mirror."; return 1; }
  eval "$(apt-config shell http_proxy Acquire::http::Proxy https_proxy Acquire::https::Proxy)"
  export http_proxy https_proxy
  "${as_root[@]}" "${isolate[@]}" true 2>/dev/null || isolate=()
  mkdir -p "$work/cache"
  "${as_root[@]}" env "http_proxy=${http_proxy:-}" "${isolate[@]}" debootstrap --variant=minbase \
    --cache-dir="$work/cache" "$1" "$root" "$mirror" >"$work/debootstrap.log" 2>&1 ||
    { tail -n 3 "$work/debootstrap.log"; echo "debootstrap failed."; return 1; }
  # It need not outlive a power cut.
  echo force-unsafe-io | "${as_root[@]}" tee "$root/etc/dpkg/dpkg.cfg.d/unsafe-io" >/dev/null
  # No daemon starts in there.
  printf '#!/bin/sh\nexit 101\n' | "${as_root[@]}" tee "$root/usr/sbin/policy-rc.d" >/dev/null
  "${as_root[@]}" chmod 755 "$root/usr/sbin/policy-rc.d"
  enter=("${as_root[@]}" chroot "$root")
  # The terminals of its own are what the simulated radio needs; they vanish with the command.
  [ ${#isolate[@]} -eq 0 ] || enter=("${as_root[@]}" "${isolate[@]}" sh -c '
      mount -t proc proc "$0/proc" 2>/dev/null || true
      mount -t devpts -o newinstance,ptmxmode=0666,mode=0620 devpts "$0/dev/pts" 2>/dev/null || true
      exec chroot "$0" "$@"' "$root")
  in_root true || { echo "chroot failed."; return 1; }
}

in_root() { "${enter[@]}" "$@"; }

apt_in_root() {
  local cache=$root/var/cache/apt/archives
  find "$work/cache" -name '*.deb' -exec "${as_root[@]}" cp -n -t "$cache" {} +
  in_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 apt-get -q -y \
    -o APT::Sandbox::User=root --no-install-recommends "$@" >"$work/apt.log" 2>&1 ||
    { tail -n 20 "$work/apt.log"; fail "apt-get $*"; }
  find "$cache" -name '*.deb' -exec cp -n -t "$work/cache" {} +
}
