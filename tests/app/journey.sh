#!/bin/sh
# The program itself, on a virtual display and as a new user: opens what it is handed, shows the
# log, closes on command, and leaves nothing behind but what it should.
# Usage: journey.sh PROGRAM, within xvfb-run.
set -eu
program=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME="$home" QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$home"
unset XDG_CONFIG_HOME XDG_STATE_HOME XDG_CACHE_HOME XDG_DATA_HOME

fail() {
    echo "$1" >&2
    exit 1
}

# The identifier of the window, once it is there.
window() {
    found=$(timeout 60 xdotool search --sync --onlyvisible --name "$1" | head -n 1)
    [ -n "$found" ] || fail "There is no window \"$1\""
    echo "$found"
}

mkdir "$home/some.logarchive"
"$program" "$home/some.logarchive" --an-option 2>"$home/complaints" &
running=$!
main=$(window '^Tessel')
xdotool windowfocus --sync "$main" key ctrl+n
timeout 60 sh -c '
    until [ "$(xdotool search --onlyvisible --name "^Tessel" | wc -l)" -eq 2 ]; do sleep 0.1; done' ||
    fail "New Window opened no second window"
second=$(xdotool search --onlyvisible --name '^Tessel' | grep -v "^$main$")
printf '[]' >"$home/list"
cd "$home"
timeout 60 "$program" list 2>>"$home/complaints" || fail "A second start did not end"
cd /
timeout 60 sh -c '
    until [ "$(xdotool search --onlyvisible --name "^Tessel" | wc -l)" -eq 3 ]; do sleep 0.1; done' ||
    fail "A second start opened no window in the first"
xdotool windowfocus --sync "$second" key ctrl+g
window '^Tessel 20' >/dev/null
statistics=$(find "$home/.cache" -name 'logdata.statistics.*.txt' -exec cat {} +)
[ -n "$statistics" ] || fail "The demonstration store has no statistics"
! echo "$statistics" | grep -E '[0-9],[0-9]' || fail "Numbers were written with a comma"
xdotool windowfocus --sync "$second" key F1
window '^Help Window$' >/dev/null
xdotool windowfocus --sync "$second" key ctrl+q
wait "$running" || fail "The program ended with code $?: $(cat "$home/complaints")"

[ ! -s "$home/complaints" ] || fail "The program complained: $(cat "$home/complaints")"
grep -q "recentFiles=$home/list," "$home/.local/state/Tessel/state.ini" ||
    fail "The list of the second start was not opened"
[ ! -e "$home/.config/Tessel/Tessel.conf" ] || fail "Preferences were written that nobody set"
[ -z "$(ls -A "$home/some.logarchive")" ] || fail "Something was written into the archive"
