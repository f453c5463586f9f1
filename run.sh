#!/usr/bin/env bash
# Installs what is missing, builds, and opens the window with a simulated radio. Without a display, or
# with --headless, shows the command line at work instead. Other arguments go to the window.
source "$(dirname "$0")/tools/setup.sh"
install_missing "${build_packages[@]}"
build_testing=OFF build release

bin=$PWD/build/release/bin
if [ "${1:-}" != --headless ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  install_missing "${window_packages[@]}"
  aborted=134  # what the toolkit does when it cannot reach the display
  code=0
  "$bin/rxq40" --simulate "$@" || code=$?
  [ "$code" -eq "$aborted" ] || exit "$code"
  echo "The display cannot be reached; here is the command line instead."
fi

folder=$(mktemp -d "${TMPDIR:-/tmp}/rxq40-demo-XXXXXX")
port=$folder/radio

say() { printf '\n\033[1m%s\033[0m\n' "$*"; }
ctl() { printf '$ rxq40ctl %s\n' "$*"; "$bin/rxq40ctl" "$@"; }

record() {  # CHANNEL FREQUENCY NAME: a line of the channel list
  printf '"RX-Q40","MEMORY","%s","%s","12.5KHz","Tone","88.5Hz","88.5Hz","023","023"," -Shift","0.6000","Off","Hi","05","Off","BS-1","Off","Off","Normal","%s","Off"\r\n' "$@"
}

say "A simulated radio with three channels, at 9600 baud"
"$bin/rxq40ctl" new --model RX-Q40E --version-a "$folder/before.Q40"
{ record 0 145.6000 HOME; record 1 145.6500 HILL; record D3 438.9500 CLUB; } |
  "$bin/rxq40ctl" import "$folder/before.Q40" -
"$bin/rxq40sim" --pace 9600 --load "$folder/before.Q40" --link "$port" >/dev/null &
radio=$!
trap 'kill $radio 2>/dev/null || true' EXIT
for _ in $(seq 100); do [ -e "$port" ] && break; sleep 0.05; done

say "Identify it and read it, at the speed of a real one"
ctl identify -p "$port"
ctl read -p "$port" "$folder/radio.Q40"

say "Change a channel in a spreadsheet's way"
ctl export "$folder/radio.Q40" "$folder/channels.csv"
echo '$ sed -i s/145.6500/145.7250/ channels.csv'
sed -i s/145.6500/145.7250/ "$folder/channels.csv"
ctl import "$folder/radio.Q40" "$folder/channels.csv" -o "$folder/changed.Q40"

say "Write the result back, read again, compare"
ctl write -p "$port" "$folder/changed.Q40"
ctl read -p "$port" "$folder/after.Q40"
ctl diff "$folder/radio.Q40" "$folder/after.Q40" || [ $? -eq 1 ]

say "The files lie in $folder"
ls "$folder"
