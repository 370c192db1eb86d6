# The CMake package: find_package(ruxcomp) gives the target ruxcomp::ruxcomp.
include(${CMAKE_CURRENT_LIST_DIR}/ruxcompTargets.cmake)
