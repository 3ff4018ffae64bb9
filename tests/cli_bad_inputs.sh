#!/usr/bin/env bash
# Runs bad input through every zvtran subcommand. Each must fail with a
# non-zero exit status, exactly one line on stderr, nothing on stdout, and
# leave the folder it ran in exactly as it was (no file, no hidden leftover).
# Usage: cli_bad_inputs.sh ZVTRAN
set -u
zvtran=$(realpath "$1")
work=$(mktemp -d /tmp/zvtran-bad-XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir "$work/run"
cd "$work/run"

head -c 72 /dev/zero > a.yuv                # an 8 x 6 frame
head -c 48 /dev/zero > px.bgr               # a 4 x 4 bitmap
head -c 10 /dev/zero > short.yuv
: > empty.yuv
echo "these are notes, not a video" > notes.mp4
echo x > file
# A Y4M file cut in its second picture (8 x 6 pictures are 72 bytes).
{ printf 'YUV4MPEG2 W8 H6 F25:1 C420jpeg\nFRAME\n'; head -c 72 /dev/zero; printf 'FRAME\n'; head -c 30 /dev/zero; } > cut.y4m
mkdir full && touch full/frame-00001.png    # a folder that is not empty
cp -r . "$work/fixture"                      # to start again after a failure

cases=(
  # the program itself
  ""
  "frobnicate"
  "--bogus"
  # apply
  "apply"
  "apply 67 --a-size 8x6"
  "apply 0 --a-size 8x6"
  "apply 'No Such Wipe' --a-size 8x6"
  "apply 14"
  "apply 14 --a-size 8by6"
  "apply 14 --a-size 99999x99999"
  "apply 14 --a-size 8x6 --b-size -9000x2"
  "apply 14 --a short.yuv --a-size 8x6"
  "apply 14 --a missing.yuv --a-size 8x6"
  "apply 14 --a empty.yuv --a-size 8x6"
  "apply 14 --a-size 8x6 --position soon"
  "apply 14 --a-size 8x6 --style 99999999999"
  "apply 14 --a-size 8x6 --null c"
  "apply 14 --a-size 8x6 --calls 0"
  "apply 14 --a-size 8x6 --calls 100001"
  "apply 14 --a-size 8x6 --bogus 1"
  "apply 14 --a-size"
  "apply 14 --a-size 8x6 --out no/such/dir/out.yuv"
  "apply 14 --a-size 8x6 --out file/out.yuv"
  "apply 14 15 --a-size 8x6"
  "apply gl:nope --a-size 8x6"
  "apply gl:fade --a-size 8x6 --set x=1"
  "apply gl:luma --a-size 8x6 --set luma=missing.png"
  "apply 14 --a-size 8x6 --set x=1"
  # catalogue
  "catalogue extra"
  "catalogue --json --yaml"
  # rgb2yuv and yuv2rgb
  "rgb2yuv"
  "rgb2yuv --bmp px.bgr --bmp-width 4 --bmp-height 4 --out f.yuv"
  "rgb2yuv --bmp px.bgr --bmp-width 4 --bmp-height 5 --out f.yuv --out-size 4x4"
  "rgb2yuv --bmp px.bgr --bmp-width 4 --bmp-height -4 --out f.yuv --out-size 2x2"
  "rgb2yuv --bmp px.bgr --bmp-width 4 --bmp-height 4 --out f.yuv --out-size 2x2"
  "rgb2yuv --bmp px.bgr --bmp-width 99999 --bmp-height 4 --out f.yuv --out-size 4x4"
  "rgb2yuv --bmp px.bgr --bmp-width 4 --bmp-height 4 --out f.yuv --out-size 4x4 --out-init short.yuv"
  "yuv2rgb --in a.yuv --in-size 8x6 --bmp-width 8 --bmp-height -8 --out p.bgr"
  "yuv2rgb --in a.yuv --in-size 8x7 --bmp-width 8 --bmp-height 6 --out p.bgr"
  "yuv2rgb --in a.yuv --in-size 8x6 --bmp-width x --bmp-height 6 --out p.bgr"
  "yuv2rgb --in a.yuv --in-size 8x6 --bmp-width 8 --bmp-height 6 --out file/p.bgr"
  # resize
  "resize"
  "resize --src a.yuv --src-size 8x5 --out o.yuv --out-size 16x12 --interpolation 0 --method 3"
  "resize --src a.yuv --src-size 8x6 --out o.yuv --out-size 16x12 --method 3"
  "resize --src a.yuv --src-size 8x6 --out o.yuv --out-size 9000x12 --interpolation 0 --method 3"
  "resize --src a.yuv --src-size 8x6 --out o.yuv --out-size 16x12 --interpolation 0 --method 3 --dst-aspect 4:3"
  "resize --src a.yuv --src-size 8x6 --out o.yuv --out-size 16x12 --interpolation 0 --method 3 --src-chroma 444"
  "resize --src a.yuv --src-size 8x6 --out o.yuv --out-size 16x12 --interpolation 0 --method 0 --dst-aspect 4 --src-aspect 1:1"
  # render
  "render"
  "render pattern:bars --transition Fade -o out.y4m"
  "render pattern:bars pattern:checker -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade"
  "render pattern:plaid pattern:checker --transition Fade -o out.y4m"
  "render missing.mp4 pattern:checker --transition Fade -o out.y4m"
  "render notes.mp4 pattern:checker --transition Fade -o out.y4m"
  "render full pattern:checker --transition Fade -o out.y4m"
  "render cut.y4m pattern:checker --transition Fade -o out.y4m"
  "render pattern:bars pattern:checker --transition 67 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --style 8 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --style Sideways -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --size 321x180 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --size 8194x2 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --duration 0 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --duration 3601 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --fps nan -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --fps 241 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --offset -1 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --duration 3600 --fps 240 --offset 86400 --with-clips -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade -o out.avi"
  "render pattern:bars pattern:checker --transition Fade -o file"
  "render pattern:bars pattern:checker --transition Fade -o full"
  "render pattern:bars pattern:checker --transition Fade -o /dev/full"
  "render pattern:bars pattern:checker --transition Fade -o file/out.mp4"
  "render pattern:bars pattern:checker --transition Fade -o no/such/folder/"
  "render pattern:bars pattern:checker --transition Fade --size 64x48 -o /dev/full/out.png"
  "render pattern:bars pattern:checker --transition gl:nope -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:fade --set nope=1 -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:Directional --set direction=1 -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:Directional --set direction=1,x -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:Box --set location=1.5 -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:wind --set reversed=maybe -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:luma --set luma=notes.mp4 -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:fade --set =1 -o out.y4m"
  "render pattern:bars pattern:checker --transition gl:fade --style 1 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --set direction=1 -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --easing sometimes -o out.y4m"
  "render pattern:bars pattern:checker --transition Fade --easing 'cubic-bezier(1.5,0,1,1)' -o out.y4m"
  # demo
  "demo extra"
  "demo --size 15x16 -o gallery"
  "demo --size 1922x1080 -o gallery"
  "demo --jobs 0 -o gallery"
  "demo --ids 999 -o gallery"
  "demo --ids Fade,Nope -o gallery"
  "demo --ids Fade,gl:nope -o gallery"
  "demo -o file"
  "demo --ids Fade --size 32x32 -o no/such/gallery"
)

# Every name (hidden ones too) with its type, size and content.
snapshot() { find . -mindepth 1 -printf '%p %y %s\n' | sort; find . -type f -exec md5sum {} + | sort; }
baseline=$(snapshot)
failures=0
for args in "${cases[@]}"; do
  eval "\"$zvtran\" $args" >"$work/stdout" 2>"$work/stderr" </dev/null
  status=$?
  problem=""
  [ "$status" -eq 0 ] && problem="; exit status 0"
  [ "$status" -gt 128 ] && problem="; killed or crashed (status $status)"
  lines=$(wc -l <"$work/stderr")
  [ "$lines" -ne 1 ] && problem="$problem; $lines lines on stderr"
  [ -s "$work/stdout" ] && problem="$problem; output on stdout"
  now=$(snapshot)
  [ "$now" != "$baseline" ] && problem="$problem; left behind: $(diff <(echo "$baseline") <(echo "$now") | grep '^[<>]' | head -3 | tr '\n' ' ')"
  if [ -n "$problem" ]; then
    echo "FAIL zvtran $args: ${problem#; }"
    sed 's/^/  stderr: /' "$work/stderr"
    failures=$((failures + 1))
    rm -rf "$work/run" && mkdir "$work/run" && cd "$work/run" && cp -r "$work/fixture/." . && cd "$work/run"
  fi
done
echo "${#cases[@]} bad inputs, $failures failed"
[ "$failures" -eq 0 ]
