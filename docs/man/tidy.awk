# scdoc begins paragraphs also where none stands: behind headings, and before them.
/^\.P$/ { held = 1; next }
/^\.RE$/ { print; next }
{
  if (held && !after_heading && $0 !~ /^\.S[HS]/) print ".P"
  held = 0
  after_heading = $0 ~ /^\.S[HS]/
  print
}
