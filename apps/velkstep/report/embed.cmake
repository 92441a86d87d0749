# Writes the report page as a C++ header: its pieces in front of its data, and those behind. Each
# source is a piece, since compilers need not take string literals of any length.
#   FOLDER  the page's sources   SCRIPTS  its scripts in order, separated by ","   HEADER  the result
cmake_minimum_required(VERSION 3.25)

# Adds a text to the list of pieces. (A macro would replace what looks like a variable in it.)
function(add_piece text)
  set(pieces "${pieces}    R\"~page~(${text})~page~\",\n" PARENT_SCOPE)
endfunction()

# What is in front of a mark in `page` becomes a piece, what is behind it stays in `page`.
function(cut_at mark)
  string(FIND "${page}" "${mark}" at)
  string(SUBSTRING "${page}" 0 ${at} piece)
  string(LENGTH "${mark}" length)
  math(EXPR after "${at} + ${length}")
  string(SUBSTRING "${page}" ${after} -1 rest)
  set(page "${rest}" PARENT_SCOPE)
  add_piece("${piece}")
  set(pieces "${pieces}" PARENT_SCOPE)
endfunction()

file(READ ${FOLDER}/report.html page)
set(pieces "")
cut_at("@STYLE@")
file(READ ${FOLDER}/report.css style)
add_piece("${style}")
cut_at("@DATA@")
set(start "${pieces}")
set(pieces "")
cut_at("@SCRIPT@")
string(REPLACE "," ";" SCRIPTS "${SCRIPTS}")
foreach(name IN LISTS SCRIPTS)
  file(READ ${FOLDER}/${name} script)
  add_piece("${script}")
endforeach()
add_piece("${page}")
file(WRITE ${HEADER} "// The report page around its data. Generated.
#pragma once

#include <string_view>

namespace Velkstep {

inline constexpr std::string_view REPORT_PAGE_START[] = {
${start}};
inline constexpr std::string_view REPORT_PAGE_END[] = {
${pieces}};

}  // namespace Velkstep
")
