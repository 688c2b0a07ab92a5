#!/usr/bin/env bash
# The tools' times, as the processor counts them: the show's timeline compiled, its folder checked, ten
# times as many keys compiled, dumped and plotted, and a recording beside drawing only and encoding only.
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
# elapsed COMMAND...: seconds on the wall
elapsed() { { TIMEFORMAT='%R'; time "$@" >/dev/null 2>&1; } 2>&1; }
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

# Ten seconds at 640x360, 30 frames a second.
range=(--show "$show" --size 640x360 --fps 30 --from 1760 --to 1936)
whole=$(elapsed "$bin/vyr-record" "${range[@]}" -o "$work/a.mp4")
drawn=$(elapsed "$bin/vyr-record" "${range[@]}" --manifest "$work/manifest")
ffmpeg -v error -i "$work/a.mp4" -pix_fmt rgb24 -f rawvideo "$work/a.rgb"
encoded=$(elapsed ffmpeg -v error -f rawvideo -pix_fmt rgb24 -s 640x360 -r 30 -i "$work/a.rgb" \
    -c:v libx264 -pix_fmt yuv420p -y "$work/b.mp4")
slower=$(printf '%s\n' "$drawn" "$encoded" | sort -n | tail -n 1)
row "recorded, and the slower of draw and encode (s)" "$whole" "$slower" "$(ratio "$slower" "$whole")"

start=$(date +%s.%N)
"$bin/vyr-record" "${range[@]}" --part 1/2 -o "$work/p1.mp4" >/dev/null 2>&1 &
"$bin/vyr-record" "${range[@]}" --part 2/2 -o "$work/p2.mp4" >/dev/null 2>&1 &
wait
both=$(awk -v a="$(date +%s.%N)" -v b="$start" 'BEGIN { print a - b }')
row "recorded whole, and as two parts side by side (s)" "$whole" "$both" "$(ratio "$whole" "$both")"
