// Files that are no exchange files at all.
#include "exchange/signature.h"

#include <gtest/gtest.h>

#include <string>

#include "check/check_text.h"

namespace Kessel::test {
namespace {

using namespace std::string_literals;

/// What a file with this beginning is said to be, "" for nothing.
std::string recognised(const std::string& head) {
  const auto finding = recognise(head);
  return finding ? describe(*finding) : "";
}

TEST(Signature, CompressedFilesAndArchives) {
  const struct {
    std::string bytes;
    std::string name;
  } CASES[] = {
      {"\x1F\x8B\x08", "gzip"},
      {"\x1F\x9D\x90", "compress"},
      {"PK\x03\x04", "zip"},
      {"PK\x05\x06", "zip"},
      {"BZh91AY", "bzip2"},
      {"\xFD"s
       "7zXZ\0"s,
       "xz"},
      {"\x28\xB5\x2F\xFD", "zstd"},
      {"\x04\x22\x4D\x18", "lz4"},
      {"LZIP\x01", "lzip"},
      {"7z\xBC\xAF\x27\x1C", "7z"},
      {"Rar!\x1A\x07\x01", "rar"},
  };
  for (const auto& row : CASES) {
    EXPECT_EQ(recognised(row.bytes),
              "error compressed: The file is compressed (" + row.name + "); unpack it first.");
  }
}

TEST(Signature, TextInOtherEncodings) {
  const struct {
    std::string bytes;
    std::string name;
  } CASES[] = {
      {"\xFF\xFEI\0S\0O\0"s, "UTF-16"},
      {"\xFE\xFF\0I\0S\0O"s, "UTF-16"},
      {"I\0S\0O\0-\0"s, "UTF-16"},
      {"\0I\0S\0O\0-"s, "UTF-16"},
      {"\xFF\xFE\0\0I\0\0\0"s, "UTF-32"},
      {"\0\0\xFE\xFF\0\0\0I"s, "UTF-32"},
      {"I\0\0\0S\0\0\0O\0\0\0"s, "UTF-32"},
      {"\0\0\0I\0\0\0S\0\0\0O"s, "UTF-32"},
      {"\n\0 \0I\0S\0O\0"s, "UTF-16"},
      {"\0\r\0\n\0I\0S\0O"s, "UTF-16"},
      {"\n\0\0\0I\0\0\0S\0\0\0O\0\0\0"s, "UTF-32"},
      {"\0\0\0\n\0\0\0I\0\0\0S\0\0\0O"s, "UTF-32"},
      {"\xC9\xE2\xD6\x60\xF1\xF0"s, "EBCDIC"},
  };
  for (const auto& row : CASES) {
    EXPECT_EQ(recognised(row.bytes), "error other_encoding: The file is text in " + row.name +
                                         ", which is not read; save it as UTF-8.");
  }
}

TEST(Signature, BinaryFiles) {
  const std::string FOUND = "error binary: The file is no exchange file: it is ";
  EXPECT_EQ(recognised("%PDF-1.7\n"), FOUND + "a PDF file.");
  EXPECT_EQ(recognised("\x89HDF\r\n\x1A\n"s), FOUND + "an HDF5 file.");
  EXPECT_EQ(recognised("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"s), FOUND + "a compound document.");
  EXPECT_EQ(recognised("\x7F"s
                       "ELF\x02\x01"s),
            FOUND + "an ELF file.");
  EXPECT_EQ(recognised("text and \0"s), FOUND + "binary data.");
  EXPECT_EQ(recognised("text and \x01"s), FOUND + "binary data.");
  EXPECT_EQ(recognised("\0 I\0S"s), FOUND + "binary data.");
}

TEST(Signature, OtherText) {
  EXPECT_EQ(recognised("<?xml version=\"1.0\"?>"),
            "error not_an_exchange_file: The file is no exchange file: it is an XML file.");
  const std::string OTHER =
      "error not_an_exchange_file: The file is no exchange file: it does not begin with "
      "\"ISO-10303-21\".";
  EXPECT_EQ(recognised("solid cube\n"), OTHER);
  EXPECT_EQ(recognised("<htm"), OTHER);
  EXPECT_EQ(recognised("HEADER;\nISO-10303-21;"), OTHER);
  EXPECT_EQ(recognised("/* ISO-10303-21;"), OTHER);
}

TEST(Signature, WhatDownloadsLeave) {
  const std::string FOUND = "error not_an_exchange_file: The file is no exchange file: it is ";
  const std::string PAGE = FOUND + "a web page, which a failed download may leave.";
  EXPECT_EQ(recognised("<!DOCTYPE html>\n<html>"), PAGE);
  EXPECT_EQ(recognised("\xEF\xBB\xBF\n <HTML lang=\"en\">"), PAGE);
  EXPECT_EQ(recognised("version https://git-lfs.github.com/spec/v1\noid sha256:0\n"),
            FOUND + "a pointer of Git LFS (\"git lfs pull\" gets the file).");
  std::string tar = "lamp.step" + std::string(248, '\0') + "ustar";
  EXPECT_EQ(recognised(tar), "error compressed: The file is an archive (tar); unpack it first.");
  tar.replace(0, 13, "ISO-10303-21;");
  EXPECT_EQ(recognised(tar), "");
}

TEST(Signature, ExchangeFiles) {
  EXPECT_EQ(recognised("ISO-10303-21;\n"), "");
  EXPECT_EQ(recognised("\xEF\xBB\xBFISO-10303-21;\n"), "");
  EXPECT_EQ(recognised(" \r\n/* a */ /* b */\nISO-10303-21;\n"), "");
  EXPECT_EQ(recognised("ISO-10303-21;\nHEADER;\0"s), "");
  EXPECT_EQ(recognised("/*" + std::string(HEAD_SIZE, 'x')), "");  // Nobody knows yet.
}

TEST(Signature, CheckSaysWhatAFileIs) {
  EXPECT_EQ(checked("\x1F\x8B\x08 and so on\n"),
            (Lines{"error compressed: The file is compressed (gzip); unpack it first."}));
  EXPECT_EQ(checked("\xFF\xFEI\0S\0O\0-\0\n\0"s),
            (Lines{"error other_encoding: The file is text in UTF-16, which is not read; save it "
                   "as UTF-8."}));
  EXPECT_EQ(checked(""), (Lines{"error empty_file: The file is empty."}));
  EXPECT_EQ(checked("hello"), (Lines{"error not_an_exchange_file: The file is no exchange file: it "
                                     "does not begin with \"ISO-10303-21\"."}));
}

}  // namespace
}  // namespace Kessel::test
