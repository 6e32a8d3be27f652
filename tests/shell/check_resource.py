#!/usr/bin/env python3
"""Compiles host/plugin_properties/Rasterize.rc with windres and checks the resource it gives:
type "PRPL", id 16000, language 1033, and exactly the bytes of plugin_properties.bin.

Usage: check_resource.py WINDRES RC BIN
"""
import struct
import subprocess
import sys
import tempfile


def resource_id(header, offset):
    if struct.unpack_from("<H", header, offset)[0] == 0xFFFF:
        return struct.unpack_from("<H", header, offset + 2)[0], offset + 4
    text = ""
    while True:
        char = struct.unpack_from("<H", header, offset)[0]
        offset += 2
        if char == 0:
            return text, offset
        text += chr(char)


def resources(data):
    at = 0
    while at + 8 <= len(data):
        data_size, header_size = struct.unpack_from("<II", data, at)
        header = data[at + 8:at + header_size]
        kind, offset = resource_id(header, 0)
        name, offset = resource_id(header, offset)
        offset = (offset + 3) & ~3
        language = struct.unpack_from("<H", header, offset + 6)[0]
        if data_size:
            yield kind, name, language, data[at + header_size:at + header_size + data_size]
        at = (at + header_size + data_size + 3) & ~3


def main(windres, rc, binary):
    with tempfile.NamedTemporaryFile(suffix=".res") as res:
        subprocess.run([windres, "-i", rc, "-o", res.name, "-O", "res"], check=True)
        found = list(resources(open(res.name, "rb").read()))
    expected = ("PRPL", 16000, 1033, open(binary, "rb").read())
    if found != [expected]:
        print("check_resource: the compiled resource is not PRPL 16000/1033 with the property-list bytes",
              file=sys.stderr)
        for kind, name, language, payload in found:
            print(f"  found {kind} {name} language {language}, {len(payload)} bytes", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:4]))
