#!/usr/bin/env bash
# Installs the build tree under a scratch prefix and imports the module from
# there, where `cmake --install` put it among the interpreter's packages: it
# must find the library in the prefix's library folder, not in the build tree.
# usage: install_test.sh BUILD_DIR WORK_DIR PYTHON
set -euo pipefail
build=$1 work=$2 python=$3
rm -rf "$work"
cmake --install "$build" --prefix "$work" >/dev/null
module=$(find "$work" -name 'zvtransition*.so')
cd "$work"  # not where a built module lies
PYTHONPATH=$(dirname "$module") "$python" - "$work" <<'END'
import sys

import numpy as np
import zvtransition as zv

a, b = np.full((72, 64), 40, np.uint8), np.full((72, 64), 200, np.uint8)
assert zv.__file__.startswith(sys.argv[1]), zv.__file__
assert (zv.apply("Fade", a, b, 1.0) == b).all(), "Fade at its end is not b"
libraries = [line.split()[-1] for line in open("/proc/self/maps") if "libZvTransition.so" in line]
assert libraries and all(path.startswith(sys.argv[1]) for path in libraries), libraries
print("imported from", zv.__file__)
END
