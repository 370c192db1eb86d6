# Turns a table of the language, as language_tables prints it, into rows of a table of the manual.
#
#   language_tables TABLE | awk -v what=WHAT -f rows.awk
#
# WHAT is "keys of KIND", or the name of the table with blanks for dashes.
BEGIN { FS = "\t" }

function code(text) { return "`" text "`" }
function hex_cell(text) { return text == "-" ? "-" : code(text) }
# A bar would end the cell.
function escaped(text) {
  gsub(/\|/, "\\|", text)
  return text
}
# An entry whose key is the script's to choose: "any (table row)".
function free_name(name) {
  name = tolower(name)
  gsub(/_/, " ", name)
  return "any (" name ")"
}
function range(from, to, open_end) {
  if (from == to) return from
  return from (to ~ /any|last/ ? open_end : " to " to)
}

what == "sections" { print "| " code("[" $1 "]") " | " hex_cell($2) " | " hex_cell($3) " " }

what == "entries" {
  print "| " ($2 == "-" ? free_name($1) : code($2)) " | " hex_cell($3) " | " \
    ($5 == "-" ? hex_cell($4) : "index in " code($5)) " "
}

function key_cell() {
  if ($2 == "key") return code($3)
  if ($2 == "prefix") return code($3) "..."
  return has_keys ? "any other" : "any"
}
what == "keys of " $1 {
  if ($2 == "key") has_keys = 1
  print "| " key_cell() " | " $4 " | " $5 " "
}

what == "operators" { print "| " code(escaped($1)) " | " $2 " | " $3 " " }

function parts(    i, list) {
  for (i = 5; i < NF; i += 3) {
    list = list (list == "" ? "" : ", ") $i
    if ($(i + 1) == "list") list = list " ..."
    else if ($(i + 2) !~ /^oper/) list = list " (" $(i + 2) ")"
  }
  return list == "" ? "-" : list
}
# A calculation has a line for each count of its parts.
what == "value types" {
  if (type != "" && $1 == type) {
    counts = counts " or " $2
    next
  }
  if (type != "") print row counts " "
  type = $1
  row = "| " $1 " | " parts() " | "
  counts = $4 == "keeps-surplus" ? $2 "; more draw a warning" : range($2, $3, " or more")
}

what == "profile" { print "| " code($1) " | " $2 " | " $3 " | " $4 " " }
what == "type meanings" { print "| " code($1) " | " $2 " | " $3 " " }

what == "last errors" { print "| " $1 " | " code("RUX_ERROR_" $2) " | " $3 " " }

what == "symbol tables" {
  print "| " code($1) " | " code("g_tbl" $2) " | " code("RUX_CLASS_" $2) " "
}

# Types with the same selectors share rows.
what == "selectors" {
  facts = $2 " | " code("RUX_SELECT_" $3) " | " code($4) " | " range($5, $6, " or more") " | " \
    range($7, $8, " to last")
  if (facts in types && types[facts] != "repeater" && $1 != "repeater") {
    types[facts] = types[facts] ", " $1
  } else {
    facts_of_row[++selectors] = facts
    types[facts] = $1
  }
}

END {
  if (what == "value types") print row counts " "
  for (i = 1; i <= selectors; ++i) print "| " types[facts_of_row[i]] " | " facts_of_row[i] " "
}
