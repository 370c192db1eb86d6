# The lists as rules of a TextMate grammar.
function or_else() { return "|" }
function digit() { return "\\d" }
function beginning_of_name() { return "[^=\\d\\s#;\\[]" }
function rest_of_key() { return "[^=]*?" }
function escaped(operator) {
  gsub(/[*|^+]/, "\\\\&", operator)
  return operator
}

function json(text) {
  gsub(/\\/, "\\\\&", text)
  return "\"" text "\""
}
function captures(first, second, third) {
  return "{\"1\": {\"name\": \"" first "\"}, \"2\": {\"name\": \"" second "\"}" \
    (third == "" ? "" : ", \"3\": {\"name\": \"" third "\"}") "}"
}

function print_kind(kind,    i, bracket) {
  bracket = "punctuation.definition.section.rux"
  print "        {"
  print "          \"name\": \"meta.section." tolower(kind) ".rux\","
  print "          \"begin\": " json("^\\s*(\\[)\\s*(" kind ")\\s*(\\])") ","
  print "          \"beginCaptures\": " captures(bracket, "entity.name.section.rux", bracket) ","
  print "          \"end\": " json("(?=^\\s*\\[)") ","
  print "          \"patterns\": ["
  for (i = 1; i <= rule_count; ++i) if (rule_kind[i] == kind) print_rule(i)
  print "            {\"include\": \"#comment\"}"
  print "          ]"
  print "        },"
}
function print_rule(i,    name) {
  name = rule_style[i] == "Key" ? "support.type.property-name.rux" : "variable.other.member.rux"
  print "            {"
  print "              \"begin\": " json("^\\s*(" rule_pattern[i] ")\\s*(?:(=)|$)") ","
  print "              \"beginCaptures\": " captures(name, "punctuation.separator.key-value.rux") ","
  print "              \"end\": " json("(?<![\\\\\\n])$") ","
  print "              \"patterns\": [{\"include\": \"#" tolower(rule_value[i]) "\"}]"
  print "            },"
}

function print_operators(pattern) {
  print "        {"
  print "          \"name\": \"keyword.operator.rux\","
  print "          \"match\": " json("(?<=[,\\s])(?:" pattern ")(?=\\s*(?:[,\\\\]|$))")
  print "        },"
}
