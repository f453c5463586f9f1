# Part of check.sh: the installed window on a display, started by its desktop entry, worked with keys.
# The display and the keys are this machine's; the programs are the installed ones.

display_number=
desktop_display() {
  for display_number in $(seq 90 119); do
    [ ! -e "/tmp/.X11-unix/X$display_number" ] || continue
    Xvfb ":$display_number" -ac -noreset -screen 0 1100x800x24 >/dev/null 2>&1 &
    display_process=$!
    sleep 1
    kill -0 "$display_process" 2>/dev/null && return
  done
  fail "no display"
}

keys() { DISPLAY=:$display_number timeout 20 xdotool "$@"; }

# focus TITLE: waits for a window and gives it the keys, as no window manager would.
focus() {
  keys search --sync --onlyvisible --name "$1" windowfocus --sync || fail "no window \"$1\""
  sleep 0.3
}

press() {
  keys key --clearmodifiers --delay 80 "$@"
  sleep 0.3
}

# What the user of the fresh system does before and after the keys. Channel 2 doubles channel 1; the
# check-up finds it, and the keys delete it.
desktop_user='
  cd
  export QT_QPA_PLATFORM=xcb RXQ40_COM3=$HOME/radio
  record() {
    printf "\"RX-Q40\",\"MEMORY\",\"%s\",\"%s\",\"12.5KHz\",\"None\",\"88.5Hz\",\"88.5Hz\",\"023\",\"023\",\"None\",\"0.6000\",\"Off\",\"Hi\",\"05\",\"Off\",\"BS-1\",\"Off\",\"Off\",\"Normal\",\"%s\",\"Off\"\r\n" "$@"
  }
  rxq40ctl new --model RX-Q40T radio.Q40
  { record 0 145.5000 A; record 1 145.6000 B; record 2 145.6000 C; record 3 145.7000 D; } |
    rxq40ctl --quiet import radio.Q40 -
  rxq40ctl new --model RX-Q40T mine.Q40
  rxq40sim --load radio.Q40 --save after.Q40 --link radio >/dev/null &
  radio=$!
  gio launch /usr/share/applications/rxq40.desktop "$HOME/mine.Q40"
  for _ in $(seq 600); do [ -e go-on ] && break; sleep 0.1; done
  kill $radio; wait $radio
  [ "$(cat .config/rxq40/RX-Q40.ini | tr -d "\r\n")" = 3 ]
  rxq40ctl new --model RX-Q40T expected.Q40
  { record 0 145.5000 A; record 1 145.6000 B; record 2 145.7000 D; } |
    rxq40ctl --quiet import expected.Q40 -
  rxq40ctl export expected.Q40 - | grep MEMORY >expected
  rxq40ctl export after.Q40 - | grep MEMORY >arrived
  diff expected arrived'

desktop_keys() {
  focus 'Korvex RX-Q40 Clone Utility - mine.Q40'
  sleep 2.5  # no command runs in the first two seconds
  press alt+t c
  focus '^COM Port Setup$'
  press Down Down Return
  focus 'Korvex RX-Q40 Clone Utility'
  press F7
  sleep 5
  press F8
  focus '^Check-Up$'
  press Return  # the only finding: channel 2
  focus 'Korvex RX-Q40 Clone Utility'
  press Delete
  focus '^DELETE OK$'
  press Left Return  # from Cancel to OK
  focus 'Korvex RX-Q40 Clone Utility'
  press shift+F7
  sleep 7
  press ctrl+q
  focus '^Save Changes$'
  press alt+n
  "${as_root[@]}" touch "$root/tmp/home/go-on"
}

# on_display SCRIPT KEYS WHAT: the script of the user, beside the function that presses the keys.
on_display() {
  desktop_display
  local result=0 user
  (as_user "export DISPLAY=:$display_number; $1") &
  user=$!
  ("$2") || result=1
  [ "$result" -eq 0 ] || "${as_root[@]}" touch "$root/tmp/home/go-on"
  wait "$user" || result=1
  kill "$display_process"
  [ "$result" -eq 0 ] || fail "$3"
}

try_desktop() {
  echo "The window opens by its desktop entry; a radio is read, checked up, changed and written."
  on_display "$desktop_user" desktop_keys "the window of the fresh system"
}

# The file dialog of a desktop asks about the name as it was typed, to which the program adds a suffix.
native_user='
  cd
  export QT_QPA_PLATFORM=xcb XDG_CURRENT_DESKTOP=GNOME GSETTINGS_BACKEND=memory
  rxq40ctl new --model RX-Q40T mine.Q40
  echo precious | tee radio.Q40 >list.csv
  rxq40 mine.Q40 &
  window=$!
  for _ in $(seq 600); do [ -e go-on ] && break; sleep 0.1; done
  grep -q libgtk-3 /proc/$window/maps  # the dialogs were not our own
  kill $window
  [ "$(cat radio.Q40 list.csv)" = "$(printf "precious\nprecious")" ]'

# refused KEY TITLE NAME: the command asks before it replaces the file; Cancel leads back to its dialog.
refused() {
  local tries=100  # no command runs in the first two seconds
  until [ -n "$(keys search --onlyvisible --name "$2" 2>/dev/null)" ]; do
    ((tries--)) || fail "no window \"$2\""
    press "$1"
  done
  focus "$2"
  press ctrl+a
  keys type --delay 50 "$3"
  press Return
  focus '^REPLACE OK$'
  press Return
  focus "$2"
  press Escape
  focus 'Korvex RX-Q40 Clone Utility - mine.Q40'
}

native_keys() {
  focus 'Korvex RX-Q40 Clone Utility - mine.Q40'
  refused ctrl+shift+s '^Save As$' radio
  refused ctrl+shift+e '^Export CSV$' list
  "${as_root[@]}" touch "$root/tmp/home/go-on"
}

try_native_dialogs() {
  echo "What exists is not replaced without a question, in the dialogs of a GTK desktop either."
  on_display "$native_user" native_keys "the file dialogs of the desktop"
}
