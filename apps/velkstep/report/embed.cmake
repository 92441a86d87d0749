# Writes the report page as a C++ header, in two pieces around its data.
#   FOLDER  the page's sources   SCRIPTS  its scripts in order, separated by ","   HEADER  the result
cmake_minimum_required(VERSION 3.25)
file(READ ${FOLDER}/report.html page)
file(READ ${FOLDER}/report.css style)
set(script "")
string(REPLACE "," ";" SCRIPTS "${SCRIPTS}")
foreach(name IN LISTS SCRIPTS)
  file(READ ${FOLDER}/${name} text)
  string(APPEND script "${text}")
endforeach()
string(REPLACE "@STYLE@" "${style}" page "${page}")
string(REPLACE "@SCRIPT@" "${script}" page "${page}")
string(FIND "${page}" "@DATA@" data)
math(EXPR after "${data} + 6")
string(SUBSTRING "${page}" 0 ${data} start)
string(SUBSTRING "${page}" ${after} -1 end)
file(WRITE ${HEADER} "// The report page around its data. Generated.
#pragma once

#include <string_view>

namespace Velkstep {

inline constexpr std::string_view REPORT_PAGE_START = R\"~page~(${start})~page~\";
inline constexpr std::string_view REPORT_PAGE_END = R\"~page~(${end})~page~\";

}  // namespace Velkstep
")
