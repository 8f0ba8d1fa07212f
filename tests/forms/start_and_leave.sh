#!/usr/bin/env bash
# Two starts of the real launcher and its exits, on a private X display, as a new user has them: a fresh HOME and
# XDG_CACHE_HOME without a Kestrand directory, so the start-up message stands over the splash.
#
#   1. The message is left open for 20 s, past the splash's 15 s end. The launcher lives on, the splash stays under
#      its message, and the answer brings up the main window. File, Exit, No starts the farewell; File, Exit pressed
#      again during it is passed over, and the launcher ends with status 0.
#   2. The message is answered at once, Continue is pressed with Return once it shows, and the launcher is left the
#      same way. This start has no XDG_RUNTIME_DIR, as on a machine without a desktop session, where the sound
#      server's client library would otherwise keep a link under ~/.config.
#   3. Neither start left a file under HOME or XDG_CACHE_HOME.
#
# Usage: start_and_leave.sh KSLAUNCH   (needs Xvfb and xdotool; ctest skips it with status 77 without them)
set -euo pipefail
launcher=$1
command -v Xvfb >/dev/null && command -v xdotool >/dev/null || exit 77

work=$(mktemp -d)
xvfb=""
pid=""
cleanup() {
    [ -n "$pid" ] && kill "$pid" 2>/dev/null
    [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "FAIL: $*" >&2
    [ -f "$work/trace" ] && sed 's/^/  trace: /' "$work/trace" >&2
    exit 1
}

# The X server picks a free display itself and names it once it is ready: two runs at once never share one.
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/display" >"$work/xvfb.log" 2>&1 &
xvfb=$!
for _ in $(seq 300); do [ -s "$work/display" ] && break; sleep 0.1; done
[ -s "$work/display" ] || fail "the X server did not start"
export DISPLAY=":$(head -n 1 "$work/display")"

mkdir -p "$work/home" "$work/cache" "$work/runtime"
chmod 700 "$work/runtime"
export HOME="$work/home" XDG_CACHE_HOME="$work/cache" XDG_RUNTIME_DIR="$work/runtime"
unset XDG_CONFIG_HOME XDG_DATA_HOME WAYLAND_DISPLAY QT_QPA_PLATFORM

# The visible window whose title matches, once it is there (at most 30 s). The round splash has no title of its
# own, so it is found by its class, before any other window of the launcher shows: window --class kslaunch.
window() {
    local id by=--name
    [ "$1" = --class ] && { by=--class; shift; }
    for _ in $(seq 300); do
        id=$(xdotool search --onlyvisible "$by" "$1" 2>/dev/null | head -1) || true
        [ -n "$id" ] && { echo "$id"; return; }
        kill -0 "$pid" 2>/dev/null || fail "the launcher ended while waiting for '$1'"
        sleep 0.1
    done
    fail "no window '$1'"
}
# Waits until the launcher's record of its start has the step (at most 30 s).
step() {
    for _ in $(seq 300); do
        grep -q "^$1 " "$work/trace" && return
        sleep 0.1
    done
    fail "the start never reached '$1'"
}
keys() { # WINDOW KEY...
    local target=$1
    shift
    xdotool windowfocus --sync "$target" >/dev/null 2>&1 || true
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.3
    done
}
# File, Exit, No; then File, Exit again while the farewell plays. The launcher must end by itself with status 0.
leave() {
    keys "$(window 'estrand Launcher$')" alt+f x
    keys "$(window 'Exit without Save Warning')" n
    sleep 0.2
    keys "$(window 'estrand Launcher$')" alt+f x Return
    local status=0
    for _ in $(seq 300); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
    kill -0 "$pid" 2>/dev/null && fail "the launcher did not end after its farewell"
    wait "$pid" || status=$?
    pid=""
    [ "$status" -eq 0 ] || fail "the launcher ended with status $status"
}

# 1. The message held open past the splash's end.
: >"$work/trace"
KS_STARTUP_TRACE="$work/trace" "$launcher" >"$work/out1" 2>&1 &
pid=$!
message=$(window 'No Kestrand Directory')
step splash-loaded
sleep 20
kill -0 "$pid" 2>/dev/null || fail "the launcher ended while its message stood past the splash's end"
grep -q '^splash-ended ' "$work/trace" && fail "the splash went while its message was open"
keys "$message" Return
window 'estrand Launcher$' >/dev/null
step splash-ended
leave

# 2. The message answered at once, Continue by Return; no runtime directory.
: >"$work/trace"
started=$EPOCHSECONDS
env -u XDG_RUNTIME_DIR KS_STARTUP_TRACE="$work/trace" "$launcher" >"$work/out2" 2>&1 &
pid=$!
keys "$(window 'No Kestrand Directory')" Return
step continue-offered
keys "$(window --class '^kslaunch$')" Return
pressed=$EPOCHSECONDS
window 'estrand Launcher$' >/dev/null
step splash-ended
# Continue, not the splash's own end, brought the main window: the splash went before its 15 s were up. Only a
# Return pressed well within those 15 s tells the two ends apart; on a machine too busy for that the check waits
# for another run.
loaded=$(awk '$1 == "splash-loaded" { print $2 }' "$work/trace")
ended=$(awk '$1 == "splash-ended" { print $2 }' "$work/trace")
if [ $((pressed - started)) -lt 12 ]; then
    [ $((ended - loaded)) -lt 15000000000 ] || fail "Return on Continue did not end the splash"
else
    echo "Return came $((pressed - started)) s after the start: too late to tell Continue from the splash's end"
fi
leave

# 3. Nothing kept.
left=$(find "$work/home" "$work/cache" -mindepth 1 | sed "s|^$work/||")
[ -z "$left" ] || fail "the starts left files: $left"
echo "two starts and two exits with status 0; nothing under HOME or XDG_CACHE_HOME"
