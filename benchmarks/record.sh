#!/usr/bin/env bash
# The recorder beside what it is made of: the show's beginning recorded, only drawn and read back, and only
# encoded, in turn; then a minute of it whole and as two parts side by side, in turn. (A part starts up as
# the whole does, which takes a second that a short recording would not hide.)
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
options=(--show "$1/show" --size 640x360 --fps 30)
short=264 # rows: 15 seconds
minute=1056

# timed COMMAND...: sets `wall` and `processor`, its seconds by the clock and by the processor's count
timed() {
    { TIMEFORMAT='%R %U %S'; time "$@" >/dev/null 2>"$work/errors"; } 2>"$work/time" || {
        cat "$work/errors" >&2
        return 1
    }
    read -r wall user system <"$work/time"
    processor=$(awk -v a="$user" -v b="$system" 'BEGIN { print a + b }')
}

# Each takes the row at which it ends.
record() { "$program" "${options[@]}" --to "$1" -o "$work/whole.mp4"; }
draw() { "$program" "${options[@]}" --to "$1" --manifest "$work/manifest"; }
parts() {
    "$program" "${options[@]}" --to "$1" --part 1/2 -o "$work/part1.mp4" &
    local first=$!
    "$program" "${options[@]}" --to "$1" --part 2/2 -o "$work/part2.mp4"
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
    PATH="$work/bin:$PATH" record $short 2>/dev/null
    mapfile -t arguments <"$work/arguments"
}
encode() { ffmpeg "${arguments[@]}" "$work/encoded.mp4" <"$work/frames"; }

# per_second ROWS SECONDS: frames
per_second() { awk -v rows="$1" -v s="$2" 'BEGIN { printf "%.3f", rows / 17.6 * 30 / s }'; }
slower() { printf '%s\n' "$@" | sort -g | tail -n 1; }

# What the processor's seconds allow; "$work/used" holds a line a round.
note() { awk -v what="$1" -v cores="$(nproc)" -f "benchmarks/$2.awk" "$work/used"; }

# compare_overlap CASE
compare_overlap() {
    : >"$work/pairs"
    : >"$work/used"
    local recorded drawn used
    for ((round = 0; round < rounds; round++)); do
        timed record $short && recorded=$wall used="$wall $processor"
        timed draw $short && drawn=$wall used="$used $processor"
        timed encode && used="$used $processor"
        echo "$(per_second $short "$recorded") $(per_second $short "$(slower "$drawn" "$wall")")"
        echo "$used" >&3
    done >>"$work/pairs" 3>>"$work/used"
    benchmarks/row "recorded, $1" "the slower of drawn only and encoded only" frames/s ">=0.9" \
        <"$work/pairs"
    note "$1" overlap
}

# compare_parts CASE ROWS BAR
compare_parts() {
    : >"$work/pairs"
    : >"$work/used"
    local recorded used
    for ((round = 0; round < rounds; round++)); do
        timed record "$2" && recorded=$wall used="$wall $processor"
        timed parts "$2" && used="$used $processor"
        echo "$(per_second "$2" "$wall") $(per_second "$2" "$recorded")"
        echo "$used" >&3
    done >>"$work/pairs" 3>>"$work/used"
    benchmarks/row "two parts side by side, $1" "the whole" frames/s "$3" <"$work/pairs"
    note "$1" parts
}

keep_frames
export LP_NUM_THREADS=0
compare_overlap "drawing on one core"
compare_parts "drawing on one core" $minute ">=1.6"
unset LP_NUM_THREADS
compare_overlap "drawing on every core"
compare_parts "drawing on every core" $short "-"
