"""The ways a word can look. Each style measures its word and later paints it on the sheet that all
words of a line share.

A style gives its width and how far it reaches above and below the base line; `paint` gets the pen.
Letters that stand free report their mask to `sheet.shade`, from which the sheet makes one dark
surround for the whole line; everything that is to lie over the surround is put off with
`sheet.later`.
"""

import ink
from boards import Dots, Flaps, Plate, Ticket
from letters import Clock, Letters, Neon, Water, falling, wave

AMBER, MINT, LILAC = ("#FFD58A", "#FFA53A"), ("#C4F0E0", "#7FC8B2"), ("#EAD6F4", "#C39BD6")
STYLES = {
    ".": lambda text, size: Letters(text, size),
    "a": lambda text, size: Letters(text, size, *AMBER),
    "m": lambda text, size: Letters(text, size, *MINT),
    "l": lambda text, size: Letters(text, size, *LILAC),
    "s": lambda text, size: Letters(text, size, face="soft", tracking=-0.01),
    "p": lambda text, size: Letters(text, size, face="soft", tracking=0.09),
    "f": lambda text, size: Flaps(text, size),
    "n": lambda text, size: Neon(text, size, ink.AMBER),
    "N": lambda text, size: Neon(text, size, "#6FE0C0"),
    "R": lambda text, size: Neon(text, size, "#FF6F52"),
    "t": lambda text, size: Ticket(text, size),
    "d": lambda text, size: Dots(text, size, "#FFB028"),
    "D": lambda text, size: Dots(text, size, "#FF6A48"),
    "w": lambda text, size: Letters(text, size, *MINT, tracking=0.03, pose=wave(size, 1.5)),
    "x": lambda text, size: Letters(text, size, *AMBER, tracking=0.02, pose=falling(size)),
    "c": lambda text, size: Clock(text, size, ((10, 0.11), (2, 0.17))),
    "C": lambda text, size: Clock(text, size, ((8.6, 0.17),)),
    "u": lambda text, size: Water(text, size, 0.42 if text == "water" else 0.2),
    "g": lambda text, size: Plate(text, size),
}
