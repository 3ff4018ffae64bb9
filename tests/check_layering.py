#!/usr/bin/env python3
"""Fails when a file of a product folder includes a folder above its own.

usage: check_layering.py SOURCE_DIR
"""
import pathlib
import re
import sys

# Lowest first; the programs and tests sit on top of them all.
ORDER = ["host", "resources", "frame", "imaging", "wipes", "blends", "gl", "effects3d"]
TOP = ["cli", "mlt", "python", "fuzz", "tests", "bench", "tools"]
RANK = {folder: rank for rank, folder in enumerate(ORDER)}
RANK.update(dict.fromkeys(TOP, len(ORDER)))
# Registration is the one file that sees every family.
ALLOWED = {"frame/registration.cpp"}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"/]+)/', re.M)


def main():
    root = pathlib.Path(sys.argv[1])
    upward = []
    for folder in ORDER:
        for path in sorted((root / folder).rglob("*")):
            name = path.relative_to(root).as_posix()
            if not path.is_file() or name in ALLOWED:
                continue
            for target in INCLUDE.findall(path.read_text(errors="replace")):
                if RANK.get(target, -1) > RANK[folder]:
                    upward.append(f"{name} includes {target}/")
    print("\n".join(upward) or f"no upward include in {', '.join(ORDER)}")
    return 1 if upward else 0


if __name__ == "__main__":
    sys.exit(main())
