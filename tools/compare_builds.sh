#!/usr/bin/env bash
# Renders every transition and picture service with two builds of the library
# on one fixed set of frames and compares the outputs byte for byte (through
# digests). Each build is a source tree with its build folder:
#   bash tools/compare_builds.sh OLD_SOURCE OLD_BUILD NEW_SOURCE NEW_BUILD
# e.g. after `git worktree add /tmp/old main` and building it in /tmp/old/build.
set -euo pipefail
tool=$(cd "$(dirname "$0")" && pwd)/render_digest.cpp
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
listing() {  # source build name
  g++ -std=c++17 -O1 -I"$1" "$tool" -o "$work/$3" -L"$2/lib" -Wl,-rpath,"$(cd "$2/lib" && pwd)" \
    -lZvTransition -Wl,--no-as-needed -lzvCtrls -lzorvan -lzvSuppt
  "$work/$3" > "$work/$3.txt"
}
listing "$1" "$2" old
listing "$3" "$4" new
echo "$(wc -l < "$work/new.txt") calls"
if diff "$work/old.txt" "$work/new.txt" > "$work/diff.txt"; then
  echo "identical"
else
  head -20 "$work/diff.txt"
  echo "$(grep -c '^<' "$work/diff.txt") calls differ"
  exit 1
fi
