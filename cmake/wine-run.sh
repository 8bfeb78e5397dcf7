#!/bin/bash
# Runs a Windows console program under Wine:  cmake/wine-run.sh PROGRAM [ARGUMENT...]
#                                           cmake/wine-run.sh --stop
#
# Everything Wine keeps (its prefix, a German locale, an empty home) lies in build/wine,
# made on first use. No display is needed. A program that hangs is ended after
# WINE_TIMEOUT seconds.
set -euo pipefail

wine_dir="$(cd "$(dirname "$0")/.." && pwd)/build/wine"
mkdir -p "$wine_dir/home" "$wine_dir/locale"
unset DISPLAY
export HOME="$wine_dir/home" WINEPREFIX="$wine_dir/prefix" WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree=d'
export LOCPATH="$wine_dir/locale"
german=(env LC_ALL=de_DE.UTF-8)  # not exported: this shell itself knows no such locale

if [ "${1:-}" = --stop ]; then
  wineserver -k || true  # none there: nothing to stop
  exit
fi

make_prefix() {
  localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8"
  "${german[@]}" timeout 120 wineboot -i
  # No windows to show, and a crash ends the program instead of asking what to do.
  cat > "$wine_dir/settings.reg" <<'REG'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Wine\Drivers]
"Graphics"="null"
[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
REG
  "${german[@]}" timeout 60 wine regedit /S "$wine_dir/settings.reg"
  timeout 60 wineserver -k
  touch "$wine_dir/ready"
}

# Wine's background processes inherit the output of the program that starts them, and a
# pipe would stay open until the last of them ends. So they are started here, with none;
# they go away 10 seconds after the last program. (wineserver fails if one is running.)
start_session() {
  [ -e "$wine_dir/ready" ] || make_prefix
  if wineserver -p10; then "${german[@]}" timeout 60 wine cmd /c rem; fi
}

(
  flock 9
  start_session 9>&-
) 9> "$wine_dir/lock" < /dev/null > "$wine_dir/session.log" 2>&1 || {
  echo "wine-run.sh: Wine does not start, see $wine_dir/session.log" >&2
  exit 125
}
exec "${german[@]}" timeout "${WINE_TIMEOUT:-300}" wine "$@"
