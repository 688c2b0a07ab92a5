# What the processor's seconds allow. A line a round: seconds by the clock of the whole recording; by the
# processor those of the whole, of drawing only, of encoding only and of both parts.
{ wall += $1; whole += $2; drawn += $3; encoded += $4; parts += $5 }
END {
    printf "note\t%s, processor seconds: recorded %.2f, drawn only %.2f, encoded only %.2f, two parts %.2f\n",
           what, whole / NR, drawn / NR, encoded / NR, parts / NR
    printf "note\t%s: the whole keeps %.2f of %d cores busy; two parts on all of them could be %.2f times " \
           "as fast\n", what, whole / wall, cores, wall * cores / parts
}
