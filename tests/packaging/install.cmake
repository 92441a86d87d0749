# Installs the build into an empty folder, and looks whether everything has arrived there.
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

file(REMOVE_RECURSE ${PREFIX})
run(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX})

# Nothing of the inside is installed: these headers, and these alone.
file(GLOB_RECURSE headers RELATIVE ${PREFIX}/include ${PREFIX}/include/*)
list(SORT headers)
set(expected
  kessel/assembly.h
  kessel/check.h
  kessel/diff.h
  kessel/drawing.h
  kessel/encoding.h
  kessel/entity.h
  kessel/errors.h
  kessel/export.h
  kessel/extract.h
  kessel/file.h
  kessel/finding.h
  kessel/join.h
  kessel/kessel.h
  kessel/number_map.h
  kessel/options.h
  kessel/overview.h
  kessel/part.h
  kessel/picture.h
  kessel/reference_list.h
  kessel/shrink.h
  kessel/split_list.h
  kessel/splitter.h
  kessel/summary.h
  kessel/verify.h)
if(NOT C_INTERFACE)
  list(REMOVE_ITEM expected kessel/kessel.h)
endif()
if(NOT headers STREQUAL expected)
  message(FATAL_ERROR "Installed headers: ${headers}\nexpected: ${expected}")
endif()

file(GLOB libraries RELATIVE ${PREFIX}/${LIBDIR} ${PREFIX}/${LIBDIR}/lib*)
list(FILTER libraries EXCLUDE REGEX "^libVelkStepSplitter\\.so(\\.[0-9]+)*$")
if(libraries)
  message(FATAL_ERROR "Installed besides the library: ${libraries}")
endif()
foreach(file libVelkStepSplitter.so pkgconfig/velkstepsplitter.pc
    cmake/VelkStepSplitter/VelkStepSplitterConfig.cmake
    cmake/VelkStepSplitter/VelkStepSplitterConfigVersion.cmake
    cmake/VelkStepSplitter/VelkStepSplitterTargets.cmake)
  if(NOT EXISTS ${PREFIX}/${LIBDIR}/${file})
    message(FATAL_ERROR "Not installed: ${LIBDIR}/${file}")
  endif()
endforeach()
