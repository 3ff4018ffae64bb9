"""The README's PyAV example, run on two generated clips, B at another size than A."""
import pathlib
import re
import subprocess
import sys

import av
import numpy as np

README = pathlib.Path(__file__).resolve().parents[2] / "README.md"


def readme_example():
    return next(code for code in re.findall(r"```python\n(.*?)```", README.read_text(), re.S) if "av.open" in code)


def write_clip(path, width, height, luma, frames=30):
    """A clip of one flat grey."""
    with av.open(str(path), "w") as output:
        stream = output.add_stream("libx264", rate=25)
        stream.width, stream.height, stream.pix_fmt = width, height, "yuv420p"
        picture = np.full((height * 3 // 2, width), 128, np.uint8)
        picture[:height] = luma
        for _ in range(frames):
            output.mux(stream.encode(av.VideoFrame.from_ndarray(picture, format="yuv420p")))
        output.mux(stream.encode())


def test_readme_example_writes_the_transition(tmp_path):
    write_clip(tmp_path / "a.mp4", 64, 48, 100)
    write_clip(tmp_path / "b.mp4", 80, 60, 180)
    subprocess.run([sys.executable, "-c", readme_example()], cwd=tmp_path, check=True)
    with av.open(str(tmp_path / "out.mp4")) as clip:
        frames = [frame.to_ndarray(format="yuv420p") for frame in clip.decode(video=0)]
    # One second at 25 frames a second: A, faded out to black, then B faded in.
    assert len(frames) == 25 and frames[0].shape == (72, 64)
    luma = [frame[:48].mean() for frame in frames]
    assert abs(luma[0] - 100) < 3 and abs(luma[-1] - 180) < 3 and min(luma) < 30
    assert luma.index(min(luma)) in range(10, 15)
