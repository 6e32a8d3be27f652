#!/usr/bin/env python3
"""Rendering quality: `rasterize export` against rsvg-convert on the corpus, as PSNR.

Both render the page at the same resolution (ours with --resolution PPI, rsvg-convert with
-z PPI/96, which scales every unit, not only physical ones); rsvg-convert's straight-alpha output
is composited over white like our white page. PSNR over the RGB bytes of the two images.

    python3 bench/quality/psnr_vs_rsvg.py [--tool build/refhost/cli/rasterize] [--only NAME]
                                          [--keep DIR] [--results bench/RESULTS.md]

The files are those of bench/corpus/files.txt without filters (our importer draws filtered art
unfiltered, so those pixels cannot match). Pages smaller than 64 px are rendered at 4x (384 ppi)
so that an icon is compared on more than a few hundred pixels. causes.tsv beside this script
says, per file, why a file falls short of 30 dB where that was investigated; the table shows it
next to the figure, together with the importer's warnings from our own run; findings.md, what
was found by hand about the causes, follows the table in RESULTS.md.

Without rsvg-convert (Debian librsvg2-bin: scripts/install-deps bench) it says so and exits 0.
"""
import argparse
import math
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
from pngread import read_png  # noqa: E402
from results import replace_section  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(HERE))
CORPUS = os.path.join(ROOT, 'bench', 'corpus')
TARGET_DB = 30.0
SMALL_PAGE = 64


def corpus_files(only):
    """(name, uses filters) for each line of files.txt."""
    rows = []
    with open(os.path.join(CORPUS, 'files.txt'), encoding='utf-8') as f:
        for line in f:
            if not line.strip() or line.startswith('#'):
                continue
            fields = line.rstrip('\n').split('\t')
            if only and only not in fields[0]:
                continue
            rows.append((fields[0], fields[1] == 'yes'))
    return rows


def causes():
    table = {}
    path = os.path.join(HERE, 'causes.tsv')
    if os.path.exists(path):
        with open(path, encoding='utf-8') as f:
            for line in f:
                if line.strip() and not line.startswith('#'):
                    name, text = line.rstrip('\n').split('\t', 1)
                    table[name] = text
    return table


def over_white(width, height, channels, pixels):
    """RGB bytes of the image composited over white (straight alpha)."""
    if channels == 3:
        return bytes(pixels)
    if channels == 1:
        return bytes(v for v in pixels for _ in range(3))
    # Lookup of (colour, alpha) -> composited value, so the loop is one index per byte.
    blend = [bytes((c * a + 255 * (255 - a) + 127) // 255 for c in range(256)) for a in range(256)]
    out = bytearray(width * height * 3)
    if channels == 4:
        alpha = pixels[3::4]
        for k in range(3):
            out[k::3] = bytes(blend[a][c] for c, a in zip(pixels[k::4], alpha))
    else:
        alpha = pixels[1::2]
        grey = bytes(blend[a][c] for c, a in zip(pixels[0::2], alpha))
        for k in range(3):
            out[k::3] = grey
    return bytes(out)


def psnr(a, b):
    squares = [d * d for d in range(256)]
    total = sum(squares[abs(x - y)] for x, y in zip(a, b))
    if total == 0:
        return math.inf
    return 10 * math.log10(255 * 255 * len(a) / total)


def render_ours(tool, svg, out, args):
    """Runs our tool; returns the importer's warnings (stderr lines)."""
    run = subprocess.run([tool, '--quiet', svg, '-o', out] + args, capture_output=True, text=True)
    if run.returncode != 0:
        raise RuntimeError(run.stderr.strip() or f'exit {run.returncode}')
    return [line for line in run.stderr.splitlines() if line.strip()]


def warning_kinds(lines):
    """The distinct warned-about features, e.g. 'pattern', 'marker', without file positions."""
    kinds = []
    for line in lines:
        match = re.search(r'(<?[A-Za-z-]+>?: [^;]*?(not supported|unsupported|ignored|skipped))', line)
        text = (match.group(1) if match else line)[:90]
        if text not in kinds:
            kinds.append(text)
    return kinds


UNITS = {'': 1.0, 'px': 1.0, 'pt': 96 / 72, 'pc': 16.0, 'mm': 96 / 25.4, 'cm': 96 / 2.54, 'in': 96.0}


def whole_page_copy(svg, ppi, out):
    """Writes a copy of `svg` whose page is widened to whole pixels at `ppi`, the art at the same
    scale and place; returns False when the page is whole already or its size cannot be read.

    rsvg-convert rounds a fractional page up and leaves the art where it is; our export instead
    settles the resolution so that the art fills the rounded-up page, i.e. scales it by up to one
    pixel across the page. On the widened copy both agree, which separates that from other causes."""
    with open(svg, encoding='utf-8') as f:
        text = f.read()
    root = re.search(r'<svg\b[^>]*>', text)
    if not root:
        return False
    tag = root.group(0)

    def attribute(name):
        found = re.search(r'\s' + name + r'\s*=\s*"([^"]*)"', tag)
        return found.group(1).strip() if found else None

    sizes = []
    for name in ('width', 'height'):
        value = re.fullmatch(r'([0-9.eE+-]+)\s*([a-z]*)', attribute(name) or '')
        if not value or value.group(2) not in UNITS:
            return False
        sizes.append(float(value.group(1)) * UNITS[value.group(2)])
    scale = ppi / 96
    whole = [math.ceil(size * scale - 1e-9) / scale for size in sizes]
    if all(abs(w - s) < 1e-9 for w, s in zip(whole, sizes)):
        return False
    new = tag
    for name, size in zip(('width', 'height'), whole):
        new = re.sub(r'(\s' + name + r'\s*=\s*)"[^"]*"', lambda m: f'{m.group(1)}"{size!r}px"', new, count=1)
    box = attribute('viewBox')
    if box:
        x, y, w, h = (float(v) for v in re.split(r'[\s,]+', box))
        box = f'{x!r} {y!r} {w * whole[0] / sizes[0]!r} {h * whole[1] / sizes[1]!r}'
        new = re.sub(r'(\sviewBox\s*=\s*)"[^"]*"', lambda m: f'{m.group(1)}"{box}"', new, count=1)
    with open(out, 'w', encoding='utf-8') as f:
        f.write(text[:root.start()] + new + text[root.end():])
    return True


def page_size(svg, folder):
    probe = os.path.join(folder, 'probe.png')
    subprocess.run(['rsvg-convert', '-o', probe, svg], check=True, capture_output=True)
    width, height, _, _ = read_png(probe, header_only=True)
    return width, height


def compare(tool, svg, folder, keep, widen=True):
    """(name, ppi, size, PSNR, note, our warnings, PSNR on the page widened to whole pixels)."""
    name = os.path.basename(svg)
    width, height = page_size(svg, folder)
    ppi = 384 if max(width, height) < SMALL_PAGE else 96
    widened = None
    copy = os.path.join(folder, 'whole-' + name)
    if widen and whole_page_copy(svg, ppi, copy):
        widened = compare(tool, copy, folder, keep, widen=False)[3]
    ref = os.path.join(keep or folder, name + '.rsvg.png')
    ours = os.path.join(keep or folder, name + '.ours.png')
    subprocess.run(['rsvg-convert', '-z', repr(ppi / 96), '-o', ref, svg], check=True, capture_output=True)
    rw, rh, rc, rp = read_png(ref)
    warnings = render_ours(tool, svg, ours, ['--resolution', repr(float(ppi))])
    ow, oh, oc, op = read_png(ours)
    note = ''
    if (ow, oh) != (rw, rh):
        # The two round a fractional page size differently: match rsvg-convert's width exactly.
        warnings = render_ours(tool, svg, ours, ['--width', str(rw)])
        ow, oh, oc, op = read_png(ours)
        note = 'width matched; '
    if (ow, oh) != (rw, rh):
        return name, ppi, f'{rw}x{rh}', None, f'sizes differ: ours {ow}x{oh}', warnings, widened
    value = psnr(over_white(ow, oh, oc, op), over_white(rw, rh, rc, rp))
    return name, ppi, f'{rw}x{rh}', value, note, warnings, widened


def shown(value):
    return '-' if value is None else ('identical' if math.isinf(value) else f'{value:.1f}')


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--tool', default=os.path.join(ROOT, 'build', 'refhost', 'cli', 'rasterize'))
    parser.add_argument('--only', help='only the corpus files whose name contains this')
    parser.add_argument('--svg', nargs='+', help='compare these files instead of the corpus')
    parser.add_argument('--keep', help='keep both renderings of each file in this folder')
    parser.add_argument('--results', help='write the table into this RESULTS.md under "## Rendering quality"')
    parser.add_argument('--command', help='the command line to quote in RESULTS.md (default: this run\'s)')
    args = parser.parse_args()
    if not shutil.which('rsvg-convert'):
        print('rsvg-convert is not installed (scripts/install-deps bench); nothing to compare')
        return 0
    if args.keep:
        os.makedirs(args.keep, exist_ok=True)
    version = subprocess.run(['rsvg-convert', '--version'], capture_output=True, text=True).stdout.strip()
    why = causes()
    rows, skipped = [], []
    with tempfile.TemporaryDirectory() as folder:
        files = [(os.path.abspath(path), False) for path in args.svg] if args.svg else corpus_files(args.only)
        for name, filtered in files:
            if filtered:
                skipped.append(name)
                continue
            svg = os.path.join(CORPUS, name)
            try:
                rows.append(compare(args.tool, svg, folder, args.keep))
            except (RuntimeError, subprocess.CalledProcessError) as error:
                rows.append((name, '', '', None, f'failed: {error}', [], None))
            row = rows[-1]
            print(f'{row[0]}: {shown(row[3])} dB, widened {shown(row[6])} {row[4]}', file=sys.stderr)
    lines = ['| file | ppi | pixels | PSNR (dB) | PSNR, page widened to whole pixels | importer warnings (ours) | notes |',
             '|---|---:|---|---:|---:|---|---|']
    values = []
    for name, ppi, size, value, note, warnings, widened in rows:
        if value is not None:
            values.append(value)
        warned = '; '.join(warning_kinds(warnings)) or '-'
        cause = why.get(name, '')
        lines.append(f'| {name} | {ppi} | {size} | {shown(value)} | {shown(widened) if widened is not None else ""} '
                     f'| {warned} | {note}{cause} |')
    finite = [v for v in values if not math.isinf(v)]
    under = [r[0] for r in rows if r[3] is None or r[3] < TARGET_DB]
    summary = (f'{len(rows)} files compared; min {min(finite):.1f} dB, median {statistics.median(values):.1f} dB; '
               f'{len(under)} under {TARGET_DB:.0f} dB' + (f' ({", ".join(under)})' if under else '') +
               (f'; left out for filters: {", ".join(skipped)}' if skipped else '') + '.') if finite else 'no figures'
    table = '\n'.join(lines)
    print(table)
    print(summary)
    if args.results:
        command = args.command or 'python3 ' + ' '.join(
            os.path.relpath(a, ROOT) if os.path.isabs(a) and a.startswith(ROOT) else a for a in sys.argv)
        body = (f'PSNR of `rasterize export` (white page, 4x4 supersampling, the defaults) against {version} '
                f'with `-z PPI/96` at the same resolution, composited over white, over the RGB bytes; the '
                f'files of `bench/corpus/files.txt` without filters, at 96 ppi (pages under {SMALL_PAGE} px at '
                f'384 ppi). Target: at least {TARGET_DB:.0f} dB per file.\n\n'
                f'```sh\n{command}\n```\n\n' + table + '\n\n' + summary + '\n')
        findings = os.path.join(HERE, 'findings.md')
        if os.path.exists(findings):
            with open(findings, encoding='utf-8') as f:
                body += '\n' + f.read()
        replace_section(args.results, '## Rendering quality', body)
    return 0


if __name__ == '__main__':
    sys.exit(main())
