# Completion of rux for bash, answered by rux itself: see tool/completion/completion.h.

# Splits the command line up to the cursor into words, without their quotes. Leaves in:
#   words     the words, the one at the cursor last
#   fragment  how much of it precedes what readline replaces: readline takes an open quote and
#             each of $COMP_WORDBREAKS for the beginning of a word
#   quote     the quote that is open at the cursor
_rux_split() {
  local line=${COMP_LINE:0:COMP_POINT} word='' started='' unquoted_fragment=0 i c
  words=() fragment=0 quote=''
  for ((i = 0; i < ${#line}; ++i)); do
    c=${line:i:1}
    case $quote$c in
      \'\' | \"\")
        quote=''
        fragment=$unquoted_fragment
        ;;
      \"\\ | \\)
        ((++i))
        c=${line:i:1}
        [[ $quote && $c != [\"\\\$\`] ]] && word+=\\
        word+=$c started=yes
        ;;
      \'? | \"?) word+=$c ;;
      \' | \")
        quote=$c started=yes
        unquoted_fragment=$fragment fragment=${#word}
        ;;
      [[:space:]])
        [[ $started ]] && words+=("$word")
        word='' started='' fragment=0
        ;;
      *)
        if [[ ! $started && ${line:i:2} == '~/' ]]; then word=$HOME; else word+=$c; fi
        started=yes
        [[ $COMP_WORDBREAKS == *"$c"* ]] && fragment=${#word}
        ;;
    esac
  done
  words+=("$word")
}

# Puts into the variable $2 what stands for the text $1 behind the quote that is open.
_rux_quoted() {
  local text=$1 special='' c i
  case $quote in
    \') text=${text//"'"/"'\''"} ;;
    \") special='\"$`' ;;
    *) special=$'\\ \t"\'`$&|;<>()[]{}*?!#~^' ;;
  esac
  [[ $text == *[!a-zA-Z0-9_/=.-]* ]] || special=''
  for ((i = 0; i < ${#special}; ++i)); do
    c=${special:i:1}
    [[ $text == *"$c"* ]] && text=${text//"$c"/"\\$c"}
  done
  # No backslash keeps history out of double quotes.
  [[ $quote == '"' ]] && text=${text//'!'/"\"'!'\""}
  printf -v "$2" %s "$text"
}

# Takes the lines that begin with the word $1.
_rux_words() {
  local word=$1 line text='' rest='' quoted
  shift
  for line; do
    [[ $line == "$word"* ]] || continue
    text=${line%%$'\t'*} rest=${line#*$'\t'} rest=${rest%%$'\t'*}
    _rux_quoted "${text:fragment}" quoted
    COMPREPLY+=("$quoted")
  done
  ((${#COMPREPLY[@]} == 1)) && [[ $rest || $text == *[/=] ]] || return
  compopt -o nospace
  # Readline would close the quote after the only word, but not after what two have in common.
  [[ $quote ]] && COMPREPLY+=("$quoted${rest:-...}")
}

# Files after the first $2 bytes of the word $1: those with an extension of $3 ... and folders, or all
# when there are none.
_rux_files() {
  local word=$1 front=${1:0:$2} name extension all=() fitting=()
  for name in "${1:$2}"*; do
    [[ -e $name || -L $name ]] || continue
    [[ -d $name ]] && name+=/
    all+=("$front$name")
    for extension in "${@:3}" /; do
      [[ $name == *"$extension" ]] && fitting+=("$front$name")
    done
  done
  [[ ${3-} && ${fitting[*]} ]] && all=("${fitting[@]}")
  _rux_words "$word" "${all[@]/%/$'\t\t'}"
}

_rux() {
  local words fragment quote answer
  _rux_split
  mapfile -t answer < <("${words[0]}" complete "${words[@]:1}" 2>/dev/null)
  COMPREPLY=()
  case ${answer[0]-} in
    words) _rux_words "${words[-1]}" "${answer[@]:1}" ;;
    files*)
      local fields
      IFS=$'\t' read -ra fields <<<"${answer[0]}"
      _rux_files "${words[-1]}" "${fields[@]:1}"
      ;;
  esac
}

complete -F _rux rux
