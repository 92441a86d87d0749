// What a line of a reference section refers to.
#pragma once

#include <string>
#include <string_view>

namespace Kessel {

/// The parts of a resource "<folder/file.stp#anchor>" (ISO 10303-21, 6.5; RFC 3986); views into it.
struct Resource {
  std::string_view whole;   ///< without its brackets; empty where there is none
  std::string_view file;    ///< what is in front of the "#", with a scheme if it has one
  std::string_view path;    ///< of that; empty where the resource is no file, or this one
  std::string_view anchor;  ///< behind the "#"
};

/// The resource in "#12 = <file.stp#name>".
Resource resource_in(std::string_view entry);

/// The path of the file that a URI names, decoded; empty where it names none.
std::string file_of_uri(std::string_view uri);

/// What a part of a URI says: "%20" and its like are bytes.
std::string decoded_uri(std::string_view part);

/// The same the other way round: a path, for a URI.
std::string encoded_uri(std::string_view path);

}  // namespace Kessel
