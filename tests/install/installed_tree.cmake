# Installs the build in BUILD_DIR into the scratch root WORK_DIR/root and sets prefix to /usr there.

# Runs a command, which must succeed, and sets output to what it prints.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output
                  ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}\nstatus ${status}\n${output}\n${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(root ${WORK_DIR}/root)
set(prefix ${root}/usr)
# The plug-in's place is fixed: a scratch root keeps it off the machine.
set(ENV{DESTDIR} ${root})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix /usr)
unset(ENV{DESTDIR})
