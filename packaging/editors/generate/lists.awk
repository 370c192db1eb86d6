# Reads the tables "keys" and "operators" of the language, as language_tables prints them:
#
#   KIND key KEY NEED PAYLOAD         a key of sections of the kind
#   KIND prefix PREFIX NEED PAYLOAD   keys that begin so, with names of the script's own
#   KIND any - NEED PAYLOAD           any other key
#   OPERATOR CODE CLASS
#
# and prints one list, with the functions of vim.awk or textmate.awk.
BEGIN { FS = "\t" }

# Keys of the same kind that look the same and have the same form of values make one rule.
function add(style, pattern, value,    i) {
  for (i = 1; i <= rule_count; ++i) {
    if (rule_kind[i] == $1 && rule_style[i] == style && rule_value[i] == value) {
      rule_pattern[i] = rule_pattern[i] or_else() pattern
      return
    }
  }
  ++rule_count
  rule_kind[rule_count] = $1
  rule_style[rule_count] = style
  rule_value[rule_count] = value
  rule_pattern[rule_count] = pattern
}

# What follows the "=". The rows of a table are texts only to the library.
function value_form() {
  if ($5 == "text" && !($1 == "TABLE" && $2 == "any")) return "Texts"
  return $5 == "value" ? "Values" : "Numbers"
}

NF == 3 {
  operators = operators (operators == "" ? "" : or_else()) escaped($1)
  next
}
!($1 in known) {
  known[$1]
  kinds[++kind_count] = $1
}
$2 == "key" { add("Key", $3, value_form()) }
$2 == "prefix" { add("Name", $3 rest_of_key(), value_form()) }
# The rows of a table begin with a digit, names must not.
$2 == "any" { add("Name", ($1 == "TABLE" ? digit() : beginning_of_name()) rest_of_key(), value_form()) }

END {
  if (list == "operators") print_operators(operators)
  if (list == "kinds")
    for (i = 1; i <= kind_count; ++i) print_kind(kinds[i])
}
