#!/bin/sh
# Makes the MP3 files of the sound tests anew, beside this script (needs ffmpeg and lame).
# Each is a sweep that the tests compute too: SoundTestSupport.cpp, Sweep().
set -e
cd "$(dirname "$0")"
wave=$(mktemp --suffix=.wav)
trap 'rm -f "$wave"' EXIT

sweep() { # NAME RATE FRAMES KBIT EXPRESSIONS
    ffmpeg -v error -y -f lavfi -i "aevalsrc='$5':s=$2:d=10,atrim=end_sample=$3" "$wave"
    lame --quiet -h -b "$4" "$wave" "$1"
}
up='0.6*sin(2*PI*(300*t+2000*t*t))'
down='0.6*sin(2*PI*(5000*t-1500*t*t))'
sweep SoundSweep.mp3 44100 50000 128 "$up|$down"
sweep SoundSweepMono.mp3 22050 30001 64 "$up"
