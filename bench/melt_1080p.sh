#!/usr/bin/env bash
# Every zv_ service of the MLT module through melt at atsc_1080p_25 against
# MLT's own luma (a dissolve), in one run: 50 frames of two 1080p Y4M clips
# kept in a RAM-backed folder, the consumer avformat writing raw video to
# /dev/null, no frame dropped. Prints frames per second per service over the
# whole melt run (start, decoding, transition and writing) and over the frames
# alone (the run less the time melt takes for one frame), the ratio to luma,
# and whether every service beats real time (25 fps) and luma.
#   bash bench/melt_1080p.sh [BUILD_DIR] [SERVICE_PATTERN]   (default build, every zv_ service)
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD=${1:-build}
PATTERN=${2:-.}
FRAMES=50
YAML_DIR=$BUILD/mlt/data/zvtransition
MODULE=$BUILD/mlt/module/libmltzvtransition.so
[ -f "$MODULE" ] && [ -d "$YAML_DIR" ] || { echo "no MLT module in $BUILD (build it first)" >&2; exit 2; }
command -v melt >/dev/null || { echo "melt is not installed" >&2; exit 2; }
DIR=$(mktemp -d /dev/shm/zv-melt-XXXXXX)
trap 'rm -rf "$DIR"' EXIT

# MLT reads one folder of modules and one of data; the variables replace its
# own, so both hold links to MLT's entries as well as to ours.
farm() {  # target source extra
  mkdir -p "$1"
  for entry in "$2"/*; do ln -s "$entry" "$1/"; done
  ln -s "$(realpath "$3")" "$1/"
}
farm "$DIR/modules" "$(pkg-config --variable=moduledir mlt-framework-7)" "$MODULE"
farm "$DIR/data" "$(pkg-config --variable=mltdatadir mlt-framework-7)" "$YAML_DIR"
export MLT_REPOSITORY=$DIR/modules MLT_DATA=$DIR/data

ffmpeg -hide_banner -loglevel error -f lavfi -i "testsrc2=size=1920x1080:rate=25" -frames:v $FRAMES \
  -pix_fmt yuv420p "$DIR/a.y4m"
ffmpeg -hide_banner -loglevel error -f lavfi -i "mandelbrot=size=1920x1080:rate=25" -frames:v $FRAMES \
  -pix_fmt yuv420p "$DIR/b.y4m"
cat "$DIR/a.y4m" "$DIR/b.y4m" > /dev/null

# Seconds of one melt run of the transition `$1` over `$2` frames.
seconds() {
  local start end
  start=$(date +%s.%N)
  melt -quiet -profile atsc_1080p_25 "$DIR/a.y4m" in=0 out=$(($2 - 1)) -track "$DIR/b.y4m" in=0 \
    out=$(($2 - 1)) -transition "$1" in=0 out=$(($2 - 1)) a_track=0 b_track=1 \
    -consumer avformat:/dev/null f=rawvideo real_time=-1 terminate_on_pause=1 > /dev/null 2> "$DIR/melt.log" ||
    { echo "melt failed for $1:" >&2; tail -3 "$DIR/melt.log" >&2; exit 1; }
  end=$(date +%s.%N)
  echo "$end - $start" | bc -l
}

one_frame=$(seconds luma 1)
# Prints a row: service, fps over the run, fps over the frames, ratio to luma; sets `fps`.
row() {
  local took
  took=$(seconds "$1" $FRAMES)
  fps=$(echo "$FRAMES / $took" | bc -l)
  printf '%-36s %8.1f %8.1f %8.2fx\n' "$1" "$fps" "$(echo "($FRAMES - 1) / ($took - $one_frame)" | bc -l)" \
    "$(echo "$fps / ${luma:-$fps}" | bc -l)"
}

echo "atsc_1080p_25, $FRAMES frames, $(nproc) cores; melt takes $(printf '%.2f' "$one_frame") s for one frame"
printf '%-36s %8s %8s %9s\n' service "fps" "frames" "vs luma"
row luma
luma=$fps
slowest="" slowest_fps=""
for yml in "$YAML_DIR"/transition_zv_*.yml; do
  service=$(basename "$yml" .yml)
  service=${service#transition_}
  [[ $service =~ $PATTERN ]] || continue
  row "$service"
  if [ -z "$slowest" ] || [ "$(echo "$fps < $slowest_fps" | bc -l)" = 1 ]; then slowest=$service slowest_fps=$fps; fi
done
printf 'slowest: %s at %.1f fps (real time 25, luma %.1f): %s\n' "$slowest" "$slowest_fps" "$luma" \
  "$([ "$(echo "$slowest_fps >= 25 && $slowest_fps >= $luma" | bc -l)" = 1 ] && echo "every service beats both" ||
     echo "NOT every service beats both")"
