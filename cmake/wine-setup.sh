# Sourced by the other wine-*.sh: how Wine is set up for us.
#
# Everything Wine keeps (prefixes, a German locale, an empty home) lies in build/wine, made
# on first use; delete it to start afresh.

wine_dir="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/wine"
mkdir -p "$wine_dir/home" "$wine_dir/locale"
export HOME="$wine_dir/home" WINEPREFIX="$wine_dir/prefix" WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree=d'
export LOCPATH="$wine_dir/locale"
german=(env LC_ALL=de_DE.UTF-8)  # not exported: this shell itself knows no such locale
wine_ready="$wine_dir/ready-$(cksum < "${BASH_SOURCE[0]}" | cut -d' ' -f1)"  # of this very set-up

# import_settings FILE: FILE goes into the registry of the prefix.
import_settings() { "${german[@]}" timeout 60 wine regedit /S "$1"; }

# The prefix for programs without a display. A crash ends a program instead of asking what to
# do, and the fonts are those that this system has for the ones of Windows.
make_prefix() (
  unset DISPLAY
  rm -rf "$wine_dir/prefix" "$wine_dir/display" "$wine_dir/office" "$wine_dir"/ready*
  localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8"
  "${german[@]}" timeout 120 wineboot -i
  cp /usr/share/wine/fonts/{marlett,tahoma,tahomabd,symbol,wingding,webdings}.ttf \
    "$WINEPREFIX/drive_c/windows/Fonts/"
  cat > "$wine_dir/settings.reg" <<'REG'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Wine\Drivers]
"Graphics"="null"
[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"Segoe UI"="Tahoma"
"Courier New"="Liberation Mono"
"Consolas"="Liberation Mono"
"Times New Roman"="Liberation Serif"
REG
  import_settings "$wine_dir/settings.reg"
  timeout 60 wineserver -k
  touch "$wine_ready"
)

# copy_prefix NAME: a copy of the prefix that costs nothing. Wine changes the files of its
# registry in place, so these are real copies; all others are shared.
copy_prefix() {
  local copy=$wine_dir/$1
  [ ! -e "$copy/ready" ] || return 0
  rm -rf "$copy"
  cp -al "$wine_dir/prefix" "$copy"
  cp --remove-destination "$wine_dir"/prefix/*.reg "$copy/"
  touch "$copy/ready"
}

# Wine's background processes inherit the output of the program that starts them, and a
# pipe would stay open until the last of them ends. So they are started here, with none;
# they go away 10 seconds after the last program. (wineserver fails if one is running.)
start_session() {
  if wineserver -p10; then "${german[@]}" timeout 60 wine cmd /c rem; fi
}

# alone COMMAND...: with no one else in it at the same time and no open streams.
alone() {
  (
    flock 9
    [ -e "$wine_ready" ] || make_prefix 9>&-
    "$@" 9>&-
  ) 9> "$wine_dir/lock" < /dev/null > "$wine_dir/session.log" 2>&1 || {
    echo "${0##*/}: Wine does not start, see $wine_dir/session.log" >&2
    exit 125
  }
}
