"""What the module's tests share: random frames, their raw bytes, zvtran runs
(the reference: one host call from the command line) and fresh threads.

The build runs them with PYTHONPATH at the built module and ZVTRAN at zvtran.
"""
import os
import subprocess
import threading

import numpy as np
import zvtransition as zv

ZVTRAN = os.environ["ZVTRAN"]
# Drawn with OpenGL; every other transition is drawn in software.
OPENGL_IDS = {42, 43, 45, 47, 48, 49, 50, 51, 52, 55, 57, 58, 60, 61, 62, 64}


def random_frame(width, height, seed, planes=False):
    """A frame of random samples: three planes when asked or when a side is odd, else one array."""
    rng = np.random.default_rng(seed)
    if planes or width % 2 or height % 2:
        return tuple(rng.integers(0, 256, (h, w), np.uint8)
                     for w, h in ((width, height), (width // 2, height // 2), (width // 2, height // 2)))
    return rng.integers(0, 256, (height * 3 // 2, width), np.uint8)


def raw(frame):
    """The frame's bytes as zvtran reads and writes them: Y, U, V."""
    return b"".join(p.tobytes() for p in frame) if isinstance(frame, tuple) else frame.tobytes()


def size_of(frame):
    y = frame[0] if isinstance(frame, tuple) else frame[: frame.shape[0] // 3 * 2]
    return y.shape[1], y.shape[0]


def zvtran(*args):
    """Runs zvtran; returns its standard output."""
    return subprocess.run([ZVTRAN, *map(str, args)], check=True, capture_output=True, text=True).stdout


def zvtran_apply(folder, op, a, b, out, *options):
    """`zvtran apply` of `op` on the frames (out: its starting bytes); returns (result, output bytes)."""
    files = {}
    for role, frame in (("a", a), ("b", b), ("out-init", out)):
        files[role] = folder / f"{role}.yuv"
        files[role].write_bytes(raw(frame))
    sizes = {role: "%dx%d" % size_of(frame) for role, frame in (("a", a), ("b", b), ("out", out))}
    printed = zvtran("apply", op, "--a", files["a"], "--a-size", sizes["a"], "--b", files["b"], "--b-size", sizes["b"],
                     "--out-init", files["out-init"], "--out", folder / "out.yuv", "--out-size", sizes["out"], *options)
    return int(printed.split()[1]), (folder / "out.yuv").read_bytes()


def on_fresh_thread(call):
    """call() on a new thread, where the library's random sequence starts as in a new process; the OpenGL renderer
    it may have made is released there."""
    outcome = {}

    def run():
        try:
            outcome["value"] = call()
        except BaseException as error:  # handed to the caller
            outcome["error"] = error
        finally:
            zv.release_opengl()

    thread = threading.Thread(target=run)
    thread.start()
    thread.join()
    if "error" in outcome:
        raise outcome["error"]
    return outcome["value"]
