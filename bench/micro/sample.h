// What the micro benchmarks work on: an assembly of generated bodies.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace Kessel::bench {

/// The text of the exchange file, about a megabyte.
const std::string& sample_text();

/// Its records as RecordCutter gives them; views into text that stays.
const std::vector<std::string_view>& sample_records();

/// The bytes of all records together.
std::size_t sample_bytes();

/// A store filled from the records. No part holds any of them.
std::unique_ptr<Store> load_sample();

}  // namespace Kessel::bench
