# At the end of an installation: programs find the library once the dynamic linker's cache has it. What
# goes into the root of a package, DESTDIR, is none of this machine's.
if(NOT "$ENV{DESTDIR}" STREQUAL "")
  return()
endif()
set(folder ${CMAKE_INSTALL_PREFIX}/${RUX_LIBRARY_FOLDER})
find_program(RUX_LDCONFIG ldconfig PATHS /sbin /usr/sbin)
set(searched)
if(RUX_LDCONFIG)
  # Without writing the cache: the folders that the dynamic linker searches, "/usr/lib: (system default)".
  execute_process(COMMAND ${RUX_LDCONFIG} -v -N -X OUTPUT_VARIABLE searched ERROR_QUIET)
endif()
string(FIND "\n${searched}" "\n${folder}:" place)
if(place EQUAL -1)
  message(STATUS "Programs do not find libraries in ${folder}: set LD_LIBRARY_PATH, or add it to "
                 "/etc/ld.so.conf.d and run ldconfig")
  return()
endif()
execute_process(COMMAND ${RUX_LDCONFIG} RESULT_VARIABLE status ERROR_QUIET)
if(NOT status EQUAL 0)
  message(STATUS "Run ldconfig as root, so that programs find the library in ${folder}")
endif()
