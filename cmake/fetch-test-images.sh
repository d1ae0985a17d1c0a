#!/usr/bin/env bash
# Real photographs and odd image files for the imaging tests, out of Debian packages that carry
# test data: fetched with `apt-get download` into the build tree, only the files named below
# extracted, never committed. Usage: fetch-test-images.sh DEST [bench|tags]
#   DEST   folder that receives the files (flat, under the names below)
#   bench  also the large photograph of the imaging benchmark
#   tags   instead, only the track files with embedded pictures of the tag readers' tests
# Fails loudly when a package or a file cannot be had.
set -euo pipefail
dest=$1
mode=${2:-tests}
debs=$dest/debs
mkdir -p "$dest" "$debs"

# package|path inside the package|name in DEST
IMAGES=(
  "golang-github-disintegration-imaging-dev|usr/share/gocode/src/github.com/disintegration/imaging/testdata|branches.jpg branches.png flowers_small.png orientation_1.jpg orientation_2.jpg orientation_3.jpg orientation_4.jpg orientation_5.jpg orientation_6.jpg orientation_7.jpg orientation_8.jpg"
  "librust-jpeg-decoder-dev|usr/share/cargo/registry/jpeg-decoder-*/benches|large_image.jpg tower.jpg tower_grayscale.jpg tower_progressive.jpg"
  "golang-github-rwcarlsen-goexif-dev|usr/share/gocode/src/github.com/rwcarlsen/goexif/exif|sample1.jpg corrupt/huge_tag_exif.jpg corrupt/max_uint32_exif.jpg corrupt/infinite_loop_exif.jpg"
  "golang-github-rwcarlsen-goexif-dev|usr/share/gocode/src/github.com/rwcarlsen/goexif/tiff|sample1.tif"
)
if [ "$mode" = tags ]; then
  IMAGES=("golang-github-hjfreyer-taglib-go-dev|usr/share/gocode/src/github.com/hjfreyer/taglib-go/taglib/testdata|BeatThee.mp3")
fi
if [ "$mode" = bench ]; then
  IMAGES+=("lomiri-wallpapers-20.04|usr/share/backgrounds|Kleiber_by_Lukas_Baubkus.jpg")
fi

fail() { echo "fetch-test-images: $*" >&2; exit 1; }

download() {
  local pkg=$1
  ls "$debs/${pkg}"_*.deb >/dev/null 2>&1 && return 0
  # apt-get download runs as the caller; as root apt warns that its sandbox user cannot write here
  if ! (cd "$debs" && apt-get download -q "$pkg" >/dev/null 2>"$debs/$pkg.log"); then
    if [ "$(id -u)" -eq 0 ]; then
      apt-get update -qq >/dev/null 2>&1 || true
      (cd "$debs" && apt-get download -q "$pkg" >/dev/null 2>"$debs/$pkg.log") ||
        fail "apt-get download $pkg failed: $(tail -n 3 "$debs/$pkg.log")"
    else
      fail "apt-get download $pkg failed (run 'apt-get update' as root?): $(tail -n 3 "$debs/$pkg.log")"
    fi
  fi
  ls "$debs/${pkg}"_*.deb >/dev/null 2>&1 || fail "no package file for $pkg"
}

for entry in "${IMAGES[@]}"; do
  IFS='|' read -r pkg dir files <<<"$entry"
  missing=0
  for f in $files; do [ -s "$dest/$(basename "$f")" ] || missing=1; done
  [ $missing -eq 0 ] && continue
  download "$pkg"
  tmp=$(mktemp -d "$debs/x.XXXXXX")
  dpkg-deb -x "$debs/${pkg}"_*.deb "$tmp" || fail "cannot unpack $pkg"
  for f in $files; do
    src=$(compgen -G "$tmp/$dir/$f" | head -n 1 || true)
    [ -n "$src" ] && [ -s "$src" ] || { rm -rf "$tmp"; fail "$pkg holds no $dir/$f"; }
    cp "$src" "$dest/$(basename "$f")"
  done
  rm -rf "$tmp"
done
echo "fetch-test-images: ready in $dest"
