# offer.bash SCRIPT TYPED...: prints what bash offers after "riders " and what is typed, with bash-completion.
. /usr/share/bash-completion/bash_completion
# shellcheck disable=SC1090  # the script under test
. "$1"
shift
# Only a shell at a terminal can change the options of a completion that is running.
compopt() { :; }

for typed in "$@"; do
  echo "== $typed"
  COMP_LINE="riders $typed"
  read -ra COMP_WORDS <<<"${COMP_LINE//=/ = }"  # the sign is a word of its own to bash
  [[ $typed != *' ' ]] || COMP_WORDS+=('')
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMP_POINT=${#COMP_LINE}
  COMPREPLY=()
  _riders riders "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
  [ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}"
done
