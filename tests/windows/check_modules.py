#!/usr/bin/env python3
"""Reads the export and import tables of the cross-built 32-bit modules with
objdump -p and checks them:

- ZvTransition.dll exports exactly the library's functions under their
  decorated names (the names an MSVC-built host imports, and the plain stdcall
  names), and no internal symbol;
- zvCtrls.dll exports the string loader under the name the library looks up;
- every module needs nothing beside the system's DLLs and the host's own
  modules (the compiler's runtime is linked in).

usage: check_modules.py OBJDUMP BIN_DIR [--print-imports]
"""
import re
import subprocess
import sys

# The library's exports, as an MSVC-built 32-bit host declaring them in C++
# names them (callee-cleans: YG).
MSVC_EXPORTS = {
    "?zvTranInit@@YGHXZ",
    "?zvTranGetStyleCount@@YGHH@Z",
    "?zvTranGetStyleName@@YGPAPBDH@Z",
    "?zvTranGetParamExplain@@YGPAUzvTarnParamExplain@@H@Z",
    "?zvTranGetParamExplain@@YGPAUzvTarnParamExplain@@PBD@Z",
    "?Rgb24_2_yuv420@@YGXPAE00HHHPBUtagBITMAPINFOHEADER@@PBE@Z",
    "?Yuv420_2_rgb24@@YGXPBUtagBITMAPINFOHEADER@@PAEPBE22HHH@Z",
    "?zvImageResize@@YGHPAVImage@@0W4IMAGE_INTERPOLATION@@W4IMAGE_RESIZE_METHOD@@@Z",
    "?zvImageResize@@YGHPAVImage@@HH0HHW4IMAGE_INTERPOLATION@@W4IMAGE_RESIZE_METHOD@@@Z",
    "?DIB_Resize@@YGHPBUtagImgParam@@PAU1@W4IMAGE_INTERPOLATION@@@Z",
    "?zvTranRound@@YGHPAVImage@@00PAX@Z",
    "?zvTransparentOverlap@@YGHPAVImage@@00PAUTransitionParams@@@Z",
    "?ZvFreeOpenGLObj@@YGXXZ",
}
# The plain stdcall names: underscore, name, @ and the bytes of arguments.
PLAIN_EXPORTS = {
    "_zvTranInit@0",
    "_zvTranGetStyleCount@4",
    "_zvTranGetStyleName@4",
    "_Rgb24_2_yuv420@32",
    "_Yuv420_2_rgb24@32",
    "_zvImageResize@16",
    "_zvImageResize@32",
    "_DIB_Resize@12",
    "_zvTranRound@16",
    "_zvTransparentOverlap@16",
    "_ZvFreeOpenGLObj@0",
}
LOADER_EXPORT = "?ZvLoadString@@YGPBDIPAX@Z"

SYSTEM_DLLS = {"kernel32.dll", "msvcrt.dll", "gdi32.dll", "user32.dll", "opengl32.dll", "glu32.dll"}
HOST_DLLS = {"zorvan.dll", "zvsuppt.dll"}
MODULES = ["ZvTransition.dll", "zorvan.dll", "zvSuppt.dll", "zvCtrls.dll", "zv_host_compare.exe"]


def tables(objdump, path):
    text = subprocess.run([objdump, "-p", path], check=True, capture_output=True, text=True).stdout
    exports = set()
    in_names = False
    for line in text.splitlines():
        if "[Ordinal/Name Pointer] Table" in line:
            in_names = True
            continue
        if in_names:
            m = re.match(r"\s*\[\s*\d+\]\s+(\S+)", line)
            if not m:
                in_names = False
                continue
            exports.add(m.group(1))
    # Imports: "DLL Name: X" followed by hint/name rows.
    imports = {}
    current = None
    for line in text.splitlines():
        m = re.match(r"\s*DLL Name:\s*(\S+)", line)
        if m:
            current = m.group(1)
            imports[current] = []
            continue
        m = re.match(r"\s*[0-9a-f]+\s+[0-9a-f]+\s+(\S+)$", line)
        if current and m and not line.strip().startswith("vma"):
            imports[current].append(m.group(1))
        elif current and not line.strip():
            current = None
    return exports, imports


def main():
    objdump, bin_dir = sys.argv[1], sys.argv[2]
    failures = []
    library_exports, library_imports = tables(objdump, f"{bin_dir}/ZvTransition.dll")
    for name in sorted((MSVC_EXPORTS | PLAIN_EXPORTS) - library_exports):
        failures.append(f"ZvTransition.dll does not export {name}")
    for name in sorted(library_exports - MSVC_EXPORTS - PLAIN_EXPORTS):
        failures.append(f"ZvTransition.dll exports an internal symbol: {name}")

    loader_exports, _ = tables(objdump, f"{bin_dir}/zvCtrls.dll")
    if LOADER_EXPORT not in loader_exports:
        failures.append(f"zvCtrls.dll does not export {LOADER_EXPORT}")

    for module in MODULES:
        _, imports = tables(objdump, f"{bin_dir}/{module}")
        for dll in imports:
            if dll.lower() not in SYSTEM_DLLS | HOST_DLLS:
                failures.append(f"{module} needs {dll}")

    if "--print-imports" in sys.argv:
        for dll, names in sorted(library_imports.items()):
            if dll.lower() in HOST_DLLS:
                print(f"{dll}:")
                for name in sorted(names):
                    print(f"  {name}")

    for failure in failures:
        print(failure)
    if failures:
        return 1
    print(f"ZvTransition.dll: {len(library_exports)} exports, all expected; "
          f"{len(MODULES)} modules need only system DLLs and the host's modules")
    return 0


if __name__ == "__main__":
    sys.exit(main())
