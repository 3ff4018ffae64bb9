# Sourced by the tools: installs the Debian packages the project needs when
# any is missing (as root, or through sudo).

ZV_PACKAGES=(
  build-essential cmake ninja-build pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  libavformat-dev libavcodec-dev libswscale-dev libavutil-dev
  ffmpeg chromium
)

zv_ensure_packages() {
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

# Configures and builds into $1 with the remaining arguments passed to cmake.
zv_build() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir" -j "$(nproc)"
}
