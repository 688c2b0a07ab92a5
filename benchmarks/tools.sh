#!/usr/bin/env bash
# What the tools take for ten times as many keys, as the processor counts it: compiled, dumped and
# plotted.
#
#   benchmarks/tools.sh BUILD [ROUNDS]      the build folder; 5 rounds unless said
set -euo pipefail
bin=$1/bin
rounds=${2:-5}
few=100000 many=1000000
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# seconds COMMAND...: of the processor, user and system
seconds() {
    { TIMEFORMAT='%U %S'; time "$@" >/dev/null 2>&1; } 2>&1 | awk '{ print $1 + $2 }'
}
compile() { "$bin/vyr-tracks" compile "$work/$1.txt" -o "$work/$1"; }
dump() { "$bin/vyr-tracks" dump "$work/$1"; }
plot() { "$bin/vyr-tracks" plot "$work/$1" -o "$work/plot.svg"; }

for keys in $few $many; do
    mkdir "$work/$keys"
    benchmarks/timeline.py "$keys" >"$work/$keys.txt"
done
for what in compile dump plot; do
    for ((round = 0; round < rounds; round++)); do
        echo "$(seconds "$what" $many) $(seconds "$what" $few)"
    done | benchmarks/row "vyr-tracks $what, a million keys" "a tenth of them" s -
done
