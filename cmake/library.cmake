# The library: compiled once, linked as the shared library and, for tests and benchmarks that reach
# behind the interface, as a static one that is never installed.
add_library(kessel_objects OBJECT)

# Most of the time of a small source goes into the standard library's headers, so several are compiled
# as one unit. Names in an anonymous namespace are that unit's then.
# VELKSTEP_UNITY=OFF compiles each source by itself, as tools that look at sources want it.
option(VELKSTEP_UNITY "Compile several sources as one unit" ON)
# A whole layer takes half as long as its folders, but all of it again after every change.
include(CMakeDependentOption)
cmake_dependent_option(VELKSTEP_LAYERS "Compile layers of folders as units, not each folder"
  ON "NOT BUILD_TESTING" OFF)
set_target_properties(kessel_objects PROPERTIES
  UNITY_BUILD ${VELKSTEP_UNITY} UNITY_BUILD_MODE GROUP)

# GCC inlines less in what it takes for large units, which a layer is for it. Found with
# bench/instructions.sh: 27.4 instructions a byte without this, 24.5 with it; more only costs time.
if(VELKSTEP_UNITY AND VELKSTEP_LAYERS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kessel_objects PRIVATE --param=large-unit-insns=40000)
endif()

# The unit of a folder: its layer, or itself.
function(unit_of folder layer result)
  if(VELKSTEP_LAYERS)
    set(${result} ${layer} PARENT_SCOPE)
  else()
    set(${result} ${folder} PARENT_SCOPE)
  endif()
endfunction()

function(kessel_layer layer)
  foreach(folder ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    unit_of(${folder} ${layer} unit)
    set_source_files_properties(${sources} PROPERTIES UNITY_GROUP ${unit})
    target_sources(kessel_objects PRIVATE ${sources})
  endforeach()
endfunction()

kessel_layer(words encoding exchange findings instances model naming split_list)
kessel_layer(classic association reader structure writer)
kessel_layer(placed external extract output placement products)
kessel_layer(compared join sameness shrink verify)
kessel_layer(seen geometry inspection picture)
kessel_layer(entry check splitter)
if(VELKSTEP_C_INTERFACE)
  kessel_layer(entry c_interface)
endif()
target_include_directories(kessel_objects PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
  PRIVATE src)
target_compile_definitions(kessel_objects PRIVATE KESSEL_BUILDING)
# By itself, so that no other source is compiled again for a new version.
set_source_files_properties(${PROJECT_SOURCE_DIR}/src/split_list/program.cpp PROPERTIES
  COMPILE_DEFINITIONS VELKSTEP_VERSION="${PROJECT_VERSION}")
# Calls inside the library stay inside it, so that they can be inlined.
target_compile_options(kessel_objects PRIVATE -fno-semantic-interposition)
set_target_properties(kessel_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)

add_library(VelkStepSplitter SHARED $<TARGET_OBJECTS:kessel_objects>)
add_library(VelkStepSplitter::VelkStepSplitter ALIAS VelkStepSplitter)
target_include_directories(VelkStepSplitter PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(VelkStepSplitter PUBLIC cxx_std_20)
set_target_properties(VelkStepSplitter PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
# Keeps instances of the standard library's templates out of the exported names.
target_link_options(VelkStepSplitter PRIVATE
  LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)

add_library(kessel_internals STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:kessel_objects>)
target_include_directories(kessel_internals PUBLIC include src)
