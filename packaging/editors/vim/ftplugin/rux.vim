" Hardware-description scripts.
if exists('b:did_ftplugin')
  finish
endif
let b:did_ftplugin = 1

setlocal commentstring=#\ %s comments=:#,:;
setlocal formatoptions-=t formatoptions+=croql
" From section to section.
nnoremap <buffer> <silent> ]] :<C-U>call search('^\s*\[', 'W')<CR>
nnoremap <buffer> <silent> [[ :<C-U>call search('^\s*\[', 'bW')<CR>

let b:undo_ftplugin = 'setlocal commentstring< comments< formatoptions<'
      \ . '| silent! nunmap <buffer> ]]| silent! nunmap <buffer> [['
