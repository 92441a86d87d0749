# Warnings and sanitizers for everything of ours. They are errors where CMake's own
# CMAKE_COMPILE_WARNING_AS_ERROR says so, as the presets for development do; not for whoever builds a
# release with a compiler that we have not seen.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# GCC 12 sees an impossible overlap in `"text" + std::string`.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()
# Braces around each std::array inside a table say nothing.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  add_compile_options(-Wno-missing-braces)
  # GCC's -Wconversion leaves signs alone in C++.
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-sign-conversion>)
endif()
if(VELKSTEP_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code of the standard library (std::regex) looks uninitialised to GCC.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
  add_link_options(-fsanitize=address,undefined)
endif()
if(VELKSTEP_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
