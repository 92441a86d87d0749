# The library: compiled once, linked as the shared library and, for tests and benchmarks that reach
# behind the interface, as a static one that is never installed.
add_library(kessel_objects OBJECT
  src/association/associate.cpp
  src/association/others.cpp
  src/association/passes.cpp
  src/association/recognition.cpp
  src/association/relationship_rules.cpp
  src/association/rules.cpp
  src/check/check.cpp
  src/check/finding_list.cpp
  src/check/input_file.cpp
  src/check/reference_check.cpp
  src/check/refusal.cpp
  src/check/signature.cpp
  src/check/structure_check.cpp
  src/check/text_check.cpp
  src/encoding/decode.cpp
  src/encoding/encode.cpp
  src/encoding/string_body.cpp
  src/encoding/unicode.cpp
  src/exchange/faults.cpp
  src/exchange/lexer.cpp
  src/exchange/literals.cpp
  src/exchange/parameters.cpp
  src/exchange/reader.cpp
  src/exchange/statement_cutter.cpp
  src/exchange/string_value.cpp
  src/inspection/assembly.cpp
  src/inspection/header.cpp
  src/inspection/inspected_file.cpp
  src/inspection/parameters.cpp
  src/inspection/summary.cpp
  src/inspection/type_counts.cpp
  src/inspection/units.cpp
  src/inspection/walk.cpp
  src/instances/collectors.cpp
  src/instances/instances.cpp
  src/instances/loader.cpp
  src/instances/number_index.cpp
  src/instances/places.cpp
  src/instances/type_table.cpp
  src/instances/users.cpp
  src/model/entity.cpp
  src/model/errors.cpp
  src/model/file.cpp
  src/model/finding_kinds.cpp
  src/model/messages.cpp
  src/naming/ascii.cpp
  src/naming/characters.cpp
  src/naming/file_stem.cpp
  src/naming/unicode_forms.cpp
  src/naming/unique_names.cpp
  src/output/file_frame.cpp
  src/output/file_numbers.cpp
  src/output/links.cpp
  src/output/made_records.cpp
  src/output/renumbered_text.cpp
  src/output/shared_lists.cpp
  src/output/split_writer.cpp
  src/output/text_files.cpp
  src/placement/check_placement.cpp
  src/placement/classes.cpp
  src/placement/file_sets.cpp
  src/placement/fill.cpp
  src/placement/free_records.cpp
  src/placement/hang_on.cpp
  src/placement/left_overs.cpp
  src/placement/placement.cpp
  src/placement/plan.cpp
  src/products/products.cpp
  src/products/representations.cpp
  src/products/shapes.cpp
  src/products/tops.cpp
  src/products/usages.cpp
  src/reader/classification.cpp
  src/reader/header.cpp
  src/reader/parse_file.cpp
  src/reader/record_cutter.cpp
  src/reader/record_loader.cpp
  src/reader/refusals.cpp
  src/splitter/checked_run.cpp
  src/splitter/fresh_files.cpp
  src/splitter/pipeline.cpp
  src/splitter/file_names.cpp
  src/splitter/run.cpp
  src/splitter/split_by_placement.cpp
  src/splitter/written_files.cpp
  src/structure/definition_search.cpp
  src/structure/discovery.cpp
  src/structure/links.cpp
  src/structure/part.cpp
  src/structure/part_records.cpp
  src/structure/product_names.cpp
  src/structure/reachability.cpp
  src/structure/roots.cpp
  src/structure/type_names.cpp
  src/verify/data_section.cpp
  src/verify/expected_record.cpp
  src/verify/file_check.cpp
  src/verify/folder.cpp
  src/verify/header_check.cpp
  src/verify/placed_input.cpp
  src/verify/record_texts.cpp
  src/verify/reference_block.cpp
  src/verify/string_value.cpp
  src/verify/tokens.cpp
  src/verify/verify.cpp
  src/writer/external_reference.cpp
  src/writer/frame.cpp
  src/writer/gathered_output.cpp
  src/writer/part_output.cpp
  src/writer/rewrite.cpp
  src/writer/write_parts.cpp)
if(VELKSTEP_C_INTERFACE)
  target_sources(kessel_objects PRIVATE src/c_interface/c_interface.cpp)
endif()
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
