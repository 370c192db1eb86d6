# Types the rows of rows.txt into a real shell in a terminal of its own, and compares what it makes of
# them.
#
#   zsh -f typed.zsh SHELL SOURCE BUILD
emulate -R zsh
setopt no_unset
zmodload zsh/zpty zsh/system

zpty -b probe true 2>/dev/null || { print 'skipped: the system has no pseudo-terminals'; exit 0 }
zpty -d probe

shell=$1 source=${2:A} build=${3:A}
work=$build/tests/completion/$shell
rm -rf $work
mkdir -p $work/home/completions $work/bin
cd $work

# The shell's own way of finding completions: as if they were installed.
ln -s $source/packaging/completion/rux.bash home/completions/rux
ln -s $source/packaging/completion/_rux $source/packaging/completion/rux.fish home
export HOME=$work/home XDG_CONFIG_HOME=$work/home XDG_DATA_HOME=$work/home XDG_CACHE_HOME=$work/home
export BASH_COMPLETION_USER_DIR=$work/home PATH=$work/bin:$build/bin:$PATH TERM=xterm LC_ALL=C.UTF-8
typeset -A start=(
  bash 'bash --noprofile --rcfile $source/tests/completion/start.bash -i'
  zsh 'ZDOTDIR=$source/tests/completion/zsh zsh -d -i'
  fish 'fish --no-config --init-command "source $source/tests/completion/start.fish"'
)

# The files that the rows are about.
sh $source/tests/completion/files.sh $source >files.log 2>&1 || { cat files.log; exit 1 }
mkfifo answer
cat >bin/show <<'END'
#!/bin/sh
{ printf '<%s>' "$@"; echo; } >"$HOME/../answer"
END
chmod +x bin/show

source=$source zpty -b shell "stty rows 50 cols 300; ${(e)start[$shell]}"
# Kept open, so that neither side waits for the other to open it.
exec {answers}<>answer

# Sends keys. What the terminal shows is read away: it would fill up.
type_keys() {
  local shown
  zpty -w -n shell "$1"
  while zpty -r -t shell shown; do print -rn -- "$shown" >>screen; done
  return 0
}

# The words of the line after these keys, as the shell reads them: "show" is put in front of it and
# run.
words_after() {
  type_keys "$1"
  type_keys $'\x01show \r'
  integer waited=0
  while ! read -r -t 0.02 -u $answers reply; do
    type_keys ''
    (( ++waited < 30000 )) || {
      print -r -- "$shell does not answer to ${(q+)1}; the terminal shows:"
      tail -c 400 screen | tr -d '\0' | cat -v
      exit 1
    }
  done
}

integer failed=0
while IFS= read -r row; do
  [[ $row == (\#*|) ]] && continue
  keys=${(g::)${row%% => *}} wanted=${row#* => }
  for own in ${(s: | :)wanted}; do
    # "zsh: ..." is for this shell alone.
    [[ $own == $shell:* ]] && { wanted=${own#*: }; break }
    [[ $own == (bash|zsh|fish):* ]] || wanted=$own
  done
  words_after $keys
  [[ $reply == ${(g::)wanted} ]] && continue
  print -r -- "$row"
  print -r -- "  $shell: ${(V)reply}"
  failed=1
done <$source/tests/completion/rows.txt
zpty -d shell
exit $failed
