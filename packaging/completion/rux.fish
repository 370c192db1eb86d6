# Completion of rux for fish, answered by rux itself: see tool/completion/completion.h.

function __rux_words --description 'What the word may become, from the lines about it' --argument-names word
    set -l lines $argv[2..]
    string replace --regex '\t[^\t]*\t' '\t' -- $lines
    # Fish puts a blank after the only word that fits, which is in the way when the word may go on.
    set -l fitting (string match --regex -- '^'(string escape --style=regex -- $word)'.*' $lines)
    if test (count $fitting) -eq 1
        set -l fields (string split \t -- $fitting)
        test -n "$fields[2]"; and printf '%s\t…\n' $fields[1]$fields[2]
    end
end

function __rux_files --description 'Files with these extensions after the first bytes of the word' --argument-names word size
    set -l prefix (string sub --length $size -- $word)
    set -l start (math $size + 1)
    set -l files (complete --do-complete "'' "(string escape -- (string sub --start $start -- $word)))
    set -l wanted (string match --regex -- '.*/$' $files)
    for extension in $argv[3..]
        set --append wanted (string match -- "*$extension" $files)
    end
    set -q argv[3]; and set files $wanted
    string replace --regex -- '^' (string escape --style=regex -- $prefix) $files
end

function __rux_complete
    set -l words (commandline --tokenize --cut-at-cursor --current-process)
    # Not cut at the cursor: an open quote would keep its token from being read.
    set -l word (commandline --tokenize --current-token)
    set words (string replace --regex '^~/' (string escape --style=regex -- $HOME/) -- $words)
    type --query $words[1]; or return
    set -l answer ($words[1] complete $words[2..] "$word" 2>/dev/null)
    set -l header (string split \t -- $answer[1])
    switch "$header[1]"
        case words
            __rux_words "$word" $answer[2..]
        case files
            __rux_files "$word" $header[2..]
    end
end

complete --command rux --no-files --arguments '(__rux_complete)'
