#!/usr/bin/env bash
# Runs the same kscfg commands with the Linux kscfg and, under Wine, with kscfg.exe, each in a directory of its
# own, and compares what they write and print byte for byte: new, set, convert, get and check, on configurations
# with Windows paths (on Windows a single slash ends a value, so files with Linux paths read otherwise there).
# Usage: same_files.sh LINUX-KSCFG WINE64 KSCFG-EXE DATA-DIR
set -uo pipefail
linux=$1 wine=$2 exe=$3 data=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

run_all() { # KSCFG... : the commands, each one's output and status in a file of its own
    "$@" new server.cfg >new.out 2>&1; echo $? >>new.out
    "$@" set server.cfg 'qdir=C:\QUAKE2' game_dir=KESTRAND 'hostname=Friday Frags' fraglimit=30 \
        df_force_respawn=1 weapon_bfg=1 rcon_password=s3cret >set.out 2>&1; echo $? >>set.out
    "$@" set server.cfg --dry-run maxclients=24 >dry-run.out 2>&1; echo $? >>dry-run.out
    for input in foreign-typical foreign-cr-flags foreign-bytes empty; do
        "$@" convert "$input.cfg" -o "$input.out.cfg" >"convert-$input.out" 2>&1; echo $? >>"convert-$input.out"
        "$@" check "$input.out.cfg" >"check-$input.out" 2>&1; echo $? >>"check-$input.out"
    done
    "$@" convert foreign-typical.cfg foreign-cr-flags.cfg -o both.cfg >convert-both.out 2>&1; echo $? >>convert-both.out
    "$@" get server.cfg >get.out 2>&1; echo $? >>get.out
    "$@" get --json server.cfg hostname qdir dmflags >get-json.out 2>&1; echo $? >>get-json.out
    "$@" check --json server.cfg >check.out 2>&1; echo $? >>check.out
    "$@" diff server.cfg both.cfg >diff.out 2>&1; echo $? >>diff.out
}

for side in linux windows; do
    mkdir "$work/$side"
    cp "$data"/convert/in/{foreign-typical,foreign-cr-flags,foreign-bytes,empty}.cfg "$work/$side/"
done
(cd "$work/linux" && run_all "$linux")
(cd "$work/windows" && run_all "$wine" "$exe")

status=0
for file in "$work"/linux/*; do
    name=$(basename "$file")
    if ! cmp -s "$file" "$work/windows/$name"; then
        echo "differs: $name"
        diff <(od -c "$file") <(od -c "$work/windows/$name") | head -20
        status=1
    fi
done
count=$(ls "$work/linux" | wc -l)
[ "$count" -eq "$(ls "$work/windows" | wc -l)" ] || { echo "the two sides wrote different files"; status=1; }
echo "$count files compared: $([ $status -eq 0 ] && echo all byte-identical || echo some differ)"
exit $status
