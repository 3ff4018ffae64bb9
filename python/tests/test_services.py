"""The picture services against zvtran's calls of the same services."""
import numpy as np
import pytest
import zvtransition as zv
from conftest import random_frame, raw, zvtran, zvtran_apply

SIZES = [(64, 48), (37, 21), (6, 4)]


def bitmap(rgb):
    """RGB rows as a 24-bit bitmap's bytes: bottom-up rows of blue, green, red, padded to 4 bytes."""
    height, width, _ = rgb.shape
    rows = np.zeros((height, (3 * width + 3) // 4 * 4), np.uint8)
    rows[:, : 3 * width] = rgb[::-1, :, ::-1].reshape(height, 3 * width)
    return rows.tobytes()


@pytest.mark.parametrize("width, height", SIZES)
def test_rgb_conversions_give_zvtrans_bytes(width, height, tmp_path):
    rgb = np.random.default_rng(1).integers(0, 256, (height, width, 3), np.uint8)
    frame = random_frame(width, height, 2)
    (tmp_path / "in.bmp").write_bytes(bitmap(rgb))
    (tmp_path / "in.yuv").write_bytes(raw(frame))
    sizes = ["--bmp-width", width, "--bmp-height", height]
    zvtran("rgb2yuv", "--bmp", tmp_path / "in.bmp", *sizes, "--out", tmp_path / "out.yuv", "--out-size",
           f"{width}x{height}")
    zvtran("yuv2rgb", "--in", tmp_path / "in.yuv", "--in-size", f"{width}x{height}", *sizes, "--out",
           tmp_path / "out.bmp")
    assert raw(zv.rgb_to_yuv420(rgb)) == (tmp_path / "out.yuv").read_bytes()
    assert bitmap(zv.yuv420_to_rgb(frame)) == (tmp_path / "out.bmp").read_bytes()


@pytest.mark.parametrize("interpolation", [zv.NEAREST, zv.BILINEAR, zv.CUBIC])
@pytest.mark.parametrize("method, source, target, aspects", [
    (zv.STRETCH, (64, 48), (40, 30), None),
    (zv.KEEP_ASPECT, (64, 36), (48, 48), None),
    (zv.KEEP_ASPECT, (64, 48), (64, 48), ((4, 3), (16, 9))),
    (zv.FIT_16_9, (37, 21), (48, 40), None),
    (zv.FIT_4_3, (48, 48), (33, 25), None),
    (zv.CENTRE, (32, 24), (64, 48), None),
    (zv.TILE, (20, 14), (64, 48), None),
])
def test_resize_gives_zvtrans_bytes(interpolation, method, source, target, aspects, tmp_path):
    frame = random_frame(*source, seed=1)
    (tmp_path / "in.yuv").write_bytes(raw(frame))
    options = ["--dst-aspect", "%d:%d" % aspects[0], "--src-aspect", "%d:%d" % aspects[1]] if aspects else []
    zvtran("resize", "--src", tmp_path / "in.yuv", "--src-size", "%dx%d" % source, "--out", tmp_path / "out.yuv",
           "--out-size", "%dx%d" % target, "--interpolation", interpolation, "--method", method, *options)
    keywords = dict(zip(("dst_aspect", "src_aspect"), aspects or ()))
    got = zv.resize(frame, target, interpolation=interpolation, method=method, **keywords)
    assert raw(got) == (tmp_path / "out.yuv").read_bytes()


# Pillarbox, letterbox, a picture smaller both ways, odd sizes; into a new frame (zeros) and into a given one.
@pytest.mark.parametrize("source, target", [((72, 58), (72, 48)), ((72, 40), (72, 58)), ((32, 24), (72, 58)),
                                            ((37, 21), (33, 25))])
@pytest.mark.parametrize("given", [False, True])
def test_letterbox_gives_zvtrans_bytes(source, target, given, tmp_path):
    frame, start = random_frame(*source, seed=1), random_frame(*target, seed=2)
    if not given:
        start = tuple(np.zeros_like(p) for p in start) if isinstance(start, tuple) else np.zeros_like(start)
    _, expected = zvtran_apply(tmp_path, "zvTranRound", frame, frame, start)
    assert raw(zv.letterbox(frame, out=start) if given else zv.letterbox(frame, target)) == expected


@pytest.mark.parametrize("position, param1, param3", [(0.4, 0, 0), (0.7, 0xFF00FF00, 0), (1.0, 0, 0x7F0000),
                                                      (0.0, 0, 0)])
def test_overlap_gives_zvtrans_bytes(position, param1, param3, tmp_path):
    a, b = random_frame(64, 48, 1), random_frame(48, 40, 2)
    _, expected = zvtran_apply(tmp_path, "zvTransparentOverlap", a, b, a, f"--position={position}",
                               f"--param1={param1}", f"--param3={param3}")
    assert raw(zv.overlap(a, b, position, param1=param1, param3=param3)) == expected
