"""zvtran catalogue --json against the expected catalogue (ids, names, styles, labels)."""
import json
import subprocess
import sys

zvtran, expected_path = sys.argv[1], sys.argv[2]
got = json.loads(subprocess.run([zvtran, "catalogue", "--json"], check=True, capture_output=True).stdout)
expected = json.load(open(expected_path))
for entry in got:
    assert isinstance(entry.pop("implemented"), bool), entry
for g, e in zip(got, expected):
    if g != e:
        sys.exit(f"id {e['id']}: got {g}, expected {e}")
if len(got) != len(expected):
    sys.exit(f"{len(got)} entries, expected {len(expected)}")
print("catalogue: 66 entries as expected")
