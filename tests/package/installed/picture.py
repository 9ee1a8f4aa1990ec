"""Looks at pictures without any library: `picture.py colours FILE` prints how many colours a PNG has, and
`picture.py differences FILE FILE` how many pixels differ between two of one size."""
import struct
import sys
import zlib

CHANNELS = {0: 1, 2: 3, 6: 4}


def chunks(data):
    place = 8
    while place < len(data):
        size, kind = struct.unpack(">I4s", data[place:place + 8])
        yield kind, data[place + 8:place + 8 + size]
        place += size + 12


def paeth(left, above, corner):
    estimate = left + above - corner
    candidates = (left, above, corner)
    return min(candidates, key=lambda value: abs(estimate - value))


def predicted(method, left, above, corner):
    return (0, left, above, (left + above) // 2, paeth(left, above, corner) if method == 4 else 0)[method]


def unfiltered(method, line, above, step):
    for index, byte in enumerate(line):
        left, corner = (line[index - step], above[index - step]) if index >= step else (0, 0)
        line[index] = (byte + predicted(method, left, above[index], corner)) & 255
    return line


def pixels(path):
    with open(path, "rb") as file:
        data = file.read()
    parts = list(chunks(data))
    width, height, depth, kind, _, _, interlace = struct.unpack(">IIBBBBB", parts[0][1])
    if depth != 8 or kind not in CHANNELS or interlace:
        sys.exit(f"{path} is of a kind that is not read here")
    step = CHANNELS[kind]
    raw = zlib.decompress(b"".join(content for name, content in parts if name == b"IDAT"))
    above = bytes(width * step)
    found = []
    for row in range(height):
        start = row * (width * step + 1)
        above = unfiltered(raw[start], bytearray(raw[start + 1:start + 1 + width * step]), above, step)
        found += [bytes(above[x:x + step]) for x in range(0, width * step, step)]
    return found


if sys.argv[1] == "colours":
    print(len(set(pixels(sys.argv[2]))))
else:
    print(sum(first != second for first, second in zip(pixels(sys.argv[2]), pixels(sys.argv[3]), strict=True)))
