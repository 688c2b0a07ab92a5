; The voice: speech laid on the beat (Speech), tones that carry it (Carrier), and the filter bank where they meet (Vocoder).

; One line of the words. p5 is the table that tells which second of voice.wav sounds when; p6 = 1 spoken, 0 sung.
; The line is also heard dry: a spoken one moved by p7 to the lowest of its notes, a sung one by gkTune to each of its
; notes in turn, an octave below the vocoder. Of a sung one the consonants stand out: without them no t is heard.
instr Speech
  gkVoice = p6 == 1 ? p4 : 0.3 * p4
  aSecond tablei phasor:a(1 / p3), p5, 1
  aSpeech mincer aSecond, 1, 1, giSpeech, 1, 1024, 8
  chnmix aSpeech, "speech"
  if p6 == 1 then
    aPlain mincer aSecond, 1, p7, giSpeech, 1, 1024, 8
    aPlain butterhp aPlain, 160
    aPlain *= 0.5 * p4
  else
    aPlain mincer aSecond, 1, gkTune, giSpeech, 1, 1024, 8
    aPlain butterhp aPlain, 200
    aPlain butterlp aPlain, 2600
    aHard butterhp aSpeech, 1300
    aPlain = (1.05 * aPlain + 2.4 * aHard) * p4
  endif
  Send aPlain, aPlain, "voice", 0.08, 0.04
endin

; What moves the dry voice to a sung note.
instr Tune
  gkTune = p4
endin

; One tone for the vocoder. p6 = 0 both sides, -1 left, 1 right. The sides are a hair apart in pitch, for width; two tones
; on one side would beat, and the beating would eat the words.
instr Carrier
  iTone = cpsmidinn(p5)
  kVibrato = linseg:k(0, 0.35, 0, 0.3, 1, 1, 1) * lfo:k(0.004, 5.1)
  aLeft vco2 0.6, iTone * 1.0015 * (1 + kVibrato)
  aRight vco2 0.6, iTone * 0.9985 * (1 + kVibrato)
  aShape linsegr 0, 0.012, p4, p3, p4, 0.03, 0
  chnmix aLeft * aShape * (p6 == 1 ? 0.2 : 1), "carrierL"
  chnmix aRight * aShape * (p6 == -1 ? 0.2 : 1), "carrierR"
endin

; Bands from 90 Hz up, each a step of 1.19 above the last: follows the speech in one and opens the carrier by as much.
opcode Bands, aa, aaaii
  aSpeech, aLeft, aRight, iBand, iBands xin
  iCentre = 95 * 1.19 ^ iBand
  iWidth = iCentre * 0.19
  aHeard butterbp butterbp(aSpeech, iCentre, iWidth), iCentre, iWidth
  aLoud follow2 aHeard, 0.004, iCentre < 600 ? 0.035 : 0.018
  aOutLeft butterbp butterbp(aLeft, iCentre, iWidth), iCentre, iWidth
  aOutRight butterbp butterbp(aRight, iCentre, iWidth), iCentre, iWidth
  aOutLeft *= aLoud
  aOutRight *= aLoud
  if iBand < iBands - 1 then
    aMoreLeft, aMoreRight Bands aSpeech, aLeft, aRight, iBand + 1, iBands
    aOutLeft += aMoreLeft
    aOutRight += aMoreRight
  endif
  xout aOutLeft, aOutRight
endop

; The vocoder itself. Hiss joins the carrier from 3 kHz up: s, t and sh have no pitch. Highs are lifted on both ways in,
; so that the bands above 1 kHz, which carry the words, are not drowned by those below.
instr Vocoder
  aSpeech chnget "speech"
  aLeft, aRight Take "carrier"
  aHiss noise 0.35, 0
  aHiss butterhp aHiss, 3000
  aLeft pareq aLeft + aHiss, 1400, 2.6, 0.7, 2
  aRight pareq aRight + aHiss, 1400, 2.6, 0.7, 2
  aBright pareq aSpeech, 1800, 2, 0.7, 2
  aLeft, aRight Bands aBright, aLeft, aRight, 0, 26
  aLoud = a(portk(gkVoice, 0.05) * 0.6)
  aLeft = tanh(aLeft * 16) * aLoud
  aRight = tanh(aRight * 16) * aLoud
  Send aLeft, aRight, "voice", 0.13, 0.1
endin
