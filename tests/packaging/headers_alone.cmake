# Every installed header compiles as the only one of a source, under the warnings that strict hosts
# use, and may be included twice.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

make_scratch_folder(headers_alone folder)
file(GLOB_RECURSE headers RELATIVE ${PREFIX}/include ${PREFIX}/include/*.h)
list(LENGTH headers count)
if(count LESS 9)
  message(FATAL_ERROR "Too few headers: ${headers}")
endif()
foreach(header ${headers})
  string(REPLACE "/" "_" source ${header}.cpp)
  file(WRITE ${folder}/${source} "#include <${header}>\n#include <${header}>\n")
  # Not -isystem, which would keep the warnings quiet.
  run(COMMAND ${LAUNCHER} ${CXX} -std=c++20 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    -I${PREFIX}/include -fsyntax-only ${source} WORKING_DIRECTORY ${folder})
endforeach()
message(STATUS "${count} headers compile alone")
