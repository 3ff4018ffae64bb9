#!/usr/bin/env python3
"""Kdenlive's side of the module: its descriptors, and a project with one of the
compositions between two clips rendered as Kdenlive's render job renders it.

Every descriptor must name a service melt lists. The project is written as
Kdenlive 22.12 saves one, with the style its descriptor lists under a name; the
render job adds a consumer to it and runs `melt -progress` on it. The middle
frame of the composition must be what `zvtran apply` draws with that style
(its index in the catalogue), and the clips around it must show through
unchanged.

usage: kdenlive_project_test.py WORKDIR ZVTRAN DESCRIPTORS [MODULE YAML_DIR MLT_MODULE_DIR MLT_DATA_DIR]

Without the last four, melt uses MLT and the module as installed."""
import json
import os
import shutil
import sys
import xml.etree.ElementTree as ET

from melt_support import FPS, TOLERANCE, check_frame, decode, make_clips, melt_env, run, zvtran_apply


SIZE = (160, 120)
CLIP = 50           # frames of each clip: A on V1 from frame 0, B on V2 from frame START
START, N = 25, 25   # the composition spans the overlap: frames START to START + N - 1
SERVICE, STYLE_NAME = "zv_fade", "Left to Right"


def clock(frames):
    """A time as Kdenlive writes it: hours, minutes, seconds and milliseconds."""
    seconds = frames / FPS
    return f"{int(seconds // 3600):02d}:{int(seconds // 60 % 60):02d}:{seconds % 60:06.3f}"


def element(parent, tag, properties=(), **attributes):
    node = ET.SubElement(parent, tag, {k: str(v) for k, v in attributes.items()})
    for name, value in properties:
        prop = ET.SubElement(node, "property", name=name)
        prop.text = str(value)
    return node


def listed_style(descriptors, env):
    """Checks that every descriptor names a service melt lists; the value the
    Fade descriptor's style list stores for STYLE_NAME, as Kdenlive saves it."""
    listed = run(["melt", "-query", "transitions"], env=env).stdout
    names = sorted(f for f in os.listdir(descriptors) if f.startswith("zv_"))
    tags = [ET.parse(os.path.join(descriptors, f)).getroot().get("tag") for f in names]
    missing = [tag for tag in tags if f"  - {tag}\n" not in listed]
    if len(tags) != 66 or missing:
        sys.exit(f"{len(tags)} descriptors; services melt does not list: {missing}")
    style = ET.parse(os.path.join(descriptors, SERVICE + ".xml")).find("parameter[@name='style']")
    values, shown = style.get("paramlist").split(";"), style.find("paramlistdisplay").text.split(",")
    if len(values) != 8 or len(shown) != 8 or STYLE_NAME not in shown:
        sys.exit(f"{SERVICE}'s style list: {values} shown as {shown}")
    return values[shown.index(STYLE_NAME)]


def project(work, clips, style):
    """The project as Kdenlive 22.12 saves one: the bin, a track per clip (two
    playlists in a tractor each), and the timeline's tractor holding the
    composition and Kdenlive's own compositing and audio services."""
    mlt = ET.Element("mlt", LC_NUMERIC="C", producer="main_bin", version="7.12.0", root=work)
    element(mlt, "profile", description="zv test", width=SIZE[0], height=SIZE[1], progressive=1,
            sample_aspect_num=1, sample_aspect_den=1, display_aspect_num=4, display_aspect_den=3,
            frame_rate_num=FPS, frame_rate_den=1, colorspace=601)
    out = clock(CLIP - 1)
    for k, name in enumerate(("a", "b")):
        element(mlt, "producer", [("length", CLIP), ("eof", "pause"), ("resource", os.path.basename(clips[name])),
                                  ("audio_index", 0), ("video_index", 0), ("mute_on_pause", 1),
                                  ("mlt_service", "avformat-novalidate"), ("kdenlive:clipname", name + ".mp4"),
                                  ("kdenlive:folderid", -1), ("kdenlive:id", k + 2), ("kdenlive:clip_type", 2)],
                id=f"producer{k}", **{"in": clock(0), "out": out})
    bin_ = element(mlt, "playlist", [("kdenlive:docproperties.activeTrack", 1),
                                     ("kdenlive:docproperties.audioTarget", -1),
                                     ("kdenlive:docproperties.compositing", 1),
                                     ("kdenlive:docproperties.kdenliveversion", "22.12.3"),
                                     ("kdenlive:docproperties.version", "1.04"),
                                     ("kdenlive:docproperties.videoTarget", -1),
                                     ("kdenlive:docproperties.zoneout", START + CLIP),
                                     ("xml_retain", 1)], id="main_bin")
    for k in range(2):
        element(bin_, "entry", producer=f"producer{k}", **{"in": clock(0), "out": out})
    element(mlt, "producer", [("length", 2147483647), ("eof", "continue"), ("resource", "black"),
                              ("aspect_ratio", 1), ("mlt_service", "color"), ("mlt_image_format", "rgba"),
                              ("set.test_audio", 0)], id="black_track", **{"in": clock(0), "out": clock(START + CLIP)})
    for k in range(2):  # V1 holds A from the start, V2 holds B from START
        clip_list = element(mlt, "playlist", id=f"playlist{2 * k}")
        if k:
            element(clip_list, "blank", length=clock(START))
        element(clip_list, "entry", [("kdenlive:id", k + 2)], producer=f"producer{k}", **{"in": clock(0), "out": out})
        element(mlt, "playlist", id=f"playlist{2 * k + 1}")
        track = element(mlt, "tractor", [("kdenlive:trackheight", 100), ("kdenlive:timeline_active", ""),
                                         ("kdenlive:collapsed", 0), ("kdenlive:thumbs_format", ""),
                                         ("kdenlive:audio_rec", "")],
                        id=f"tractor{k}", **{"in": clock(0), "out": clock(k * START + CLIP - 1)})
        for half in range(2):
            element(track, "track", hide="audio", producer=f"playlist{2 * k + half}")
    timeline = element(mlt, "tractor", id="tractor2", **{"in": clock(0), "out": clock(START + CLIP)})
    for producer in ("black_track", "tractor0", "tractor1"):
        element(timeline, "track", producer=producer)
    element(timeline, "transition", [("a_track", 1), ("b_track", 2), ("mlt_service", SERVICE),
                                     ("kdenlive_id", SERVICE), ("style", style)],
            id="transition0", **{"in": clock(START), "out": clock(START + N - 1)})
    for track in (1, 2):
        element(timeline, "transition", [("a_track", 0), ("b_track", track), ("compositing", 0), ("distort", 0),
                                         ("rotate_center", 0), ("mlt_service", "qtblend"), ("always_active", 1),
                                         ("internal_added", 237)], id=f"transition{track}")
    element(timeline, "filter", [("window", 75), ("max_gain", "20dB"), ("mlt_service", "volume"),
                                 ("internal_added", 237), ("disable", 1)], id="filter0")
    element(timeline, "filter", [("channel", -1), ("mlt_service", "panner"), ("internal_added", 237),
                                 ("start", 0.5), ("disable", 1)], id="filter1")
    return mlt


def render_playlist(mlt, target, last):
    """What the render job hands melt: the project with the render's consumer
    after the profile, and every playlist closing at its end."""
    consumer = ET.Element("consumer", mlt_service="avformat", target=target, f="mp4", vcodec="libx264", qp="0",
                          an="1", real_time="-1", threads="0", out=str(last), **{"in": "0"})
    mlt.insert(1, consumer)
    for playlist in mlt.iter("playlist"):
        playlist.set("autoclose", "1")
    return mlt


def write(mlt, path):
    ET.indent(mlt, space=" ")
    ET.ElementTree(mlt).write(path, encoding="utf-8", xml_declaration=True)


def main():
    work, zvtran, descriptors = sys.argv[1:4]
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(work)
    env = melt_env(work, *sys.argv[4:8]) if len(sys.argv) == 8 else None
    clips = make_clips(work, SIZE, CLIP / FPS)
    saved = project(work, clips, listed_style(descriptors, env))
    write(saved, os.path.join(work, "project.kdenlive"))

    last = START + CLIP - 1
    playlist, target = os.path.join(work, "render.mlt"), os.path.join(work, "render.mp4")
    write(render_playlist(saved, target, last), playlist)
    run(["melt", "-progress", playlist, f"out={last}"], env=env)

    frames, a, b = decode(target, SIZE), decode(clips["a"], SIZE), decode(clips["b"], SIZE)
    if len(frames) != last + 1:
        sys.exit(f"the render has {len(frames)} frames, not {last + 1}")
    middle = N // 2
    catalogue = json.loads(run([zvtran, "catalogue", "--json"]).stdout)["transitions"]
    fade = next(t for t in catalogue if t["name"] == "Fade")
    style = fade["styles"].index(STYLE_NAME)
    want = zvtran_apply(zvtran, work, fade["id"], style, a[START + middle], b[middle], SIZE, middle / (N - 1))
    check_frame(f"{SERVICE} '{STYLE_NAME}': middle frame vs zvtran apply", frames[START + middle], want, SIZE)
    check_frame("before the composition: A", frames[START // 2], a[START // 2], SIZE, TOLERANCE)
    check_frame("after the composition: B", frames[START + N + 5], b[N + 5], SIZE, TOLERANCE)


if __name__ == "__main__":
    main()
