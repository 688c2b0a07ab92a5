; waiting: the whole orchestra. Every event's p4 is its loudness, 0 to 1; p5 is its pitch as a MIDI note where it has one.
; Stems leave on twelve channels, in pairs: drums, bass, synths, voice, space (reverb and echo), and last the
; plain speech on the left of a pair of its own, which is never heard: `measure` compares the mix with it.
sr = 44100
ksmps = 16          ; events start on multiples of it: 0.36 ms, finer than the ear's grid
nchnls = 12
0dbfs = 1
seed 17             ; noise is the same noise in every rendering

giSine ftgen 1, 0, 16384, 10, 1
giMetal ftgen 2, 0, 16384, 10, 1, 0, 0.6, 0, 0.5, 0, 0.35, 0, 0.3, 0, 0.2
giSpeech ftgen 3, 0, 0, 1, "voice.wav", 0, 0, 1
gkDuck init 1       ; what a kick leaves of the synths, 1 all of them
gkLevel init 1      ; how loud the section is
gkVoice init 1      ; how loud the line is
gkTune init 1       ; what moves the dry voice to the note that is sung
giBeat = 60 / 132

#include "busses.orc"
#include "drums.orc"
#include "synths.orc"
#include "voice.orc"
#include "weather.orc"
#include "mixer.orc"
