"""zvtran catalogue --json: the 66 transitions against the expected catalogue (ids, names, styles, labels), and the
GLSL collection's section (names, authors, licences, parameters)."""
import json
import subprocess
import sys

zvtran, expected_path = sys.argv[1], sys.argv[2]
catalogue = json.loads(subprocess.run([zvtran, "catalogue", "--json"], check=True, capture_output=True).stdout)
got = catalogue["transitions"]
expected = json.load(open(expected_path))
for entry in got:
    assert isinstance(entry.pop("implemented"), bool), entry
for g, e in zip(got, expected):
    if g != e:
        sys.exit(f"id {e['id']}: got {g}, expected {e}")
if len(got) != len(expected):
    sys.exit(f"{len(got)} entries, expected {len(expected)}")

collection = catalogue["glsl_transitions"]
licences = {}
for t in collection:
    if t["id"] != "gl:" + t["name"] or not t["author"] or not isinstance(t["params"], list):
        sys.exit(f"malformed entry {t}")
    licences[t["license"]] = licences.get(t["license"], 0) + 1
    for p in t["params"]:
        default = p["default"]
        if p["type"] == "sampler2D":
            ok = default is None
        elif p["type"] in ("vec2", "vec3", "vec4", "ivec2"):
            ok = isinstance(default, list) and len(default) == int(p["type"][-1])
        else:
            ok = isinstance(default, {"bool": bool, "int": int, "float": (int, float)}[p["type"]])
        if not ok:
            sys.exit(f"{t['name']}: parameter {p} has a default that does not fit its type")
if len(collection) != 125 or licences != {"MIT": 123, "BSD 2 Clause": 1, "BSD 3 Clause": 1}:
    sys.exit(f"{len(collection)} GLSL transitions, licences {licences}")
print("catalogue: 66 entries as expected, 125 GLSL transitions (123 MIT, 2 BSD)")
