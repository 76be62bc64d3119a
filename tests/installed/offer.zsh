# offer.zsh FOLDER TYPED...: prints what zsh offers after "riders " and what is typed. It is asked in a terminal of
# its own, since its completion works nowhere else.
zmodload zsh/zpty
folder=$1
shift

zpty shell zsh -f -i
zpty -w shell "PS1=; unsetopt prompt_sp; fpath=($folder \$fpath); autoload -Uz compinit; compinit -u -D"
# What is added is also printed, in brackets; calls with -O, -A or -D only ask what would be.
zpty -w shell '
compadd() {
  builtin compadd "$@" || return
  [[ " ${@[1,(i)(-|--)]}" == *" -"[OAD]* ]] && return
  local -a added
  builtin compadd -A added "$@"
  (( $#added )) && printf "<%s>\n" $added
  return 0
}
offer() { print BEGUN; zle list-choices; print ENDED; zle kill-buffer }
zle -N offer; bindkey "^G" offer; print READY-$((1 + 1))'
zpty -r shell out '*READY-2*'
for typed in "$@"; do
  zpty -w -n shell "riders $typed"$'\C-g'
  zpty -r shell out '*ENDED*'
  print -r -- "== $typed"
  print -r -- ${out#*BEGUN} | tr -d '\r' | sed -n 's/^.*<\(.*\)>$/\1/p'
done
zpty -d shell
