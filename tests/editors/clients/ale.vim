" What Vim shows of the language server, by ALE. Waits for what has to come, however long it takes.
function s:Show(...)
  call writefile([join(a:000, '')], $OUT, 'a')
endfunction

" As if typed, in normal mode.
function s:Keys(text)
  call feedkeys(a:text, 'xt')
endfunction

function s:Findings()
  return getloclist(0)
endfunction

" What is on the screen below a line.
function s:Underlines()
  return filter(getmatches(), 'v:val.group =~# "^ALE"')
endfunction

function s:ShowFinding()
  while empty(s:Findings()) || empty(s:Underlines())
    sleep 5m
  endwhile
  for l:mark in s:Underlines()
    let [l:line, l:column, l:length] = l:mark.pos1
    call s:Show(getline(l:line))
    call s:Show(repeat(' ', l:column - 1), repeat('^', l:length))
    let l:group = tolower(l:mark.group[3:])
    for l:finding in s:Findings()
      call s:Show(l:group, ': ', l:finding.text)
    endfor
  endfor
endfunction

function s:TypeTypo()
  call s:Show('A typo at the end of line 29:')
  call s:Keys("29GAW\<Esc>")
  call s:ShowFinding()
  call s:Show('')
endfunction

" Instead of somebody who answers.
runtime autoload/ale/util.vim
function! ale#util#Input(text, ...)
  call s:Show('The fix, ', matchstr(a:text, '1) \zs[^\n]*'), ':')
  return '1'
endfunction

function s:TakeFix()
  let l:typo = getline(29)
  ALECodeAction
  while getline(29) ==# l:typo
    sleep 5m
  endwhile
  " Vim notices changes between typed commands, and scripts are without.
  doautocmd TextChanged
  while !empty(s:Findings())
    sleep 5m
  endwhile
  call s:Show(getline(29))
  call s:Show('no findings')
endfunction

function s:Session()
  edit fans.rux
  call s:TypeTypo()
  call s:TakeFix()
endfunction

try
  call s:Session()
catch
  call s:Show(v:throwpoint, ': ', v:exception)
endtry
quitall!
