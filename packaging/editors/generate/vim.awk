# The lists as commands of Vim.
function or_else() { return "\\|" }
function digit() { return "\\d" }
function beginning_of_name() { return "[^=[:digit:][:blank:]#;[]" }
function rest_of_key() { return "[^=]\\{-}" }
function escaped(operator) {
  gsub(/[*\/^]/, "\\\\&", operator)
  return operator
}

function print_kind(kind,    i, group) {
  # Of two that match, the last one counts.
  for (i = rule_count; i > 0; --i) {
    if (rule_kind[i] != kind) continue
    group = "rux" kind rule_style[i] rule_value[i]
    print "syntax match " group " contained nextgroup=rux" rule_value[i] " skipwhite"
    print "      \\ /^\\s*\\zs\\%(" rule_pattern[i] "\\)\\ze\\s*\\%(=\\|$\\)/"
    print "highlight default link " group " rux" rule_style[i]
  }
  print "syntax region rux" kind " matchgroup=ruxHeader contains=ruxComment,rux" kind ".* fold"
  print "      \\ start=/^\\s*\\[\\s*" kind "\\s*\\]/ end=/^\\ze\\s*\\[/"
}

function print_operators(pattern) {
  print "syntax match ruxOperator contained"
  print "      \\ /[,[:blank:]]\\@1<=\\%(" pattern "\\)\\ze\\s*\\%([,\\\\]\\|$\\)/"
}
