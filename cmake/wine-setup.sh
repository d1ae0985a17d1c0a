#!/bin/sh
# Prepares the private Wine prefix the tests run in and leaves one wineserver running for them.
# usage: wine-setup.sh <wine64> <null|x11>   (WINEPREFIX comes from the environment)
set -u
WINE=$1
MODE=${2:-null}
WINESERVER=$(dirname "$WINE")/wineserver
LOG="$WINEPREFIX.setup.log"
: >"$LOG"
# the graphics driver must be chosen before the desktop process starts
if [ "$MODE" = null ]; then
  "$WINE" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d null /f </dev/null >>"$LOG" 2>&1
else
  "$WINE" reg delete 'HKCU\Software\Wine\Drivers' /v Graphics /f </dev/null >>"$LOG" 2>&1
  # without a window manager every hidden managed window costs seconds
  "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f </dev/null >>"$LOG" 2>&1
fi
# Tahoma is "MS Shell Dlg": with fonts-wine's fonts in the prefix, text metrics do not depend on
# what fontconfig offers on this machine
mkdir -p "$WINEPREFIX/drive_c/windows/Fonts"
cp -n /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null
"$WINESERVER" -k 2>/dev/null
"$WINESERVER" -w
# a server that stays up between tests (so they do not pay its start-up, and no test connects to a
# server that is shutting down after an idle spell) and does not hold the caller's output pipe
# open; ./kx ends it after the run, `wineserver -k` with this WINEPREFIX ends it by hand
"$WINESERVER" -p </dev/null >/dev/null 2>&1
"$WINE" wineboot </dev/null >>"$LOG" 2>&1
echo "wine prefix ready: $WINEPREFIX (graphics: $MODE)"
