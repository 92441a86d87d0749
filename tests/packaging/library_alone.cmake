# The library without command line, tests and benchmarks needs a compiler and CMake, nothing else.
#   ROOT    the source tree
#   FOLDER  where to build
#   CXX, LAUNCHER, OBJDUMP
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

file(REMOVE_RECURSE ${FOLDER})
set(refused)
foreach(package CLI11 GTest ICU PkgConfig benchmark nlohmann_json)
  list(APPEND refused -DCMAKE_DISABLE_FIND_PACKAGE_${package}=ON)
endforeach()
run(COMMAND ${CMAKE_COMMAND} -S ${ROOT} -B ${FOLDER} -DBUILD_TESTING=OFF -DVELKSTEP_BUILD_CLI=OFF
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0  # which compiles fastest
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} ${refused})
run(COMMAND ${CMAKE_COMMAND} --build ${FOLDER} --parallel 2)

file(GLOB built RELATIVE ${FOLDER} ${FOLDER}/lib/* ${FOLDER}/bin/*)
list(FILTER built EXCLUDE REGEX "^lib/libVelkStepSplitter\\.so(\\.[0-9]+)*$")
if(built OR NOT EXISTS ${FOLDER}/lib/libVelkStepSplitter.so)
  message(FATAL_ERROR "Expected the library alone, built was as well: ${built}")
endif()

# What it is linked with comes with the compiler.
run(COMMAND ${OBJDUMP} -p ${FOLDER}/lib/libVelkStepSplitter.so OUTPUT_VARIABLE headers)
string(REGEX MATCHALL "NEEDED +[^\n]+" needed "${headers}")
list(TRANSFORM needed REPLACE "NEEDED +" "")
if(NOT needed)
  message(FATAL_ERROR "No needed libraries found in:\n${headers}")
endif()
list(FILTER needed EXCLUDE REGEX
  "^(libstdc\\+\\+|libc\\+\\+|libc\\+\\+abi|libgcc_s|libm|libc|ld-linux.*)\\.so.*$")
if(needed)
  message(FATAL_ERROR "The library needs ${needed}")
endif()
