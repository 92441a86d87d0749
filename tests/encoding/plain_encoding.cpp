#include "encoding/plain_encoding.h"

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <cctype>
#include <cstdint>
#include <cstdio>

namespace Kessel::test::plain {

namespace {

std::u16string to_utf16(std::string_view utf8) {
  std::u16string units(utf8.size() + 1, u'\0');
  std::int32_t length = 0;
  UErrorCode error = U_ZERO_ERROR;
  u_strFromUTF8WithSub(units.data(), static_cast<std::int32_t>(units.size()), &length, utf8.data(),
                       static_cast<std::int32_t>(utf8.size()), 0xFFFD, nullptr, &error);
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  units.resize(static_cast<std::size_t>(length));
  return units;
}

}  // namespace

std::string encode_unit_by_unit(std::string_view utf8) {
  std::string out;
  bool in_wide_run = false;
  for (const char16_t unit : to_utf16(utf8)) {
    if (unit > 255) {
      if (!in_wide_run) out += "\\X2\\";
      in_wide_run = true;
      char field[5] = {};
      std::snprintf(field, sizeof field, "%x", static_cast<unsigned>(unit));
      for (int i = 0; i < 4; ++i) out += static_cast<char>(std::toupper(field[i]));
    } else {
      if (in_wide_run) out += "\\X0\\";
      in_wide_run = false;
      if (unit == 92) {
        out += "\\\\";
      } else if (unit == 39) {
        out += "''";
      } else {
        out += static_cast<char>(unit);
      }
    }
  }
  if (in_wide_run) out += "\\X0\\";
  return out;
}

}  // namespace Kessel::test::plain
