# The library includes standard headers and its own, nothing else; and what is installed includes
# nothing of the inside.
#   ROOT  the source tree
cmake_minimum_required(VERSION 3.25)
set(standard
  algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
  cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
  csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
  exception execution filesystem format forward_list fstream functional future initializer_list
  iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource
  mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
  semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf
  string string_view strstream syncstream system_error thread tuple type_traits typeindex typeinfo
  unordered_map unordered_set utility valarray variant vector version)
# Vector instructions, which the compiler itself provides on machines that have them.
set(of_the_compiler emmintrin)

# Adds each #include of the folder that is neither standard nor a file below one of `ours`.
function(find_strangers folder ours)
  file(GLOB_RECURSE sources ${ROOT}/${folder}/*)
  set(seen 0)
  foreach(source ${sources})
    file(STRINGS ${source} lines REGEX "^[ \t]*#[ \t]*(include|import)")
    foreach(line IN LISTS lines)
      math(EXPR seen "${seen} + 1")
      if(line MATCHES "^#include <([a-z_]+)>$" AND CMAKE_MATCH_1 IN_LIST standard)
        continue()
      endif()
      if(source MATCHES "/kessel/kessel\\.h$" AND line MATCHES "^#include <std(def|int)\\.h>$")
        continue()  # the header for C
      endif()
      if(folder STREQUAL "src" AND line MATCHES "^#include <([a-z_]+)\\.h>$"
          AND CMAKE_MATCH_1 IN_LIST of_the_compiler)
        continue()
      endif()
      if(line MATCHES "^#include \"([^\"]+)\"")
        foreach(root ${ours})
          if(EXISTS ${ROOT}/${root}/${CMAKE_MATCH_1})
            set(line)
          endif()
        endforeach()
      endif()
      if(line)
        string(APPEND strangers "${source}: ${line}\n")
      endif()
    endforeach()
  endforeach()
  if(seen LESS 10)
    message(FATAL_ERROR "Only ${seen} includes found in ${ROOT}/${folder}")
  endif()
  set(strangers "${strangers}" PARENT_SCOPE)
endfunction()

set(strangers "")
find_strangers(include "include")
find_strangers(src "include;src")
if(strangers)
  message(FATAL_ERROR "Neither standard headers nor our own:\n${strangers}")
endif()
