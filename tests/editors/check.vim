" :make, as after :compiler rux.
set nocompatible nomore
execute 'set runtimepath^=' . $VIM_FILES
filetype plugin on
edit board.rux
compiler rux
silent! make!
let s:out = []
for s:found in getqflist()
  if s:found.valid && s:found.type !=? 'n'
    call add(s:out, bufname(s:found.bufnr) . ':' . s:found.lnum . ': ' . tolower(s:found.type))
  endif
endfor
" Comments are made with what the file type says.
if &commentstring !=# '# %s'
  call add(s:out, 'commentstring: ' . &commentstring)
endif
call writefile(sort(s:out), $OUT)
quitall!
