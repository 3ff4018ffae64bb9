"""Whatever Python hands over: a clear exception before the library is called, never a crash."""
import numpy as np
import pytest
import zvtransition as zv
from conftest import random_frame

A, B = random_frame(64, 48, 1), random_frame(64, 48, 2)
Y, U, V = random_frame(64, 48, 3, planes=True)
READ_ONLY = A.copy()
READ_ONLY.flags.writeable = False

# (what, keyword arguments of apply() over good ones, exception, words of its message)
APPLY = [
    ("float frame", {"b": A.astype(np.float32)}, ValueError, "b must have dtype uint8"),
    ("3-d frame", {"a": A.reshape(72, 32, 2)}, ValueError, "2 dimensions"),
    ("rows not 3 / 2 of a height", {"a": A[:71]}, ValueError, "H * 3 / 2"),
    ("odd width in one array", {"b": np.zeros((72, 63), np.uint8)}, ValueError, "H and W even"),
    ("side past 8192", {"a": np.zeros((3, 8194), np.uint8)}, ValueError, "at most 8192"),
    ("None frame", {"a": None}, TypeError, "NoneType"),
    ("two planes", {"a": (Y, U)}, TypeError, "three uint8 planes"),
    ("chroma of another size", {"a": (Y, U[:, :31], V)}, ValueError, "(24, 31)"),
    ("plane of another type", {"b": (Y, U, V.astype(np.int16))}, ValueError, "b[2] must have dtype uint8"),
    ("read-only out", {"out": READ_ONLY}, ValueError, "read-only"),
    ("strided out", {"out": (Y, U, np.zeros((24, 64), np.uint8)[:, ::2])}, ValueError, "out[2] must be C-contiguous"),
    ("id 67", {"transition": 67}, ValueError, "out of range 1-66"),
    ("unknown name", {"transition": "Fades"}, ValueError, "unknown transition 'Fades'"),
    ("float id", {"transition": 14.0}, TypeError, "id or a display name"),
    ("style past Fade's", {"style": 8}, ValueError, "style 8 is out of range for Fade (styles 0-7)"),
    ("negative style", {"style": -1}, ValueError, "style -1 is out of range for Fade"),
    ("param1 past 32 bits", {"param1": -2**31 - 1}, ValueError, "param1 -2147483649 does not fit in 32 bits"),
    ("float style", {"style": 1.5}, TypeError, "style must be an integer"),
    ("unknown GLSL name", {"transition": "gl:nothing"}, ValueError, "unknown GLSL transition 'nothing'"),
    ("unknown GLSL parameter", {"transition": "gl:fade", "params": {"nope": 1}}, ValueError, "parameter named 'nope'"),
    ("GLSL value of text", {"transition": "gl:CrossZoom", "params": {"strength": "x"}}, TypeError, "must be numbers"),
    ("five GLSL numbers", {"transition": "gl:GridFlip", "params": {"bgcolor": [0] * 5}}, ValueError, "has 5 numbers"),
    ("GLSL picture of a number", {"transition": "gl:displacement", "params": {"displacementMap": 3}}, TypeError,
     "params['displacementMap']"),
    ("GLSL style", {"transition": "gl:fade", "style": 2}, ValueError, "params={name: value}"),
    ("params of the 66", {"params": {"x": 1}}, ValueError, "GLSL collection"),
]


@pytest.mark.parametrize("what, arguments, error, words", APPLY, ids=[c[0] for c in APPLY])
def test_apply_refuses(what, arguments, error, words):
    call = dict({"transition": "Fade", "a": A, "b": B, "position": 0.5}, **arguments)
    with pytest.raises(error) as raised:
        zv.apply(call.pop("transition"), call.pop("a"), call.pop("b"), call.pop("position"), **call)
    assert words in str(raised.value)


SERVICES = [
    ("rgb of 4 channels", lambda: zv.rgb_to_yuv420(np.zeros((4, 4, 4), np.uint8)), ValueError, "(H, W, 3)"),
    ("rgb into another size", lambda: zv.rgb_to_yuv420(np.zeros((4, 6, 3), np.uint8), out=A), ValueError,
     "is 64x48, not 6x4"),
    ("strided rgb out", lambda: zv.yuv420_to_rgb(A, out=np.zeros((48, 64, 3), np.uint8)[::-1]), ValueError,
     "C-contiguous"),
    ("resize to size and out", lambda: zv.resize(A, (8, 8), out=B), TypeError, "either size"),
    ("negative size", lambda: zv.letterbox(A, (-2, 8)), ValueError, "sides must be 0 to 8192"),
    ("size of text", lambda: zv.letterbox(A, "8x8"), TypeError, "size must be a pair"),
    ("interpolation 3", lambda: zv.resize(A, (8, 8), interpolation=3), ValueError, "0 to 2, not 3"),
    ("one aspect", lambda: zv.resize(A, (8, 8), dst_aspect=(4, 3)), TypeError, "go together"),
]


@pytest.mark.parametrize("what, call, error, words", SERVICES, ids=[c[0] for c in SERVICES])
def test_services_refuse(what, call, error, words):
    with pytest.raises(error) as raised:
        call()
    assert words in str(raised.value)
