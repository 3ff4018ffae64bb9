# Sourced by the tools: installs the Debian packages the project needs when
# any is missing (as root, or through sudo).

ZV_PACKAGES=(
  build-essential cmake ninja-build pkg-config python3
  libgtest-dev libgmock-dev libbenchmark-dev
  libegl-dev libopengl-dev libglu1-mesa-dev libegl-mesa0 libgl1-mesa-dri
  libavformat-dev libavcodec-dev libswscale-dev libavutil-dev
  libavfilter-dev libswresample-dev
  libhwy-dev libcli11-dev nlohmann-json3-dev
  libmlt-dev libmlt++-dev melt
  clang libclang-rt-14-dev
  ffmpeg chromium
  help2man lintian man-db  # zvtran's manual page; the Debian packages' checks
  pybind11-dev python3-dev python3-numpy python3-pytest python3-av
)

zv_ensure_packages() {
  zv_ensure_collection
  local missing=()
  for pkg in "${ZV_PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' || missing+=("$pkg")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}" >&2
  local sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# The GLSL transition collection the library compiles in: the npm package
# pinned in package.json and package-lock.json, installed into node_modules
# with npm ci when it is missing or another version (Debian's npm first, when
# there is no npm at all).
zv_ensure_collection() {
  local want have=""
  want=$(sed -n 's/.*"gl-transitions": *"\([^"]*\)".*/\1/p' package.json)
  [ -f node_modules/gl-transitions/package.json ] &&
    have=$(sed -n 's/^ *"version": *"\([^"]*\)".*/\1/p' node_modules/gl-transitions/package.json)
  [ -n "$want" ] && [ "$have" = "$want" ] && return 0
  if ! command -v npm >/dev/null; then
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    echo "Installing: npm" >&2
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends npm >/dev/null
  fi
  echo "Installing the GLSL transition collection (gl-transitions $want) with npm ci" >&2
  npm ci --no-audit --no-fund --loglevel=error >/dev/null
}

# Configures build folder $1 with the cmake options that follow, then builds
# the targets named in ZV_TARGETS (everything when unset).
zv_build() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  local targets=()
  for t in ${ZV_TARGETS:-}; do targets+=(--target "$t"); done
  cmake --build "$dir" -j "$(nproc)" "${targets[@]}"
}
