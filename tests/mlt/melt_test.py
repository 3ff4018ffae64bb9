#!/usr/bin/env python3
"""The MLT module as melt uses it: the services and their metadata, renders of
one transition per family (and of one GLSL transition with a parameter set)
compared with what `zvtran apply` draws, and easing.

usage: melt_test.py WORKDIR MODULE YAML_DIR MLT_MODULE_DIR MLT_DATA_DIR ZVTRAN [--sanitize PRELOAD]

With --sanitize (a build with AddressSanitizer) it only renders wrong styles
and parameters through a software and an OpenGL transition, with the sanitizer
runtime preloaded into melt."""
import os
import shutil
import subprocess
import sys

from melt_support import (FPS, LUMA_TOLERANCE, TOLERANCE, check_frame, decode, make_clips, melt_env, run,
                          zvtran_apply)

W, H, N = 160, 120, 25  # the transition spans N frames: 1 s
SIZE = (W, H)
# One transition per family: service, what zvtran applies, style, whether its
# last frame is B itself (the cube ends on B's face drawn through its square
# texture, close to B but not equal), and the service's parameters by name.
FAMILIES = [("zv_line_based_wipe", 1, 3, True, {}), ("zv_fade", 14, 0, True, {}), ("zv_3d_door", 59, 1, True, {}),
            ("zv_3d_cube", 57, 0, False, {}), ("zvgl_circleopen", "gl:circleopen", 0, True, {"smoothness": "0.1"})]


def main():
    work, module, yaml_dir, mlt_modules, mlt_data, zvtran = sys.argv[1:7]
    preload = sys.argv[8] if len(sys.argv) > 8 and sys.argv[7] == "--sanitize" else None
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(work)
    env = melt_env(work, module, yaml_dir, mlt_modules, mlt_data)
    profile = os.path.join(work, "profile")
    with open(profile, "w") as f:
        f.write(f"description=zv test\nwidth={W}\nheight={H}\nprogressive=1\nsample_aspect_num=1\nsample_aspect_den=1\n"
                f"display_aspect_num={W}\ndisplay_aspect_den={H}\nframe_rate_num={FPS}\nframe_rate_den=1\n"
                "colorspace=601\n")
    clips = make_clips(work, SIZE)

    def melt(service, extra, out, melt_env):
        run(["melt", "-profile", profile, clips["a"], "in=0", f"out={N - 1}", "-track", clips["b"], "in=0",
             f"out={N - 1}", "-transition", service, "in=0", f"out={N - 1}", "a_track=0", "b_track=1", *extra,
             "-consumer", f"avformat:{out}", "vcodec=libx264", "qp=0", "an=1", "real_time=-1",
             "terminate_on_pause=1"], env=melt_env)

    if preload:
        asan_env = dict(env, LD_PRELOAD=preload, ASAN_OPTIONS="detect_leaks=0:abort_on_error=1")
        for service in ("zv_blind_based_wipe", "zv_3d_cube"):
            melt(service, ["style=99", "param1=-7", "param2=nan", "easing=cubic-bezier(2,0,1,1)"],
                 os.path.join(work, service + ".mp4"), asan_env)
        melt("zvgl_luma", ["luma=" + os.path.join(work, "missing.png"), "easing=nope"],
             os.path.join(work, "luma.mp4"), asan_env)
        melt("zvgl_directional", ["direction=1,nan,3", "easing=ease-in"], os.path.join(work, "dir.mp4"), asan_env)
        print("wrong styles, parameters and easings through melt under AddressSanitizer: no fault")
        return

    # Every transition is a service, the 66 and the GLSL collection's, and
    # editors see its styles and labels, or its typed parameters.
    services = sorted(f[len("transition_"):-4] for f in os.listdir(yaml_dir))
    listed = run(["melt", "-query", "transitions"], env=env).stdout
    missing = [s for s in services if f"  - {s}\n" not in listed]
    collection = [s for s in services if s.startswith("zvgl_")]
    if len(services) != 66 + 125 or len(collection) != 125 or listed.count("  - zvgl_") != 125 or missing:
        sys.exit(f"{len(services)} services ({len(collection)} zvgl_), not listed by melt: {missing}")
    for service, texts in (("zvgl_directional", ("identifier: direction", "vec2", "Gaëtan Renaudeau (MIT")),
                           ("zvgl_luma", ("identifier: luma", "fileurl")),
                           ("zvgl_invertedpagecurl", ("BSD 3 Clause",)), ("zvgl_box", ("type: integer",)),
                           ("zv_fade", ("identifier: easing", "ease-in-out"))):
        query = run(["melt", "-query", "transition=" + service], env=env).stdout
        for text in texts:
            if text not in query:
                sys.exit(f"melt -query transition={service} lacks {text!r}:\n{query}")
    fade = run(["melt", "-query", "transition=zv_fade"], env=env).stdout
    for text in ("title: Fade", "identifier: style", "Normal Switch", "Fade out&in", "Bottom to Top"):
        if text not in fade:
            sys.exit(f"melt -query transition=zv_fade lacks {text!r}:\n{fade}")
    mosaic = run(["melt", "-query", "transition=zv_mosaic_based_wipe"], env=env).stdout
    if "Mosaic X" not in mosaic or "Mosaic Y" not in mosaic:
        sys.exit(f"the Mosaic labels are missing:\n{mosaic}")

    # A wrong style is reported and clamped; the render goes on.
    result = subprocess.run(["melt", "-profile", profile, clips["a"], "in=0", "out=4", "-track", clips["b"], "in=0",
                             "out=4", "-transition", "zv_fade", "in=0", "out=4", "a_track=0", "b_track=1",
                             "style=42", "param2=nan", "-consumer", "null", "real_time=-1", "terminate_on_pause=1"],
                            env=env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            text=True, timeout=240)
    if result.returncode != 0 or "out of range" not in result.stderr:
        sys.exit(f"wrong style: rc {result.returncode}\n{result.stderr[-2000:]}")

    # A parameter that does not fit is reported, and its default used.
    result = subprocess.run(["melt", "-profile", profile, clips["a"], "in=0", "out=4", "-track", clips["b"], "in=0",
                             "out=4", "-transition", "zvgl_directional", "in=0", "out=4", "a_track=0", "b_track=1",
                             "direction=1", "easing=sudden", "-consumer", "null", "real_time=-1",
                             "terminate_on_pause=1"], env=env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, text=True, timeout=240)
    for text in ("Directional: parameter direction (vec2) takes 2 numbers, not 1; using its default",
                 'easing "sudden" is not one of'):
        if result.returncode != 0 or text not in result.stderr:
            sys.exit(f"wrong parameter: rc {result.returncode}, no {text!r} in\n{result.stderr[-2000:]}")

    a, b = decode(clips["a"], SIZE), decode(clips["b"], SIZE)
    for service, op, style, b_at_end, settings in FAMILIES:
        out = os.path.join(work, service + ".mp4")
        sets = [f"{name}={value}" for name, value in settings.items()]
        melt(service, [f"style={style}"] + sets, out, env)
        frames = decode(out, SIZE)
        if len(frames) != N:
            sys.exit(f"{service}: {len(frames)} frames, not {N}")
        check_frame(f"{service}: first frame vs A", frames[0], a[0], SIZE, TOLERANCE)
        if b_at_end:
            check_frame(f"{service}: last frame vs B", frames[N - 1], b[N - 1], SIZE, TOLERANCE)
        for i in (0, N // 2, N - 1):
            extra = [word for s in sets for word in ("--set", s)]
            want = zvtran_apply(zvtran, work, op, style, a[i], b[i], SIZE, i / (N - 1), extra)
            check_frame(f"{service}: frame {i} vs zvtran apply", frames[i], want, SIZE, LUMA_TOLERANCE)

    # Easing: half way through, ease-in shows the progress 0.125; a cubic-bezier on
    # the diagonal draws exactly what linear draws.
    for service, op in (("zv_fade", 14), ("zvgl_fade", "gl:fade")):
        frames = {}
        for easing in ("linear", "ease-in", "cubic-bezier(0.2,0.2,0.6,0.6)"):
            out = os.path.join(work, f"{service}-{easing[:8]}.mp4")
            melt(service, ["style=0", "easing=" + easing], out, env)
            frames[easing] = decode(out, SIZE)
        if frames["cubic-bezier(0.2,0.2,0.6,0.6)"] != frames["linear"]:
            sys.exit(f"{service}: a cubic-bezier on the diagonal does not draw what linear draws")
        i = N // 2
        want = zvtran_apply(zvtran, work, op, 0, a[i], b[i], SIZE, 0.125)
        check_frame(f"{service}: ease-in half way vs zvtran apply at 0.125", frames["ease-in"][i], want, SIZE)


if __name__ == "__main__":
    main()
