; The drums. All of them speak at once (attacks under a millisecond), because the picture is cut to them.

instr Kick
  aPitch expsegr 320, 0.012, 130, 0.05, 58, 0.25, 46, 0.05, 46
  aBody oscili 1, aPitch, giSine
  aShape expsegr 1, 0.09, 0.75, 0.26, 0.004, 0.02, 0.001
  aClick noise 0.5, 0
  aClick butterhp aClick, 2500
  aClick *= expsegr:a(1, 0.008, 0.001, 0.01, 0.001)
  aOut = tanh(1.9 * aBody * aShape) * 0.64 + aClick * 0.6
  aOut *= p4 * linsegr:a(1, p3, 1, 0.02, 0)
  Send aOut, aOut, "drums", 0.01, 0
endin

; What the kick does to the synths: down at once, back within a beat.
instr Duck
  kBack expseg 0.02, 0.02, 0.03, giBeat * 0.8, 1, 1, 1
  gkDuck = 1 - 0.62 * p4 * (1 - kBack)
endin

instr Snare
  aTone oscili 0.5, expseg:a(310, 0.02, 196, 0.2, 180), giSine
  aTone *= expsegr:a(1, 0.11, 0.01, 0.1, 0.001)
  aRattle noise 1, 0
  aRattle butterhp aRattle, 1400
  aRattle pareq aRattle, 4500, 1.6, 0.7
  aRattle *= expsegr:a(1, 0.04, 0.4, 0.13 + 0.05 * p4, 0.002, 0.1, 0.001)
  aOut = tanh(1.4 * (aTone + 0.75 * aRattle)) * p4 * 1.05
  aLeft, aRight Place aOut, 0.05
  Send aLeft, aRight, "drums", 0.09, 0.0
endin

; Several hands, never quite together: four bursts, the last one rings.
instr Clap
  aHands noise 1, 0
  aOther noise 1, 0
  aBursts linseg 1, 0.007, 0.1, 0.001, 0.9, 0.008, 0.1, 0.001, 0.9, 0.009, 0.1, 0.001, 1, 0.03, 0.45, 0.16, 0, 1, 0
  aHands butterbp aHands, 1350, 1100
  aOther butterbp aOther, 1600, 1300
  Send aHands * aBursts * p4 * 2.4, aOther * aBursts * p4 * 2.4, "drums", 0.16, 0.02
endin

; Struck metal: two squares whose pitches flutter, multiplied. Held still they would whistle at the sum of both.
opcode Metal, a, iii
  iLow, iHigh, iFlutter xin
  iTune random 0.93, 1.07
  kLow randh iFlutter, 1370
  kHigh randh iFlutter, 1130
  aLow vco2 0.5, iLow * iTune * (1 + kLow), 10
  aHigh vco2 0.5, iHigh * iTune * (1 + kHigh), 10
  xout aLow * aHigh
endop

instr Hat
  aMetal Metal 5210, 7430, 0.16
  aNoise noise 0.6, 0
  aRing butterhp aMetal * 0.8 + aNoise, 7200
  aRing *= expsegr:a(1, 0.018 + 0.035 * p4, 0.05, 0.05, 0.001, 0.02, 0.001)
  aLeft, aRight Place aRing * p4 * 1.4, 0.25
  Send aLeft, aRight, "drums", 0.02, 0
endin

instr OpenHat
  aMetal Metal 5210, 7430, 0.16
  aNoise noise 0.7, 0
  aRing butterhp aMetal * 0.8 + aNoise, 6500
  aRing *= expsegr:a(1, 0.13, 0.35, 0.08, 0.002, 0.02, 0.001)
  aLeft, aRight Place aRing * p4 * 0.68, -0.2
  Send aLeft, aRight, "drums", 0.04, 0
endin

; The clock: p5 = 0 tick, 1 tock. A tiny hammer on two pieces of brass and a wooden case.
instr Clock
  aHammer mpulse 1, 0
  aHammer += noise:a(0.35, 0) * expsegr:a(1, 0.004, 0.001, 0.01, 0.001)
  iTone = p5 == 0 ? 2350 : 1720
  aBrass mode aHammer, iTone, 55
  aUpper mode aHammer, iTone * 2.42, 75
  aCase mode aHammer, iTone * 0.22, 14
  aOut = aHammer * 0.3 + aBrass * 0.17 + aUpper * 0.08 + aCase * 0.2
  aLeft, aRight Place aOut * p4 * 2.1, p5 == 0 ? -0.3 : 0.3
  Send aLeft, aRight, "drums", 0.12, 0.05
endin

instr Rim
  aHit mpulse 1, 0
  aHit += noise:a(0.5, 0) * expsegr:a(1, 0.006, 0.001, 0.01, 0.001)
  aWood mode aHit, 1650, 18
  aLow mode aHit, 540, 10
  aLeft, aRight Place (aHit * 0.3 + aWood * 0.3 + aLow * 0.25) * p4, -0.25
  Send aLeft, aRight, "drums", 0.15, 0.03
endin

instr Tom
  iTone = cpsmidinn(p5)
  aSkin oscili 0.8, expseg:a(iTone * 1.9, 0.05, iTone, 0.4, iTone * 0.86), giSine
  aSkin *= expsegr:a(1, 0.28, 0.02, 0.1, 0.001)
  aStick noise 0.35, 0
  aStick butterbp aStick, 2600, 2200
  aStick *= expsegr:a(1, 0.02, 0.01, 0.02, 0.001)
  aLeft, aRight Place tanh(1.6 * (aSkin + aStick)) * p4 * 0.5, (p5 - 49) / 7
  Send aLeft, aRight, "drums", 0.14, 0.02
endin

instr Crash
  p3 = 2.8
  aLeft noise 0.7, 0
  aRight noise 0.7, 0
  aMetal Metal 3170, 4470, 0.12
  aRing = aMetal
  aFade expseg 1, 0.15, 0.45, 2.5, 0.002, 0.2, 0.001
  aLeft butterhp aLeft + aRing, 3800
  aRight butterhp aRight + aRing, 4100
  Send aLeft * aFade * p4 * 0.38, aRight * aFade * p4 * 0.38, "drums", 0.15, 0
endin

instr Ride
  aMetal Metal 3830, 5570, 0.14
  aBell oscili 0.1, 4920 * random:i(0.96, 1.04) * (1 + randh:k(0.03, 900)), giSine
  aRing butterhp aMetal + aBell, 4800
  aRing *= expsegr:a(1, 0.06, 0.4, 0.3, 0.01, 0.03, 0.001)
  aLeft, aRight Place aRing * p4 * 0.5, 0.5
  Send aLeft, aRight, "drums", 0.06, 0
endin

instr Shaker
  aBeads noise 1, 0
  aBeads butterbp aBeads, 7800, 4200
  aBeads *= linsegr:a(0, 0.012, 1, 0.05, 0.12, 0.04, 0, 0.01, 0)
  aLeft, aRight Place aBeads * p4 * 0.75, -0.55
  Send aLeft, aRight, "drums", 0.04, 0
endin

instr Cowbell
  aLow vco2 0.5, 562, 10
  aHigh vco2 0.5, 845, 10
  aBell butterbp aLow + aHigh, 1500, 1700
  aBell *= expsegr:a(1, 0.03, 0.4, 0.16, 0.004, 0.05, 0.001)
  aLeft, aRight Place aBell * p4 * 0.6, 0.45
  Send aLeft, aRight, "drums", 0.1, 0.08
endin
