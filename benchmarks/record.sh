#!/usr/bin/env bash
# The recorder beside what it is made of: four seconds of the show, at the size and rate that it has unless
# told otherwise, recorded, only drawn and read back, only encoded, and recorded as two parts side by side.
# In each round all four run in turn.
#
#   benchmarks/record.sh BUILD [ROUNDS]      the build folder; 5 rounds unless said
#
# Mesa's software renderer draws on every core that there is, so that drawing and encoding ask for the
# same two. LP_NUM_THREADS=0 has it draw on one: the case in which a core is left for the encoder, or for
# another part, as a graphics card leaves them. Both are measured.
set -euo pipefail
program=$(realpath "$1/bin/vyr-record")
rounds=${2:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
range=(--show "$1/show" --from 1760 --to 1830.4)
frames=240

# timed COMMAND...: sets `wall` and `processor`, its seconds by the clock and by the processor's count
timed() {
    { TIMEFORMAT='%R %U %S'; time "$@" >/dev/null 2>"$work/errors"; } 2>"$work/time" || {
        cat "$work/errors" >&2
        return 1
    }
    read -r wall user system <"$work/time"
    processor=$(awk -v a="$user" -v b="$system" 'BEGIN { print a + b }')
}

record() { "$program" "${range[@]}" -o "$work/whole.mp4"; }
draw() { "$program" "${range[@]}" --manifest "$work/manifest"; }
parts() {
    "$program" "${range[@]}" --part 1/2 -o "$work/part1.mp4" &
    local first=$!
    "$program" "${range[@]}" --part 2/2 -o "$work/part2.mp4"
    wait "$first"
}

# An ffmpeg ahead of the real one that keeps the frames and the encoder's arguments, to encode only.
keep_frames() {
    mkdir "$work/bin"
    cat >"$work/bin/ffmpeg" <<SCRIPT
#!/usr/bin/env bash
PATH=\${PATH#*:}
case "\$*" in
*rawvideo*)
    printf '%s\n' "\${@:1:\$#-1}" >"$work/arguments"
    tee "$work/frames" | ffmpeg "\$@"
    ;;
*) exec ffmpeg "\$@" ;;
esac
SCRIPT
    chmod +x "$work/bin/ffmpeg"
    PATH="$work/bin:$PATH" record 2>/dev/null
    mapfile -t arguments <"$work/arguments"
}
encode() { ffmpeg "${arguments[@]}" "$work/encoded.mp4" <"$work/frames"; }

per_second() { awk -v frames=$frames -v s="$1" 'BEGIN { printf "%.3f", frames / s }'; }
slower() { printf '%s\n' "$@" | sort -g | tail -n 1; }

# measure CASE BAR-OF-THE-PARTS
measure() {
    : >"$work/overlap"
    : >"$work/parts"
    : >"$work/processor"
    local recorded drawn encoded used
    for ((round = 0; round < rounds; round++)); do
        timed record && recorded=$wall used="$wall $processor"
        timed draw && drawn=$wall used="$used $processor"
        timed encode && encoded=$wall used="$used $processor"
        timed parts && used="$used $processor"
        echo "$(per_second "$recorded") $(per_second "$(slower "$drawn" "$encoded")")" >>"$work/overlap"
        echo "$(per_second "$wall") $(per_second "$recorded")" >>"$work/parts"
        echo "$used" >>"$work/processor"
    done
    benchmarks/row "recorded, $1" "the slower of drawn only and encoded only" frames/s ">=0.9" \
        <"$work/overlap"
    benchmarks/row "two parts side by side, $1" "the whole" frames/s "$2" <"$work/parts"
    awk -v what="$1" -v cores="$(nproc)" -f benchmarks/record.awk "$work/processor"
}

keep_frames
export LP_NUM_THREADS=0
measure "drawing on one core" ">=1.6"
unset LP_NUM_THREADS
measure "drawing on every core" "-"
