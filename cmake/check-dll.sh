#!/bin/sh
# Checks a built DLL's export and import tables with the mingw objdump.
# usage: check-dll.sh <objdump> <dll> <exports|resource-only> [export names...]
set -u
OBJDUMP=$1; DLL=$2; KIND=$3; shift 3
[ -f "$DLL" ] || { echo "missing: $DLL"; exit 1; }
dump=$("$OBJDUMP" -p "$DLL") || { echo "objdump failed on $DLL"; exit 1; }
fail=0
# Windows system DLLs the product may import (case-insensitive)
allowed='^(kernel32|user32|gdi32|gdiplus|comctl32|comdlg32|ole32|oleaut32|shell32|shlwapi|msimg32|wininet|advapi32|msvcrt|uxtheme|version|api-ms-win-crt-[a-z0-9-]+|ucrtbase)\.dll$'
imports=$(printf '%s\n' "$dump" | sed -n 's/^[[:space:]]*DLL Name: //p' | tr 'A-Z' 'a-z' | sort -u)
for dll in $imports; do
  printf '%s\n' "$dll" | grep -Eq "$allowed" || { echo "$DLL imports a non-system DLL: $dll"; fail=1; }
done
# the export name table: lines "[ n] name" after "[Ordinal/Name Pointer] Table"
exports=$(printf '%s\n' "$dump" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' | sed -n 's/^[[:space:]]*\[[[:space:]]*[0-9]*\][[:space:]]*//p' | sort)
if [ "$KIND" = resource-only ]; then
  [ -z "$imports" ] || { echo "$DLL is resource-only but imports: $imports"; fail=1; }
  [ -z "$exports" ] || { echo "$DLL is resource-only but exports: $exports"; fail=1; }
  printf '%s\n' "$dump" | grep -q 'AddressOfEntryPoint[[:space:]]*0*$' || { echo "$DLL has an entry point"; fail=1; }
else
  want=$(printf '%s\n' "$@" | sort)
  [ "$exports" = "$want" ] || { echo "$DLL exports differ. got:"; echo "$exports"; echo "want:"; echo "$want"; fail=1; }
fi
[ $fail -eq 0 ] && echo "$DLL: ok ($(echo $imports | wc -w) system imports)"
exit $fail
