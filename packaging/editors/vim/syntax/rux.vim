" Hardware-description scripts.
if exists('b:current_syntax')
  finish
endif

syntax case match
" A value may go on for many lines.
syntax sync fromstart

" Comments begin at the beginning of a line or after a blank. A backslash at the end joins the next
" line to them as well.
syntax region ruxComment start=/\%(^\|[[:blank:]]\)\@1<=[#;]/ skip=/\\$/ end=/$/ contains=ruxTodo,@Spell
syntax keyword ruxTodo contained TODO FIXME XXX

" Sections of a kind that is not known are skipped, and so is what precedes the first one.
syntax match ruxSkipped /^\s*[^#;[:blank:][].*$/
syntax region ruxUnknown matchgroup=ruxError start=/^\s*\[[^]]*\]\?/ end=/^\ze\s*\[/ contains=ruxComment,ruxSkipped

" What follows the "=".
syntax region ruxTexts contained keepend start=/=/ skip=/\\$/ end=/$/ contains=ruxComment,ruxString,ruxUnclosed,ruxJoin
syntax region ruxNumbers contained keepend start=/=/ skip=/\\$/ end=/$/ contains=@ruxPart
syntax region ruxValues contained keepend start=/=/ skip=/\\$/ end=/$/ contains=@ruxPart,ruxType
syntax cluster ruxPart contains=ruxComment,ruxString,ruxUnclosed,ruxJoin,ruxReference,ruxNumber,ruxTooLong,ruxOperator
syntax match ruxJoin contained /\\$/
syntax region ruxString contained start=/"/ end=/"/ end=/\\\@1<!$/
syntax match ruxUnclosed contained /"[^"]*\\\@1<!$/
syntax match ruxType contained /\%(=\s*\)\@<=\h\w*/
syntax match ruxReference contained /[=,[:blank:]]\@1<=\%(G_\|VALUE_\|ARG\d\)[^,#;[:blank:]]*/
" A number and what follows its digits, which is not looked at. Longer texts are no numbers.
syntax match ruxNumber contained /[=,[:blank:]]\@1<=[-+]\?\%(0[xX]\x\+\|\d\+\)/ nextgroup=ruxTail
syntax match ruxTail contained /[^,[:blank:]\\]\+/
syntax match ruxTooLong contained /[=,[:blank:]]\@1<=[-+]\?\d[^,[:blank:]\\]\{9,}[^,[:blank:]\\]/

" The keys of each kind of section.
" generated: kinds
syntax match ruxMORVRUXKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(VERSION\)\ze\s*\%(=\|$\)/
highlight default link ruxMORVRUXKeyTexts ruxKey
syntax region ruxMORVRUX matchgroup=ruxHeader contains=ruxComment,ruxMORVRUX.* fold
      \ start=/^\s*\[\s*MORVRUX\s*\]/ end=/^\ze\s*\[/
syntax match ruxPROPERTYNameTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%([^=[:digit:][:blank:]#;[][^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxPROPERTYNameTexts ruxName
syntax region ruxPROPERTY matchgroup=ruxHeader contains=ruxComment,ruxPROPERTY.* fold
      \ start=/^\s*\[\s*PROPERTY\s*\]/ end=/^\ze\s*\[/
syntax match ruxSYSTEMNameTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(P_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxSYSTEMNameTexts ruxName
syntax match ruxSYSTEMKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(MODEL\)\ze\s*\%(=\|$\)/
highlight default link ruxSYSTEMKeyTexts ruxKey
syntax match ruxSYSTEMKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(TYPE\|FLAG\|SOUTHBRIDGE\|NORTHBRIDGE\|RUXLOOP\)\ze\s*\%(=\|$\)/
highlight default link ruxSYSTEMKeyNumbers ruxKey
syntax region ruxSYSTEM matchgroup=ruxHeader contains=ruxComment,ruxSYSTEM.* fold
      \ start=/^\s*\[\s*SYSTEM\s*\]/ end=/^\ze\s*\[/
syntax match ruxGROUPKeyValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(VALUE_INIT\|VALUE_DEINIT\|VALUE_ENTRY\|VALUE_EXIT\)\ze\s*\%(=\|$\)/
highlight default link ruxGROUPKeyValues ruxKey
syntax match ruxGROUPKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(CHILDGROUP\)\ze\s*\%(=\|$\)/
highlight default link ruxGROUPKeyNumbers ruxKey
syntax match ruxGROUPKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(PARENT\|NAME\)\ze\s*\%(=\|$\)/
highlight default link ruxGROUPKeyTexts ruxKey
syntax region ruxGROUP matchgroup=ruxHeader contains=ruxComment,ruxGROUP.* fold
      \ start=/^\s*\[\s*GROUP\s*\]/ end=/^\ze\s*\[/
syntax match ruxSENSORNameValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(VALUE_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxSENSORNameValues ruxName
syntax match ruxSENSORNameTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(P_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxSENSORNameTexts ruxName
syntax match ruxSENSORKeyValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(VALUE_INIT\|VALUE_DEINIT\|VALUE_ENTRY\|VALUE_EXIT\|VALUE\|VALUE_IPMI\)\ze\s*\%(=\|$\)/
highlight default link ruxSENSORKeyValues ruxKey
syntax match ruxSENSORKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(ID\|TYPE\|INITFLAG\|CONTROLMASK\|THEORY\|THRESHOLD_FH\|THRESHOLD_WH\|THRESHOLD_FL\|THRESHOLD_WL\)\ze\s*\%(=\|$\)/
highlight default link ruxSENSORKeyNumbers ruxKey
syntax match ruxSENSORKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(PARENT\|NAME\)\ze\s*\%(=\|$\)/
highlight default link ruxSENSORKeyTexts ruxKey
syntax region ruxSENSOR matchgroup=ruxHeader contains=ruxComment,ruxSENSOR.* fold
      \ start=/^\s*\[\s*SENSOR\s*\]/ end=/^\ze\s*\[/
syntax match ruxDEVICENameValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(VALUE_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxDEVICENameValues ruxName
syntax match ruxDEVICENameTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(P_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxDEVICENameTexts ruxName
syntax match ruxDEVICEKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(ID\|INITFLAG\|CONTROLMASK\)\ze\s*\%(=\|$\)/
highlight default link ruxDEVICEKeyNumbers ruxKey
syntax match ruxDEVICEKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(NAME\)\ze\s*\%(=\|$\)/
highlight default link ruxDEVICEKeyTexts ruxKey
syntax region ruxDEVICE matchgroup=ruxHeader contains=ruxComment,ruxDEVICE.* fold
      \ start=/^\s*\[\s*DEVICE\s*\]/ end=/^\ze\s*\[/
syntax match ruxACTIONNameValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(VALUE_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxACTIONNameValues ruxName
syntax match ruxACTIONKeyValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(VALUE_IPMI\|VALUE\)\ze\s*\%(=\|$\)/
highlight default link ruxACTIONKeyValues ruxKey
syntax match ruxACTIONKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(ARGNUMBER\)\ze\s*\%(=\|$\)/
highlight default link ruxACTIONKeyNumbers ruxKey
syntax match ruxACTIONKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(NAME\)\ze\s*\%(=\|$\)/
highlight default link ruxACTIONKeyTexts ruxKey
syntax region ruxACTION matchgroup=ruxHeader contains=ruxComment,ruxACTION.* fold
      \ start=/^\s*\[\s*ACTION\s*\]/ end=/^\ze\s*\[/
syntax match ruxTABLENameNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(\d[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxTABLENameNumbers ruxName
syntax match ruxTABLEKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(TYPE\)\ze\s*\%(=\|$\)/
highlight default link ruxTABLEKeyNumbers ruxKey
syntax match ruxTABLEKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(NAME\)\ze\s*\%(=\|$\)/
highlight default link ruxTABLEKeyTexts ruxKey
syntax region ruxTABLE matchgroup=ruxHeader contains=ruxComment,ruxTABLE.* fold
      \ start=/^\s*\[\s*TABLE\s*\]/ end=/^\ze\s*\[/
syntax match ruxPELMGROUPNameTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(P_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxPELMGROUPNameTexts ruxName
syntax match ruxPELMGROUPKeyNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%(ID\|PID\|SENSORS\)\ze\s*\%(=\|$\)/
highlight default link ruxPELMGROUPKeyNumbers ruxKey
syntax match ruxPELMGROUPKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(NAME\)\ze\s*\%(=\|$\)/
highlight default link ruxPELMGROUPKeyTexts ruxKey
syntax region ruxPELMGROUP matchgroup=ruxHeader contains=ruxComment,ruxPELMGROUP.* fold
      \ start=/^\s*\[\s*PELMGROUP\s*\]/ end=/^\ze\s*\[/
syntax match ruxGLOBALNameValues contained nextgroup=ruxValues skipwhite
      \ /^\s*\zs\%(G_[^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxGLOBALNameValues ruxName
syntax region ruxGLOBAL matchgroup=ruxHeader contains=ruxComment,ruxGLOBAL.* fold
      \ start=/^\s*\[\s*GLOBAL\s*\]/ end=/^\ze\s*\[/
syntax match ruxREPEATERNameNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%([^=[:digit:][:blank:]#;[][^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxREPEATERNameNumbers ruxName
syntax region ruxREPEATER matchgroup=ruxHeader contains=ruxComment,ruxREPEATER.* fold
      \ start=/^\s*\[\s*REPEATER\s*\]/ end=/^\ze\s*\[/
syntax match ruxDEFINENameNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%([^=[:digit:][:blank:]#;[][^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxDEFINENameNumbers ruxName
syntax region ruxDEFINE matchgroup=ruxHeader contains=ruxComment,ruxDEFINE.* fold
      \ start=/^\s*\[\s*DEFINE\s*\]/ end=/^\ze\s*\[/
syntax match ruxIFDEFNameNumbers contained nextgroup=ruxNumbers skipwhite
      \ /^\s*\zs\%([^=[:digit:][:blank:]#;[][^=]\{-}\)\ze\s*\%(=\|$\)/
highlight default link ruxIFDEFNameNumbers ruxName
syntax match ruxIFDEFKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(DEFINEWORD\)\ze\s*\%(=\|$\)/
highlight default link ruxIFDEFKeyTexts ruxKey
syntax region ruxIFDEF matchgroup=ruxHeader contains=ruxComment,ruxIFDEF.* fold
      \ start=/^\s*\[\s*IFDEF\s*\]/ end=/^\ze\s*\[/
syntax match ruxINCLUDEKeyTexts contained nextgroup=ruxTexts skipwhite
      \ /^\s*\zs\%(FILE\)\ze\s*\%(=\|$\)/
highlight default link ruxINCLUDEKeyTexts ruxKey
syntax region ruxINCLUDE matchgroup=ruxHeader contains=ruxComment,ruxINCLUDE.* fold
      \ start=/^\s*\[\s*INCLUDE\s*\]/ end=/^\ze\s*\[/
" end of what is generated
" generated: operators
syntax match ruxOperator contained
      \ /[,[:blank:]]\@1<=\%(+\|-\|\*\|\/\||\|&\|%\|\^\|>>\|<<\|pow\|==\|>\|>=\|!=\|<\|<=\)\ze\s*\%([,\\]\|$\)/
" end of what is generated

highlight default link ruxHeader Structure
highlight default link ruxKey Keyword
highlight default link ruxName Identifier
highlight default link ruxType Type
highlight default link ruxString String
highlight default link ruxNumber Number
highlight default link ruxReference Special
highlight default link ruxOperator Operator
highlight default link ruxJoin SpecialChar
highlight default link ruxComment Comment
highlight default link ruxTodo Todo
highlight default link ruxSkipped Comment
highlight default link ruxError Error
highlight default link ruxUnclosed Error
highlight default link ruxTail Error
highlight default link ruxTooLong Error

let b:current_syntax = 'rux'
