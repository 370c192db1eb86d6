" Writes the classes of the texts of marks.txt, "LINE TEXT CLASS", and after them what is wrong in the
" examples, in which there is nothing wrong.
set nocompatible nomore
execute 'set runtimepath^=' . $VIM_FILES
filetype plugin on
syntax on

let s:classes = {'Comment': 'comment', 'Skipped': 'skipped', 'Error': 'error', 'Unclosed': 'error',
      \ 'Tail': 'error', 'TooLong': 'error', 'Header': 'header', 'Key': 'key', 'Name': 'name',
      \ 'String': 'string', 'Number': 'number', 'Type': 'type', 'Operator': 'operator',
      \ 'Reference': 'reference', 'Join': 'joint'}

" The keys have a group for each kind of section and of value: ruxSENSORKeyTexts.
function s:ClassAt(line, column)
  let name = synIDattr(synID(a:line, a:column, 1), 'name')[3:]
  let key = matchstr(name, '\(Key\|Name\)\ze\(Texts\|Numbers\|Values\)$')
  return get(s:classes, key == '' ? name : key, '-')
endfunction

let s:out = []
edit $SAMPLE
for s:mark in filter(readfile($MARKS), 'v:val !~# "^#"')
  let [s:line, s:text, s:class] = split(s:mark)
  let s:column = stridx(getline(s:line), s:text)
  if s:column < 0
    let s:column = stridx(getline(s:line), substitute(s:text, '_', ' ', 'g'))
  endif
  call add(s:out, join([s:line, s:text, s:ClassAt(s:line, s:column + 1)]))
endfor

for s:example in glob($EXAMPLES . '/**/*.rux', 0, 1)
  execute 'edit' fnameescape(s:example)
  for s:line in range(1, line('$'))
    let s:column = match(getline(s:line), '\S')
    while s:column >= 0
      if index(['error', 'skipped'], s:ClassAt(s:line, s:column + 1)) >= 0
        call add(s:out, s:example . ':' . s:line . ': ' . getline(s:line)[s:column :])
      endif
      let s:column = match(getline(s:line), '\s\zs\S', s:column)
    endwhile
  endfor
endfor
call writefile(s:out, $OUT)
quitall!
