#!/usr/bin/python3
"""Makes one table of what the benchmarks printed: to standard output, and with the profile and the
pictures into docs/performance.md.

  benchmarks/table.py WORK PART...      WORK holds what each part printed, PART.txt, and what is plotted
"""
import datetime
import os
import re
import subprocess
import sys

work, parts = sys.argv[1], sys.argv[2:]


def lines_of(name):
    path = f"{work}/{name}"
    if not os.path.exists(path):
        return []
    with open(path, encoding="utf-8", errors="replace") as file:
        return file.read().splitlines()


def records(kind):
    return [line.split("\t")[1:] for part in parts for line in lines_of(f"{part}.txt")
            if line.startswith(kind + "\t")]


def number(text):
    value = float(text)
    return f"{value:,.0f}" if abs(value) >= 1000 or value == 0 else f"{value:.3g}"


def verdict(median, bar):
    if bar == "-":
        return ""
    limit = float(bar[2:])
    held = median <= limit if bar.startswith("<=") else median >= limit
    if held:
        return "held"
    return f"missed by {abs(median - limit) / limit:.0%}" if limit else "missed"


def cells(record):
    what, ours, peer_name, peer, unit, median, low, high, runs, bar = record
    spread = f"{float(low):.3g} to {float(high):.3g}" if int(runs) > 1 else "counted once"
    words = {"<=": "at most ", ">=": "at least "}
    limit = words.get(bar[:2], "") + bar[2:] if bar != "-" else ""
    if bar == "<=0":  # a count that has to be none at all has no peer and no ratio
        return [what, f"{number(ours)} {unit}".strip(), "none", "", spread, "none",
                verdict(float(median), bar)]
    return [what, f"{number(ours)} {unit}".strip(), f"{peer_name}: {number(peer)} {unit}".strip(),
            f"{float(median):.3g}", spread, limit, verdict(float(median), bar)]


HEAD = ["what", "this project", "peer or floor", "ratio", "spread", "bar", ""]


def markdown(head, rows):
    return "\n".join("| " + " | ".join(row) + " |"
                     for row in [head, ["---"] * len(head), *rows])


def plain(head, rows):
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    return "\n".join("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip()
                     for row in [head, *rows])


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        processor = re.search(r"model name\s*: (.*)", file.read())
    driver = [line[len("driver "):] for line in lines_of("layers.txt") if line.startswith("driver ")]
    name = processor[1] if processor else os.uname().machine
    return (f"{name}, {os.cpu_count()} cores; OpenGL by {driver[0] if driver else 'an unknown driver'}; "
            f"Linux {os.uname().release.split('-')[0]}; {datetime.date.today():%-d %B %Y}")


def layers():
    rows = []
    for line in lines_of("layers.txt"):
        if line.startswith("layer "):
            name, share, milliseconds = line[len("layer "):].split("\t")
            rows.append([name, f"{float(share):.0%}", f"{float(milliseconds):.1f}",
                         f"{float(share) * float(milliseconds):.1f}"])
    return markdown(["layer", "of all frames", "ms where it is on", "ms of an average frame"], rows)


def fill(template, values):
    return re.sub(r"@(\w+)@", lambda match: values[match[1]], template)


def write_document(rows, notes, skipped):
    folder = os.path.dirname(__file__)
    with open(f"{folder}/performance.md.in", encoding="utf-8") as file:
        template = file.read()
    values = {"MACHINE": machine(), "TABLE": markdown(HEAD, rows), "LAYERS": layers(),
              "NOTES": "\n".join(f"- {text}" for text in notes + skipped)}
    with open("docs/performance.md", "w", encoding="utf-8") as file:
        file.write(fill(template, values))


table = [cells(record) for record in records("row")]
remarks = [record[0] for record in records("note")]
missing = [f"Skipped: {what}: {reason}." for what, reason in records("skip")]
print(plain(HEAD, table), *remarks, *missing, sep="\n")
write_document(table, remarks, missing)
subprocess.run([sys.executable, f"{os.path.dirname(__file__)}/plots.py", work], check=True)
