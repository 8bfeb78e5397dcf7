# Completion of tintline in bash. Tested by tests/package/run.py.

_tintline_files() {  # _tintline_files WORD: source files, and folders that lead to some
  local kind
  compgen -d -- "$1"
  for kind in '[Bb][Aa][Ss]' '[Cc][Ll][Ss]' '[Ff][Rr][Mm]' '[Cc][Tt][Ll]' '[Pp][Aa][Gg]' \
    '[Dd][Oo][Bb]' '[Dd][Ss][Rr]' '[Dd][Oo][Cc]*' '[Dd][Oo][Tt]*' '[Xx][Ll]*' '[Pp][Pp]*' \
    '[Pp][Oo][Tt]*'; do
    compgen -f -X "!*.$kind" -- "$1"
  done
}

_tintline() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  # "--format=page" comes as three words.
  [[ $before != = ]] || before=${COMP_WORDS[COMP_CWORD - 2]}
  [[ $word != = ]] || word=
  local words='' names=''
  COMPREPLY=()
  case $before in
    -o | --output | --keywords | --settings | --css) names=$(compgen -f -- "$word") ;;
    -d | --output-dir | --export-modules) names=$(compgen -d -- "$word") ;;
    --format) words='page body lines rtf md json csv source preview clipboard table' ;;
    --export-encoding) words='stored utf-8' ;;
    --mode) words='exact classic' ;;
    --style) words='class inline' ;;
    --links) words='none procs module all' ;;
    --titles) words='on off' ;;
    --header) words='fold show drop' ;;
    --theme) words='auto light dark' ;;
    --errors) words='text json' ;;
    --lang) words='de en' ;;
    --color) words='Prozeduren= Worte= Parameter= Kommentare= Strings=' ;;
    --encoding) words='auto utf-8 utf-16 windows-1252 macintosh shift_jis' ;;
    --lines | --indent | --wrap | --jobs | --module) ;;  # numbers, names
    *)
      if [[ $word == -* ]]; then
        words='-o --output -d --output-dir --mode --format --style --links --titles --header --theme
          --lang --color --css -n --line-numbers --lines --indent --wrap --pasted --encoding
          --project --check-links --keywords --settings --print-settings --list --module --all
          --export-modules --export-encoding --skip-unchanged --check --dry-run --errors --jobs
          -q --quiet -v --verbose -h --help -V --version'
      else
        names=$(_tintline_files "$word")
      fi ;;
  esac
  if [ -n "$names" ]; then
    compopt -o filenames 2> /dev/null  # so that blanks in names are quoted
  else
    names=$(compgen -W "$words" -- "$word")
  fi
  [ -z "$names" ] || mapfile -t COMPREPLY <<< "$names"
}
complete -F _tintline tintline
