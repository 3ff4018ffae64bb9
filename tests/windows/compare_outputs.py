#!/usr/bin/env python3
"""Compares what zv_host_compare wrote natively with what it wrote under wine.

Every line must be identical, except the frames of the OpenGL transitions
("glframe" lines), whose samples may differ by up to TOLERANCE levels: the two
builds draw through different OpenGL bindings (a headless surface natively, a
bitmap selected into a memory device context on Windows).

usage: compare_outputs.py NATIVE WINDOWS [TOLERANCE]
"""
import sys


def main():
    native_path, windows_path = sys.argv[1], sys.argv[2]
    tolerance = int(sys.argv[3]) if len(sys.argv) > 3 else 4
    with open(native_path) as f:
        native = f.read().splitlines()
    with open(windows_path) as f:
        windows = f.read().splitlines()
    failures = []
    if len(native) != len(windows):
        failures.append(f"{len(native)} lines natively, {len(windows)} under wine")
    exact = gl_frames = gl_samples = gl_differing = 0
    gl_worst = 0
    for number, (ours, theirs) in enumerate(zip(native, windows), 1):
        if ours.startswith("glframe ") and theirs.startswith("glframe "):
            head, _, data = ours.partition(" data=")
            other_head, _, other_data = theirs.partition(" data=")
            if head != other_head or len(data) != len(other_data):
                failures.append(f"line {number}: {head} | {other_head}")
                continue
            a, b = bytes.fromhex(data), bytes.fromhex(other_data)
            worst = max((abs(x - y) for x, y in zip(a, b)), default=0)
            gl_frames += 1
            gl_samples += len(a)
            gl_differing += sum(1 for x, y in zip(a, b) if x != y)
            gl_worst = max(gl_worst, worst)
            if worst > tolerance:
                failures.append(f"line {number}: {head}: a sample differs by {worst}")
        elif ours == theirs:
            exact += 1
        else:
            failures.append(f"line {number}:\n  native: {ours[:200]}\n  wine:   {theirs[:200]}")
    for failure in failures[:40]:
        print(failure)
    if len(failures) > 40:
        print(f"... and {len(failures) - 40} more")
    print(f"{exact} lines equal (catalogue, software transitions, services); "
          f"{gl_frames} OpenGL frames, {gl_differing} of {gl_samples} samples differ, "
          f"by at most {gl_worst} (tolerance {tolerance})")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
