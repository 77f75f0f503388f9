// Delimiters, then a text: the exported tokenizer, and the walker of access lists beside it.
#include "fuzz.h"

#include "acl/access_list.h"
#include "nasshare/acl.h"

#include <cstring>
#include <memory>
#include <vector>

namespace nasshare::fuzzing {
namespace {

std::vector<std::string> tokens_of(const std::string &text, const char *delimiters) {
  auto copy = std::make_unique<char[]>(text.size() + 1); // with nothing readable behind it
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  std::vector<std::string> tokens;
  for (char *token = smb_strtok(copy.get(), delimiters); token != nullptr;
       token = smb_strtok(nullptr, delimiters)) {
    require(token >= copy.get() && token <= copy.get() + text.size(), "a token lies in the text");
    tokens.emplace_back(token);
    require(tokens.size() <= text.size() + 1, "the walk ends");
  }
  return tokens;
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  auto delimiters = parts.next_string();
  auto text = parts.next_string();

  std::size_t kept = 0;
  for (const auto &token : tokens_of(text, delimiters.c_str())) {
    require(token.find_first_of(delimiters) == std::string::npos, "a token holds no delimiter");
    kept += token.size();
  }
  auto is_delimiter = [&](char c) { return contains(delimiters, std::string_view(&c, 1)); };
  require(kept == text.size() - static_cast<std::size_t>(std::ranges::count_if(text, is_delimiter)),
          "tokens hold everything but the delimiters");

  std::vector<std::string> walked;
  for (auto token : Tokens(text)) {
    walked.emplace_back(token);
  }
  require(walked == tokens_of(text, "#,"), "the walker yields what the tokenizer yields");
}

} // namespace nasshare::fuzzing
