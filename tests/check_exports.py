#!/usr/bin/env python3
"""The shared library exports its documented interface and nothing else: every
defined dynamic symbol is one of the README's exports (or the string table the
host's string loader reads), and every export is there.

usage: check_exports.py LIBRARY"""
import subprocess
import sys

EXPORTS = {
    "zvTranInit()": 1,
    "zvTranGetStyleCount(int)": 1,
    "zvTranGetStyleName(int)": 1,
    "zvTranGetParamExplain(int)": 1,
    "zvTranGetParamExplain(char const*)": 1,
    "Rgb24_2_yuv420": 1,
    "Yuv420_2_rgb24": 1,
    "zvImageResize(Image*, Image*,": 1,
    "zvImageResize(Image*, int,": 1,
    "DIB_Resize": 1,
    "zvTranRound": 1,
    "zvTransparentOverlap": 1,
    "ZvFreeOpenGLObj()": 1,
    "zvGlTranCount()": 1,
    "zvGlTranInfo(int)": 1,
    "zvGlTranFind(char const*)": 1,
    "zvGlTranCheck(int,": 1,
    "zvGlTranApply(int,": 1,
    "zvGlTranError()": 1,
    "zv_string_resources": 1,
}

lines = subprocess.run(["nm", "-D", "--defined-only", "-C", sys.argv[1]], stdout=subprocess.PIPE, text=True,
                       check=True).stdout.splitlines()
symbols = [line.split(" ", 2)[2] for line in lines if line.count(" ") >= 2]
unexpected = [s for s in symbols if not any(s.startswith(e) for e in EXPORTS)]
missing = [e for e in EXPORTS if not any(s.startswith(e) for s in symbols)]
for s in unexpected:
    print("exported but not part of the interface:", s)
for e in missing:
    print("missing export:", e)
sys.exit(1 if unexpected or missing else 0)
