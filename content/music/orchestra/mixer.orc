; Where everything ends: reverb, echo, and the stems in their proportions.

; A large, soft hall, and an echo that swings from side to side in dotted eighths.
instr Space
  aInLeft, aInRight Take "reverb"
  aInLeft butterhp aInLeft, 180
  aInRight butterhp aInRight, 180
  aLeft, aRight reverbsc delay(aInLeft, 0.018), delay(aInRight, 0.023), 0.84, 8500
  aEchoLeft, aEchoRight Take "echo"
  aEchoLeft butterhp aEchoLeft, 250
  aEchoRight butterhp aEchoRight, 250
  aBackRight init 0
  aBackLeft delay butterlp(aEchoLeft + aBackRight * 0.42, 4800), giBeat * 0.75
  aBackRight delay butterlp(aEchoRight + aBackLeft * 0.42, 4800), giBeat * 0.75
  aLeft += aBackLeft + 0.25 * aBackRight
  aRight += aBackRight + 0.25 * aBackLeft
  kDuck = 0.5 + 0.5 * gkDuck
  chnmix aLeft * kDuck, "spaceL"
  chnmix aRight * kDuck, "spaceR"
endin

; How loud a section is: from p4 to p5. What comes after the last one stays there.
instr Level
  gkLevel line p4, p3, p5
endin

; The proportions of the stems. Synths give way to the kick, the bass half as much; to the words they give way until
; they are a backdrop, and what rings in the hall and the drums do a little.
instr Mixer
  aDrumsLeft, aDrumsRight Take "drums"
  aBassLeft, aBassRight Take "bass"
  aSynthsLeft, aSynthsRight Take "synths"
  aVoiceLeft, aVoiceRight Take "voice"
  aSpaceLeft, aSpaceRight Take "space"
  aSpeech chnget "speech"
  chnclear "speech"
  kVoice = min(1, 4 * rms(aVoiceLeft + aVoiceRight, 6))
  kVoice lagud kVoice, 0.01, 0.12
  aLevel = a(portk(gkLevel, 0.002))
  aSynths = a(gkDuck * (1 - 0.76 * kVoice)) * aLevel
  aBass = (0.65 + 0.35 * a(gkDuck)) * aLevel
  aDrums = a(1 - 0.26 * kVoice) * aLevel * 0.56
  outch 1, aDrumsLeft * aDrums, 2, aDrumsRight * aDrums
  outch 3, aBassLeft * 0.62 * aBass, 4, aBassRight * 0.62 * aBass
  outch 5, aSynthsLeft * 1.85 * aSynths, 6, aSynthsRight * 1.85 * aSynths
  outch 7, aVoiceLeft * 0.64 * aLevel, 8, aVoiceRight * 0.64 * aLevel
  aSpace = a(1 - 0.55 * kVoice) * aLevel
  outch 9, aSpaceLeft * aSpace, 10, aSpaceRight * aSpace
  outch 11, aSpeech
endin
