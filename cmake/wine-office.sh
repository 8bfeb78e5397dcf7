#!/bin/bash
# Runs a Windows program under Wine as wine-run.sh does, but in a session of its own that ends
# with it:  cmake/wine-office.sh PROGRAM [ARGUMENT...]
#
# For tests that register automation servers and let them die: what that leaves behind in a
# session, and in the registry of its prefix, harms no other test.
set -euo pipefail
. "$(dirname "$0")/wine-setup.sh"
unset DISPLAY

exec 8> "$wine_dir/office-lock"
flock 8
alone copy_prefix office
export WINEPREFIX="$wine_dir/office"
trap 'wineserver -k > /dev/null 2>&1 || true' EXIT
alone start_session 8>&-
status=0
"${german[@]}" timeout "${WINE_TIMEOUT:-300}" wine "$@" 8>&- || status=$?
exit $status
