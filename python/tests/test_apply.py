"""apply() against `zvtran apply`, the same host call from the command line: the same bytes, and behind each
exception the result code zvtran reports. The catalogue against zvtran's."""
import json

import numpy as np
import pytest
import zvtransition as zv
from conftest import on_fresh_thread, random_frame, raw, zvtran, zvtran_apply

CATALOGUE = zv.catalogue()
NAN = float("nan")

# (id, style, sizes of a, b and out (None: b at a's size, out a new copy of a), position, duration, parameters):
# every transition in its first and last styles and one past them, then mixed and odd sizes (odd ones as planes),
# parameters, and positions and durations a host may hand over.
CASES = [(t["id"], s, [(64, 48)], 0.4, 1.0, {})
         for t in CATALOGUE[:66] for s in sorted({0, max(len(t["styles"]) - 1, 0), len(t["styles"])})] + [
    (1, 4, [(64, 48), (48, 36), (56, 40)], 0.4, 1.0, {}),
    (3, 2, [(33, 25), (41, 17), (37, 21)], 0.4, 1.0, {}),
    (5, 2, [(37, 21), (64, 48), (37, 21)], 0.7, 1.0, {}),
    (13, 5, [(48, 36), (64, 48)], 0.4, 1.0, {}),
    (14, 3, [(33, 25), (41, 17), (37, 21)], 0.6, 1.0, {}),
    (15, 0, [(64, 48), (40, 30)], 0.4, 1.0, {"param1": 6, "param2": 4.0}),
    (16, 1, [(64, 48), (48, 32)], 0.4, 1.0, {"param1": 8 | 6 << 16, "param2": float(30 | 20 << 16)}),
    (17, 0, [(64, 48), (56, 40), (64, 48)], 0.5, 1.0, {"param1": 0xFF00FF00}),
    (17, 0, [(64, 48)], 0.4, 1.0, {"param3": 0x800000}),
    (38, 0, [(37, 21), (33, 25)], 0.4, 1.0, {}),
    (39, 6, [(64, 48), (48, 36)], 0.4, 1.0, {}),
    (44, 1, [(64, 48)], 0.4, 1.0, {"param1": 30, "param2": 60.0}),
    (57, 0, [(48, 36), (64, 48), (56, 40)], 0.4, 1.0, {}),
    (59, 1, [(64, 48), (48, 36)], 0.4, 1.0, {}),
    (14, 0, [(64, 48)], NAN, 1.0, {}),
    (57, 0, [(64, 48)], NAN, 1.0, {}),
    (14, 0, [(64, 48)], 0.5, 0.0, {}),
    (1, 0, [(64, 48)], -3.0, -1.0, {"param1": 2**31, "param2": NAN}),
    (2, 1, [(64, 48)], 1e300, 1e-300, {}),
]


@pytest.mark.parametrize("id, style, sizes, position, duration, params", CASES, ids=str)
def test_apply_gives_the_bytes_of_zvtran_apply(id, style, sizes, position, duration, params, tmp_path):
    a = random_frame(*sizes[0], seed=1)
    b = random_frame(*sizes[min(1, len(sizes) - 1)], seed=2)
    out = random_frame(*sizes[2], seed=3) if len(sizes) == 3 else None
    options = [f"--{k}={v}" for k, v in dict(params, style=style, position=position, duration=duration).items()]
    result, expected = zvtran_apply(tmp_path, id, a, b, a if out is None else out, *options)
    call = lambda: zv.apply(id, a, b, position, duration=duration, style=style, out=out, **params)  # noqa: E731
    if result == 3:
        with pytest.raises(ValueError, match=r"style %d is out of range for .* \(styles 0-\d\)" % style):
            on_fresh_thread(call)
        return
    got = on_fresh_thread(call)
    assert raw(got) == expected and (out is None or got is out)


# The GLSL collection, its parameters given by name (a picture as a Y4M file to zvtran, read as it lies).
GL_CASES = [
    ("gl:fade", {}, [(64, 48)], 0.5, 1.0),
    ("gl:CrossZoom", {"strength": 0.6}, [(64, 48), (48, 36), (56, 40)], 0.3, 1.0),
    ("gl:cube", {"persp": 0.5, "floating": 2}, [(64, 48)], 1.5, 2.0),
    ("gl:GridFlip", {"size": (3, 5), "bgcolor": [1, 0, 0.5, 1]}, [(64, 48), (64, 48), (48, 36)], 0.6, 1.0),
    ("gl:BowTieWithParameter", {"reverse": True}, [(64, 48)], 0.4, 1.0),
    ("gl:mosaic", {"endx": 3}, [(37, 21), (33, 25)], 0.4, 1.0),
    ("gl:displacement", {"displacementMap": random_frame(32, 24, 4)}, [(64, 48)], 0.5, 1.0),
]


def set_option(folder, name, value):
    """zvtran's --set: numbers with commas, true or false, a picture as a Y4M file."""
    if isinstance(value, np.ndarray):
        path = folder / f"{name}.y4m"
        path.write_bytes(b"YUV4MPEG2 W%d H%d F25:1 C420jpeg\nFRAME\n" % (value.shape[1], len(value) // 3 * 2)
                         + value.tobytes())
        value = path
    elif isinstance(value, (tuple, list)):
        value = ",".join(map(str, value))
    elif isinstance(value, bool):
        value = str(value).lower()
    return f"--set={name}={value}"


@pytest.mark.parametrize("name, params, sizes, position, duration", GL_CASES, ids=[c[0] for c in GL_CASES])
def test_gl_apply_gives_the_bytes_of_zvtran_apply(name, params, sizes, position, duration, tmp_path):
    a = random_frame(*sizes[0], seed=1)
    b = random_frame(*sizes[min(1, len(sizes) - 1)], seed=2)
    out = random_frame(*sizes[2], seed=3) if len(sizes) == 3 else None
    sets = [set_option(tmp_path, k, v) for k, v in params.items()]
    _, expected = zvtran_apply(tmp_path, name, a, b, a if out is None else out, f"--position={position}",
                               f"--duration={duration}", *sets)
    got = on_fresh_thread(lambda: zv.apply(name, a, b, position, duration=duration, params=params, out=out))
    assert raw(got) == expected


def test_catalogue_is_zvtrans():
    listed = json.loads(zvtran("catalogue", "--json"))
    assert [t["id"] for t in CATALOGUE[:66]] == list(range(1, 67))
    for mine, theirs in zip(CATALOGUE, listed["transitions"]):
        assert mine["name"] == theirs["name"] and mine["labels"] == theirs["params"]["labels"]
        assert mine["styles"] == (theirs["styles"] or [])[: theirs["style_count"]]
    assert CATALOGUE[66:] == listed["glsl_transitions"] and len(CATALOGUE) == 66 + 125


# The output's buffer is the given out, in either form; out=None starts from a; names go in any letter case; an input
# that is not contiguous is read all the same.
@pytest.mark.parametrize("planes", [False, True])
def test_out_is_written_in_place(planes):
    a, b, out = (random_frame(64, 48, seed, planes) for seed in (1, 2, 3))
    got = zv.apply("fADE", a, b, 1.0, out=out)
    assert got is out and raw(out) == raw(b)
    assert raw(zv.apply("Fade", a, b, 0.0)) == raw(a)


def test_inputs_with_steps_are_read():
    a, b = random_frame(64, 48, 1), random_frame(64, 48, 2)
    wide = np.zeros((72, 128), np.uint8)
    wide[:, ::2] = a
    assert raw(zv.apply(5, wide[:, ::2], b[::-1].copy()[::-1], 0.3)) == raw(zv.apply(5, a, b, 0.3))
