"""What the melt tests share: running programs, MLT's folders with the module
added, test clips, decoding, and what `zvtran apply` draws for a frame."""
import os
import subprocess
import sys

FPS = 25
# Mean absolute differences per sample that MLT's conversions add: the encoder is
# lossless, but MLT hands the consumer 4:2:2 and resamples the chroma. Luma
# comes through untouched, so it must match what zvtran draws nearly exactly.
TOLERANCE, LUMA_TOLERANCE = 2.0, 0.25


def run(cmd, env=None, **kw):
    result = subprocess.run(cmd, env=env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            text=True, timeout=240, **kw)
    if result.returncode != 0:
        sys.exit(f"failed ({result.returncode}): {' '.join(cmd)}\n{result.stdout[-3000:]}\n{result.stderr[-3000:]}")
    return result


def farm(target, sources, extra):
    """A folder linking every entry of `sources` plus `extra`: MLT reads one
    folder each for modules and data, and the variables replace its own."""
    os.makedirs(target)
    for name in os.listdir(sources):
        os.symlink(os.path.join(sources, name), os.path.join(target, name))
    for path in extra:
        os.symlink(path, os.path.join(target, os.path.basename(path)))


def melt_env(work, module, yaml_dir, mlt_modules, mlt_data):
    """The environment in which melt loads the module of the build tree beside MLT's own."""
    farm(os.path.join(work, "modules"), mlt_modules, [module])
    farm(os.path.join(work, "data"), mlt_data, [yaml_dir])
    return dict(os.environ, MLT_REPOSITORY=os.path.join(work, "modules"), MLT_DATA=os.path.join(work, "data"))


def make_clips(work, size, seconds=2):
    """Two lossless H.264 clips of moving test patterns: a.mp4 and b.mp4."""
    clips = {}
    for name, source in (("a", "testsrc"), ("b", "testsrc2")):
        clips[name] = os.path.join(work, name + ".mp4")
        run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"{source}=size={size[0]}x{size[1]}:rate={FPS}:"
             f"duration={seconds}", "-pix_fmt", "yuv420p", "-c:v", "libx264", "-qp", "0", clips[name]])
    return clips


def decode(path, size):
    frame = size[0] * size[1] * 3 // 2
    raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "rawvideo", "-pix_fmt", "yuv420p", "-"],
                         stdout=subprocess.PIPE, check=True).stdout
    return [raw[i:i + frame] for i in range(0, len(raw), frame)]


def mean_diff(x, y):
    return sum(abs(p - q) for p, q in zip(x, y)) / len(x)


def zvtran_apply(zvtran, work, op, style, a, b, size, position, extra=()):
    """What `zvtran apply` draws from frames a and b at `position` of a 1 s transition (`extra`: more options)."""
    paths = [os.path.join(work, name + ".yuv") for name in ("apply_a", "apply_b", "apply_out")]
    for path, frame in zip(paths, (a, b)):
        with open(path, "wb") as f:
            f.write(frame)
    dims = f"{size[0]}x{size[1]}"
    run([zvtran, "apply", str(op), "--a", paths[0], "--a-size", dims, "--b", paths[1], "--b-size", dims,
         "--out", paths[2], "--out-size", dims, "--style", str(style), "--duration", "1", "--position", str(position),
         *extra])
    with open(paths[2], "rb") as f:
        return f.read()


def check_frame(label, got, want, size, luma_tolerance=LUMA_TOLERANCE):
    """Exits naming `label` when `got` differs from `want` beyond the tolerances."""
    d, luma = mean_diff(got, want), mean_diff(got[:size[0] * size[1]], want[:size[0] * size[1]])
    print(f"{label}: mean difference {d:.3f}, luma {luma:.3f}")
    if d > TOLERANCE or luma > luma_tolerance:
        sys.exit(f"{label} differs by {d:.3f} per sample, {luma:.3f} in luma")
