# Does what a Markdown page shows and prints the page as it is then: a page that is true comes out
# unchanged. Run by page.sh, in a folder of the page's own.
#
# What it looks at are fenced blocks, by their first word, and tables between comments:
#
#   ```console                 every line "$ COMMAND" is run; what follows is what it prints
#   ```console from=FILE       commands that are in FILE of the tree, which is run elsewhere
#   ```console needs=PROGRAM   the same, unless the program is not installed
#   ```rux accepted            a script that rux check says nothing about
#   ```rux warned, rejected    one that it warns of, or refuses, with these comments:
#       KEY = 1  # error: TEXT     of the line, without the names in front
#       #^ warning: TEXT           the same of the line above
#   ```rux unchecked           a script that commands further down look at
#   ```bytes FILE              lines "OFFSET  BYTES | MEANING" that make up all of FILE; xx is any
#                              byte, "00 * 12" is twelve bytes
#   <!-- table WHAT -->        rows whose first columns are made of what language_tables prints; see
#   <!-- end -->               facts_of; further columns belong to the page
#
# "save=NAME" after the first words keeps a block as a file for commands further down, "with=NAME"
# lets a script be followed by one that was kept. Blocks that begin with text, sh or cmake are for
# people alone, as are cpp blocks that are not kept.

function put(file, text) {
  if (file ~ /\//) system("mkdir -p \"$(dirname '" file "')\"")
  printf "%s", text > file
  close(file)
}

function output_of(command,    line, text) {
  text = ""
  while ((command | getline line) > 0) text = text line "\n"
  close(command)
  return text
}

# Every file would be of another time.
function steady(text) {
  gsub(/created [0-9][0-9-]+ [0-9][0-9:]+ UTC/, "created 2026-01-01 12:00:00 UTC", text)
  return text
}

function contents(file) { return output_of("cat '" file "'") }

function option(name,    i) {
  for (i = 2; i <= words; ++i)
    if (index(word[i], name "=") == 1) return substr(word[i], length(name) + 2)
  return ""
}

function run_commands(    n, i, line, lines, command) {
  if (option("needs") != "" && system("command -v " option("needs") " >/dev/null") != 0) {
    printf "%s", body
    return
  }
  n = split(body, lines, "\n") - 1
  for (i = 1; i <= n; ++i) {
    if (substr(lines[i], 1, 2) != "$ ") continue
    print lines[i]
    command = substr(lines[i], 3)
    while (i < n && substr(lines[i + 1], 1, 2) == "> ") {
      print lines[++i]
      command = command "\n" substr(lines[i], 3)
    }
    if (option("from") != "") {
      if (index("\n" contents(option("from")), "\n" command) == 0) print "!! not in " option("from")
      continue
    }
    put(".command", command "\n")
    printf "%s", steady(output_of("sh ./.command 2>&1 </dev/null"))
  }
}

# The marks of a script, and what rux check says of it, by line: "error: TEXT\n".
function read_marks(    n, i, at, lines) {
  n = split(body, lines, "\n")
  for (i = 1; i <= n; ++i) {
    if (lines[i] !~ /^#\^/) at = i
    if (!match(lines[i], /#\^? (error|warning): /)) continue
    marks[at] = marks[at] substr(lines[i], index(substr(lines[i], RSTART), " ") + RSTART) "\n"
    last = at > last ? at : last
  }
}

function read_messages(file,    n, i, lines, line, text) {
  n = split(output_of("rux check " file " 2>&1"), lines, "\n")
  for (i = 1; i <= n; ++i) {
    if (index(lines[i], file ":") != 1) continue
    text = substr(lines[i], length(file) + 2)
    if (!match(text, /^[0-9]+[-:0-9]*: (error|warning): /)) continue
    line = text + 0
    sub(/^[-:0-9]+: /, "", text)
    # The names of section and entry are in the line itself; of the message, its text is enough.
    sub(/ \[[a-z0-9-]+\]$/, "", text)
    sub(/: \[[^]]*\][^:]*: /, ": ", text)
    messages[line] = messages[line] text "\n"
    last = line > last ? line : last
  }
}

function check_script(    file, verdict, line) {
  file = option("save")
  if (file == "") file = "example.rux"
  put(file, body (option("with") != "" ? "\n" contents(option("with")) : ""))
  split("", marks)
  split("", messages)
  last = 0
  read_marks()
  read_messages(file)
  printf "%s", body
  for (line = 1; line <= last; ++line)
    if (marks[line] != messages[line])
      printf "!! line %d says\n%s!! and rux check\n%s", line, marks[line], messages[line]
  verdict = system("rux check " file " >.checked 2>&1") != 0 ? "rejected" \
            : contents(".checked") ~ /: 0 errors, 0 warnings\n$/ ? "accepted" : "warned"
  if (word[2] != verdict) print "!! rux check: " verdict
}

function compare_bytes(file,    count, at, n, i, j, k, lines, have, cut, tokens, bytes) {
  count = split(output_of("od -An -v -tx1 " file), have, /[ \n]+/)
  # The split leaves an empty piece at both ends.
  at = 2
  n = split(body, lines, "\n") - 1
  for (i = 1; i <= n; ++i) {
    cut = index(lines[i], " |")
    if (cut == 0) {
      print lines[i]
      continue
    }
    k = split(substr(lines[i], 1, cut), tokens, " ")
    bytes = ""
    if (tokens[3] == "*") {
      for (j = 0; j < tokens[4] && have[at + j] == tokens[2]; ++j) continue
      bytes = " " tokens[2] " * " j
      at += j
    } else {
      for (j = 2; j <= k; ++j) {
        bytes = bytes " " (tokens[j] == "xx" ? "xx" : have[at])
        ++at
      }
    }
    # Columns as they are in the page.
    printf "%-" (cut - 1) "s%s\n", sprintf("%s ", tokens[1]) bytes, substr(lines[i], cut)
    if (hex(tokens[1]) != seen) printf "!! this is byte %d\n", seen
    seen = at - 2
  }
  if (at != count) printf "!! %d bytes follow\n", count - at
  seen = 0
}

function hex(text,    i, value) {
  for (i = 1; i <= length(text); ++i)
    value = 16 * value + index("0123456789abcdef", substr(text, i, 1)) - 1
  return value
}

function first_cell(row) { return substr(row, 1, index(substr(row, 3), " | ") + 2) }

# Of the tables of the language, of the texts of messages, of scripts/packages.txt, or of the help of
# rux.
function facts_of(what,    table) {
  if (what == "packages")
    return output_of("sed -n 's/^\\([a-z]*\\) \\(.*\\)/| `\\2` | \\1 /p' scripts/packages.txt")
  if (what == "commands")
    return output_of("rux --help | sed -n '/^Commands/,/^$/s/^  \\([a-z-]*\\)  *\\(.*\\)/| `rux \\1` | \\2 /p'")
  if (what == "texts") return output_of("message_texts")
  table = what ~ /^keys of / ? "keys" : what
  gsub(/ /, "-", table)
  return output_of("language_tables " table " 2>&1 | awk -v what='" what "' -f tests/docs/rows.awk")
}

# Rows keep what they have to the right of the facts.
function regenerate_table(    n, i, columns, facts, own, line) {
  n = 0
  split("", own)
  while ((getline line) > 0 && line != "<!-- end -->") {
    if (++n <= 2) print line
    else own[first_cell(line)] = line
  }
  n = split(facts_of(word[3]), facts, "\n") - 1
  for (i = 1; i <= n; ++i) {
    line = own[first_cell(facts[i])]
    columns = gsub(/ \| /, "&", facts[i]) + 1
    for (; columns > 0; --columns) line = substr(line, index(line, " |") + 2)
    print facts[i] "|" line
  }
  print "<!-- end -->"
}

function do_block() {
  if (word[1] == "console") return run_commands()
  if (word[1] == "rux" && word[2] != "unchecked") return check_script()
  if (word[1] == "bytes") return compare_bytes(word[2])
  if (option("save") != "") put(option("save"), body)
  printf "%s", body
  if (option("save") == "" && word[1] !~ /^(text|sh|cmake|cpp)$/) print "!! what is this block?"
}

/^```/ {
  print
  words = split(substr($0, 4), word, " ")
  body = ""
  while ((getline line) > 0 && line != "```") body = body line "\n"
  do_block()
  print "```"
  next
}

/^<!-- table / {
  print
  split($0, word, " ")
  sub(/^<!-- table /, "")
  sub(/ -->$/, "")
  word[3] = $0
  regenerate_table()
  next
}

{ print }
