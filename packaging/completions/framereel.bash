# Completions of both programs for bash; it is installed under the name of each.
_framereel_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "${COMP_WORDS[COMP_CWORD]}")
}

_framereel() {
  _framereel_words '-h --help --version'
}

_framereel_record() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  # "--option=value" comes as three words.
  [[ $before == = ]] && before=${COMP_WORDS[COMP_CWORD - 2]}
  [[ $word == = ]] && before=${COMP_WORDS[COMP_CWORD - 1]} word=
  case $before in
    --size) mapfile -t COMPREPLY < <(compgen -W '25 44 100' -- "$word") ;;
    --delays) mapfile -t COMPREPLY < <(compgen -W 'true measured' -- "$word") ;;
    --window) mapfile -t COMPREPLY < <(compgen -W 'pick' -- "$word") ;;
    --area | --countdown | --delay | --fps | --frames | --owner | --seconds | --ticks) COMPREPLY=() ;;
    *)
      if [[ $word == -* ]]; then
        _framereel_words '--area --window --follow --list-windows --no-cursor --no-border --size --countdown --delay
          --fps --seconds --frames --ticks --delays --smallest --no-timing --no-loop --no-transparency --explorer --owner
          --overwrite --no-clobber --quiet --stats -h --help --version'
      else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(
          compgen -f -X '!*.gif' -- "$word"
          compgen -d -- "$word"
        )
      fi
      ;;
  esac
}

complete -F _framereel framereel
complete -F _framereel_record framereel-record
