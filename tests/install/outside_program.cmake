# Installs the build into WORK_DIR/root, builds outside/ against it in the given WAY, compiles an
# example with the installed tool and lets the outside program read the result.
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

foreach(file bin/rux ${LIBDIR}/libruxcomp.so.0 include/ruxcomp/ruxcomp.h)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
if(NOT EXISTS ${root}${PLUGIN_DIR}/libruxrsparser.so.0)
  message(FATAL_ERROR "the plug-in is not where the library looks for it")
endif()

set(sanitize)
if(SANITIZE)
  set(sanitize -fsanitize=address,undefined)
endif()
set(program ${WORK_DIR}/count_sensors)
if(WAY STREQUAL pkg-config)
  set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/${LIBDIR}/pkgconfig)
  run(pkg-config --cflags --libs ruxcomp)
  string(STRIP "${output}" flags)
  separate_arguments(flags)
  run(${CXX} -std=c++17 ${sanitize} ${SOURCE_DIR}/outside/count_sensors.cpp -o ${program} ${flags})
else()
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/outside -B ${WORK_DIR}/build -G Ninja
      -DCMAKE_PREFIX_PATH=${prefix} "-DCMAKE_CXX_FLAGS=${sanitize}"
      -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${WORK_DIR})
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
endif()

run(${prefix}/bin/rux compile ${EXAMPLE} -o ${WORK_DIR}/first.meta)
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
run(${program} ${WORK_DIR}/first.meta)
if(NOT output STREQUAL "1 sensor(s)\n")
  message(FATAL_ERROR "the outside program said: ${output}")
endif()
file(REMOVE_RECURSE ${WORK_DIR})
