# The CMake package: find_package(ruxcomp) gives the targets ruxcomp::ruxcomp and, for programs in C,
# ruxcomp::ruxmeta; where rux is installed, too, the function rux_compile.
include(${CMAKE_CURRENT_LIST_DIR}/ruxcompTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/ruxcompCompile.cmake)
