#!/usr/bin/python3
"""Tables (Markdown) and a plot (PNG) from the results.tsv of bench/peers/endtoend.sh.

Usage: bench/peers/report.py RESULTS_TSV [--plot OUT.png]

Per resolution: one row per file with our and rsvg-convert's wall time, encoding time, the rest
("raster": start-up, parsing, drawing), peak memory, output size and megapixels per second, and
the ratios ours / rsvg-convert (below 1: we are faster or smaller); then the totals. CPU is
user + system time of the same run: on a busy machine it says more than wall time (ours runs the
down-sampling on two threads, so its CPU time can exceed its wall time). The plot shows wall and
CPU time against output megapixels for both tools, one marker per resolution.
"""
import csv
import sys
from collections import defaultdict


def load(path):
    rows = defaultdict(dict)
    with open(path) as f:
        for r in csv.DictReader(f, delimiter="\t"):
            rows[(r["file"], int(r["ppi"]))][r["tool"]] = r
    return rows


def num(r, key):
    v = r.get(key, "")
    return float(v) if v not in ("", None) else None


def mp(r):
    return int(r["width"]) * int(r["height"]) / 1e6


def fmt(v, digits=2):
    return "" if v is None else f"{v:.{digits}f}"


def tables(rows):
    out = []
    for ppi in sorted({p for _, p in rows}):
        keys = sorted(k for k in rows if k[1] == ppi)
        out.append(f"### {ppi} ppi\n")
        out.append("| file | MP | ours s | CPU s | enc | raster | engine | MiB | MB out | MP/s | rsvg s | CPU s | enc | raster | MiB | MB out | MP/s | time ratio | CPU ratio | raster ratio | size ratio |")
        out.append("|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|")
        tot = defaultdict(float)
        limits = []
        peak = defaultdict(float)
        for key in keys:
            o, p = rows[key].get("ours"), rows[key].get("rsvg-convert")
            if not o or not p:
                continue
            m = mp(o)
            ow, pw = num(o, "wall_s"), num(p, "wall_s")
            oe, pe = num(o, "encode_ms") / 1000, num(p, "encode_ms") / 1000
            orr, prr = max(ow - oe, 0.0), max(pw - pe, 0.0)
            eng = num(o, "engine_ms")
            limited = p.get("note") == "limit"
            ob, pb = int(o["bytes"]) / 1e6, int(p["bytes"]) / 1e6
            if limited:
                limits.append(key[0])
            oc, pc = num(o, "user_s") + num(o, "sys_s"), num(p, "user_s") + num(p, "sys_s")
            for k, v in (("mp", m), ("ow", ow), ("pw", pw), ("oc", oc), ("pc", pc), ("oe", oe), ("pe", pe), ("or", orr), ("pr", prr),
                         ("eng", eng or 0), ("ob", ob if pb > 0 else 0), ("pb", pb)):
                tot[k] += v
            peak["o"] = max(peak["o"], num(o, "peak_mib"))
            peak["p"] = max(peak["p"], num(p, "peak_mib"))
            ge = "≥ " if limited else ""
            le = "≤ " if limited else ""
            size_ratio = f"{ob / pb:.2f}" if pb > 0 else ""
            out.append(
                f"| {key[0]} | {m:.1f} | {ow:.2f} | {oc:.2f} | {oe:.2f} | {orr:.2f} | {fmt(eng / 1000 if eng is not None else None)} "
                f"| {num(o, 'peak_mib'):.0f} | {ob:.2f} | {m / ow:.1f} | {ge}{pw:.2f} | {ge}{pc:.2f} | {pe:.2f} | {ge}{prr:.2f} "
                f"| {num(p, 'peak_mib'):.0f} | {pb:.2f} | {m / pw:.1f} | {le}{ow / pw:.2f} | {le}{oc / pc:.2f} | {le}{fmt(orr / prr if prr > 0 else None)} "
                f"| {size_ratio} |")
        if tot["pw"] > 0:
            out.append(
                f"| **total** | {tot['mp']:.1f} | {tot['ow']:.2f} | {tot['oc']:.2f} | {tot['oe']:.2f} | {tot['or']:.2f} | {tot['eng'] / 1000:.2f} "
                f"| max {peak['o']:.0f} | {tot['ob']:.2f} | {tot['mp'] / tot['ow']:.1f} | {tot['pw']:.2f} | {tot['pc']:.2f} | {tot['pe']:.2f} "
                f"| {tot['pr']:.2f} | max {peak['p']:.0f} | {tot['pb']:.2f} | {tot['mp'] / tot['pw']:.1f} "
                f"| **{tot['ow'] / tot['pw']:.2f}** | {tot['oc'] / tot['pc']:.2f} | {tot['or'] / tot['pr']:.2f} | {tot['ob'] / tot['pb']:.2f} |")
        if limits:
            out.append("")
            out.append(f"rsvg-convert stopped at its CPU limit (times are at least the limit; its sizes count 0): {', '.join(limits)}")
        out.append("")
    return "\n".join(out)


def plot(rows, path):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.pyplot as plt
    fig, axes = plt.subplots(1, 2, figsize=(12, 5.5), dpi=100)
    markers = {150: "o", 300: "s", 600: "^"}
    colours = {"ours": "tab:blue", "rsvg-convert": "tab:orange"}
    for ax, what in zip(axes, ("wall", "cpu")):
        for tool in ("ours", "rsvg-convert"):
            for ppi in sorted({p for _, p in rows}):
                xs, ys = [], []
                for (f, p), by in rows.items():
                    if p == ppi and tool in by and by[tool].get("note") != "limit":
                        r = by[tool]
                        xs.append(mp(r))
                        ys.append(num(r, "wall_s") if what == "wall" else num(r, "user_s") + num(r, "sys_s"))
                ax.scatter(xs, ys, marker=markers.get(ppi, "x"), c=colours[tool], alpha=0.75,
                           label=f"{'rasterize (ours)' if tool == 'ours' else tool} {ppi} ppi")
        ax.set_xscale("log")
        ax.set_yscale("log")
        ax.set_xlabel("output megapixels")
        ax.set_ylabel("wall time, s (best run)" if what == "wall" else "CPU time (user + system), s")
        ax.grid(True, which="both", alpha=0.3)
        ax.legend(fontsize=8)
    fig.suptitle("SVG to PNG end to end, anti-aliased, bench/corpus")
    fig.tight_layout()
    fig.savefig(path)


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    rows = load(sys.argv[1])
    print(tables(rows))
    if "--plot" in sys.argv:
        plot(rows, sys.argv[sys.argv.index("--plot") + 1])


if __name__ == "__main__":
    main()
