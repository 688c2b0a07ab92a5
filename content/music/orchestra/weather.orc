; Rain, thunder, risers, and the bus: what is not a note. p4 is the amount.

; Drops on a roof over a wide hiss; fades in and out over its length.
instr Rain
  aFade linseg 0, p3 * 0.15, 1, p3 * 0.65, 1, p3 * 0.2, 0
  kGust = 0.8 + 0.2 * lfo:k(1, 0.17)
  aLeft pinker
  aRight pinker
  aLeft butterhp butterlp(aLeft, 6500), 700
  aRight butterhp butterlp(aRight, 6500), 700
  aDropsLeft dust2 0.5, 70
  aDropsRight dust2 0.5, 70
  aDropsLeft = mode(aDropsLeft, randomh:k(1300, 4200, 60), 14) + aDropsLeft
  aDropsRight = mode(aDropsRight, randomh:k(1300, 4200, 60), 14) + aDropsRight
  aLeft = (aLeft * 0.36 * kGust + aDropsLeft * 0.11) * aFade * p4
  aRight = (aRight * 0.36 * kGust + aDropsRight * 0.11) * aFade * p4
  Send aLeft, aRight, "synths", 0.1, 0
endin

; Far off: dark noise that rolls three times.
instr Thunder
  p3 += 3
  aLeft tone noise:a(16, 0), 50
  aRight tone noise:a(16, 0), 50
  kRoll expseg 0.01, 0.25, 1, 0.5, 0.3, 0.4, 0.8, 0.7, 0.25, 0.6, 0.45, p3 - 2.45, 0.003
  aLeft butterlp butterhp(aLeft, 45), 190
  aRight butterlp butterhp(aRight, 45), 210
  Send aLeft * kRoll * p4 * 0.8, aRight * kRoll * p4 * 0.8, "synths", 0.3, 0
endin

; Noise and a tone that climb two octaves and get louder until the next section.
instr Riser
  kClimb expseg 0.06, p3, 1
  aLeft noise 0.5, 0
  aRight noise 0.5, 0
  kCentre expseg 500, p3, 7500
  aLeft butterbp aLeft, kCentre, kCentre * 0.5
  aRight butterbp aRight, kCentre * 1.06, kCentre * 0.5
  kTone expseg cpsmidinn(48), p3, cpsmidinn(72)
  aTone vco2 0.12, kTone
  aFifth vco2 0.1, kTone * 1.4983
  aTone butterlp aTone + aFifth, 400 + 3800 * kClimb
  aFade linsegr 1, 1, 1, 0.03, 0
  kLoud = kClimb * p4 * 0.5
  Send (aLeft + aTone) * kLoud * aFade, (aRight + aTone) * kLoud * aFade, "synths", 0.25, 0.1
endin

; A tone that stutters in sixteenths and climbs an octave: the tunnel speeding up.
instr Sweep
  kClimb line 0, p3, 1
  kTone = cpsmidinn(60 + 12 * kClimb)
  aOne vco2 0.3, kTone, 2, 0.3
  aTwo vco2 0.3, kTone * 1.007, 2, 0.3
  kGate = frac(timeinsts() / (giBeat / 4)) < 0.55 ? 1 : 0
  aGate butterlp a(kGate), 120
  kCut = 500 + 5500 * kClimb * kClimb
  aLeft zdf_ladder aOne, kCut, 2.5
  aRight zdf_ladder aTwo, kCut, 2.5
  aGate *= linsegr:a(1, 1, 1, 0.03, 0) * (0.1 + 0.4 * kClimb) * p4
  Send aLeft * aGate * 0.5, aRight * aGate * 0.5, "synths", 0.2, 0.2
endin

instr Downlifter
  kFall expseg 1, p3, 0.004
  kCentre expseg 7000, p3, 300
  aLeft noise 0.5, 0
  aRight noise 0.5, 0
  aLeft butterbp aLeft, kCentre, kCentre * 0.6
  aRight butterbp aRight, kCentre * 0.95, kCentre * 0.6
  Send aLeft * kFall * p4 * 0.4, aRight * kFall * p4 * 0.4, "synths", 0.3, 0
endin

; A cymbal from its end to its beginning.
instr Reverse
  aLeft noise 0.5, 0
  aRight noise 0.5, 0
  aLeft butterhp aLeft, 3500
  aRight butterhp aRight, 3800
  aSwell expseg 0.004, p3, 1
  aSwell *= linsegr:a(1, 1, 1, 0.008, 0)
  Send aLeft * aSwell * p4 * 0.3, aRight * aSwell * p4 * 0.3, "synths", 0.12, 0
endin

; The floor falls: a deep drop and a puff of dust.
instr Impact
  p3 = 2.4
  aDrop oscili 0.9, expseg:a(110, 0.08, 48, 1.5, 34, 1, 33), giSine
  aDrop *= expseg:a(1, 0.7, 0.25, 1.7, 0.002)
  aDust noise 0.5, 0
  aDust butterlp aDust, expseg:k(5000, 0.6, 300, 2, 200)
  aDust *= expseg:a(1, 0.5, 0.1, 1.9, 0.001)
  aOut = (tanh(aDrop) * 0.6 + aDust * 0.35) * p4 * linseg:a(0, 0.001, 1, 1, 1)
  Send aOut, aOut, "drums", 0.3, 0
endin

; The bus number seventeen: comes from the left, opens its doors for nobody, leaves to the right and a little lower.
instr Bus
  kPlace linseg -0.9, p3 * 0.35, -0.1, p3 * 0.2, 0.1, p3 * 0.45, 0.95
  kNear expseg 0.05, p3 * 0.38, 1, p3 * 0.17, 0.9, p3 * 0.45, 0.02
  kTone linseg 46, p3 * 0.36, 30, p3 * 0.2, 29, p3 * 0.2, 45, p3 * 0.24, 52
  aEngine vco2 0.4, kTone
  aRattle vco2 0.25, kTone * 1.5, 2, 0.2
  aRoad pinker
  aEngine butterlp aEngine + aRattle + aRoad * 0.5, 160 + 700 * kNear
  aDoors noise 0.5, 0
  aDoors butterbp aDoors, 5200, 3600
  aDoors *= linseg:a(0, p3 * 0.4, 0, 0.02, 1, 0.3, 0.25, 0.35, 0, 1, 0)
  aOut = (aEngine * kNear * 0.5 + aDoors * 0.16) * p4
  kAngle = (kPlace + 1) * $M_PI_4
  Send aOut * cos(kAngle), aOut * sin(kAngle), "synths", 0.2, 0
endin
