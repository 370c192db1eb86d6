# Builds scripts/ against the installed tree, as a project of its own, and edits it: what an edit
# touches is compiled again, and nothing else.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

# A blank in the path must not matter.
set(project "${WORK_DIR}/a project")
set(made "${WORK_DIR}/a project/build")
file(COPY ${CMAKE_CURRENT_LIST_DIR}/scripts/ DESTINATION "${project}")
file(COPY "${project}/fans.rux" DESTINATION "${WORK_DIR}")
file(RENAME "${WORK_DIR}/fans.rux" "${WORK_DIR}/outside.rux")
run(${CMAKE_COMMAND} -S "${project}" -B "${made}" -G Ninja -DCMAKE_PREFIX_PATH=${prefix})

# Builds, and expects that these scripts, given after what was done, are compiled.
function(build_compiles done)
  run(${CMAKE_COMMAND} --build "${made}")
  string(REGEX MATCHALL "Compiling [^\n]*" compiled "${output}")
  list(SORT compiled)
  list(TRANSFORM ARGN PREPEND "Compiling ")
  if(NOT "${compiled}" STREQUAL "${ARGN}")
    message(FATAL_ERROR "${done}: expected '${ARGN}'\n${output}")
  endif()
endfunction()

function(expect_devices expected)
  run(${prefix}/bin/rux ls "${made}/board.meta" DEVICE)
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "board.meta has the devices\n${output}")
  endif()
endfunction()

build_compiles("the first time"
               ../outside.rux board.rux fans.rux machines/alpha/main.rux machines/beta/main.rux)
expect_devices("@0  #0x8  PSU\n")
foreach(file board.metad made/fans.meta machines/alpha/main.meta machines/beta/main.meta outside.meta)
  if(NOT EXISTS "${made}/${file}")
    message(FATAL_ERROR "not made: ${file}")
  endif()
endforeach()
build_compiles("nothing has changed")

file(WRITE "${project}/parts/psu.rux" "[DEVICE]\nNAME = PSU0\nID = 8\nINITFLAG = 0\nCONTROLMASK = 0\n")
build_compiles("an included file has changed" board.rux)
expect_devices("@0  #0x8  PSU0\n")
build_compiles("nothing has changed since")

file(APPEND "${project}/fans.rux" "# A remark.\n")
build_compiles("a script has changed" fans.rux)

# An included file that does not compile fails the build, until it does.
file(WRITE "${project}/parts/psu.rux" "[DEVICE]\nNAME = PSU1\nID = eight\n")
execute_process(COMMAND ${CMAKE_COMMAND} --build "${made}" RESULT_VARIABLE status
                OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(status EQUAL 0 OR NOT output MATCHES "psu\\.rux:3")
  message(FATAL_ERROR "status ${status} of a script with errors\n${output}")
endif()
expect_devices("@0  #0x8  PSU0\n")
file(WRITE "${project}/parts/psu.rux" "[DEVICE]\nNAME = PSU1\nID = 9\nINITFLAG = 0\nCONTROLMASK = 0\n")
build_compiles("the error is gone" board.rux)
expect_devices("@0  #0x9  PSU1\n")

# An included file may move.
file(RENAME "${project}/parts/psu.rux" "${project}/psu.rux")
file(READ "${project}/board.rux" script)
string(REPLACE "parts\\psu.rux" "psu.rux" script "${script}")
file(WRITE "${project}/board.rux" "${script}")
build_compiles("an included file has moved" board.rux)
build_compiles("nothing has changed since it moved")

file(REMOVE_RECURSE ${WORK_DIR})
