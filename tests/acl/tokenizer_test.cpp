// smb_strtok: tokens between runs of delimiters, with a process-wide cursor.
#include "access_lists.h"
#include "fields.h"
#include "nasshare/acl.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {
namespace {

using Tokens = std::vector<std::string>;

Tokens tokens_of(std::string text, const char *delimiters = "#,") {
  Tokens tokens;
  for (char *token = smb_strtok(text.data(), delimiters); token != nullptr;
       token = smb_strtok(nullptr, delimiters)) {
    tokens.emplace_back(token);
  }
  return tokens;
}

TEST(Tokenizer, YieldsTheNamesOfAList) {
  EXPECT_EQ(tokens_of("#a#,#@g#"), (Tokens{"a", "@g"}));
}

TEST(Tokenizer, CutsAtRunsOfDelimiters) {
  const struct {
    const char *text;
    Tokens tokens;
  } rows[] = {
      {"#alice#,#@staff#", {"alice", "@staff"}},
      {"alice", {"alice"}},
      {"alice,bob", {"alice", "bob"}},
      {"#alice", {"alice"}},
      {"alice#", {"alice"}},
      {",,##alice##,,,#,bob#,#,", {"alice", "bob"}},
      {"#a b#,#c d#", {"a b", "c d"}},
      {"#@Domain Users#", {"@Domain Users"}},
      {"#\u00e9t\u00e9#,#\xff#", {"\u00e9t\u00e9", "\xff"}},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(tokens_of(row.text), row.tokens);
  }
}

TEST(Tokenizer, ATextOfDelimitersOnlyIsOneEmptyToken) {
  for (const char *text : {"#,", "#", ",", "##,##", ""}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(tokens_of(text), Tokens{""});
  }
}

TEST(Tokenizer, TheEmptyTokenIsTheTerminatorOfTheText) {
  char text[] = "#,#";
  EXPECT_EQ(smb_strtok(text, "#,"), text + 3);
  EXPECT_EQ(smb_strtok(nullptr, "#,"), nullptr);
}

TEST(Tokenizer, TokensLieInTheText) {
  char text[] = "#a#,#b#";
  EXPECT_EQ(smb_strtok(text, "#,"), text + 1);
  EXPECT_EQ(smb_strtok(nullptr, "#,"), text + 5);
}

TEST(Tokenizer, WritesATerminatorOverEveryDelimiterOfTheRunBehindAToken) {
  char text[] = "#a#,#b#,";
  smb_strtok(text, "#,");
  EXPECT_EQ(std::string_view(text, 8), std::string_view("#a\0\0\0b#,", 8));
  smb_strtok(nullptr, "#,");
  EXPECT_EQ(std::string_view(text, 8), std::string_view("#a\0\0\0b\0\0", 8));
}

TEST(Tokenizer, AfterTheEndEveryCallIsNull) {
  char text[] = "#a#";
  smb_strtok(text, "#,");
  EXPECT_EQ(smb_strtok(nullptr, "#,"), nullptr);
  EXPECT_EQ(smb_strtok(nullptr, "#,"), nullptr);
}

TEST(Tokenizer, HasNothingToContinueAtStart) {
  EXPECT_EQ(smb_strtok(nullptr, "#,"), nullptr);
}

TEST(Tokenizer, ANewTextReplacesTheOldWalk) {
  char first[] = "#a#,#b#";
  char second[] = "#c#,#d#";
  smb_strtok(first, "#,");
  EXPECT_STREQ(smb_strtok(second, "#,"), "c");
  EXPECT_STREQ(smb_strtok(nullptr, "#,"), "d");
  EXPECT_EQ(smb_strtok(nullptr, "#,"), nullptr);
}

TEST(Tokenizer, TheDelimitersMayChangeWithinAWalk) {
  char text[] = "a,b:c";
  EXPECT_STREQ(smb_strtok(text, ","), "a");
  EXPECT_STREQ(smb_strtok(nullptr, ":"), "b");
  EXPECT_STREQ(smb_strtok(nullptr, ":"), "c");
}

TEST(Tokenizer, OnlyTheFirstCallSkipsLeadingDelimiters) {
  char text[] = "a,:b";
  EXPECT_STREQ(smb_strtok(text, ","), "a");
  EXPECT_STREQ(smb_strtok(nullptr, ":"), "");
  EXPECT_STREQ(smb_strtok(nullptr, ":"), "b");
}

TEST(Tokenizer, WithoutDelimitersTheWholeTextIsOneToken) {
  EXPECT_EQ(tokens_of("#a#,#b#", ""), Tokens{"#a#,#b#"});
}

TEST(Tokenizer, AMissingDelimiterSetYieldsNothing) {
  char text[] = "#a#";
  EXPECT_EQ(smb_strtok(text, nullptr), nullptr);
  EXPECT_STREQ(text, "#a#");
}

TEST(Tokenizer, AFullListIsWalkedToItsEnd) {
  const std::string list = full_list();
  ASSERT_EQ(list.size(), 12287U);
  const Tokens tokens = tokens_of(list);
  EXPECT_EQ(tokens.size(), 1536U);
  EXPECT_EQ(tokens.front(), "u0000");
  EXPECT_EQ(tokens.back(), "u1535");
}

TEST(Tokenizer, ACallersWalkIsNotDisturbedByTheLibrarysOwn) {
  char text[] = "#a#,#b#";
  smb_strtok(text, "#,");
  AccessList other("#x#,#y#");
  Insert_Name_Node("x");
  list_item_compare(other);
  run_check_samba_list(other);
  convert_list(other);
  EXPECT_EQ(check_user_in_list("#alice#,#bob#", "alice"), 1);
  EXPECT_STREQ(smb_strtok(nullptr, "#,"), "b");
}

} // namespace
} // namespace nasshare::tests
