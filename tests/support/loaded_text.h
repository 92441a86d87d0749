// Instances from records that stand in the test.
#pragma once

#include <sstream>
#include <string>

#include "instances/loader.h"

namespace Kessel::test {

/// An exchange file with these records.
inline std::string exchange_file(const std::string& records) {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
         "FILE_NAME('in.stp','2020-01-01T00:00:00',(''),(''),'','','');\n"
         "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n" +
         records + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// Loads them.
struct LoadedText {
  explicit LoadedText(const std::string& records) : in(exchange_file(records)) {
    load_instances(in, instances);
  }
  /// The position of #number.
  Index at(std::uint64_t number) const { return instances.find(number); }

  std::istringstream in;
  Instances instances;
};

}  // namespace Kessel::test
