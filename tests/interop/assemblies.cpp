#include "interop/assemblies.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <ostream>

#include "shapes.h"

namespace Kessel::test {

void PrintTo(const AssemblySource& source, std::ostream* out) {
  *out << test_name(source);
}

std::string test_name(const AssemblySource& source) {
  std::string name = std::filesystem::path(source.name).stem().string();
  if (source.size != 0) name += "-" + std::to_string(source.size);
  for (char& c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  return name;
}

std::vector<AssemblySource> all_assemblies() {
  return {
      {"as1-oc-214.stp"},          {"as1-pe-203.stp"},      {"as1-tu-203.stp"},
      {"cube-inch.step"},          {"din-mount.step"},      {"dm1-id-214.stp"},
      {"dm1-pe-214.stp"},          {"exhaust-plate.step"},  {"filament-sensor.step"},
      {"spool-ramp.step"},         {"toolhead-mount.step"}, {"desk-lamp.step"},
      {"bench-vice.step"},         {"bodies", 12},          {"detached", 2},
      {"equal-names", 2},          {"ladder", 4},           {"mapped", 6},
      {"odd-names", 25},           {"own-bodies", 2},       {"root-bodies", 2},
      {"root-detached-bodies", 2}, {"several-roots", 2},    {"several-usages", 5},
      {"shared-levels", 3},
  };
}

std::vector<AssemblySource> every_assembly() {
  std::vector<AssemblySource> sources = all_assemblies();
  for (const char* name :
       {"abstract-pca.step", "inductor.stp", "interposer.step", "led.step", "mapped-ap242.stp",
        "mount-skeleton.stp", "prep-table.step", "transformer-ap242.step"}) {
    sources.push_back({name});
  }
  return sources;
}

std::filesystem::path file_of(const AssemblySource& source, const ScratchFolder& folder) {
  if (const bench::Shape* shape = bench::find_shape(source.name); shape != nullptr) {
    const std::filesystem::path path = folder / "in.step";
    std::ofstream out(path, std::ios::binary);
    bench::write_file(out, *shape, source.size, 1);
    return path;
  }
  for (const std::filesystem::path& place :
       {std::filesystem::path(VELKSTEP_EXAMPLES), samples_folder(),
        samples_folder().parent_path() / "samples-hard"}) {
    if (std::filesystem::exists(place / source.name)) return place / source.name;
  }
  return {};
}

}  // namespace Kessel::test
