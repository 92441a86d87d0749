// Takes parts out of a file, and looks at what came out.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Kessel::test {

/// What is wrong with the files of every product of the exchange file `in`, a sentence each; empty
/// where nothing is:
/// - the placement keeps its invariants, where the input `is_sound` also that what speaks of a
///   product stands with it, and in the file nothing stands for something else;
/// - the file is one of which nothing is unusual but the input was, and no reference leads nowhere;
/// - it has the products below the one that was asked for and no other, and that at its top;
/// - it refers to no file, and has no marks;
/// - every record says what one of the input says, with the same text, items of shared lists apart;
/// - it says all that the joined files of a nested split of the input say of the product, where
///   those hold nothing of other products and no circle; where `same_as_split`, no more than that.
/// - it says what the joined files of a nested split of the input say of the product, apart from
///   what stands there since it needs other products.
/// Works with the files "out.stp" and "joined.stp" and the folder "split" of the working directory.
std::vector<std::string> extract_faults(const std::filesystem::path& in, bool same_as_split,
                                        bool is_sound);

}  // namespace Kessel::test
