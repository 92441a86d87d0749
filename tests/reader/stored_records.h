// What a store holds, as text that tests can compare whole.
#pragma once

#include <string>
#include <vector>

#include "model/store.h"

namespace Kessel::test {

/// One line per record, by ascending number: `#5 plain: 6 7`, `#5 typed [STYLED_ITEM]: 6`,
/// `#5 named [PRODUCT] [its attribute]: 6`, with the references behind the colon.
std::vector<std::string> stored_records(const Store& file);

}  // namespace Kessel::test
