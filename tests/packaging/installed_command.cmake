# The installed command finds the installed library by itself.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

make_scratch_folder(installed_command folder)
unset(ENV{LD_LIBRARY_PATH})
run(COMMAND ${PREFIX}/bin/velkstep split ${SOURCE}/host/assembly.stp out
  WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE list)
if(NOT list STREQUAL "out/joint.stp\nout/bolt.stp\nout/nut.stp\n")
  message(FATAL_ERROR "This list was printed:\n${list}")
endif()
