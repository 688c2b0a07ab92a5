#!/usr/bin/python3
"""Instructions of the show's fullest frames outside the driver, counted by callgrind.

  benchmarks/instructions.py BUILD WORK
"""
import glob
import os
import re
import shutil
import subprocess
import sys

from report import note, row, skip

build, work = sys.argv[1:]
program, limit = f"{build}/bench/bench-instructions", 40000


def value(name, text):
    return int(re.search(rf"^{name}:? (\d+)", text, re.M)[1])


def count():
    valgrind = ["valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no", "--collect-atstart=no",
                f"--callgrind-out-file={work}/callgrind"]
    printed = subprocess.run([*valgrind, program, f"{build}/show"], check=True,
                             stdout=subprocess.PIPE, text=True).stdout
    dumps = []
    for path in glob.glob(f"{work}/callgrind.*"):
        with open(path, encoding="utf-8") as file:
            dumps.append(file.read())
        os.remove(path)
    fullest = max(value("totals", dump) for dump in dumps if "Client Request" in dump)
    row("instructions of the fullest frame", "at most", "", "<=1", [(fullest, limit)])
    row("allocations, all frames at 60 Hz", "none", "", "<=0", [(value("allocations", printed), 1)])
    note(f"The fullest frame is the one of most instructions among the {sum('Client Request' in dump for dump in dumps)} with the most OpenGL calls, "
         f"{value('calls', printed)} at most.")


if shutil.which("valgrind") and os.path.exists(program):
    count()
else:
    skip("instructions of the fullest frame", "valgrind is not here")
