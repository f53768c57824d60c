#!/bin/sh
# Renders the pictures of the sample visit from the scenes next to this script.
#   render.sh                 all pictures
#   render.sh DSC00103 logo   only these
# PICTURE_SCALE=40 renders at 40 % of the size, for a quick look.
# Needs povray, povray-includes, imagemagick and fonts-dejavu-core.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
output=${PICTURE_OUTPUT:-$here}
scale=${PICTURE_SCALE:-100}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$output"

# The Debian name of the program comes first, since "convert" may be anything.
convert=$(command -v convert-im6.q16 || command -v convert)

scene_of() {
    case $1 in
        DSC00101) echo roof_shingles ;;
        DSC00102) echo loose_gutter ;;
        DSC00103) echo cracked_driveway ;;
        DSC00104) echo brick_step_crack ;;
        DSC00105) echo electrical_panel ;;
        DSC00106) echo water_heater ;;
        DSC00107) echo corroded_pipe ;;
        DSC00108) echo furnace ;;
        DSC00109) echo attic ;;
        DSC00110) echo crawl_space ;;
        DSC00111) echo fogged_window ;;
        DSC00112) echo deck_stairs ;;
        DSC00113) echo cracked_tile ;;
        DSC00114) echo outlet_at_sink ;;
        house) echo house ;;
        *) echo "unknown picture: $1" >&2; return 1 ;;
    esac
}

# Renders one scene, then gives it what a small camera adds: a little softness,
# darker corners and grain. The seed keeps the grain the same every time.
photograph() {
    name=$1 width=$2 height=$3 # and dots per inch, 96 unless given
    scene=$(scene_of "$name")
    width=$((width * scale / 100)) height=$((height * scale / 100))
    # A lens blur smooths the edges by itself; anti-aliasing on top costs minutes.
    smoothing="+A0.2 +AM2 +R2"
    if grep -q '^FocusedSnapshot' "$here/$scene.pov"; then smoothing=-A; fi
    # shellcheck disable=SC2086 # the options are meant to fall apart into words
    (cd "$here" && nice povray "+I$scene.pov" +O- +FN8 "+W$width" "+H$height" \
        $smoothing +WT1 -D +BS32 2> "$scratch/log" > "$scratch/$name.png") ||
        { tail -n 4 "$scratch/log" >&2; return 1; }
    "$convert" "$scratch/$name.png" -depth 8 \
        \( -size "${width}x$height" 'radial-gradient:white-gray74' \) -compose multiply -composite \
        -blur 0x0.5 -seed 7 -attenuate 0.12 +noise Gaussian \
        -strip -sampling-factor 4:2:0 -units PixelsPerInch -density "${4:-96}" -quality 83 "$output/$name.jpg"
    echo "$name.jpg  $scene  $(($(wc -c < "$output/$name.jpg") / 1024)) KiB"
}

# The sign of the company: a roof whose ridge is a compass needle.
logo() {
    "$convert" -size 1440x480 xc:white \
        -fill '#1f3a5f' -draw 'polygon 60,262 240,104 420,262 378,262 240,142 102,262' \
        -draw 'polygon 118,276 240,170 362,276 362,404 118,404' \
        -fill white -draw 'circle 240,306 240,226' \
        -fill '#c8502d' -draw 'polygon 240,226 268,306 240,296 212,306' \
        -fill '#8a97a6' -draw 'polygon 240,386 268,306 240,316 212,306' \
        -fill '#c8502d' -draw 'rectangle 474,272 1384,280' \
        -font DejaVu-Sans-Bold -fill '#1f3a5f' -kerning 4 -pointsize 150 -annotate +466+238 'Northgate' \
        -font DejaVu-Sans -fill '#44505e' -kerning 7 -pointsize 78 -annotate +472+370 'Home Inspections' \
        -resize 480x160 -strip -sampling-factor 4:4:4 -quality 92 "$output/logo.jpg"
    echo "logo.jpg  $(($(wc -c < "$output/logo.jpg") / 1024)) KiB"
}

if [ $# -eq 0 ]; then
    set -- DSC00101 DSC00102 DSC00103 DSC00104 DSC00105 DSC00106 DSC00107 \
        DSC00108 DSC00109 DSC00110 DSC00111 DSC00112 DSC00113 DSC00114 house logo
fi
for picture in "$@"; do
    case $picture in
        logo) logo ;;
        house) photograph house 1024 768 200 ;; # dots per inch: as wide as the page allows
        *) photograph "$picture" 1280 960 ;;
    esac
done
