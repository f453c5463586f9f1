#!/usr/bin/env bash
# What the completion scripts offer. Usage: completion_test.sh BASH_FOLDER ZSH_FOLDER
set -euo pipefail
bash_folder=$(cd "$1" && pwd)
zsh_folder=$(cd "$2" && pwd)
failed=0

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
touch mine.Q40 "two words.q40" list.csv notes.txt text.json
mkdir deep

for program in rxq40ctl rxq40sim; do
  bash -n "$bash_folder/$program"
  # shellcheck source=/dev/null
  source "$bash_folder/$program"
done

# offered LINE: what bash offers behind it, sorted, with "|" between. "=" is a word of its own there.
offered() {
  read -r -a COMP_WORDS <<<"${1//=/ = }"
  [[ $1 == *' ' ]] && COMP_WORDS+=("")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMPREPLY=()
  "_${COMP_WORDS[0]}" || true
  [ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -s -d '|'
}

clones='deep|mine.Q40|two words.q40'
while IFS=';' read -r line expected; do
  [ "$expected" = CLONES ] && expected=$clones
  got=$(offered "$line")
  [ "$got" = "$expected" ] && continue
  echo "bash: \"$line\" offers \"$got\" instead of \"$expected\""
  failed=1
done <<'CASES'
rxq40ctl rea;read
rxq40ctl ;apply|backup|check|diff|dump|export|identify|import|lint|new|ports|read|restore|show|write
rxq40ctl --v;--version
rxq40ctl --quiet wr;write
rxq40ctl read --;--force|--help|--only|--port|--quiet|--trace
rxq40ctl read --only ;memory|settings
rxq40ctl read --only=;memory|settings
rxq40ctl read --only=m;memory
rxq40ctl read -p 1;1|10|11|12|13|14
rxq40ctl read -p a;auto
rxq40ctl dump --trace n;notes.txt
rxq40ctl read -p 3 ;CLONES
rxq40ctl read -p 3 mine.Q40 ;
rxq40ctl read -p /dev/nul;/dev/null
rxq40ctl write --changes m;mine.Q40
rxq40ctl new --model RX-Q40T;RX-Q40T|RX-Q40T1
rxq40ctl check mine.Q40 mine.Q40 ;CLONES
rxq40ctl export mine.Q40 ;deep|list.csv
rxq40ctl import mine.Q40 list.csv -o m;mine.Q40
rxq40ctl import mine.Q40 list.csv --map n;notes.txt
rxq40ctl apply mine.Q40 te;text.json
rxq40ctl dump --first ;
rxq40sim --load m;mine.Q40
rxq40sim --version ;0|A
rxq40sim --fault n;ng|no-echo|non-hex|not-stored
rxq40sim --replay n;notes.txt
rxq40sim --save-memory n;notes.txt
rxq40sim --save-memory d;deep
CASES

# zsh completes the line itself, in a terminal of its own. That terminal shows what is typed until the
# shell is ready for it, so what is waited for must not stand in what is typed.
completed_by_zsh() {
  zsh -f /dev/stdin "$zsh_folder" "$1" <<'ZSH'
zmodload zsh/zpty
zpty shell 'TERM=dumb PS1= zsh -f -i'
zpty -w shell "unsetopt zle_bracketed_paste; fpath=('$1' \$fpath); autoload -Uz compinit && compinit -u -D"
zpty -w shell "rxq40ctl() { print -r -- 'GO''T:'\$*':GO''T' }; PS1='REA''DY '"
zpty -r -m shell text '*READY*'
zpty -w -n shell "$2"$'\t\n'
zpty -r -m shell text '*GOT:*:GOT*'
text=${text##*'GOT:'}
print -r -- "${text%%':GOT'*}"
zpty -d shell
ZSH
}

if command -v zsh >/dev/null; then
  for program in rxq40ctl rxq40sim; do zsh -n "$zsh_folder/_$program"; done
  while IFS=';' read -r line expected; do
    got=$(timeout 20 bash -c "$(declare -f completed_by_zsh); zsh_folder=$zsh_folder; completed_by_zsh '$line'" || true)
    [ "${got% }" = "$expected" ] && continue
    echo "zsh: \"$line\" becomes \"$got\" instead of \"$expected\""
    failed=1
  done <<'CASES'
rxq40ctl ide;identify
rxq40ctl read --onl;read --only
rxq40ctl read --only me;read --only memory
rxq40ctl new --model RX-Q2;new --model RX-Q20A
rxq40ctl show min;show mine.Q40
CASES
else
  echo "zsh is not installed: its completion was not tried"
fi
exit $failed
