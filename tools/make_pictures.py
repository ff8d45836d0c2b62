#!/usr/bin/env python3
"""Writes the dialog picture files of support/: the seven viewport layouts
of viewport.dlg, as the program's layout arithmetic places them on a
miniature screen.

A picture file is a sequence of 16-byte records, four little-endian 32-bit
integers x, y, colour, length: a horizontal line from (x, y) to
(x + length, y). Usage: tools/make_pictures.py [support directory]
"""
import os
import struct
import sys

W, H = 116, 71            # picture size: the SHAPE frame is 118 x 73 around it
DGRAY, BLACK, GRAY, LRED = 8, 0, 7, 12


def layout_rects(n, R, T, B):
    """Rectangles (left, top, right, bottom) of the slots of layout n."""
    mx, my = R // 2, T + (B - T) // 2
    cw = int(R / 3.5)
    y3 = T + (B - T) // 3
    y6 = y3 + (B - y3) // 2
    table = {
        1: [(0, T, R, B)],
        2: [(mx + 2, T + 1, R - 1, B - 1), (1, T + 1, mx - 2, B - 1)],
        3: [(1, my + 2, R - 1, B - 1), (1, T + 1, R - 1, my - 2)],
        4: [(mx + 2, T + 1, R - 1, B - 1), (1, T + 1, mx - 2, my - 2), (1, my + 2, mx - 2, B - 1)],
        5: [(1, my + 2, R - 1, B - 1), (1, T + 1, mx - 2, my - 2), (mx + 2, T + 1, R - 1, my - 2)],
        6: [(mx + 2, my + 2, R - 1, B - 1), (1, T + 1, mx - 2, my - 2),
            (mx + 2, T + 1, R - 1, my - 2), (1, my + 2, mx - 2, B - 1)],
        7: [(1, T + 1, cw - 2, y3 - 2), (1, y3 + 2, cw - 2, y6 - 2),
            (1, y6 + 2, cw - 2, B - 1), (cw + 2, T + 1, R - 1, B - 1)],
    }
    return table[n]


def picture(n):
    px = [[DGRAY] * W for _ in range(H)]
    ox, oy = 2, 2                           # the drawing area inside a grey rim
    R, T, B = W - 5, 0, H - 5
    for slot, (l, t, r, b) in enumerate(layout_rects(n, R, T, B), start=1):
        edge = LRED if slot == 1 else GRAY  # slot 1 is the current viewport
        for y in range(t, b + 1):
            for x in range(l, r + 1):
                border = y in (t, b) or x in (l, r)
                px[oy + y][ox + x] = edge if border else BLACK
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
    for n in range(1, 8):
        with open(os.path.join(out, "layout%d.pic" % n), "wb") as f:
            f.write(picture(n))


if __name__ == "__main__":
    main()
