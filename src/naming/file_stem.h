// From a product's name to a file name that every common file system takes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Kessel {

/// What every output file's name ends in.
inline constexpr std::string_view FILE_EXTENSION = ".stp";

/// Most bytes that a file's name has, the extension included. Common file systems allow 255, those
/// that encrypt names 143.
inline constexpr std::size_t MAX_FILE_NAME = 143;

/// The characters of a file name.
enum class FileNameSet {
  ascii,    ///< letters without marks, other scripts as code points: readable by every reader
  unicode,  ///< as the product's name has them, in normalization form C
};

/// What the file of a product called `name` (UTF-8; bytes that are not UTF-8 count as ISO 8859-1)
/// is called, in UTF-8 and without extension. Empty where nothing of the name is of use.
///
/// What some file system reserves (`< > : " / \ | ? *`, control and format characters, names of
/// devices such as "nul", a dot in front, spaces and dots at the end) becomes "_" or goes, and so
/// do apostrophes and semicolons, over which simple readers of exchange files trip, and in front
/// what means something to a shell: "#", "-", "~". Too long a name is cut between two characters.
std::string file_stem(std::string_view name, FileNameSet set);

/// The same for a product whose name may be that of an exchange file: "lid.step" gives "lid", since
/// the file's name has an extension of its own. An ending without which nothing of use would be
/// left stays.
std::string product_file_stem(std::string_view name, FileNameSet set);

/// `stem` cut so that `bytes` more and the extension fit into MAX_FILE_NAME, not inside a character
/// or in front of its marks, and without spaces and dots at the end.
std::string shortened_stem(std::string_view stem, std::size_t bytes);

}  // namespace Kessel
