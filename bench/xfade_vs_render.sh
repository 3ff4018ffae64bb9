#!/usr/bin/env bash
# zvtran render against ffmpeg's xfade filter on the same two 1080p Y4M clips,
# kept in a RAM-backed folder, each at its default thread count; prints
# frames per second and the ratio per pair, and the plain read-blend-write
# loop (bench/read_blend_write.c) as the limit for reading two Y4M files and
# writing one.
#   bash bench/xfade_vs_render.sh [ZVTRAN] [RUNS]   (default build/bin/zvtran, 3;
#   the best of RUNS runs counts, as the machine may be busy)
set -euo pipefail
cd "$(dirname "$0")/.."
ZVTRAN=${1:-build/bin/zvtran}
RUNS=${2:-3}
SIZE=${ZV_BENCH_SIZE:-1920x1080}
FRAMES=100
SECONDS_LONG=4  # 100 frames at 25 fps
[ -x "$ZVTRAN" ] || { echo "no zvtran at $ZVTRAN (build it first)" >&2; exit 2; }
DIR=$(mktemp -d /dev/shm/zv-xfade-XXXXXX)
trap 'rm -rf "$DIR"' EXIT

ffmpeg -hide_banner -loglevel error -f lavfi -i "testsrc2=size=$SIZE:rate=25" -frames:v $FRAMES \
  -pix_fmt yuv420p "$DIR/a.y4m"
ffmpeg -hide_banner -loglevel error -f lavfi -i "mandelbrot=size=$SIZE:rate=25" -frames:v $FRAMES \
  -pix_fmt yuv420p "$DIR/b.y4m"
cc -O2 -o "$DIR/read_blend_write" bench/read_blend_write.c
# The first reads of freshly written files cost the system more than later
# ones; read them beforehand so that neither side pays for being first.
cat "$DIR/a.y4m" "$DIR/b.y4m" > /dev/null
cat "$DIR/a.y4m" "$DIR/b.y4m" > /dev/null

# Seconds of the fastest of RUNS runs of the command.
best_time() {
  local best=""
  for _ in $(seq "$RUNS"); do
    local start end took
    start=$(date +%s.%N)
    "$@" > /dev/null 2>&1
    end=$(date +%s.%N)
    took=$(echo "$end - $start" | bc -l)
    if [ -z "$best" ] || [ "$(echo "$took < $best" | bc -l)" = 1 ]; then best=$took; fi
  done
  echo "$best"
}
fps() { printf '%.0f' "$(echo "$FRAMES / $1" | bc -l)"; }

echo "$SIZE, $FRAMES frames, $(nproc) cores, best of $RUNS"
printf '%-40s %10s %10s %8s\n' "zvtran / xfade" "zvtran fps" "xfade fps" "ratio"
while IFS='|' read -r label transition style xfade; do
  ours=$(best_time "$ZVTRAN" render "$DIR/a.y4m" "$DIR/b.y4m" --transition "$transition" --style "$style" \
         --duration $SECONDS_LONG -o -)
  theirs=$(best_time ffmpeg -hide_banner -nostdin -i "$DIR/a.y4m" -i "$DIR/b.y4m" \
           -filter_complex "[0][1]xfade=transition=$xfade:duration=$SECONDS_LONG:offset=0" -f null -)
  printf '%-40s %10s %10s %7.1fx\n' "$label / $xfade" "$(fps "$ours")" "$(fps "$theirs")" \
    "$(echo "$theirs / $ours" | bc -l)"
done <<'PAIRS'
Fade|14|0|fade
Line Based Wipe|1|0|wipeleft
Slide Based Wipe|3|1|slideleft
Region Based Wipe style 2|5|2|circleopen
Random Dissolve|38|0|dissolve
Mosaic Based Wipe|15|0|pixelize
Zoom style 5|13|5|zoomin
PAIRS

limit=$(best_time "$DIR/read_blend_write" "$DIR/a.y4m" "$DIR/b.y4m")
fade=$(best_time "$ZVTRAN" render "$DIR/a.y4m" "$DIR/b.y4m" --transition 14 --duration $SECONDS_LONG -o -)
printf 'read-blend-write baseline: %s fps; Fade at %.0f%% of it\n' "$(fps "$limit")" \
  "$(echo "100 * $limit / $fade" | bc -l)"
