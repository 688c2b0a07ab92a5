#!/usr/bin/env bash
# The recorder beside what it is made of: four seconds of the show, at the size and rate that it has unless
# told otherwise, recorded, only drawn and read back, and only encoded; and twelve seconds recorded whole
# and as two parts side by side, so that what each program needs to start counts as little as in a show.
# In each round all run in turn.
#
#   benchmarks/record.sh BUILD [ROUNDS]      the build folder; 5 rounds unless said
#
# Mesa's software renderer draws on every core that there is, so that drawing and encoding ask for the
# same two. LP_NUM_THREADS=0 has it draw on one: the case in which a core is left for the encoder, or for
# another part, as a graphics card leaves them. Both are measured; the parts only where a core is left.
set -euo pipefail
program=$(realpath "$1/bin/vyr-record")
rounds=${2:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
short=(--show "$1/show" --from 1760 --to 1830.4)
long=(--show "$1/show" --from 1760 --to 1971.2)
frames=240
longFrames=720

# timed COMMAND...: sets `wall` and `processor`, its seconds by the clock and by the processor's count
timed() {
    { TIMEFORMAT='%R %U %S'; time "$@" >/dev/null 2>"$work/errors"; } 2>"$work/time" || {
        cat "$work/errors" >&2
        return 1
    }
    read -r wall user system <"$work/time"
    processor=$(awk -v a="$user" -v b="$system" 'BEGIN { print a + b }')
}

record() { "$program" "${short[@]}" -o "$work/whole.mp4"; }
draw() { "$program" "${short[@]}" --manifest "$work/manifest"; }
whole() { "$program" "${long[@]}" -o "$work/whole.mp4"; }
parts() {
    "$program" "${long[@]}" --part 1/2 -o "$work/part1.mp4" &
    local first=$!
    "$program" "${long[@]}" --part 2/2 -o "$work/part2.mp4"
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

# per_second FRAMES SECONDS
per_second() { awk -v frames="$1" -v s="$2" 'BEGIN { printf "%.3f", frames / s }'; }
slower() { printf '%s\n' "$@" | sort -g | tail -n 1; }

# measure_overlap CASE
measure_overlap() {
    : >"$work/overlap"
    : >"$work/processor"
    local recorded drawn encoded used
    for ((round = 0; round < rounds; round++)); do
        timed record && recorded=$wall used="$wall $processor"
        timed draw && drawn=$wall used="$used $processor"
        timed encode && encoded=$wall used="$used $processor"
        echo "$(per_second $frames "$recorded") $(per_second $frames "$(slower "$drawn" "$encoded")")" \
            >>"$work/overlap"
        echo "$used" >>"$work/processor"
    done
    benchmarks/row "recorded, $1" "the slower of drawn only and encoded only" frames/s ">=0.9" \
        <"$work/overlap"
    awk -v what="$1" -v cores="$(nproc)" '
        { wall += $1; recorded += $2; drawn += $3; encoded += $4 }
        END { printf "note\t%s, processor seconds: recorded %.2f, drawn only %.2f, encoded only %.2f; " \
                     "recording keeps %.2f of %d cores busy\n",
                     what, recorded / NR, drawn / NR, encoded / NR, recorded / wall, cores }
        ' "$work/processor"
}

# measure_parts CASE
measure_parts() {
    : >"$work/parts"
    : >"$work/processor"
    local recorded
    for ((round = 0; round < rounds; round++)); do
        timed whole && recorded=$wall
        timed parts
        echo "$(per_second $longFrames "$wall") $(per_second $longFrames "$recorded")" >>"$work/parts"
        echo "$recorded $processor" >>"$work/processor"
    done
    benchmarks/row "two parts side by side, $1" "the whole" frames/s ">=1.6" <"$work/parts"
    awk -v what="$1" -v cores="$(nproc)" '
        { whole += $1; parts += $2 }
        END { printf "note\t%s: two parts that keep all cores busy would be %.2f times as fast as the whole\n",
                     what, whole * cores / parts }' "$work/processor"
}

keep_frames
export LP_NUM_THREADS=0
measure_overlap "drawing on one core"
measure_parts "drawing on one core"
unset LP_NUM_THREADS
measure_overlap "drawing on every core"
