fpath=($HOME $fpath)
autoload -Uz compinit
compinit -u -d $HOME/.zcompdump
unsetopt auto_list auto_menu beep
PS1='% '
