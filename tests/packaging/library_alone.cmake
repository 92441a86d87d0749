# The library without command line, tests and benchmarks needs a compiler and CMake, nothing else.
#   STEP     configured, which takes a second, or built
#   ROOT     the source tree
#   FOLDER   where to build
#   LIBRARY  the library as it is built anyway
#   CXX, OBJDUMP
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

file(REMOVE_RECURSE ${FOLDER})
set(refused)
foreach(package CLI11 GTest ICU PkgConfig benchmark nlohmann_json)
  list(APPEND refused -DCMAKE_DISABLE_FIND_PACKAGE_${package}=ON)
endforeach()
run(COMMAND ${CMAKE_COMMAND} -S ${ROOT} -B ${FOLDER} -DBUILD_TESTING=OFF -DVELKSTEP_BUILD_CLI=OFF
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0  # which compiles fastest
  -DCMAKE_CXX_COMPILER=${CXX} ${refused})

if(STEP STREQUAL "configured")
  # What compiles in it is the library, which compiles alike here and there.
  file(READ ${FOLDER}/compile_commands.json commands)
  string(JSON count LENGTH "${commands}")
  if(count EQUAL 0)
    message(FATAL_ERROR "Nothing would be compiled")
  endif()
  math(EXPR last "${count} - 1")
  foreach(index RANGE ${last})
    string(JSON command GET "${commands}" ${index} command)
    if(NOT command MATCHES "kessel_objects")
      message(FATAL_ERROR "Expected the library alone, but this would compile as well: ${command}")
    endif()
  endforeach()
else()
  set(LIBRARY ${FOLDER}/lib/libVelkStepSplitter.so)
  run(COMMAND ${CMAKE_COMMAND} --build ${FOLDER} --parallel 2)
  file(GLOB built RELATIVE ${FOLDER} ${FOLDER}/lib/* ${FOLDER}/bin/*)
  list(FILTER built EXCLUDE REGEX "^lib/libVelkStepSplitter\\.so(\\.[0-9]+)*$")
  if(built OR NOT EXISTS ${LIBRARY})
    message(FATAL_ERROR "Expected the library alone, built was as well: ${built}")
  endif()
endif()

# What it is linked with comes with the compiler.
run(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers)
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
