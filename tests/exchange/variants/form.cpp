#include "exchange/variants/form.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <string_view>

namespace Kessel::test {

namespace {

/// Digits without zeros in front.
std::string number_of(const std::string& name) {
  const std::size_t first = name.find_first_not_of('0', 1);
  return first == std::string::npos ? "0" : name.substr(first);
}

class Writer {
 public:
  explicit Writer(const Form& form) : form_(form), numbers_(numbers_of(form)) {}

  std::string write() {
    add(form_.in_front + "ISO-10303-21;\nHEADER;\n");
    for (const WrittenRecord& entity : form_.header) {
      tokens(entity);
      add(";\n");
    }
    add("ENDSEC;" + form_.behind_header + form_.sections + form_.data + form_.behind_record);
    for (std::size_t i = 0; i < form_.records.size(); ++i) {
      if (i == form_.records.size() / 2) add(form_.middle);
      record(form_.records[i]);
    }
    add(form_.end);
    return std::move(text_);
  }

 private:
  void add(std::string_view text) {
    for (const char c : text) {
      if (c == '\n') {
        text_ += form_.line_end;
      } else {
        text_ += c;
      }
    }
  }

  std::string name(const std::string& number) const {
    const auto found = numbers_.find(number);
    return '#' + form_.zeros + (found == numbers_.end() ? number : found->second);
  }

  void record(const WrittenRecord& record) {
    add(form_.before_record + name(record.number) + form_.between_tokens + '=' +
        form_.between_tokens);
    tokens(record);
    add(form_.between_tokens + ';' + form_.behind_record);
  }

  void tokens(const WrittenRecord& record) {
    bool was_inside = false;
    for (const plain::Token& token : record.tokens) {
      if (&token != &record.tokens.front()) add(form_.between_tokens);
      if (token.kind == '#') {
        add(name(number_of(token.text)));
      } else if (token.kind == 'S' && form_.breaks_strings) {
        add("'\n" + token.text.substr(1));
      } else {
        add(token.text);
      }
      if (token.kind == '(' && !was_inside) {
        add(form_.inside_record);
        was_inside = true;
      }
    }
  }

  const Form& form_;
  std::map<std::string, std::string> numbers_;
  std::string text_;
};

}  // namespace

Form form_of(std::string_view file) {
  EXPECT_TRUE(plain::is_legal(file));
  Form form;
  std::vector<WrittenRecord>* records = nullptr;
  std::vector<plain::Token> statement;
  const auto tokens = plain::tokens_of(file);
  for (const plain::Token& token : tokens.value()) {
    if (token.kind != ';') {
      statement.push_back(token);
      continue;
    }
    const std::string& word = statement.at(0).text;
    if (word == "HEADER") {
      records = &form.header;
    } else if (word == "DATA") {
      records = &form.records;
    } else if (word == "ENDSEC" && statement.size() == 1) {
      records = nullptr;
    } else if (records == &form.header) {
      records->push_back({"", statement});
    } else if (records != nullptr) {
      records->push_back({number_of(word), {statement.begin() + 2, statement.end()}});
    }
    statement.clear();
  }
  return form;
}

std::map<std::string, std::string> numbers_of(const Form& form) {
  std::map<std::string, std::string> numbers;
  for (std::uint64_t i = 0; i < form.records.size(); ++i) {
    const std::string& number = form.records[i].number;
    numbers[number] =
        form.number == nullptr ? number : std::to_string(form.number(i, form.records.size()));
  }
  return numbers;
}

std::string text_of(const Form& form) {
  return Writer(form).write();
}

}  // namespace Kessel::test
