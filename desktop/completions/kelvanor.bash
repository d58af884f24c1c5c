# Completion of kelvanor for bash.
_kelvanor() {
  local cur prev words cword
  _init_completion || return
  if [[ $cur == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '--help --version' -- "$cur")
  else
    _filedir '@(crp|bet|rol|prb|glg)'
  fi
} &&
  complete -F _kelvanor kelvanor
