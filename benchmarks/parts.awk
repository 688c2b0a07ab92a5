# Seconds by the clock of a recording, then by the processor of it and of its two parts.
{ wall += $1; recorded += $2; parts += $3 }
END {
    printf "note\t%s, processor seconds: the whole %.2f, two parts %.2f; with all of %d cores they could be " \
           "%.2f times as fast\n", what, recorded / NR, parts / NR, cores, wall * cores / parts
}
