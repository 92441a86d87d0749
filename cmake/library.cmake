# The library: compiled once, linked as the shared library and, for tests and benchmarks that reach
# behind the interface, as a static one that is never installed.
add_library(kessel_objects OBJECT)

# One folder of src and its sources, and so one unit to compile: most of the time of a small source
# goes into the standard library's headers. Names in an anonymous namespace are the folder's then.
# VELKSTEP_UNITY=OFF compiles each source by itself, as tools that look at sources want it.
option(VELKSTEP_UNITY "Compile each folder as one unit, not each source" ON)
set_target_properties(kessel_objects PROPERTIES
  UNITY_BUILD ${VELKSTEP_UNITY} UNITY_BUILD_MODE GROUP)
function(kessel_folder folder)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
  set_source_files_properties(${sources} PROPERTIES UNITY_GROUP ${folder})
  target_sources(kessel_objects PRIVATE ${sources})
endfunction()

foreach(folder
    association
    check
    encoding
    exchange
    external
    extract
    findings
    geometry
    inspection
    instances
    join
    model
    naming
    output
    picture
    placement
    products
    reader
    sameness
    shrink
    split_list
    splitter
    structure
    verify
    writer)
  kessel_folder(${folder})
endforeach()
if(VELKSTEP_C_INTERFACE)
  kessel_folder(c_interface)
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
