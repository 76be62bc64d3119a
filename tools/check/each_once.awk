# Prints each finding once: a line "file:line:column: kind: message [check]" and the lines that belong to it. Several
# groups may have read the same header. At the end says again where, and what.
function finish() {
  if (text != "" && !(text in printed)) {
    printed[text] = 1
    printf "%s", text
    if (place != "") places[++count] = place
  }
  text = place = ""
}

FNR == 1 {
  finish()
  tidy = FILENAME !~ /\/(scripts|cppcheck)\.output$/
  name = FILENAME
  gsub(/.*\/|\.output$/, "", name)
  names = names " " name
}
/^[^ ][^:]*:[0-9]+:[0-9]+: [a-z]+: / && !(tidy && /: note: /) {
  finish()
  place = $0
  sub(/:[0-9]+: .*/, "", place)
  if (match($0, /\[[^][]*\]$/)) place = place " " substr($0, RSTART + 1, RLENGTH - 2)
  sub(/,-warnings-as-errors/, "", place)
}
{ text = text $0 "\n" }
END {
  finish()
  print "\nFound by" names ":"
  for (i = 1; i <= count; ++i) print "  " places[i]
}
