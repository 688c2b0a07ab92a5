; Bass, chords and tunes. p6, where there is one, is brightness, 0 to 1; p7 is the place, -1 left to 1 right.

; Saw and square through a ladder filter that snaps shut, on a sine that keeps the bottom round.
instr Bass
  iTone = cpsmidinn(p5)
  aSaw vco2 0.6, iTone
  aSquare vco2 0.35, iTone * 1.004, 10
  aSub oscili 0.75, iTone, giSine
  iOpen = 320 + 3000 * p6 * p6 + 900 * p6
  aCut expsegr iOpen * 2.2, 0.07, iOpen, 0.16, 180 + iOpen * 0.3, 0.05, 120
  aGrowl moogladder2 tanh(aSaw + aSquare), aCut, 0.22
  aShape linsegr 0, 0.003, 1, 0.08, 0.85, p3, 0.6, 0.04, 0
  aOut = tanh(1.25 * (aGrowl * 1.15 + aSub * 0.6)) * aShape * p4 * 0.62
  Send aOut, aOut, "bass", 0, 0
endin

; Five saws a note, slow in and slow out.
instr Pad
  iTone = cpsmidinn(p5)
  kDrift lfo 0.0018, 0.21 + 0.03 * p7
  aLeft vco2 0.2, iTone * (0.9955 + kDrift)
  aMiddle vco2 0.2, iTone
  aRight vco2 0.2, iTone * (1.0045 - kDrift)
  aUnder vco2 0.16, iTone * 0.5, 12
  kCut = 450 + 7000 * p6 * p6 + 350 * lfo:k(1, 0.09)
  aLeft butterlp aLeft * (1 - 0.5 * p7) + aMiddle * 0.5 + aUnder, kCut
  aRight butterlp aRight * (1 + 0.5 * p7) + delay(aMiddle, 0.011) * 0.5 + aUnder, kCut
  aLeft butterlp aLeft, kCut * 1.3
  aRight butterlp aRight, kCut * 1.3
  aShape linsegr 0, 0.09, 1, p3, 0.9, 0.35, 0
  Send aLeft * aShape * p4 * 0.31, aRight * aShape * p4 * 0.31, "synths", 0.28, 0
endin

; A string machine: bright saws through three moving delays.
instr Strings
  iTone = cpsmidinn(p5)
  aSaw vco2 0.3, iTone
  aSaw += vco2:a(0.2, iTone * 2.003)
  aSaw butterhp aSaw, 400
  aSaw butterlp aSaw, 7500
  aOne vdelay aSaw, 5 + oscili:a(1.1, 0.63, giSine), 20
  aTwo vdelay aSaw, 6 + oscili:a(1.1, 0.63, giSine, 0.33), 20
  aThree vdelay aSaw, 7 + oscili:a(0.3, 5.7, giSine, 0.66), 20
  aShape linsegr 0, 0.14, 1, p3, 0.95, 0.4, 0
  aShape *= p4 * 0.16
  Send (aOne + 0.6 * aThree) * aShape, (aTwo + 0.6 * aThree) * aShape, "synths", 0.3, 0
endin

; Plucked pulse, into the echo.
instr Arp
  iTone = cpsmidinn(p5)
  kWidth lfo 0.18, 0.4
  aPulse vco2 0.4, iTone, 2, 0.42 + kWidth
  aSaw vco2 0.25, iTone * 1.003
  iOpen = 600 + 900 * p6 + 7500 * p6 * p6
  aCut expsegr iOpen * 1.8, 0.05, iOpen, 0.2, iOpen * 0.35 + 120, 0.1, 150
  aPluck zdf_ladder aPulse + aSaw, aCut, 1.8
  aShape expsegr 1, 0.14, 0.3, 0.25, 0.02, 0.12, 0.001
  aShape *= linseg:a(0, 0.002, 1, 1, 1)
  aLeft, aRight Place aPluck * aShape * p4 * 0.5, p7
  Send aLeft, aRight, "synths", 0.16, 0.3
endin

; The tune of the choruses: two saws and a square an octave down, a late vibrato, a touch of slide.
instr Lead
  iTone = cpsmidinn(p5)
  kVibrato = linseg:k(0, 0.18, 0, 0.3, 1, 1, 1) * lfo:k(0.006, 5.4)
  kTone = iTone * (1 + kVibrato) * linseg:k(0.975, 0.025, 1, 1, 1)
  aLeft vco2 0.32, kTone * 1.004
  aRight vco2 0.32, kTone * 0.996
  aUnder vco2 0.22, kTone * 0.5, 10
  kCut expsegr 7500, 0.2, 5200, 2, 3800, 0.1, 2000
  aLeft zdf_ladder aLeft + aUnder, kCut, 1.1
  aRight zdf_ladder aRight + aUnder, kCut, 1.1
  aShape linsegr 0, 0.006, 1, 0.1, 0.85, p3, 0.75, 0.09, 0
  Send aLeft * aShape * p4 * 0.42, aRight * aShape * p4 * 0.42, "synths", 0.17, 0.26
endin

; The low tune of the corridor: a hollow reed, one wall to the left and one to the right.
instr Low
  iTone = cpsmidinn(p5)
  kVibrato = linseg:k(0, 0.25, 0, 0.3, 1, 1, 1) * lfo:k(0.005, 4.8)
  kTone = iTone * (1 + kVibrato)
  aCut expsegr 3200, 0.12, 1500, 0.6, 1000, 0.1, 500
  aReed vco2 0.42, kTone, 2, 0.28
  aLeft vco2 0.42, kTone * 1.007
  aRight vco2 0.42, kTone * 0.993, 2, 0.36
  aLeft zdf_ladder aReed * 0.6 + aLeft, aCut, 2.2
  aRight zdf_ladder delay(aReed, 0.014) * 0.6 + aRight, aCut, 2.2
  aShape linsegr 0, 0.008, 1, 0.12, 0.75, p3, 0.65, 0.12, 0
  aLeft *= aShape * p4 * 0.36
  aRight *= aShape * p4 * 0.36
  Send aLeft, aRight, "synths", 0.2, 0.34
endin

; Two-operator bell: bright hammer, long glass.
instr Bell
  iTone = cpsmidinn(p5)
  kIndex expseg 3.2, 0.06, 1.1, 1.4, 0.15, 1, 0.1
  aGlass foscili 0.4, iTone, 1, 3.5, kIndex, giSine
  aOver foscili 0.2, iTone * 1.003, 1, 2, kIndex * 0.4, giSine
  aShape expsegr 1, 0.5, 0.35, 1.5, 0.02, 0.9, 0.001
  aShape *= linseg:a(0, 0.0015, 1, 1, 1)
  aLeft, aRight Place (aGlass + aOver) * aShape * p4 * 0.26, 0.3
  Send aLeft, aRight, "synths", 0.4, 0.3
endin

; Electric piano: p6 is the place. The tine fades sooner than the tone under it.
instr Piano
  iTone = cpsmidinn(p5)
  kTine expseg 1.5 * p4, 0.25, 0.35, 1, 0.1, 1, 0.08
  aTone foscili 0.5, iTone, 1, 1, kTine, giSine
  aTine foscili 0.12 * p4, iTone, 1, 14, kTine * 0.3, giSine
  aTine *= expseg:a(1, 0.3, 0.01, 1, 0.01)
  kTremolo lfo 0.22, 4.4
  aShape expsegr 1, 0.6, 0.5, 2, 0.05, 0.35, 0.001
  aShape *= linseg:a(0, 0.002, 1, 1, 1) * p4 * 0.25
  aOut = (aTone + aTine) * aShape
  aLeft, aRight Place aOut, p6
  Send aLeft * (1 + kTremolo), aRight * (1 - kTremolo), "synths", 0.24, 0.08
endin
