"""Python threads render at once (the GIL is released in every call): four threads each running the software
transitions give the bytes one thread alone gives. Each runs on a fresh thread, where the library's random
sequence (the dissolves, Gradient Wipe) starts from the same state."""
import threading

import zvtransition as zv
from conftest import OPENGL_IDS, on_fresh_thread, random_frame, raw

SOFTWARE = [t for t in zv.catalogue()[:66] if t["id"] not in OPENGL_IDS]
FRAMES = [(random_frame(64, 48, 1), random_frame(64, 48, 2)), (random_frame(37, 21, 3), random_frame(33, 25, 4))]


def render_all():
    return [raw(zv.apply(t["id"], a, b, position, style=style))
            for a, b in FRAMES for position in (0.25, 0.5, 0.75)
            for t in SOFTWARE for style in range(max(len(t["styles"]), 1))]


def test_four_threads_give_the_bytes_of_one():
    alone = on_fresh_thread(render_all)
    results = [None] * 4
    start = threading.Barrier(4)

    def worker(index):
        start.wait()
        results[index] = render_all()

    threads = [threading.Thread(target=worker, args=(i,)) for i in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for result in results:
        assert result == alone
