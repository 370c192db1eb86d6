# Makes the files that are completed in rows.txt, in the current folder.
set -eu
rux compile "$1/tests/tool/boards/bench.rux" -o bench.meta -g bench.metad
cat >odd.rux <<'END'
[TABLE]
NAME = "it's $HOME, 50% \x & (more)!"
TYPE = 1
[TABLE]
NAME = "two  blanks/and a slash"
TYPE = 3
END
printf '[TABLE]\nNAME = caf\351\nTYPE = 4\n[TABLE]\nNAME = na\303\257ve\nTYPE = 5\n' >>odd.rux
printf '[TABLE]\nNAME = `x`*?~#{1}\nTYPE = 6\n' >>odd.rux
printf '[TABLE]\nNAME = x:y=z@w\nTYPE = 7\n' >>odd.rux
rux compile odd.rux
head -c 500 bench.meta >damaged.meta
mkdir folder 'blank folder'
: >'blank folder/a script.rux'
: >other.txt
