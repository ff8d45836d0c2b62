#!/usr/bin/env bash
# The layer check on a fixture tree: it must fail, naming exactly the include
# that goes up (low.cpp -> mid.h) and the state header that is not types
# only, and accept everything else (a file placed above its directory, state
# headers included from anywhere, includes downwards).
set -u
here=$(cd "$(dirname "$0")" && pwd)
out=$("$here/../../scripts/check-layers" "$here/fixture")
status=$?
expected="src/low/low.cpp:3: includes mid/mid.h (layer 2) from layer 1
src/mid/mid_state.h:3: state header includes high/high.h, which is not types only"
if [ "$status" -ne 1 ]; then
    echo "expected exit status 1, got $status"; exit 1
fi
if [ "$out" != "$expected" ]; then
    printf 'expected:\n%s\ngot:\n%s\n' "$expected" "$out"; exit 1
fi
echo "fixture: the wrong includes are found"
