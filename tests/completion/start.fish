set -g fish_complete_path $HOME $fish_complete_path
set -g fish_autosuggestion_enabled 0
function fish_prompt; echo '% '; end
