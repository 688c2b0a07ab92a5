#!/usr/bin/env bash
# The studio, measured on a show of its own: see Studio.cpp. And what it costs to leave it alone.
#
#   benchmarks/studio.sh BUILD      the build folder; on a screen
set -euo pipefail
build=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cp "$build/bench/studio-show/show.so" "$work"
ffmpeg -v error -f lavfi -i 'sine=frequency=220:duration=300' -f lavfi \
    -i 'anoisesrc=amplitude=0.2:duration=300' -filter_complex '[0][1]amerge=inputs=2' -ac 2 \
    -b:a 128k "$work/music.mp3"
ffmpeg -v error -f lavfi -i 'mandelbrot=size=256x256' -frames:v 1 "$work/picture.png"
ffmpeg -v error -f lavfi -i 'testsrc=size=256x256' -frames:v 1 "$work/other.png"
cp data/oh1.lwo "$work/object.lwo"
cp data/oh2.lwo "$work/other.lwo"
cp data/shaders/noise.fs "$work/shader.fs"
ALSOFT_DRIVERS=null "$build/bench/bench-studio" "$work"

# Paused and untouched: its own count of ticks, a hundred a second.
ALSOFT_DRIVERS=null "$build/bin/vyr-studio" "$build/show" &
studio=$!
trap 'kill "$studio" 2>/dev/null || true; rm -rf "$work"' EXIT
ticks() { awk '{ print $14 + $15 }' "/proc/$studio/stat"; }
sleep 10
before=$(ticks)
sleep 10
after=$(ticks)
echo "$(((after - before) / 10)).$(((after - before) % 10)) 5" |
    benchmarks/row 'studio: paused and untouched, of a core' 'allowed' '%' '<=1'
