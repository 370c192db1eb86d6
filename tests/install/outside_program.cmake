# Builds program/ against the installed tree in the given WAY, with the shared library or the archive
# (LINK), compiles an example with the installed tool and lets the program read the result.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

if(NOT EXISTS ${root}${PLUGIN_DIR}/libruxrsparser.so.0)
  message(FATAL_ERROR "the plug-in is not where the library looks for it")
endif()

set(source ${CMAKE_CURRENT_LIST_DIR}/program)
set(program ${WORK_DIR}/count_sensors)
if(WAY STREQUAL pkg-config)
  set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/${LIBDIR}/pkgconfig)
  if(LINK STREQUAL archive)
    run(pkg-config --static --cflags --libs ruxcomp)
    set(output "-Wl,-Bstatic ${output} -Wl,-Bdynamic")
  else()
    run(pkg-config --cflags --libs ruxcomp)
  endif()
  string(REPLACE "\n" " " output "${output}")
  separate_arguments(flags UNIX_COMMAND "${output}")
  run(${CXX} -std=c++17 ${source}/count_sensors.cpp -o ${program} ${flags})
else()
  run(${CMAKE_COMMAND} -S ${source} -B ${WORK_DIR}/build -G Ninja
      -DCMAKE_PREFIX_PATH=${prefix} -DLINK=${LINK}
      -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${WORK_DIR})
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
endif()

run(${prefix}/bin/rux compile ${EXAMPLE} -o ${WORK_DIR}/first.meta)
if(LINK STREQUAL shared)
  set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
endif()
run(${program} ${WORK_DIR}/first.meta)
if(NOT output STREQUAL "1 sensor(s)\n")
  message(FATAL_ERROR "the outside program said: ${output}")
endif()
# The reader plug-in looks for Output among what a program exports.
run(${NM} -D --defined-only ${program})
if(NOT output MATCHES " T Output\n")
  message(FATAL_ERROR "the outside program does not export Output: ${output}")
endif()
file(REMOVE_RECURSE ${WORK_DIR})
