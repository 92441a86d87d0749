// Rewrites exchange files in ways that change the bytes and not what they say.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel::test {

struct Form;

/// One way to rewrite a file.
struct Variant {
  std::string name;
  /// What is put behind the strings of all PRODUCT records, as it stands there and as it reads
  /// (UTF-8): the one thing that some variants change in what a file says.
  std::string suffix = {};
  std::string suffix_value = {};
  /// What else is other than in the plain form; null for nothing.
  void (*change)(Form& form) = nullptr;
};

/// All ways, each under a name of its own.
const std::vector<Variant>& variants();

/// A file as a variant has it.
struct Rewritten {
  std::string text;
  /// For each number of a record the number that it has in the plain form.
  std::map<std::string, std::string> plain_numbers;
};

/// `file` as `variant` has it. Takes what plain::is_legal() accepts, with one data section.
Rewritten rewritten(const Variant& variant, std::string_view file);
/// The same, of a file that was taken apart.
Rewritten rewritten(const Variant& variant, Form form);

/// The plain form that says what `form` says as `variant` has it: where that puts something behind
/// names, it stands there in ASCII and directives.
std::string plain_form(const Variant& variant, Form form);

/// `file` in its plain form: one statement a line, no comments, no blanks.
std::string plain_form(std::string_view file);

}  // namespace Kessel::test
