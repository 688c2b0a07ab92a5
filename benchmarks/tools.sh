#!/usr/bin/env bash
# The tools' times, as the processor counts them: the show's timeline compiled, its folder checked, and
# ten times as many keys compiled, dumped and plotted.
# Takes the build folder:  benchmarks/tools.sh build
set -euo pipefail
bin=$1/bin
show=$1/show
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# seconds COMMAND...: processor seconds, user and system, the least of three runs
seconds() {
    for _ in 1 2 3; do
        { TIMEFORMAT='%U %S'; time "$@" >/dev/null 2>&1; } 2>&1
    done | awk '{ t = $1 + $2; if (NR == 1 || t < least) least = t } END { printf "%.3f", least }'
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
row() { printf '%-44s %10s %10s %8s\n' "$@"; }

row what this peer ratio
row "timeline of the show compiled (s)" "$(seconds "$bin/vyr-tracks" compile content/timeline.txt -o "$work")" "" ""
row "show checked (s)" "$(seconds "$bin/vyr-check" "$show")" "" ""

for keys in 100000 1000000; do
    mkdir -p "$work/$keys"
    benchmarks/timeline.py "$keys" >"$work/$keys.txt"
    compile[keys]=$(seconds "$bin/vyr-tracks" compile "$work/$keys.txt" -o "$work/$keys")
    dump[keys]=$(seconds "$bin/vyr-tracks" dump "$work/$keys")
    plot[keys]=$(seconds "$bin/vyr-tracks" plot "$work/$keys" -o "$work/plot.svg")
done
for what in compile dump plot; do
    declare -n at=$what
    row "$what, a million keys, and 100,000 (s)" "${at[1000000]}" "${at[100000]}" \
        "$(ratio "${at[1000000]}" "${at[100000]}")"
done
