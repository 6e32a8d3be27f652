#!/usr/bin/env python3
"""Counts what an SVG file draws: shapes, and the features a renderer may lack.

    python3 bench/corpus/survey.py FILE.svg [FILE.svgz ...]
    python3 bench/corpus/survey.py --list *.svg > files.txt     (in bench/corpus)

One tab-separated line per file: name, bytes, shapes (path, rect, circle, ellipse, line,
polyline, polygon), then the features used: filter, mask, pattern, text, image, clip, gradient,
use. A filter counts only when something refers to it, since editors often leave unused ones in
<defs>.
"""
import gzip
import re
import sys
import xml.etree.ElementTree as ET

SHAPES = {'path', 'rect', 'circle', 'ellipse', 'line', 'polyline', 'polygon'}


def local(tag):
    return tag.rsplit('}', 1)[-1] if isinstance(tag, str) else ''


def survey(path):
    opener = gzip.open if path.endswith('.svgz') else open
    with opener(path, 'rb') as f:
        data = f.read()
    root = ET.fromstring(data)
    shapes, features = 0, set()
    for element in root.iter():
        name = local(element.tag)
        if name in SHAPES:
            shapes += 1
        elif name in ('text', 'image', 'pattern', 'mask', 'use'):
            features.add(name)
        elif name in ('linearGradient', 'radialGradient'):
            features.add('gradient')
        elif name == 'clipPath':
            features.add('clip')
        style = element.get('style', '')
        if element.get('filter', '').startswith('url(') or re.search(r'filter\s*:\s*url\(', style):
            features.add('filter')
        if element.get('mask', '').startswith('url(') or re.search(r'mask\s*:\s*url\(', style):
            features.add('mask')
    return len(data), shapes, sorted(features)


def main(args):
    listing = args[:1] == ['--list']
    if listing:
        # The corpus list others read: a file whose art needs filters cannot match a renderer
        # that has them, so quality figures leave it out; timing may still use it.
        args = args[1:]
        print('# file\tfilters\tshapes\tfeatures   (python3 survey.py --list *.svg > files.txt)')
    for path in args:
        size, shapes, features = survey(path)
        if listing:
            print(f'{path}\t{"yes" if "filter" in features else "no"}\t{shapes}\t{",".join(features) or "-"}')
        else:
            print(f'{path}\t{size}\t{shapes}\t{",".join(features) or "-"}')


if __name__ == '__main__':
    main(sys.argv[1:])
