# What docs/using-the-library.md has people export makes an installation below another prefix work.
#   PYTHON  the interpreter of the installed module; empty where there is none
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

make_scratch_folder(other_prefix folder)
file(CREATE_LINK ${PREFIX} ${folder}/velkstep SYMBOLIC)
cmake_path(GET SOURCE PARENT_PATH tests)
cmake_path(GET tests PARENT_PATH project)
file(READ ${project}/docs/using-the-library.md page)
string(REGEX MATCH "export PATH=[^`]*" exports "${page}")
foreach(variable PATH MANPATH CMAKE_PREFIX_PATH PKG_CONFIG_PATH LD_LIBRARY_PATH PYTHONPATH)
  if(NOT exports MATCHES "export ${variable}=")
    message(FATAL_ERROR "The page does not say what ${variable} is")
  endif()
endforeach()
# Each as the page says it is to be used; manuals and packages may have no reader here.
file(WRITE ${folder}/use.sh "${exports}
set -eu
test \"$(command -v velkstep)\" = \"$HOME/velkstep/bin/velkstep\"
velkstep --version
test -e \"\${MANPATH%:}/man1/velkstep.1.gz\" -o -e \"\${MANPATH%:}/man1/velkstep.1\"
test -e \"$CMAKE_PREFIX_PATH/${LIBDIR}/cmake/VelkStepSplitter/VelkStepSplitterConfig.cmake\"
test -e \"$PKG_CONFIG_PATH/velkstepsplitter.pc\"
test -e \"$LD_LIBRARY_PATH/libVelkStepSplitter.so\"
if [ '${PYTHON}' ]; then '${PYTHON}' -Bc 'import velkstep'; fi
")
set(ENV{HOME} ${folder})
run(COMMAND sh ${folder}/use.sh WORKING_DIRECTORY ${folder})
