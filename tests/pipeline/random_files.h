// Small exchange files made at random, most of them assemblies, many of them nasty.
#pragma once

#include <cstdint>
#include <string>

namespace Kessel::test {

/// An exchange file that depends on nothing but `seed` (and the order in which the compiler has
/// operands evaluated). Half of the files are assemblies without faults, though seldom tidy ones;
/// the others are odd in one or two ways, such as references to missing records, usages in a cycle,
/// or a header without quotes. Instance numbers stay below four million. A few of the files are
/// ones that a run does not return from.
std::string random_exchange_file(std::uint64_t seed);

}  // namespace Kessel::test
