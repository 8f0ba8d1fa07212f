#!/usr/bin/env bash
# The start-up benchmark: starts an empty window of the main window's size and the launcher in turns and
# prints the medians of
#   - the first frame of the first window (the splash for the launcher), from the start of the process,
#   - the main window ready: for the launcher, built and loaded behind the splash, so that only the splash's end
#     is missing; for the empty window, its first frame,
#   - the main window's first frame after Continue ended the splash, from the splash's end (on a display only),
#   - the peak resident memory, 1.5 s after the start, once the main window has shown,
# and the launcher's figures as ratios to the empty window's; on a display also when Continue came after the
# splash's load (never sooner than 1000 ms).
#
# Usage: bench/startup.sh [--offscreen] [--runs N] [BUILD_DIR]
#   --offscreen  run on Qt's offscreen platform instead of a private Xvfb display
#   --runs N     runs of each program (15 unless given)
#   BUILD_DIR    the build to measure (build-release unless given); its three programs are built first
#
# Both programs write their steps to the pipe named by KS_STARTUP_TRACE; bench_startup_run reads them. The
# launcher runs with a HOME of its own that holds ~/.yq2/kestrand/ with one file, so that no message about the
# mod's directory stands in the way. The launcher keeps nothing between runs, so every start is a first start.
set -euo pipefail
cd "$(dirname "$0")/.."

offscreen=false
runs=15
build=build-release
while [ $# -gt 0 ]; do
    case "$1" in
    --offscreen) offscreen=true ;;
    --runs) runs="$2"; shift ;;
    -*) echo "usage: bench/startup.sh [--offscreen] [--runs N] [BUILD_DIR]" >&2; exit 2 ;;
    *) build="$1" ;;
    esac
    shift
done

if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DKS_BUILD_TESTS=OFF >/dev/null
fi
cmake --build "$build" -j"${JOBS:-$(nproc)}" --target kslaunch bench_startup_run bench_empty_window >/dev/null
run="$build/bench/bench_startup_run"
empty="$build/bench/bench_empty_window"
launcher="$build/src/kslaunch"

work=$(mktemp -d)
xvfb=""
cleanup() {
    status=$?
    [ "$status" -ne 0 ] && [ -s "$work/errors" ] && tail -5 "$work/errors" >&2
    [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null && wait "$xvfb" 2>/dev/null
    rm -rf "$work"
    exit "$status"
}
trap cleanup EXIT

mkdir -p "$work/home/.yq2/kestrand" "$work/runtime"
chmod 700 "$work/runtime"
touch "$work/home/.yq2/kestrand/server.cfg"
export HOME="$work/home" XDG_RUNTIME_DIR="$work/runtime"
unset WAYLAND_DISPLAY QT_QPA_PLATFORM

if $offscreen; then
    unset DISPLAY
    export QT_QPA_PLATFORM=offscreen
    launcherSteps=(--ready ready)
    where="Qt's offscreen platform"
else
    command -v Xvfb >/dev/null || { echo "Xvfb is missing (Debian: xvfb)" >&2; exit 1; }
    command -v xdotool >/dev/null || { echo "xdotool is missing (Debian: xdotool)" >&2; exit 1; }
    display=90
    while [ -e "/tmp/.X$display-lock" ] || [ -e "/tmp/.X11-unix/X$display" ]; do display=$((display + 1)); done
    Xvfb ":$display" -screen 0 1024x768x24 -noreset -nolisten tcp >"$work/xvfb.log" 2>&1 &
    xvfb=$!
    export DISPLAY=":$display"
    for _ in $(seq 50); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.1; done
    # Without a window manager the keyboard follows the pointer: in the middle of the screen it rests on the
    # splash, which takes the Return that ends it.
    xdotool mousemove 512 384
    launcherSteps=(--ready ready --press-return frmMain --after splash-ended --between splash-loaded continue-offered)
    where="a private Xvfb display ($DISPLAY, 1024x768x24)"
fi

# One run of each first, not counted: it brings the programs and their libraries into the page cache.
"$run" "$empty" >/dev/null 2>>"$work/errors"
"$run" "${launcherSteps[@]}" "$launcher" >/dev/null 2>>"$work/errors"
for _ in $(seq "$runs"); do
    "$run" "$empty" >>"$work/empty" 2>>"$work/errors"
    "$run" "${launcherSteps[@]}" "$launcher" >>"$work/launcher" 2>>"$work/errors"
done

median() { # FILE COLUMN
    awk -v c="$2" '$c != "-" { print $c }' "$1" | sort -g |
        awk '{ v[NR] = $1 } END { if (NR == 0) print "-"; else if (NR % 2) print v[(NR + 1) / 2]; else print (v[NR / 2] + v[NR / 2 + 1]) / 2 }'
}
row() { # LABEL EMPTY LAUNCHER
    awk -v label="$1" -v a="$2" -v b="$3" 'BEGIN {
        ratio = (a == "-" || b == "-" || a == 0) ? "" : sprintf("%.2fx", b / a)
        printf "%-46s %12s %12s %8s\n", label, a, b, ratio }'
}
ms() { [ "$1" = "-" ] && echo - || awk -v v="$1" 'BEGIN { printf "%.1f", v }'; }
mb() { awk -v v="$1" 'BEGIN { printf "%.1f", v / 1024 }'; }

echo "Start-up on $where, $runs runs of each in turns, medians; load average $(cut -d' ' -f1-3 /proc/loadavg)"
printf "%-46s %12s %12s %8s\n" "" "empty window" "launcher" "ratio"
row "first frame of the first window (ms)" "$(ms "$(median "$work/empty" 1)")" "$(ms "$(median "$work/launcher" 1)")"
row "main window ready (ms)" "$(ms "$(median "$work/empty" 2)")" "$(ms "$(median "$work/launcher" 2)")"
$offscreen || row "main window's first frame after Continue (ms)" "-" "$(ms "$(median "$work/launcher" 3)")"
row "peak resident memory (MB)" "$(mb "$(median "$work/empty" 4)")" "$(mb "$(median "$work/launcher" 4)")"
echo "The launcher's slowest ready: $(ms "$(sort -g -k2 "$work/launcher" | tail -1 | cut -d' ' -f2)") ms"
if ! $offscreen; then
    echo "Continue came after the splash's load (ms): earliest $(ms "$(cut -d' ' -f5 "$work/launcher" | sort -g | head -1)"), median $(ms "$(median "$work/launcher" 5)"), latest $(ms "$(cut -d' ' -f5 "$work/launcher" | sort -g | tail -1)")"
fi
