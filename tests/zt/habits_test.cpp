// SPDX-License-Identifier: MIT
// What every command understands: --json, --quiet, options with one dash, pass phrases from elsewhere;
// and the scripts for shells.
#include <gtest/gtest.h>
#include <json.h>
#include <suggest.h>

#include "Zt.h"
#include "support/TempFolder.h"

namespace {

using test::Result;
using test::Utf8;
using test::ZtHere;
using Args = std::vector<std::wstring>;

TEST(ZtHabits, JsonTexts) {
  const struct {
    std::wstring text;
    const wchar_t* json;
  } rows[] = {{L"", L"\"\""},
              {L"C:\\a \"b\"", L"\"C:\\\\a \\\"b\\\"\""},
              {std::wstring(L"\0\x1F\x7F\r\n", 5), L"\"\\u0000\\u001F\\u007F\\u000D\\u000A\""},
              {L"\u65E5\U0001F600/", L"\"\u65E5\U0001F600/\""},
              {std::wstring(1, wchar_t{0xD83D}) + L"x", L"\"\\uD83Dx\""},
              {std::wstring(1, wchar_t{0xDE00}), L"\"\\uDE00\""}};
  for (const auto& row : rows) EXPECT_EQ(row.json, zt::JsonText(row.text));
  EXPECT_EQ(L"{\"command\":\"a b\",\"exit\":1,\"result\":[],\"remarks\":[\"x\",\"y\"]}",
            zt::JsonAnswer(L"a b", 1, {}, {L"x", L"y"}));
}

TEST(ZtHabits, Json) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"a.txt", "12345");
  EXPECT_EQ("{\"command\":\"file size\",\"exit\":0,\"result\":[\"5\"],\"remarks\":[]}\r\n",
            ZtHere({L"file", L"size", L"--json", file}).out);
  EXPECT_EQ("{\"command\":\"path name\",\"exit\":0,\"result\":[\"--json\"],\"remarks\":[]}\r\n",
            ZtHere({L"-json", L"path", L"name", L"--", L"--json"}).out);
  const Result none = ZtHere({L"file", L"size", L"--json", folder / L"none"});
  EXPECT_EQ(1u, none.exit);
  EXPECT_EQ("", none.err);
  EXPECT_TRUE(none.out.starts_with(
      "{\"command\":\"file size\",\"exit\":1,\"result\":[],\"remarks\":[\"there is no X:\\\\"))
      << none;
  const Result refused = ZtHere({L"file", L"size", L"--json"});
  EXPECT_EQ(2u, refused.exit);
  EXPECT_NE(refused.out.npos,
            refused.out.find("\"exit\":2,\"result\":[],\"remarks\":[\"file size: PATH is missing"))
      << refused;
  EXPECT_EQ(13u, test::Lines(ZtHere({L"where", L"languages"}).out).size());
  EXPECT_EQ(1u, test::Lines(ZtHere({L"where", L"languages", L"--json"}).out).size());
  EXPECT_EQ(2u, ZtHere({L"file", L"read", L"--json", file}).exit);
}

TEST(ZtHabits, Quiet) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"a.txt";
  for (const Args& arguments :
       {Args{L"file", L"create", L"--quiet", file}, Args{L"-quiet", L"file", L"delete", file},
        Args{L"tree", L"delete", folder.path(), L"*.*", L"--quiet"}}) {
    const Result result = ZtHere(arguments);
    EXPECT_EQ(0u, result.exit) << result;
    EXPECT_EQ("", result.out + result.err);
  }
  // Answers and failures are still shown.
  EXPECT_EQ("no\r\n", ZtHere({L"file", L"exists", L"--quiet", file}).out);
  EXPECT_NE("", ZtHere({L"file", L"size", L"--quiet", file}).err);
}

TEST(ZtHabits, OneDashOrTwo) {
  const test::TempFolder folder;
  const std::wstring from = folder.File(L"a.txt", "a"), to = folder.File(L"b.txt", "b");
  EXPECT_EQ(0u, ZtHere({L"file", L"copy", L"-overwrite", from, to}).exit);
  EXPECT_EQ("a", test::ReadBytes(to));
  EXPECT_EQ("-3\r\n", ZtHere({L"round", L"int", L"-2.5"}).out);
}

TEST(ZtHabits, EditDistance) {
  EXPECT_EQ(0u, zt::EditDistance(L"", L""));
  EXPECT_EQ(3u, zt::EditDistance(L"", L"abc"));
  EXPECT_EQ(3u, zt::EditDistance(L"kitten", L"sitting"));
  EXPECT_EQ(1u, zt::EditDistance(L"flie", L"file"));
  const std::wstring words[] = {L"--overwrite", L"--yes"};
  EXPECT_EQ(L"; did you mean --overwrite?", zt::DidYouMean(L"--overwirte", words));
  EXPECT_EQ(L"", zt::DidYouMean(L"--bananas", words));
}

TEST(ZtHabits, PassPhrases) {
  const test::TempFolder folder;
  const std::wstring phrase = L"Gr\u00FC\u00DFe";
  const std::string cipher = ZtHere({L"crypt", L"encrypt", phrase, L"Hello"}).out;
  ::SetEnvironmentVariableW(L"ZT_PASS", phrase.c_str());
  folder.File(L"lines", Utf8(phrase) + "\r\nmore");
  folder.File(L"mark", "\xEF\xBB\xBF" + Utf8(phrase));
  for (const std::wstring& from : {std::wstring(L"@env:ZT_PASS"), L"@file:" + (folder / L"lines"),
                                   L"@file:" + (folder / L"mark"), L"@text:" + phrase}) {
    EXPECT_EQ(cipher, ZtHere({L"crypt", L"encrypt", from, L"Hello"}).out) << Utf8(from);
  }
  EXPECT_NE(cipher, ZtHere({L"crypt", L"encrypt", L"@text:@env:ZT_PASS", L"Hello"}).out);
  ::SetEnvironmentVariableW(L"ZT_PASS", nullptr);
  folder.File(L"bytes", "\xFF");
  for (const std::wstring& from : {std::wstring(L"@env:ZT_PASS"), std::wstring(L"@prompt"),
                                   L"@file:" + (folder / L"none"), L"@file:" + (folder / L"bytes")}) {
    const Result result = ZtHere({L"crypt", L"encrypt", from, L"Hello"});
    EXPECT_EQ(2u, result.exit) << Utf8(from) << "\n" << result;
    EXPECT_EQ("", result.out);
  }
}

// The scripts that are installed are those of today's tables.
TEST(ZtHabits, CompletionScripts) {
  EXPECT_EQ(test::ReadBytes(test::Beside(L"zt.bash")), ZtHere({L"completion", L"bash"}).out);
  EXPECT_EQ(test::ReadBytes(test::Beside(L"zt.ps1")), ZtHere({L"completion", L"powershell"}).out);
}

}  // namespace
