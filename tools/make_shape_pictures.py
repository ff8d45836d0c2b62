#!/usr/bin/env python3
"""Writes the pictures of the shape choosers complex.dlg and bezier.dlg:
each ready-made shape as a small wireframe seen from above at an angle.

The picture files have the format of tools/make_pictures.py (16-byte
records x, y, colour, length: horizontal runs), 116 x 71 pixels.
Usage: tools/make_shape_pictures.py [support directory]
"""
import math
import os
import struct
import sys

W, H = 116, 71
BLACK, GRAY, DGRAY, LCYAN, YELLOW = 0, 7, 8, 11, 14
K = 0.55


def project(p):
    """Oblique view: x right, z (height) up, y into the picture."""
    x, y, z = p
    a = math.radians(30)
    return (x + y * math.cos(a) * 0.6, -(z + y * math.sin(a) * 0.6))


def ring(r, z=0.0, n=24, a0=0.0, sweep=2 * math.pi, cx=0.0, cy=0.0):
    return [(cx + r * math.cos(a0 + sweep * i / n), cy + r * math.sin(a0 + sweep * i / n), z) for i in range(n + 1)]


def pcube():
    b = [(0, 0, 0), (2, 0, 0), (2, 1.4, 0), (0, 1.4, 0), (0, 0, 0)]
    t = [(x, y, 1.2) for x, y, _ in b]
    return [b, t] + [[b[k], t[k]] for k in range(4)]


def pyramid():
    b = [(-1, -1, 0), (1, -1, 0), (1, 1, 0), (-1, 1, 0), (-1, -1, 0)]
    return [b] + [[c, (0, 0, 1.8)] for c in b[:4]]


def wedge():
    f = [(-1, 0, 0), (1, 0, 0), (0, 0, 1.2), (-1, 0, 0)]
    r = [(x, 2.2, z) for x, _, z in f]
    return [f, r] + [[f[k], r[k]] for k in range(3)]


def staircase():
    lines = []
    n = 12
    for k in range(n):
        a0, a1 = 2 * math.pi * k / n, 2 * math.pi * (k + 1) / n
        top = 0.15 * (k + 1)
        for r in (0.4, 1.2):
            lines.append(ring(r, top, 3, a0, a1 - a0))
        for a in (a0, a1):
            lines.append([(0.4 * math.cos(a), 0.4 * math.sin(a), top), (1.2 * math.cos(a), 1.2 * math.sin(a), top)])
        lines.append([(1.2 * math.cos(a0), 1.2 * math.sin(a0), 0), (1.2 * math.cos(a0), 1.2 * math.sin(a0), top)])
    lines.append(ring(1.2, 0))
    return lines


def helix(r0, grow, pitch, turns, steps=24):
    n = int(turns * steps)
    return [((r0 + grow * i / steps) * math.cos(2 * math.pi * i / steps),
             (r0 + grow * i / steps) * math.sin(2 * math.pi * i / steps), pitch * i / steps) for i in range(n + 1)]


def screw():
    lines = [helix(0.8, 0, 0.4, 4.5), [(x, y, z + 0.1) for x, y, z in helix(0.8, 0, 0.4, 4.5)]]
    lines += [[(0.5, 0, 0), (0.5, 0, 2.0)], [(-0.5, 0, 0), (-0.5, 0, 2.0)]]
    return lines


def spring():
    return [helix(0.8, 0, 0.35, 5), [(x, y, z + 0.08) for x, y, z in helix(0.72, 0, 0.35, 5)]]


def torus():
    lines = [ring(1.0 + 0.4 * math.cos(a), 0.4 * math.sin(a)) for a in [i * math.pi / 4 for i in range(8)]]
    for i in range(12):
        a = 2 * math.pi * i / 12
        lines.append([((1.0 + 0.4 * math.cos(t)) * math.cos(a), (1.0 + 0.4 * math.cos(t)) * math.sin(a),
                       0.4 * math.sin(t)) for t in [j * math.pi / 8 for j in range(17)]])
    return lines


def sphere():
    lines = [ring(math.cos(b), math.sin(b)) for b in [j * math.pi / 8 for j in range(-3, 4)]]
    for i in range(8):
        a = math.pi * i / 8
        lines.append([(math.cos(t) * math.cos(a), math.cos(t) * math.sin(a), math.sin(t))
                      for t in [j * math.pi / 16 for j in range(33)]])
    return lines


def dish():
    lines = [ring(math.cos(b), 1 + math.sin(b)) for b in [-j * math.pi / 10 for j in range(0, 5)]]
    for i in range(12):
        a = 2 * math.pi * i / 12
        lines.append([(math.cos(t) * math.cos(a), math.cos(t) * math.sin(a), 1 + math.sin(t))
                      for t in [-j * math.pi / 16 for j in range(9)]])
    return lines


def cylinder(rows):
    lines = [ring(1.0, 2.0 * j / rows) for j in range(rows + 1)]
    for i in range(8):
        a = 2 * math.pi * i / 8
        lines.append([(math.cos(a), math.sin(a), 0), (math.cos(a), math.sin(a), 2.0)])
    return lines


SHAPES = {
    "cx_pcube": pcube, "cx_pyram": pyramid, "cx_wedge": wedge, "cx_stair": staircase, "cx_screw": screw,
    "cx_sprng": spring, "bz_torus": torus, "bz_dish": dish, "bz_sphr": sphere,
    "bz_cyl": lambda: cylinder(3), "bz_cyl2": lambda: cylinder(5),
}


def picture(lines):
    px = [[DGRAY] * W for _ in range(H)]
    for y in range(2, H - 2):
        for x in range(2, W - 2):
            px[y][x] = BLACK
    pts = [project(p) for line in lines for p in line]
    x0, x1 = min(p[0] for p in pts), max(p[0] for p in pts)
    y0, y1 = min(p[1] for p in pts), max(p[1] for p in pts)
    s = min((W - 12) / max(x1 - x0, 1e-9), (H - 12) / max(y1 - y0, 1e-9))
    ox, oy = (W - s * (x1 - x0)) / 2 - s * x0, (H - s * (y1 - y0)) / 2 - s * y0

    def plot(a, b):
        (ax, ay), (bx, by) = project(a), project(b)
        ax, ay, bx, by = ox + s * ax, oy + s * ay, ox + s * bx, oy + s * by
        n = int(max(abs(bx - ax), abs(by - ay))) + 1
        for i in range(n + 1):
            x, y = int(round(ax + (bx - ax) * i / n)), int(round(ay + (by - ay) * i / n))
            if 2 <= x < W - 2 and 2 <= y < H - 2:
                px[y][x] = YELLOW

    for line in lines:
        for a, b in zip(line, line[1:]):
            plot(a, b)
    records = []
    for y in range(H):
        x = 0
        while x < W:
            c, start = px[y][x], x
            while x < W and px[y][x] == c:
                x += 1
            records.append(struct.pack("<iiii", start, y, c, x - 1 - start))
    return b"".join(records)


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "support")
    for name, shape in SHAPES.items():
        with open(os.path.join(out, name + ".pic"), "wb") as f:
            f.write(picture(shape()))


if __name__ == "__main__":
    main()
