#!/usr/bin/env bash
# The Debian packages as a user gets them: built from a build with the prefix
# /usr (build-deb), checked by lintian, installed with apt-get, and used with
# no environment variables set: melt lists the 66 services and renders a
# Kdenlive project through zv_fade, hosts build through pkg-config and
# find_package, zvtran and its manual page work, python3 imports the module.
# Then removed with apt-get:
# nothing of them may be left, and the machine must have the packages it had.
# usage: bash tests/packages/deb_test.sh   (as root, or a user with sudo)
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/deps.sh
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
apt_get() { DEBIAN_FRONTEND=noninteractive $sudo apt-get -y -qq "$@" >/dev/null; }
fail() { echo "packages: $*" >&2; exit 1; }

ZV_TARGETS=package zv_build build-deb -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DZV_BUILD_TESTS=OFF -DZV_BUILD_BENCH=OFF
work=$(mktemp -d /tmp/zv-deb-XXXXXX)
chmod 755 "$work"  # apt reads the packages as its own user
cp build-deb/packages/*.deb "$work"
debs=("$work"/*.deb)
names=()
for deb in "${debs[@]}"; do names+=("$(dpkg-deb -f "$deb" Package)"); done
[ ${#names[@]} -eq 5 ] || fail "${#names[@]} packages built: ${names[*]}"
echo "packages: built ${names[*]}"

# Packages present in any state but "not installed", as "NAME:ARCH VERSION STATUS".
listing() {
  dpkg-query -W -f='${Package}:${Architecture} ${Version} ${db:Status-Abbrev}\n' "$@" 2>/dev/null |
    grep -v ' .n *$' | sort || true
}
[ -z "$(listing "${names[@]}")" ] || fail "already installed here, remove them first: $(listing "${names[@]}")"
listing > "$work/before"

if ! said=$(lintian --fail-on error,warning "${debs[@]}" 2>&1); then
  fail "lintian reports errors or warnings:"$'\n'"$said"
fi
echo "packages: lintian reports no error and no warning"

# Whatever happens from here, the machine ends as it was: our packages removed
# (as a user removes them), then whatever is left that it did not have purged.
remove_ours() { [ -z "$(listing "${names[@]}")" ] || apt_get remove "${names[@]}"; }
purge_new() {
  local new
  new=$(comm -13 <(cut -d' ' -f1 "$work/before") <(listing | cut -d' ' -f1) | cut -d: -f1)
  # shellcheck disable=SC2086
  [ -z "$new" ] || apt_get purge $new
}
trap 'remove_ours; purge_new; rm -rf "$work"' EXIT
apt_get install "${debs[@]}"

# The checks run with no environment variables but a path and a home.
clean=(env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME="$work/home" LANG=C.UTF-8)
mkdir "$work/home"
count=$("${clean[@]}" melt -query transitions | grep -c '^  - zv_' || true)
[ "$count" -eq 66 ] || fail "melt -query transitions lists $count zv_ services, not 66"
count=$("${clean[@]}" melt -query transitions | grep -c '^  - zvgl_' || true)
[ "$count" -eq 125 ] || fail "melt -query transitions lists $count zvgl_ services, not 125"
echo "packages: melt lists the 66 services and the 125 GLSL transitions"
"${clean[@]}" python3 tests/mlt/kdenlive_project_test.py "$work/kdenlive" zvtran /usr/share/kdenlive/transitions
"${clean[@]}" bash tests/install/consumers.sh "$work/consumers" c++
"${clean[@]}" python3 -c 'import numpy as np, zvtransition as zv
a, b = np.zeros((72, 64), np.uint8), np.full((72, 64), 200, np.uint8)
assert zv.__file__.startswith("/usr/lib/python3/dist-packages/") and (zv.apply("Fade", a, b, 1.0) == b).all()'
echo "packages: python3 imports zvtransition and draws a Fade"

version=$(dpkg-deb -f "$work"/zvtran_*.deb Version)
[ "$("${clean[@]}" zvtran --version | head -n 1)" = "zvtran ${version%-*}" ] || fail "zvtran --version: $(zvtran --version)"
"${clean[@]}" zvtran --version | grep -q '^OpenGL: ' || fail "zvtran --version names no OpenGL: $(zvtran --version)"
"${clean[@]}" zvtran render pattern:bars pattern:checker --transition Fade --size 64x48 -o "$work/fade.mp4"
unresolved=$(ldd /usr/bin/zvtran /usr/lib/*/zvtran/zvtran-media.so /usr/lib/*/mlt-7/libmltzvtransition.so \
  /usr/lib/python3/dist-packages/zvtransition*.so |
  grep "not found" || true)
[ -z "$unresolved" ] || fail "unresolved libraries: $unresolved"

# A system whose dpkg leaves manual pages out (minimal images) cannot show it:
# then the page inside the package is checked instead, and that is said.
page_text="video transitions between two clips"
if excluded=$(grep -rs '^path-exclude=/usr/share/man' /etc/dpkg/dpkg.cfg.d/); then
  echo "packages: man zvtran NOT checked: dpkg leaves manual pages out here ($excluded); checking the packaged page"
  dpkg-deb --fsys-tarfile "$work"/zvtran_*.deb | tar -xO ./usr/share/man/man1/zvtran.1.gz > "$work/zvtran.1.gz"
  page=$("${clean[@]}" man -l "$work/zvtran.1.gz")
  grep -q "$page_text" <<<"$page" || fail "the packaged manual page does not read: $page"
else
  page=$("${clean[@]}" man -P cat zvtran)
  grep -q "$page_text" <<<"$page" || fail "man zvtran does not show zvtran's page: $page"
  echo "packages: man zvtran shows the page"
fi

trap 'purge_new; rm -rf "$work"' EXIT
remove_ours
[ -z "$(listing "${names[@]}")" ] || fail "still known to dpkg after apt-get remove: $(listing "${names[@]}")"
for deb in "${debs[@]}"; do
  while read -r path; do
    path=${path#.}
    [ "$path" != / ] || continue
    if [ -L "$path" ] || { [ -e "$path" ] && ! [ -d "$path" ]; }; then fail "left behind: $path"; fi
    if [ -d "$path" ] && ! dpkg-query -S "${path%/}" >/dev/null 2>&1; then fail "left behind: folder $path"; fi
  done < <(dpkg-deb --fsys-tarfile "$deb" | tar -t)
done
purge_new
diff "$work/before" <(listing) || fail "the machine's packages differ from before (above)"
echo "packages: removed; nothing of them is left, and the machine has the packages it had"
