# The same host, compiled by hand with what pkg-config says about the installed tree, which does not
# stand where the build was configured for.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

make_scratch_folder(pkg_config_host folder)
set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
set(ENV{PKG_CONFIG_ALLOW_SYSTEM_CFLAGS} 1)
run(COMMAND ${PKG_CONFIG} --cflags velkstepsplitter OUTPUT_VARIABLE cflags)
run(COMMAND ${PKG_CONFIG} --libs velkstepsplitter OUTPUT_VARIABLE libs)
run(COMMAND ${PKG_CONFIG} --modversion velkstepsplitter OUTPUT_VARIABLE version)
if(NOT version STREQUAL "${VERSION}\n")
  message(FATAL_ERROR "The version is said to be ${version}")
endif()
separate_arguments(cflags UNIX_COMMAND "${cflags}")
separate_arguments(libs UNIX_COMMAND "${libs}")
run(COMMAND ${LAUNCHER} ${CXX} -std=c++20 ${FLAGS} ${cflags} ${SOURCE}/host/main.cpp ${libs} -o host
  WORKING_DIRECTORY ${folder})
set(ENV{LD_LIBRARY_PATH} ${PREFIX}/${LIBDIR})
expect_that_it_splits(${folder}/host ${folder})
