"""A small PNG reader (8-bit gray, gray+alpha, RGB, RGBA; 1-bit gray), enough for comparing renderings."""
import struct
import zlib

_CHANNELS = {0: 1, 2: 3, 4: 2, 6: 4}


def _paeth(a, b, c):
    p = a + b - c
    pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
    if pa <= pb and pa <= pc:
        return a
    return b if pb <= pc else c


def read_png(path, header_only=False):
    """Returns (width, height, channels, pixels) with pixels a bytearray of width*height*channels bytes
    (None when header_only)."""
    with open(path, 'rb') as f:
        data = f.read()
    if data[:8] != b'\x89PNG\r\n\x1a\n':
        raise ValueError(f'{path}: not a PNG file')
    pos, idat, header = 8, [], None
    while pos < len(data):
        length, kind = struct.unpack('>I4s', data[pos:pos + 8])
        body = data[pos + 8:pos + 8 + length]
        if kind == b'IHDR':
            header = struct.unpack('>IIBBBBB', body)
        elif kind == b'IDAT':
            idat.append(body)
        pos += 12 + length
    width, height, depth, color, _, _, interlace = header
    if header_only:
        return width, height, _CHANNELS.get(color, 0), None
    if color not in _CHANNELS or interlace or depth not in (1, 8) or (depth == 1 and color != 0):
        raise ValueError(f'{path}: unsupported PNG layout (depth {depth}, colour type {color})')
    channels = _CHANNELS[color]
    bpp = max(1, channels * depth // 8)
    stride = (width * channels * depth + 7) // 8
    raw = zlib.decompress(b''.join(idat))
    rows, prev = [], bytearray(stride)
    for y in range(height):
        kind = raw[y * (stride + 1)]
        line = bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        if kind == 1:
            for i in range(bpp, stride):
                line[i] = (line[i] + line[i - bpp]) & 255
        elif kind == 2:
            for i in range(stride):
                line[i] = (line[i] + prev[i]) & 255
        elif kind == 3:
            for i in range(stride):
                left = line[i - bpp] if i >= bpp else 0
                line[i] = (line[i] + ((left + prev[i]) >> 1)) & 255
        elif kind == 4:
            for i in range(stride):
                left = line[i - bpp] if i >= bpp else 0
                upper_left = prev[i - bpp] if i >= bpp else 0
                line[i] = (line[i] + _paeth(left, prev[i], upper_left)) & 255
        rows.append(line)
        prev = line
    if depth == 1:
        pixels = bytearray(width * height)
        for y, line in enumerate(rows):
            for x in range(width):
                pixels[y * width + x] = 255 if line[x >> 3] & (0x80 >> (x & 7)) else 0
        return width, height, 1, pixels
    return width, height, channels, bytearray(b''.join(rows))
