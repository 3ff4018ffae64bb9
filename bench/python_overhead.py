"""What a call costs from Python over the same call from C++: Fade, style 0 at 0.4, on 1920x1080 frames, timed by
zv_bench (BM_FadeCrossfade, Google Benchmark) and here through the module, in turns, in one run; each figure is the
best of the rounds, as other work on the machine only ever adds time. Then the module's own cost, a call on empty
frames (nothing to draw), against the C++ call; a call that makes a new output frame; and the calls a second of one
and of two Python threads.

usage: python3 bench/python_overhead.py [BUILD_DIR] [ROUNDS]   (defaults: build, 15; the interpreter the module
was built for, /usr/bin/python3 on Debian)
"""
import json
import pathlib
import subprocess
import sys
import threading
import time

BUILD = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build").resolve()
ROUNDS = int(sys.argv[2]) if len(sys.argv) > 2 else 15
sys.path.insert(0, str(BUILD / "python"))

import numpy as np  # noqa: E402
import zvtransition as zv  # noqa: E402

WIDTH, HEIGHT = 1920, 1080


def frame(seed):
    return np.random.default_rng(seed).integers(0, 256, (HEIGHT * 3 // 2, WIDTH), np.uint8)


def cpp_us():
    """Google Benchmark's wall time per call of the same transition on the same path."""
    run = subprocess.run([BUILD / "bin/zv_bench", "--benchmark_filter=^BM_FadeCrossfade/reference:0$",
                          "--benchmark_format=json", "--benchmark_min_time=0.3"], capture_output=True, check=True)
    result = json.loads(run.stdout)["benchmarks"][0]
    assert result["time_unit"] == "ns"
    return result["real_time"] / 1000


def python_us(call, seconds=0.3):
    """Wall time per call over about `seconds` of calls."""
    calls, start = 0, time.perf_counter()
    while time.perf_counter() - start < seconds:
        for _ in range(50):
            call()
        calls += 50
    return (time.perf_counter() - start) / calls * 1e6


def calls_per_second(threads, calls=400):
    """Calls a second when `threads` Python threads share `calls` calls, each thread on frames of its own."""
    def work():
        a, b, out = frame(1), frame(2), frame(3)
        for _ in range(calls // threads):
            zv.apply(14, a, b, 0.4, out=out)

    workers = [threading.Thread(target=work) for _ in range(threads)]
    start = time.perf_counter()
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    return calls / (time.perf_counter() - start)


def main():
    a, b, out = frame(1), frame(2), frame(3)
    in_place = lambda: zv.apply(14, a, b, 0.4, out=out)  # noqa: E731
    new_output = lambda: zv.apply(14, a, b, 0.4)  # noqa: E731
    python_us(in_place, 0.5)  # warm up
    empty = np.zeros((0, 0), np.uint8)
    nothing = lambda: zv.apply(14, empty, empty, 0.4, out=empty)  # noqa: E731
    cpp, python, own, fresh = [], [], [], []
    for _ in range(ROUNDS):
        cpp.append(cpp_us())
        python.append(python_us(in_place))
        own.append(python_us(nothing))
        fresh.append(python_us(new_output))
    c, p, o, f = min(cpp), min(python), min(own), min(fresh)
    print(f"Fade {WIDTH}x{HEIGHT}, best of {ROUNDS} rounds, wall time per call:")
    print(f"  C++ (zv_bench BM_FadeCrossfade/reference:0)  {c:8.1f} us")
    print(f"  Python, apply(..., out=out)                  {p:8.1f} us   overhead {100 * (p / c - 1):+.1f} %")
    print(f"  Python, apply() on empty frames (its own cost) {o:6.2f} us   {100 * o / c:.2f} % of the C++ call")
    print(f"  Python, apply(...) (a new frame, copy of a)  {f:8.1f} us   overhead {100 * (f / c - 1):+.1f} %")
    one, two = (max(calls_per_second(threads) for _ in range(3)) for threads in (1, 2))
    print(f"  Python threads: 1 thread {one:.0f} calls/s, 2 threads {two:.0f} calls/s ({two / one:.2f}x)")


if __name__ == "__main__":
    main()
