"""Whatever Python hands over, a clear exception before the library is called, never a crash."""
import numpy as np
import pytest
import zvtransition as zv
from conftest import random_frame

A, B = random_frame(64, 48, 1), random_frame(64, 48, 2)
Y, U, V = random_frame(64, 48, 3, planes=True)
READ_ONLY = A.copy()
READ_ONLY.flags.writeable = False

# (what, keyword arguments of apply() over the good ones, exception, words of its message)
APPLY = [
    ("uint16 frame", {"a": A.astype(np.uint16)}, ValueError, "dtype uint8"),
    ("float frame", {"b": A.astype(np.float32)}, ValueError, "dtype uint8"),
    ("int8 frame", {"a": A.view(np.int8)}, ValueError, "dtype uint8"),
    ("3-d frame", {"a": A.reshape(72, 32, 2)}, ValueError, "2 dimensions"),
    ("rows not 3 / 2 of a height", {"a": A[:71]}, ValueError, "H * 3 / 2"),
    ("odd width in one array", {"b": np.zeros((72, 63), np.uint8)}, ValueError, "H and W even"),
    ("side past 8192", {"a": np.zeros((3, 8194), np.uint8)}, ValueError, "at most 8192"),
    ("None frame", {"a": None}, TypeError, "NoneType"),
    ("bytes frame", {"b": A.tobytes()}, TypeError, "bytes"),
    ("two planes", {"a": (Y, U)}, TypeError, "three uint8 planes"),
    ("chroma of another size", {"a": (Y, U[:, :31], V)}, ValueError, "(24, 31)"),
    ("plane of another type", {"b": (Y, U, V.astype(np.int16))}, ValueError, "b[2] must have dtype uint8"),
    ("plane of a list", {"b": (Y, U, V.tolist())}, TypeError, "b[2] must be a numpy array"),
    ("read-only out", {"out": READ_ONLY}, ValueError, "read-only"),
    ("strided out", {"out": np.zeros((72, 128), np.uint8)[:, ::2]}, ValueError, "C-contiguous"),
    ("strided out plane", {"out": (Y, U, np.zeros((24, 64), np.uint8)[:, ::2])}, ValueError, "out[2] must be C-"),
    ("id 0", {"transition": 0}, ValueError, "out of range 1-66"),
    ("id 67", {"transition": 67}, ValueError, "out of range 1-66"),
    ("unknown name", {"transition": "Fades"}, ValueError, "unknown transition 'Fades'"),
    ("float id", {"transition": 14.0}, TypeError, "id or a display name"),
    ("None id", {"transition": None}, TypeError, "id or a display name"),
    ("style past Fade's", {"style": 8}, ValueError, "style 8 is out of range for Fade (styles 0-7)"),
    ("negative style", {"style": -1}, ValueError, "style -1 is out of range for Fade"),
    ("style past 32 bits", {"style": 2**32}, ValueError, "does not fit in 32 bits"),
    ("huge param1", {"param1": -2**31 - 1}, ValueError, "param1 -2147483649 does not fit"),
    ("huge param3", {"param3": 10**30}, ValueError, "param3"),
    ("float style", {"style": 1.5}, TypeError, "style must be an integer"),
    ("text position", {"position": "half"}, TypeError, ""),
]


@pytest.mark.parametrize("what, arguments, error, words", APPLY, ids=[c[0] for c in APPLY])
def test_apply_refuses(what, arguments, error, words):
    call = dict({"transition": "Fade", "a": A, "b": B, "position": 0.5}, **arguments)
    with pytest.raises(error) as raised:
        zv.apply(call.pop("transition"), call.pop("a"), call.pop("b"), call.pop("position"), **call)
    assert words in str(raised.value)


# The host contract's answer to what a host may pass: NaN and huge values are the library's to handle.
@pytest.mark.parametrize("position, duration", [(float("nan"), 1.0), (0.5, 0.0), (float("inf"), float("-inf")),
                                                (1e308, 1e-308)])
@pytest.mark.parametrize("transition", [1, 14, 16, 38, 57])
def test_apply_passes_any_number_on(transition, position, duration):
    out = zv.apply(transition, A, B, position, duration=duration, param1=2**31, param2=float("nan"))
    assert out.shape == A.shape


SERVICES = [
    ("rgb of 4 channels", lambda: zv.rgb_to_yuv420(np.zeros((4, 4, 4), np.uint8)), ValueError, "(H, W, 3)"),
    ("rgb of floats", lambda: zv.rgb_to_yuv420(np.zeros((4, 4, 3))), ValueError, "dtype uint8"),
    ("rgb into another size", lambda: zv.rgb_to_yuv420(np.zeros((4, 6, 3), np.uint8), out=A), ValueError,
     "is 64x48, not 6x4"),
    ("rgb out of another size", lambda: zv.yuv420_to_rgb(A, out=np.zeros((48, 63, 3), np.uint8)), ValueError,
     "not 64x48"),
    ("strided rgb out", lambda: zv.yuv420_to_rgb(A, out=np.zeros((48, 64, 3), np.uint8)[::-1]), ValueError,
     "C-contiguous"),
    ("resize to nowhere", lambda: zv.resize(A), TypeError, "either size"),
    ("resize to size and out", lambda: zv.resize(A, (8, 8), out=B), TypeError, "either size"),
    ("negative size", lambda: zv.resize(A, (-2, 8)), ValueError, "sides must be 0 to 8192"),
    ("size of three", lambda: zv.letterbox(A, (8, 8, 8)), ValueError, "size must be a pair of integers"),
    ("size of text", lambda: zv.letterbox(A, "8x8"), TypeError, "size must be a pair"),
    ("interpolation 3", lambda: zv.resize(A, (8, 8), interpolation=3), ValueError, "0 to 2, not 3"),
    ("method -1", lambda: zv.resize(A, (8, 8), method=-1), ValueError, "0 to 5, not -1"),
    ("one aspect", lambda: zv.resize(A, (8, 8), dst_aspect=(4, 3)), TypeError, "go together"),
    ("aspect of floats", lambda: zv.resize(A, (8, 8), dst_aspect=(4, 3.5), src_aspect=(1, 1)), TypeError,
     "dst_aspect[1]"),
    ("overlap into None planes", lambda: zv.overlap(A, (None, None, None), 0.5), TypeError, "b[0]"),
]


@pytest.mark.parametrize("what, call, error, words", SERVICES, ids=[c[0] for c in SERVICES])
def test_services_refuse(what, call, error, words):
    with pytest.raises(error) as raised:
        call()
    assert words in str(raised.value)
