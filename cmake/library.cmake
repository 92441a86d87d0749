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
  list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/src/${folder}/)
  set_source_files_properties(${ARGN} PROPERTIES UNITY_GROUP ${folder})
  target_sources(kessel_objects PRIVATE ${ARGN})
endfunction()

kessel_folder(association
  associate.cpp
  others.cpp
  passes.cpp
  recognition.cpp
  relationship_rules.cpp
  rules.cpp)
if(VELKSTEP_C_INTERFACE)
  kessel_folder(c_interface c_interface.cpp)
endif()
kessel_folder(check
  check.cpp
  finding_list.cpp
  input_file.cpp
  reference_check.cpp
  refusal.cpp
  signature.cpp
  structure_check.cpp
  text_check.cpp)
kessel_folder(encoding
  decode.cpp
  encode.cpp
  string_body.cpp
  unicode.cpp)
kessel_folder(inspection
  assembly.cpp
  header.cpp
  inspected_file.cpp
  parameters.cpp
  summary.cpp
  type_counts.cpp
  units.cpp
  walk.cpp)
kessel_folder(model
  entity.cpp
  errors.cpp
  file.cpp
  finding_kinds.cpp
  messages.cpp)
kessel_folder(naming
  ascii.cpp
  characters.cpp
  file_stem.cpp
  unicode_forms.cpp
  unique_names.cpp)
kessel_folder(reader
  classification.cpp
  header.cpp
  parse_file.cpp
  record_cutter.cpp
  record_loader.cpp
  refusals.cpp)
kessel_folder(splitter
  checked_run.cpp
  fresh_files.cpp
  pipeline.cpp
  run.cpp
  written_files.cpp)
kessel_folder(structure
  definition_search.cpp
  discovery.cpp
  links.cpp
  part.cpp
  part_records.cpp
  product_names.cpp
  reachability.cpp
  roots.cpp
  type_names.cpp)
kessel_folder(verify
  data_section.cpp
  expected_record.cpp
  file_check.cpp
  folder.cpp
  header_check.cpp
  placed_input.cpp
  record_texts.cpp
  reference_block.cpp
  string_value.cpp
  tokens.cpp
  verify.cpp)
kessel_folder(writer
  external_reference.cpp
  frame.cpp
  gathered_output.cpp
  part_output.cpp
  rewrite.cpp
  write_parts.cpp)

target_include_directories(kessel_objects PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
  PRIVATE src)
target_compile_definitions(kessel_objects PRIVATE KESSEL_BUILDING)
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
