" :make checks the script.
if exists('current_compiler')
  finish
endif
let current_compiler = 'rux'

CompilerSet makeprg=rux\ check\ --format\ gcc\ --\ %:S
CompilerSet errorformat=%f:%l:%c:\ %trror:\ %m,%f:%l:%c:\ %tarning:\ %m,%f:%l:%c:\ %tote:\ %m,
      \%f:%l:\ %trror:\ %m,%f:%l:\ %tarning:\ %m,%f:%l:\ %tote:\ %m
