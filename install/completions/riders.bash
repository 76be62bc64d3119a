# Completion for riders in bash. The program itself knows what can come next, so this lists nothing.

_riders() {
  # shellcheck disable=SC2034  # for _init_completion
  local cur prev words cword
  _init_completion -n =:@ || return

  local lines line kind=
  mapfile -t lines < <("${1/#\~\//$HOME/}" --complete-line "${words[@]:1:cword}" 2>/dev/null)
  for line in "${lines[@]}"; do
    case $line in
      :*) kind=$line ;;
      *) COMPREPLY+=("${line%%$'\t'*}") ;;
    esac
  done

  # Of a word like --spot=round, or Cyan:60, only what follows the sign is replaced.
  local sign
  for sign in = : @; do
    if [[ $COMP_WORDBREAKS == *$sign* && $cur == *$sign* ]]; then
      COMPREPLY=("${COMPREPLY[@]#"${cur%"$sign"*}$sign"}")
      cur=${cur##*"$sign"}
    fi
  done
  [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *: ]] || compopt -o nospace

  # Where no file has one of the endings, all are offered.
  # shellcheck disable=SC2034  # for _filedir
  local COMP_FILEDIR_FALLBACK=yes
  case $kind in
    :folders) _filedir -d ;;
    ":files "*) kind=${kind#:files } && _filedir "@(${kind// /|})" ;;
    :files) _filedir ;;
  esac
} &&
  complete -F _riders riders riders-printer
