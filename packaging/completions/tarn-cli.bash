# shellcheck shell=bash
# Completion of tarn-cli for bash. Needs nothing but bash itself.

# Sets `words` to the words up to the cursor as the shell reads them; COMP_WORDS is cut at "=" and
# ":" too. Sets `kept` to the part of the last one that stays in front of what is completed.
_tarn_cli_join() {
  local rest=${COMP_LINE:0:COMP_POINT} piece blanks
  local -i i
  for ((i = 0; i <= COMP_CWORD; ++i)); do
    piece=${COMP_WORDS[i]}
    blanks=${rest%%[![:space:]]*}
    rest=${rest#"$blanks"}
    if ((i == COMP_CWORD)); then piece=$rest; fi
    if [[ -n "$blanks" || $i == 0 ]]; then
      kept=''
      words+=("$piece")
    else
      kept=${words[-1]}
      words[-1]+=$piece
    fi
    rest=${rest#"$piece"}
  done
  if [[ "$piece" != *[!"$COMP_WORDBREAKS"]* ]]; then kept=${words[-1]}; fi
  kept=${kept%@}  # which bash takes to what it completes
}

# _tarn_cli_files PATTERN...: the files that one of the patterns fits, and all folders.
_tarn_cli_files() {
  local pattern
  local -a found
  compopt -o filenames 2> /dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$cur")
  # Behind a kept beginning of a name, bash cannot tell that it is a folder's.
  if [[ "$kept" != "$head" ]]; then COMPREPLY=("${COMPREPLY[@]/%//}"); fi
  for pattern in "$@"; do
    # Folders have been found already.
    mapfile -t found < <(
      compgen -f -X "!$pattern" -- "$cur" | while IFS= read -r file; do
        if [[ ! -d "${file/#\~/$HOME}" ]]; then printf '%s\n' "$file"; fi
      done
    )
    COMPREPLY+=("${found[@]}")
  done
  if [[ "${COMPREPLY[*]}" == */ ]]; then compopt -o nospace 2> /dev/null; fi
}

_tarn_cli_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

# The last word of a list with commas.
_tarn_cli_list() {
  local head=''
  if [[ "$cur" == *,* ]]; then head=${cur%,*},; fi
  mapfile -t COMPREPLY < <(compgen -P "$head" -W "$1" -- "${cur##*,}")
}

# Whether the word $1 is an option whose value is the next word, or sends output to it.
_tarn_cli_takes_value() {
  case $1 in
    -h | --help | --version | --force | --no-save | --quiet | -- | --*=* | -o?* | -[0-9]*) return 1 ;;
    -* | '>' | '>>' | '<' | [12]'>' | [12]'>>' | '&>') ;;
    *) return 1 ;;
  esac
}

# Completes the value of the option $1: of most it is a number or a text.
_tarn_cli_value() {
  case $1 in
    --transfer) _tarn_cli_list 'sigmoid gaussian tanh sech' ;;
    --test-method) _tarn_cli_words 'none beginning end random' ;;
    --normalize-inputs | --normalize-targets) _tarn_cli_words 'on off' ;;
    --inputs | --targets | --history | --error-history | --autosave | --outputs | *'>' | '<')
      _tarn_cli_files '*'
      ;;
    -o | --output)
      case $command in
        plot) _tarn_cli_files '*.svg' '*.csv' ;;
        *) _tarn_cli_files '*.net' ;;
      esac
      ;;
  esac
}

_tarn_cli_options() {
  local setup='--name --layers --transfer --inputs --inputs-column --targets --targets-column
    --normalize-inputs --normalize-targets --test-patterns --test-method --eta --eta-min --eta-max
    --momentum --fast-prop --tolerance --patterns-per-update --iterations --lrc-start
    --autosave-rate --update-rate'
  local data='--inputs --inputs-column --targets --targets-column'
  local own=''
  case $command in
    new) own="--force $setup" ;;
    set) own="-o --output $setup" ;;
    train)
      own='--seed --iterations -o --output --no-save --error-history --outputs --history
        --autosave --quiet'
      ;;
    recall) own="$data --outputs" ;;
    report) own="$data --seed --tolerance --upper --lower" ;;
    plot)
      own="$data --seed --history --node --first-input --second-input --width --height
        -o --output"
      ;;
    restore) ;;
    *) own='--version' ;;
  esac
  _tarn_cli_words "-h --help $own"
}

# The argument of the given number, from 0, that is no option.
_tarn_cli_argument() {
  case $command:$1 in
    report:0)
      _tarn_cli_words 'information weights outputs statistics tolerance threshold divergence'
      ;;
    plot:0)
      _tarn_cli_words 'rms test-rms learn-rate correlation test-correlation tolerance
        test-tolerance scatter outputs error inputs interrogator hidden contour'
      ;;
    restore:0) _tarn_cli_files '*' ;;
    new:0 | set:0 | train:0 | recall:0 | report:1 | plot:1 | restore:2) _tarn_cli_files '*.net' ;;
  esac
}

_tarn_cli() {
  local cur command='' option='' head='' kept='' word
  local -i arguments=0
  local -a words=()
  COMPREPLY=()
  _tarn_cli_join
  for word in "${words[@]:1:${#words[@]}-2}"; do
    if [[ -n "$option" ]]; then
      option=''
    elif _tarn_cli_takes_value "$word"; then
      option=$word
    elif [[ "$word" == -[!0-9]* ]]; then
      continue
    elif [[ -z "$command" ]]; then
      command=$word
    else
      arguments+=1
    fi
  done
  cur=${words[-1]}
  if [[ -z "$option" && "$cur" == --*=* ]]; then
    option=${cur%%=*}
    head=$option=
    cur=${cur#*=}
    # The shell itself leaves "~" as it is in such a word.
    if [[ "$head" == "$kept"* ]]; then cur=${cur/#\~\//$HOME/}; fi
  fi
  if [[ -n "$option" ]]; then
    _tarn_cli_value "$option"
  elif [[ "$cur" == -* ]]; then
    _tarn_cli_options
  elif [[ -z "$command" ]]; then
    _tarn_cli_words 'new set train recall report plot restore'
  else
    _tarn_cli_argument "$arguments"
  fi
  COMPREPLY=("${COMPREPLY[@]/#/$head}")
  COMPREPLY=("${COMPREPLY[@]#"$kept"}")
}

complete -F _tarn_cli tarn-cli
