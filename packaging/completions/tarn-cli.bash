# shellcheck shell=bash
# Completion of tarn-cli for bash. Needs nothing but bash itself.

# _tarn_cli_files PATTERN...: the files that one of the patterns fits, and all folders.
_tarn_cli_files() {
  local pattern
  local -a found
  compopt -o filenames 2> /dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$cur")
  for pattern in "$@"; do
    # Folders have been found already.
    mapfile -t found < <(
      compgen -f -X "!$pattern" -- "$cur" | while IFS= read -r file; do
        if [[ ! -d "${file/#\~/$HOME}" ]]; then printf '%s\n' "$file"; fi
      done
    )
    COMPREPLY+=("${found[@]}")
  done
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

# Completes the value of the option $1; fails when it takes none.
_tarn_cli_value() {
  case $1 in
    --transfer) _tarn_cli_list 'sigmoid gaussian tanh sech' ;;
    --test-method) _tarn_cli_words 'none beginning end random' ;;
    --normalize-inputs | --normalize-targets) _tarn_cli_words 'on off' ;;
    --inputs | --targets | --history | --error-history | --autosave | --outputs)
      _tarn_cli_files '*'
      ;;
    -o | --output)
      case $command in
        plot) _tarn_cli_files '*.svg' '*.csv' ;;
        *) _tarn_cli_files '*.net' ;;
      esac
      ;;
    --name | --layers | --inputs-column | --targets-column | --test-patterns | --eta | --eta-min | \
      --eta-max | --momentum | --fast-prop | --tolerance | --patterns-per-update | --iterations | \
      --lrc-start | --autosave-rate | --update-rate | --seed | --upper | --lower | --node | \
      --first-input | --second-input | --width | --height)
      COMPREPLY=()
      ;;
    *) return 1 ;;
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
    report:0) _tarn_cli_words 'information weights outputs statistics tolerance threshold divergence' ;;
    plot:0)
      _tarn_cli_words 'rms test-rms learn-rate correlation test-correlation tolerance
        test-tolerance scatter outputs error inputs interrogator hidden contour'
      ;;
    restore:0) _tarn_cli_files '*' ;;
    restore:1) COMPREPLY=() ;;
    new:0 | set:0 | train:0 | recall:0 | report:1 | plot:1 | restore:2) _tarn_cli_files '*.net' ;;
    *) COMPREPLY=() ;;
  esac
}

_tarn_cli() {
  local cur=${COMP_WORDS[COMP_CWORD]} command='' option='' word
  local -i arguments=0 i
  local -a words=()
  COMPREPLY=()
  # An option with "=" is three words here.
  for ((i = 1; i < COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    if [[ "$word" == '=' ]]; then continue; fi
    words+=("$word")
  done
  if [[ "$cur" == '=' ]]; then cur=''; fi
  local -i count=${#words[@]}
  for ((i = 0; i < count; ++i)); do
    word=${words[i]}
    if [[ "$word" == -* ]]; then
      if ! _tarn_cli_value "$word"; then continue; fi
      if ((i + 1 == count)); then
        option=$word
      fi
      i+=1
    elif [[ -z "$command" ]]; then
      command=$word
    else
      arguments+=1
    fi
  done
  COMPREPLY=()
  if [[ -n "$option" ]]; then
    _tarn_cli_value "$option"
  elif [[ "$cur" == -* ]]; then
    _tarn_cli_options
  elif [[ -z "$command" ]]; then
    _tarn_cli_words 'new set train recall report plot restore'
  else
    _tarn_cli_argument "$arguments"
  fi
}

complete -F _tarn_cli tarn-cli
