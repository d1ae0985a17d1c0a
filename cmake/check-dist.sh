#!/bin/sh
# Checks the release zip: every expected file is in it, and every DLL in it carries a version
# resource with the project's version (read back with the mingw windres).
# usage: check-dist.sh <windres> <zip> <version a.b.c> <expected entries...>
set -u
WINDRES=$1; ZIP=$2; VERSION=$3; shift 3
[ -f "$ZIP" ] || { echo "missing: $ZIP"; exit 1; }
ZIP=$(cd "$(dirname "$ZIP")" && pwd)/$(basename "$ZIP")
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT
(cd "$tmp" && cmake -E tar xf "$ZIP") || { echo "cannot unpack $ZIP"; exit 1; }
fail=0
for entry in "$@"; do
  [ -f "$tmp/$entry" ] || { echo "$ZIP lacks $entry"; fail=1; }
done
# a.b.c -> a.b.c.0 and "a, b, c, 0" as windres prints FILEVERSION
dots=$(printf '%s.0.0.0\n' "$VERSION" | cut -d. -f1-4)
commas=$(printf '%s\n' "$dots" | sed 's/\./, /g')
count=0
for dll in $(cd "$tmp" && find . -maxdepth 1 -iname '*.dll' | sort); do
  count=$((count + 1))
  rc=$("$WINDRES" -i "$tmp/$dll" -O rc 2>/dev/null) || { echo "$dll: no resources"; fail=1; continue; }
  printf '%s\n' "$rc" | grep -q "FILEVERSION $commas\$" || { echo "$dll: FILEVERSION is not $commas"; fail=1; }
  printf '%s\n' "$rc" | grep -q "VALUE \"FileVersion\", \"$dots\"" || { echo "$dll: FileVersion is not $dots"; fail=1; }
  printf '%s\n' "$rc" | grep -q "VALUE \"OriginalFilename\", \"${dll#./}\"" || { echo "$dll: OriginalFilename is not ${dll#./}"; fail=1; }
done
[ $count -gt 0 ] || { echo "$ZIP holds no DLL"; fail=1; }
[ $fail -eq 0 ] && echo "$ZIP: ok ($count DLLs of version $dots)"
exit $fail
