#!/bin/bash
# Runs a Windows program under Wine with its windows on a screen:
#
#   cmake/wine-display.sh [--dpi N] PROGRAM [ARGUMENT...]
#
# With DISPLAY set that screen is used; otherwise a virtual one is opened, of its own for this
# run, where Wine draws a desktop itself and no window manager is needed. N is 96 unless given.
# One program at a time; the session ends with it, or after WINE_TIMEOUT seconds.
set -euo pipefail
. "$(dirname "$0")/wine-setup.sh"
screen_size=1280x1024 dpi=96
if [ "${1:-}" = --dpi ]; then
  dpi=$2
  shift 2
fi

open_screen() {
  local number
  exec {screen}< <(exec Xvfb -displayfd 1 -screen 0 "${screen_size}x24" -nolisten tcp 2> /dev/null)
  screen_process=$!
  read -r -t 20 number <&"$screen" || { echo "wine-display.sh: no virtual screen" >&2; exit 125; }
  export DISPLAY=:$number
}

settings() {
  echo 'Windows Registry Editor Version 5.00'
  echo '[HKEY_CURRENT_USER\Software\Wine\Drivers]'
  echo '"Graphics"="x11"'
  echo '[HKEY_CURRENT_USER\Control Panel\Desktop]'
  printf '"LogPixels"=dword:%08x\n' "$dpi"
  echo '[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]'
  echo "\"Default\"=\"$screen_size\""
  echo '[HKEY_CURRENT_USER\Software\Wine\Explorer]'
  if [ -n "${screen_process:-}" ]; then echo '"Desktop"="Default"'; else echo '"Desktop"=-'; fi
}

# The settings count for what starts after them, so they are made in a session of their own.
prepare_session() {
  wineserver -k || true
  settings > "$wine_dir/display.reg"
  import_settings "$wine_dir/display.reg"
  timeout 60 wineserver -k || true
  start_session
}

# The process of a console that is just ending outlives its server now and then, and would keep
# the caller's pipe open for ever.
end_session() {
  local process
  wineserver -k > /dev/null 2>&1 || true
  for process in /proc/[0-9]*; do
    if grep -qszxF "WINEPREFIX=$WINEPREFIX" "$process/environ"; then
      kill -KILL "${process#/proc/}" 2> /dev/null || true
    fi
  done
  [ -z "${screen_process:-}" ] || kill "$screen_process" 2> /dev/null || true
}

exec 8> "$wine_dir/display-lock"
flock 8
alone copy_prefix display
export WINEPREFIX="$wine_dir/display"
[ -n "${DISPLAY:-}" ] || open_screen
trap end_session EXIT
alone prepare_session 8>&-
status=0
"${german[@]}" timeout "${WINE_TIMEOUT:-300}" wine "$@" 8>&- || status=$?
exit $status
