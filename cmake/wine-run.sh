#!/bin/bash
# Runs a Windows program under Wine:  cmake/wine-run.sh PROGRAM [ARGUMENT...]
#                                     cmake/wine-run.sh --stop
#
# No display is needed: windows work, but nobody sees them (wine-display.sh shows them).
# A program that hangs is ended after WINE_TIMEOUT seconds. See wine-setup.sh.
set -euo pipefail
. "$(dirname "$0")/wine-setup.sh"
unset DISPLAY

if [ "${1:-}" = --stop ]; then
  wineserver -k || true  # none there: nothing to stop
  exit
fi
alone start_session
exec "${german[@]}" timeout "${WINE_TIMEOUT:-300}" wine "$@"
