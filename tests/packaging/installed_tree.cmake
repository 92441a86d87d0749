# What the tests of the installed tree share. They run as `cmake -D... -P`, with
#   BUILD     the build directory, for its installation rules
#   PREFIX    the scratch folder that is installed into
#   LIBDIR    the folder of libraries below it
#   SOURCE    the folder of these tests
#   CXX       the compiler
#   FLAGS     its flags, a list (those of the sanitizers)
#   LAUNCHER  ccache, or nothing
cmake_minimum_required(VERSION 3.25)

# Runs a command; fails the test with all that it printed when it fails.
function(run)
  cmake_parse_arguments(PARSE_ARGV 0 RUN "" "WORKING_DIRECTORY;OUTPUT_VARIABLE" "COMMAND")
  if(NOT RUN_WORKING_DIRECTORY)
    set(RUN_WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  execute_process(COMMAND ${RUN_COMMAND} WORKING_DIRECTORY ${RUN_WORKING_DIRECTORY}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    list(JOIN RUN_COMMAND " " command)
    message(FATAL_ERROR "${command}\nended with ${result}:\n${output}${errors}")
  endif()
  if(RUN_OUTPUT_VARIABLE)
    set(${RUN_OUTPUT_VARIABLE} "${output}" PARENT_SCOPE)
  endif()
endfunction()

# An empty folder of that name beside the prefix.
function(make_scratch_folder name path)
  cmake_path(REPLACE_FILENAME PREFIX ${name} OUTPUT_VARIABLE folder)
  file(REMOVE_RECURSE ${folder})
  file(MAKE_DIRECTORY ${folder})
  set(${path} ${folder} PARENT_SCOPE)
endfunction()

# Splits the assembly with the program and looks at its list and its files.
function(expect_that_it_splits program folder)
  run(COMMAND ${program} ${SOURCE}/host/assembly.stp out WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE list)
  if(NOT list STREQUAL "out/#21_part.stp\nout/#1_part.stp\nout/#11_part.stp\n")
    message(FATAL_ERROR "${program} printed this list:\n${list}")
  endif()
  file(GLOB files RELATIVE ${folder} ${folder}/out/*)
  list(SORT files)
  if(NOT files STREQUAL "out/#11_part.stp;out/#1_part.stp;out/#21_part.stp")
    message(FATAL_ERROR "${program} wrote these files: ${files}")
  endif()
  file(READ "${folder}/out/#1_part.stp" text)
  string(REGEX REPLACE "^.*DATA;\n" "" text "${text}")
  if(NOT text STREQUAL "#3=PRODUCT('bolt','bolt','',());
#2=PRODUCT_DEFINITION_FORMATION('','',#3);
#1=PRODUCT_DEFINITION('design','',#2,$);
ENDSEC;
END-ISO-10303-21;
")
    message(FATAL_ERROR "${program} wrote this into out/#1_part.stp:\n${text}")
  endif()
endfunction()
