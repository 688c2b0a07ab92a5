#!/usr/bin/python3
"""Writes a timeline of N keys in ten tracks to standard output:  benchmarks/timeline.py N"""
import sys

keys = int(sys.argv[1])
shapes = ["hold", "linear", "smoothstep", "quadratic"]
for track in range(10):
    print(f"track t{track}")
    for key in range(keys // 10):
        print(f"  {key} {key * 7 % 101 / 8} {shapes[key % 4]}")
