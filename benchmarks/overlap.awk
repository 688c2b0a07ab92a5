# Seconds by the clock of a recording, then by the processor of it, of drawing only and of encoding only.
{ wall += $1; recorded += $2; drawn += $3; encoded += $4 }
END {
    printf "note\t%s, processor seconds: recorded %.2f, drawn only %.2f, encoded only %.2f; recording keeps " \
           "%.2f of %d cores busy\n", what, recorded / NR, drawn / NR, encoded / NR, recorded / wall, cores
}
