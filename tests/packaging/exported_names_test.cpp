// The names that leave the shared library: the interface and nothing else.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Kessel::test {
namespace {

void replace_all(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
}

/// A demangled name as one writes it in a header.
std::string as_written(std::string name) {
  const std::pair<std::string_view, std::string_view> spellings[] = {
      {"[abi:cxx11]", ""},
      {"::__cxx11::", "::"},
      {"> >", ">>"},
      {"std::basic_string<char, std::char_traits<char>, std::allocator<char>>", "std::string"},
      {"std::basic_string_view<char, std::char_traits<char>>", "std::string_view"},
      {"unsigned int", "unsigned"},
  };
  for (const auto& [from, to] : spellings) replace_all(name, from, to);
  return name;
}

/// The names that the shared library gives to others, as the symbol lister sees them.
std::set<std::string> exported_names() {
  const std::unique_ptr<FILE, int (*)(FILE*)> lister(
      popen(NM " --dynamic --defined-only --demangle --format=posix " LIBRARY_FILE, "r"), pclose);
  std::string text;
  char buffer[4096];
  while (const std::size_t count = fread(buffer, 1, sizeof buffer, lister.get())) {
    text.append(buffer, count);
  }
  std::set<std::string> names;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find('\n', begin);
    const std::string line = text.substr(begin, end - begin);
    begin = end + 1;
    // A line is a name and behind it " T 1234 56": kind, address and size.
    const std::size_t address = line.find_last_of(' ', line.find_last_of(' ') - 1);
    names.insert(as_written(line.substr(0, address - 2)));
  }
  return names;
}

/// What hosts call.
const std::set<std::string> INTERFACE = {
    "TARNWELL_KBF2_INTERNAL_VelkStepSplitter",

#if C_INTERFACE
    "kessel_check",
    "kessel_classic_options",
    "kessel_component_at",
    "kessel_default_options",
    "kessel_diff",
    "kessel_difference_at",
    "kessel_difference_count",
    "kessel_error_column",
    "kessel_error_file",
    "kessel_error_line",
    "kessel_error_of",
    "kessel_extract",
    "kessel_file",
    "kessel_file_count",
    "kessel_finding_at",
    "kessel_finding_count",
    "kessel_free",
    "kessel_is_same",
    "kessel_join",
    "kessel_line_at",
    "kessel_overview",
    "kessel_part_at",
    "kessel_part_count",
    "kessel_picture",
    "kessel_shrink",
    "kessel_shrunk_of",
    "kessel_split",
    "kessel_status_of",
    "kessel_summary_of",
    "kessel_verify",
#endif

    "Kessel::Run(std::filesystem::path const&, std::filesystem::path const&)",
    "Kessel::check(std::filesystem::path const&, Kessel::Options const&)",
    "Kessel::name_of(Kessel::FindingKind)",
    "Kessel::decode_step_to_utf8(std::string_view)",
    "Kessel::diff(std::filesystem::path const&, std::filesystem::path const&, "
    "Kessel::Options const&)",
    "Kessel::draw_picture(std::filesystem::path const&, std::filesystem::path const&, "
    "Kessel::PictureOptions const&)",
    "Kessel::encode_utf8_to_step(std::string_view)",
    "Kessel::extract(std::filesystem::path const&, std::string const&, std::filesystem::path "
    "const&, Kessel::ExtractOptions const&)",
    "Kessel::extract_each(std::filesystem::path const&, std::vector<std::string, "
    "std::allocator<std::string >> const&, "
    "std::filesystem::path const&, Kessel::ExtractOptions const&)",
    "Kessel::read_parts(std::filesystem::path const&, Kessel::ExtractOptions const&)",
    "Kessel::fspath_to_utf8(std::filesystem::path const&)",
    "Kessel::join(std::filesystem::path const&, std::filesystem::path const&, "
    "Kessel::JoinOptions const&)",
    "Kessel::read_assembly(std::filesystem::path const&, Kessel::Options const&)",
    "Kessel::read_drawing(std::filesystem::path const&, Kessel::DrawingOptions const&, "
    "Kessel::Options const&)",
    "Kessel::read_overview(std::filesystem::path const&, std::optional<Kessel::DrawingOptions> "
    "const&, Kessel::Options const&)",
    "Kessel::read_summary(std::filesystem::path const&, Kessel::Options const&)",
    "Kessel::list_file(std::string const&, std::filesystem::path const&)",
    "Kessel::read_split_list(std::filesystem::path const&)",
    "Kessel::state_of(Kessel::ListedFile const&, std::filesystem::path const&)",
    "Kessel::write_split_list(Kessel::SplitList const&, std::filesystem::path const&)",
    "Kessel::shrink(std::filesystem::path const&, std::filesystem::path const&, "
    "Kessel::ShrinkOptions const&)",
    "Kessel::split(std::filesystem::path const&, std::filesystem::path const&, "
    "Kessel::Options const&)",
    "Kessel::verify(std::filesystem::path const&, std::filesystem::path const&, "
    "Kessel::Options const&)",
    "Kessel::visit_places(Kessel::Drawing const&, unsigned long, unsigned long, "
    "std::function<void (Kessel::PlacedPart const&)> const&)",
    "Kessel::whole_box(Kessel::Drawing const&, unsigned long)",

    "Kessel::Entity::Entity()",
    "Kessel::Entity::Entity(Kessel::Entity&&)",
    "Kessel::Entity::~Entity()",
    "Kessel::Entity::type() const",
    "Kessel::Entity::attribute() const",
    "Kessel::Entity::add_reference(unsigned)",
    "Kessel::Entity::get_reference(int) const",
    "Kessel::Entity::get_references() const",
    "Kessel::Entity::refer_any() const",
    "Kessel::Entity::shrink_to_fit()",

    "Kessel::EntityWithType::EntityWithType(std::string_view)",
    "Kessel::EntityWithType::EntityWithType(Kessel::Entity&&)",
    "Kessel::EntityWithType::EntityWithType(Kessel::EntityWithType&&)",
    "Kessel::EntityWithType::~EntityWithType()",
    "Kessel::EntityWithType::type() const",

    "Kessel::EntityWithAttr::EntityWithAttr(std::string_view, std::string_view)",
    "Kessel::EntityWithAttr::EntityWithAttr(Kessel::Entity&&)",
    "Kessel::EntityWithAttr::EntityWithAttr(Kessel::EntityWithAttr&&)",
    "Kessel::EntityWithAttr::~EntityWithAttr()",
    "Kessel::EntityWithAttr::attribute() const",

    "Kessel::File::File(std::filesystem::path)",
    "Kessel::File::~File()",
    "Kessel::File::from(std::filesystem::path, std::string (*)(std::string_view))",
    "Kessel::File::extract_parts(std::filesystem::path)",
    "Kessel::File::create_entity(unsigned)",
    "Kessel::File::create_entity(unsigned, std::string_view)",
    "Kessel::File::create_entity(unsigned, std::string_view, std::string_view)",
    "Kessel::File::types() const",
    "Kessel::File::at(unsigned) const",
    "Kessel::File::get(std::string_view) const",
    "Kessel::File::get_ids(std::string_view) const",
    "Kessel::File::parts() const",
    "Kessel::File::root_part() const",

    "Kessel::Part::Part(Kessel::Entity&&)",
    "Kessel::Part::Part(std::string_view)",
    "Kessel::Part::~Part()",
    "Kessel::Part::add_child_part(Kessel::Part*)",
    "Kessel::Part::add_parent_part(Kessel::Part*)",
    "Kessel::Part::childs_parts() const",
    "Kessel::Part::parents_parts() const",
    "Kessel::Part::resolve_name(Kessel::File const*, std::string (*)(std::string_view))",
    "Kessel::Part::get_utf8_filename() const",
    "Kessel::Part::get_utf8_filepath() const",
    "Kessel::Part::get_encoded_filename() const",
    "Kessel::Part::get_encoded_filepath() const",
    "Kessel::Part::output(std::string const&)",
    "Kessel::Part::close()",
    "Kessel::Part::free_statics()",
    "Kessel::Part::_filenames",
    "Kessel::Part::_opened_files",

    "Kessel::PartError::PartError(std::string const&, std::vector<Kessel::NamedPart, "
    "std::allocator<Kessel::NamedPart>>, std::filesystem::path const&)",
    "Kessel::PartError::PartError(Kessel::PartError const&)",
    "Kessel::PartError::~PartError()",
    "Kessel::PartError::candidates() const",
    "Kessel::PartError::path() const",
    "Kessel::PartError::sentence() const",

    "Kessel::InputError::InputError(Kessel::Finding const&, std::filesystem::path const&)",
    "Kessel::InputError::InputError(Kessel::InputError const&)",
    "Kessel::InputError::~InputError()",
    "Kessel::InputError::finding() const",
    "Kessel::InputError::path() const",

    "Kessel::OutputError::OutputError(std::filesystem::path const&, std::error_code)",
    "Kessel::OutputError::OutputError(Kessel::OutputError const&)",
    "Kessel::OutputError::~OutputError()",
    "Kessel::OutputError::path() const",
    "Kessel::OutputError::reason() const",
};

/// What the compiler adds to classes with virtual functions, for casts and subclasses of hosts.
const std::set<std::string> CLASS_TABLES = {
    "vtable for Kessel::Entity",
    "vtable for Kessel::EntityWithAttr",
    "vtable for Kessel::EntityWithType",
    "vtable for Kessel::InputError",
    "vtable for Kessel::OutputError",
    "vtable for Kessel::Part",
    "vtable for Kessel::PartError",
    "typeinfo for Kessel::Entity",
    "typeinfo for Kessel::EntityWithAttr",
    "typeinfo for Kessel::EntityWithType",
    "typeinfo for Kessel::InputError",
    "typeinfo for Kessel::OutputError",
    "typeinfo for Kessel::Part",
    "typeinfo for Kessel::PartError",
    "typeinfo name for Kessel::Entity",
    "typeinfo name for Kessel::EntityWithAttr",
    "typeinfo name for Kessel::EntityWithType",
    "typeinfo name for Kessel::InputError",
    "typeinfo name for Kessel::OutputError",
    "typeinfo name for Kessel::Part",
    "typeinfo name for Kessel::PartError",
};

TEST(ExportedNames, EveryNameOfTheInterfaceIsExported) {
  const std::set<std::string> exported = exported_names();
  for (const std::string& name : INTERFACE) EXPECT_TRUE(exported.contains(name)) << name;
  for (const std::string& name : CLASS_TABLES) EXPECT_TRUE(exported.contains(name)) << name;
}

// The library's own functions and templates of the standard library stay inside: a host may hold
// other versions of either.
TEST(ExportedNames, NothingElseIsExported) {
  for (const std::string& name : exported_names()) {
    EXPECT_TRUE(INTERFACE.contains(name) || CLASS_TABLES.contains(name)) << name;
  }
}

TEST(ExportedNames, PrivateMembersAndStaticsStayInside) {
  const std::set<std::string> exported = exported_names();
  ASSERT_FALSE(exported.empty());
  for (const std::string_view hidden : {
           "File::add_type",
           "File::associate_entities",
           "File::associate_others",
           "File::find_and_create_parts",
           "File::find_parts_types",
           "File::generate_root",
           "File::initiate_recognition",
           "File::list_root",
           "File::name_after_products",
           "File::parse_file",
           "File::read",
           "File::process_parts",
           "File::write_parts",
           "Part::MAX_OPENED_FILE",
       }) {
    for (const std::string& name : exported) {
      EXPECT_EQ(name.find(hidden), std::string::npos) << name;
    }
  }
}

TEST(ExportedNames, MarkerOfTheLoadedLibraryReturnsOne) {
  const std::unique_ptr<void, int (*)(void*)> library(dlopen(LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL),
                                                      dlclose);
  ASSERT_NE(library, nullptr) << dlerror();
  using Marker = int (*)();
  const auto marker =
      reinterpret_cast<Marker>(dlsym(library.get(), "TARNWELL_KBF2_INTERNAL_VelkStepSplitter"));
  ASSERT_NE(marker, nullptr) << dlerror();
  EXPECT_EQ(marker(), 1);
}

}  // namespace
}  // namespace Kessel::test
