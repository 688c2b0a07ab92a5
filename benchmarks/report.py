"""The table's lines from Python: see benchmarks/Report.h for their form."""
import statistics


def row(what, peer_name, unit, bar, pairs):
    """`pairs`: of this project and its peer, measured in turn."""
    ours, peers = zip(*pairs)
    ratios = [mine / peer for mine, peer in pairs]
    print("row", what, f"{statistics.median(ours):.6g}", peer_name,
          f"{statistics.median(peers):.6g}", unit, f"{statistics.median(ratios):.4f}",
          f"{min(ratios):.4f}", f"{max(ratios):.4f}", len(pairs), bar, sep="\t", flush=True)


def skip(what, reason):
    print("skip", what, reason, sep="\t", flush=True)


def note(text):
    print("note", text, sep="\t", flush=True)


def percentile(values, share):
    """The value that this share of `values` (0 to 1) lies at or below."""
    ordered = sorted(values)
    return ordered[min(int(len(ordered) * share), len(ordered) - 1)]
