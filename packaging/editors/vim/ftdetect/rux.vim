autocmd BufNewFile,BufRead *.rux setfiletype rux
