// What is wrong with the values of options; empty where nothing is.
#pragma once

#include <string>

namespace Velkstep {

/// A size in bytes, with a unit or without.
std::string fault_of_size(const std::string& size);

/// A number of 0 or more.
std::string fault_of_count(const std::string& count);

/// A file or folder to write.
std::string fault_of_output(const std::string& out);

/// One that is written as an exchange file: it is not compressed, and no picture.
std::string fault_of_exchange_file(const std::string& out);

/// The folder of a report, which is not the page.
std::string fault_of_report_folder(const std::string& out);

/// One that is written as a picture: that is SVG.
std::string fault_of_picture(const std::string& out);

}  // namespace Velkstep
