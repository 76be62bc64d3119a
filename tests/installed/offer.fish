# offer.fish SCRIPT TYPED...: prints what fish offers after "riders " and what is typed.
source $argv[1]
for typed in $argv[2..-1]
    echo "== $typed"
    complete -C "riders $typed"
end
