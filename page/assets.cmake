# Writes the files of assets/ as texts of the program into the file ${assets}.
set(text "#include \"page/assets.h\"\n\n#include <string_view>\n\nnamespace rux::page {\n\n")
foreach(asset "kStyle;page.css" "kScript;page.js")
  list(GET asset 0 name)
  list(GET asset 1 file)
  file(READ ${CMAKE_CURRENT_LIST_DIR}/assets/${file} content)
  string(APPEND text "const std::string_view ${name} = R\"asset(${content})asset\";\n")
endforeach()
string(APPEND text "\n}  // namespace rux::page\n")
file(CONFIGURE OUTPUT ${assets} CONTENT "${text}" @ONLY)  # keeps the file when it is the same
