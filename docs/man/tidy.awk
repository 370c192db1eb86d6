# scdoc begins paragraphs also where none stands: behind headings, and before them; and it takes titles
# and lines as it finds them, where readers of manual pages expect capitals and short lines.
/^\.P$/ { held = 1; next }
/^\.RE$/ { print; next }
/^\.nf/ { literal = 1 }
/^\.fi/ { literal = 0 }
/^\.TH / { $2 = toupper($2) }
{
  if (held && !after_heading && $0 !~ /^\.S[HS]/) print ".P"
  held = 0
  after_heading = $0 ~ /^\.S[HS]/
  if (!literal && !/^[.']/) fold()
  print
}

# Prints all of the line but its last 80 characters or less; never a line that would be a request.
function fold(    at) {
  while (length($0) > 80) {
    for (at = 80; at > 1 && (substr($0, at, 1) != " " || substr($0, at + 1, 1) ~ /[.' ]/); --at) continue
    if (at <= 1) return
    print substr($0, 1, at - 1)
    $0 = substr($0, at + 1)
  }
}
