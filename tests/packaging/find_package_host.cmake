# A project of its own finds the installed library, builds against it and splits a file.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

make_scratch_folder(find_package_host folder)
list(JOIN FLAGS " " flags)
run(COMMAND ${CMAKE_COMMAND} -S ${SOURCE}/host -B ${folder} -DCMAKE_PREFIX_PATH=${PREFIX}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} "-DCMAKE_CXX_FLAGS=${flags}"
  -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
run(COMMAND ${CMAKE_COMMAND} --build ${folder})

# It must be the installed tree that was found, not one that happens to be on the machine.
file(STRINGS ${folder}/CMakeCache.txt found REGEX "^VelkStepSplitter_DIR:")
if(NOT found STREQUAL "VelkStepSplitter_DIR:PATH=${PREFIX}/${LIBDIR}/cmake/VelkStepSplitter")
  message(FATAL_ERROR "Another package was found: ${found}")
endif()
expect_that_it_splits(${folder}/host ${folder})
