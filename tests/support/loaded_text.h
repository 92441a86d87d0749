// Instances from records that stand in the test.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "instances/instances.h"
#include "instances/loader.h"
#include "kessel/options.h"

namespace Kessel::test {

/// An exchange file with these records.
inline std::string exchange_file(const std::string& records) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
         "FILE_NAME('in.stp','2020-01-01T00:00:00',(''),(''),'','','');\n"
         "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n" +
         records + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// Records, loaded.
struct LoadedText {
  explicit LoadedText(const std::string& records) : LoadedText(exchange_file(records), Options()) {}
  /// A whole file.
  LoadedText(const std::string& file, const Options& options)
      : in(file), warnings(load_instances(in, instances, options)) {}

  /// The position of #number.
  Index at(std::uint64_t number) const { return instances.find(number); }

  std::istringstream in;
  Instances instances;
  std::vector<Finding> warnings;
};

}  // namespace Kessel::test
