; How instruments reach the mixer: named pairs of channels that everyone adds to and the mixer empties.

; Adds a stereo signal to the bus named S_bus, and its share of it to the reverb and to the echo.
opcode Send, 0, aaSii
  aLeft, aRight, S_bus, iReverb, iEcho xin
  chnmix aLeft, strcat(S_bus, "L")
  chnmix aRight, strcat(S_bus, "R")
  chnmix aLeft * iReverb, "reverbL"
  chnmix aRight * iReverb, "reverbR"
  chnmix aLeft * iEcho, "echoL"
  chnmix aRight * iEcho, "echoR"
endop

; A mono signal at iPan (-1 left, 1 right), equally loud everywhere.
opcode Place, aa, ai
  aIn, iPan xin
  iAngle = (iPan + 1) * $M_PI_4
  xout aIn * cos(iAngle), aIn * sin(iAngle)
endop

; Takes what has come together on a bus and empties it.
opcode Take, aa, S
  S_bus xin
  aLeft chnget strcat(S_bus, "L")
  aRight chnget strcat(S_bus, "R")
  chnclear strcat(S_bus, "L")
  chnclear strcat(S_bus, "R")
  xout aLeft, aRight
endop
