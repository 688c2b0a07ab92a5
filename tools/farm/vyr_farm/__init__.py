"""Records a show on many machines, on Slurm or over ssh with GNU Parallel.

A recording is planned once (plan.py): its frames are divided into pieces of equal cost (costs.py),
and everything that making them needs goes into one folder, scripts included (scripts.py). Whatever
machine runs it, a piece is made by piece.py and joined with the others by join.py. The engines
(slurm.py, parallel.py) only run the folder's scripts and say what became of them.
"""
