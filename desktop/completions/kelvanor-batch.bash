# Completion of kelvanor-batch for bash.
_kelvanor_batch() {
  local cur prev words cword
  _init_completion -s || return
  local as_play='--script --game --games --rolls --seed --rng --out --force --help'
  case $prev in
    --script) _filedir bet && return ;;
    --game) _filedir crp && return ;;
    --out) _filedir '@(glg|rol)' && return ;;
    --details) _filedir csv && return ;;
    --rng) mapfile -t COMPREPLY < <(compgen -W '1 2 8' -- "$cur") && return ;;
    --games | --rolls | --seed | --shard | --jobs | --until-within | --index | --column | --break-point)
      return
      ;;
  esac
  local options=
  case ${words[1]} in
    play) options="$as_play --shard --jobs --details --until-within --resume" ;;
    tape) options="$as_play --index" ;;
    merge) options='--force --help' ;;
    figures) options='--column --break-point --json --help' ;;
    compare) options='--column --json --help' ;;
  esac
  if ((cword == 1)); then
    mapfile -t COMPREPLY < <(compgen -W 'play tape merge figures compare --help --version' -- "$cur")
  elif [[ $cur == -* || ${words[1]} == play || ${words[1]} == tape ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
  else
    _filedir '@(glg|csv)'
  fi
} &&
  complete -F _kelvanor_batch kelvanor-batch
