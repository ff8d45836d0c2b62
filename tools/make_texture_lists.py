#!/usr/bin/env python3
"""Writes support/textures.dat and support/colors.dat from the ray tracer's
installed include files.

Usage: make_texture_lists.py [INCLUDE_DIR [SUPPORT_DIR]]
       (defaults: /usr/share/povray-3.7/include and the checkout's support/)

textures.dat: every name that "textures.inc" declares and that povray accepts
inside texture { NAME }, in the order of the file. Colour maps, materials and
interiors cannot stand there. POV-Ray 3.7 also takes a finish or a normal
there (it renders black), so a name that parses as finish { NAME } or
normal { NAME } is left out too; a pigment (3.7's Jade, Red_Marble ...)
renders as a texture with that pigment and stays. A name longer than 20
characters cannot be stored in an object's texture field and is left out.

colors.dat: every colour that "colors.inc" declares, with the values povray
itself computes for it (so "White*0.05" or "color Black" come out as
numbers), as name(r, g, b) or, with a filter, name(r, g, b, f).

Each candidate is tried in its own povray run, so this takes a minute or two.
"""
import os
import re
import subprocess
import sys
import tempfile

include_dir = sys.argv[1] if len(sys.argv) > 1 else "/usr/share/povray-3.7/include"
support_dir = sys.argv[2] if len(sys.argv) > 2 else os.path.join(os.path.dirname(os.path.abspath(__file__)),
                                                                   "..", "support")
MAX_NAME = 20


def declared(file_name):
    """Names of the top-level #declare lines of an include file, in order."""
    names = []
    with open(os.path.join(include_dir, file_name), encoding="latin-1") as f:
        for line in f:
            code = line.split("//", 1)[0]
            m = re.match(r"\s*#declare\s+([A-Za-z_][A-Za-z0-9_]*)\s*=", code)
            if m and not m.group(1).endswith("_Inc_Temp") and m.group(1) not in names:
                names.append(m.group(1))
    return names


def povray(scene, work):
    """Parses `scene` in povray (no picture); its messages, and whether it parsed."""
    path = os.path.join(work, "probe.pov")
    with open(path, "w") as f:
        f.write(scene)
    r = subprocess.run(["povray", "+I" + path, "+W4", "+H4", "-D", "-V", "-F",
                        "+L" + include_dir, "+MB0", "-P"],
                       cwd=work, capture_output=True, text=True, timeout=120)
    text = r.stdout + r.stderr
    return text, r.returncode == 0 and "Parse Error" not in text.replace("Possible Parse Error", "")


def texture_names(work):
    names = []
    for name in declared("textures.inc"):
        if len(name) > MAX_NAME:
            print(f"left out (longer than {MAX_NAME}): {name}", file=sys.stderr)
            continue
        head = '#include "colors.inc"\n#include "textures.inc"\n'
        _, ok = povray(head + f"sphere {{ 0, 1 texture {{ {name} }} }}\n", work)
        if not ok:
            print(f"left out (not a texture): {name}", file=sys.stderr)
            continue
        other = [kind for kind in ("finish", "normal")
                 if povray(head + f"#declare X = {kind} {{ {name} }}\n", work)[1]]
        if other:
            print(f"left out (a {other[0]}): {name}", file=sys.stderr)
            continue
        names.append(name)
    return names


def colours(work):
    names = [n for n in declared("colors.inc") if len(n) <= MAX_NAME]
    probe = '#version 3.7;\n#include "colors.inc"\n'
    for n in names:
        probe += (f'#debug concat("@@{n}(", str({n}.red,0,6), ",", str({n}.green,0,6), ",", '
                  f'str({n}.blue,0,6), ",", str({n}.filter,0,6), ",", str({n}.transmit,0,6), ")\\n")\n')
    text, ok = povray(probe, work)
    if not ok:
        sys.exit("povray could not evaluate the colours:\n" + text)
    out = []
    for m in re.finditer(r"@@([A-Za-z0-9_]+)\(([^)]*)\)", text):
        r, g, b, f, t = (float(v) for v in m.group(2).split(","))
        if t != 0:
            sys.exit(f"{m.group(1)} has a transmit value, which colors.dat cannot hold")
        values = [r, g, b] + ([f] if f != 0 else [])
        out.append(f"{m.group(1)}({', '.join('%g' % v for v in values)})")
    if len(out) != len(names):
        sys.exit(f"povray reported {len(out)} of {len(names)} colours:\n" + text)
    return out


def main():
    with tempfile.TemporaryDirectory() as work:
        textures = texture_names(work)
        colour_lines = colours(work)
    with open(os.path.join(support_dir, "textures.dat"), "w") as f:
        f.write("".join(n + "\n" for n in textures))
    with open(os.path.join(support_dir, "colors.dat"), "w") as f:
        f.write("// The colours of the ray tracer's \"colors.inc\": name(red, green, blue[, filter]).\n")
        f.write("// Written by tools/make_texture_lists.py.\n")
        f.write("".join(line + "\n" for line in colour_lines))
    print(f"{len(textures)} textures, {len(colour_lines)} colours")


main()
