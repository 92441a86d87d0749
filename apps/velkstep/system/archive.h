// Compressed inputs: one exchange file in gzip, zip and the like.
#pragma once

#include <cstdint>
#include <string_view>

namespace Velkstep {

/// Whether a file that begins with `head` is compressed in a way that unpack() reads.
bool is_compressed(std::string_view head);

/// How many bytes of `head` is_compressed() wants to see.
inline constexpr std::size_t COMPRESSED_HEAD = 8;

/// What a small archive may become: this many bytes, or so many times its own size, whichever is
/// more. Exchange files shrink to a fifth or a tenth.
inline constexpr std::uint64_t ALWAYS_UNPACKED = std::uint64_t{256} << 20;
inline constexpr std::uint64_t MOST_TIMES_ITS_SIZE = 250;

/// Unpacks the exchange file in the file `from`, which can be sought in, to `to`. Of an archive
/// with several files it is the root of the standard's own form (ISO 10303-21:2016, Annex A:
/// "ISO-10303.p21"), or the only one whose name ends as an exchange file's does.
/// Throws `Kessel::InputError` where the archive is damaged, holds no exchange file or more than
/// one, or becomes too large.
void unpack(int from, int to);

}  // namespace Velkstep
