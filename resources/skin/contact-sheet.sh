#!/usr/bin/env bash
# Renders every picture of the skin package onto one sheet, for review by eye:
#   resources/skin/contact-sheet.sh out.png [zoom] [pattern]
# Each picture is rendered at its own size with rsvg-convert, then placed, zoomed (default 2), on a
# light and on a dark background with its name below it.
set -euo pipefail
out=${1:?usage: contact-sheet.sh out.png [zoom]}
zoom=${2:-2}
pattern=${3:-*}
src=$(cd "$(dirname "$0")/pictures" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

cols=${COLS:-6} cell=$((140 * zoom / 2 + 120)) i=0
body=""
for svg in "$src"/$pattern.svg; do
  name=$(basename "$svg" .svg)
  rsvg-convert -o "$tmp/p.png" "$svg"
  read -r w h < <(python3 -c 'import struct,sys; d=open(sys.argv[1],"rb").read(24); print(*struct.unpack(">II", d[16:24]))' "$tmp/p.png")
  data=$(base64 -w0 "$tmp/p.png")
  x=$(( (i % cols) * cell * 2 )) y=$(( (i / cols) * (cell + 30) ))
  zw=$((w * zoom)) zh=$((h * zoom))
  for bg in 0 1; do
    bx=$((x + bg * cell)) fill=$([ $bg = 0 ] && echo '#f4f4f4' || echo '#3a3f47')
    body+="<rect x='$bx' y='$y' width='$cell' height='$cell' fill='$fill'/>"
    body+="<image x='$((bx + (cell - zw) / 2))' y='$((y + (cell - zh) / 2))' width='$zw' height='$zh' href='data:image/png;base64,$data'/>"
  done
  body+="<text x='$((x + cell))' y='$((y + cell + 18))' font-family='sans-serif' font-size='15' text-anchor='middle'>$name (${w}x${h})</text>"
  i=$((i + 1))
done
rows=$(( (i + cols - 1) / cols ))
W=$((cols * cell * 2)) H=$((rows * (cell + 30)))
printf '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d"><rect width="100%%" height="100%%" fill="#fff"/>%s</svg>' \
  "$W" "$H" "$body" > "$tmp/sheet.svg"
rsvg-convert -o "$out" "$tmp/sheet.svg"
echo "$out: $i pictures"
