# shellcheck shell=bash
# Completion of tarn for bash. Needs nothing but bash itself.

_tarn() {
  local cur=${COMP_WORDS[COMP_CWORD]} file
  if [[ "$cur" == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '-h --help --version' -- "$cur")
    return
  fi
  compopt -o filenames 2> /dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$cur")
  # Folders have been found already.
  while IFS= read -r file; do
    if [[ ! -d "${file/#\~/$HOME}" ]]; then COMPREPLY+=("$file"); fi
  done < <(compgen -f -X '!*.net' -- "$cur")
}

complete -F _tarn tarn
