"""Random frames, their raw bytes, zvtran (the reference: the same host call from the command line) and fresh
threads. The build runs the tests with PYTHONPATH at the built module and ZVTRAN at zvtran."""
import os
import subprocess
import threading

import numpy as np
import zvtransition as zv

# Drawn with OpenGL; the others are drawn in software.
OPENGL_IDS = {42, 43, 45, 47, 48, 49, 50, 51, 52, 55, 57, 58, 60, 61, 62, 64}


def random_frame(width, height, seed, planes=False):
    """Three planes when asked or when a side is odd, else one array."""
    shapes = [(height, width)] + [(height // 2, width // 2)] * 2
    frame = tuple(np.random.default_rng(seed).integers(0, 256, shape, np.uint8) for shape in shapes)
    return frame if planes or width % 2 or height % 2 else np.concatenate([p.ravel() for p in frame]).reshape(-1, width)


def raw(frame):
    """Y, U and V bytes, as zvtran reads and writes a frame."""
    return b"".join(p.tobytes() for p in frame) if isinstance(frame, tuple) else frame.tobytes()


def zvtran(*args):
    return subprocess.run([os.environ["ZVTRAN"], *map(str, args)], check=True, capture_output=True, text=True).stdout


def zvtran_apply(folder, op, a, b, out, *options):
    """`zvtran apply` of `op` on the frames (out: the bytes it starts with); returns (result, output bytes)."""
    arguments = []
    for role, frame in (("a", a), ("b", b), ("out-init", out)):
        (folder / role).write_bytes(raw(frame))
        y = frame[0] if isinstance(frame, tuple) else frame[: len(frame) // 3 * 2]
        arguments += [f"--{role}", folder / role, f"--{role.replace('-init', '')}-size", "%dx%d" % y.shape[::-1]]
    printed = zvtran("apply", op, *arguments, "--out", folder / "out", *options)
    return int(printed.split()[1]), (folder / "out").read_bytes()


def on_fresh_thread(call):
    """call() on a new thread, where the library's random sequence starts as in a new process; the OpenGL renderer
    it may make is released there."""
    outcome = {}

    def run():
        try:
            outcome["value"] = call()
        except BaseException as error:  # raised again on the caller's thread
            outcome["error"] = error
        finally:
            zv.release_opengl()

    thread = threading.Thread(target=run)
    thread.start()
    thread.join()
    if "error" in outcome:
        raise outcome["error"]
    return outcome["value"]
