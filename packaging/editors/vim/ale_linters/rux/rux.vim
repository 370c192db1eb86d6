" Lets ALE use the language server.

call ale#Set('rux_executable', 'rux')
call ale#Set('rux_options', '')

" A machine's scripts are below its project file or in one repository, or at least in one folder.
function! ale_linters#rux#rux#GetProjectRoot(buffer) abort
  let l:settings = ale#path#FindNearestFile(a:buffer, '.rux.json')
  if !empty(l:settings)
    return fnamemodify(l:settings, ':h')
  endif
  let l:repository = ale#path#FindNearestDirectory(a:buffer, '.git')
  if !empty(l:repository)
    return fnamemodify(l:repository, ':h:h')
  endif
  return fnamemodify(bufname(a:buffer), ':p:h')
endfunction

call ale#linter#Define('rux', {
\   'name': 'rux',
\   'lsp': 'stdio',
\   'executable': {buffer -> ale#Var(buffer, 'rux_executable')},
\   'command': {buffer -> '%e lsp' . ale#Pad(ale#Var(buffer, 'rux_options'))},
\   'project_root': function('ale_linters#rux#rux#GetProjectRoot'),
\})
