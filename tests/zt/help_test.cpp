// SPDX-License-Identifier: MIT
// The help is complete at every level, and what it shows is true: its examples give what it says,
// and its common tasks do what they promise.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Zt.h"
#include "support/TempFolder.h"

namespace {

using test::Lines;
using test::Result;
// Hundreds of pages: without a process for each.
Result Zt(const std::vector<std::wstring>& arguments) {
  return test::ZtHere(arguments);
}

struct Listed {
  std::wstring group, command, arguments;
  std::string help;
};

std::string FirstWord(const std::string& line) {
  return line.substr(2, line.find(' ', 2) - 2);
}

std::vector<std::string> Section(const std::string& help, const std::string& title) {
  std::vector<std::string> entries;
  bool inside = false;
  for (const std::string& line : Lines(help)) {
    if (line == title) {
      inside = true;
    } else if (line.empty()) {
      inside = false;
    } else if (inside) {
      entries.push_back(line);
    }
  }
  return entries;
}

// All commands, found as a user finds them.
const std::vector<Listed>& Commands() {
  static const std::vector<Listed> commands = [] {
    std::vector<Listed> found;
    for (const std::string& group : Section(Zt({L"--help"}).out, "Groups:")) {
      const std::wstring name = test::FromUtf8(FirstWord(group));
      for (const std::string& line : Section(Zt({name, L"--help"}).out, "Commands:")) {
        if (line.starts_with("      ")) continue;  // a summary on a line of its own
        const std::wstring command = test::FromUtf8(FirstWord(line));
        const Result help = Zt({name, command, L"--help"});
        EXPECT_EQ(0u, help.exit) << help;
        EXPECT_EQ("", help.err);
        const std::string usage = Lines(help.out).at(2);
        const std::string call = "Usage: zt " + test::Utf8(name) + " " + test::Utf8(command) + " ";
        EXPECT_TRUE(usage.starts_with(call)) << usage;
        found.push_back({name, command, test::FromUtf8(usage.substr(call.size())), help.out});
      }
    }
    return found;
  }();
  return commands;
}

TEST(ZtHelp, OverviewOnRequestIsAResult) {
  for (const wchar_t* word : {L"--help", L"-h", L"/?", L"help"}) {
    const Result result = test::Zt({word});
    EXPECT_EQ(0u, result.exit);
    EXPECT_EQ("", result.err);
    EXPECT_TRUE(result.out.starts_with("zt - ")) << result;
    for (const std::string& line : Lines(result.out)) EXPECT_LT(line.size(), 80u) << line;
  }
  for (const std::wstring group : {L"where", L"profile", L"crypt", L"tree", L"path", L"file", L"text",
                                   L"round", L"process", L"completion"}) {
    const Result result = Zt({group, L"--help"});
    EXPECT_EQ(result.out, Zt({group, L"-h"}).out);
    EXPECT_EQ(result.out, Zt({group, L"/?"}).out);
    for (const std::string& line : Lines(result.out)) EXPECT_LT(line.size(), 80u) << line;
  }
}

TEST(ZtHelp, NothingToDoIsBadInput) {
  for (const auto& arguments : {std::vector<std::wstring>{}, std::vector<std::wstring>{L"tree"}}) {
    const Result result = Zt(arguments);
    EXPECT_EQ(2u, result.exit);
    EXPECT_EQ("", result.out);
    EXPECT_TRUE(result.err.starts_with("zt ")) << result;
  }
}

TEST(ZtHelp, Version) {
  const Result result = Zt({L"--version"});
  EXPECT_EQ(0u, result.exit);
  const auto lines = Lines(result.out);
  ASSERT_EQ(2u, lines.size()) << result;
  EXPECT_TRUE(lines[0].starts_with("zt ")) << lines[0];
  const std::string library = "ZERATools.dll " + lines[0].substr(3) + ".0 (";
  EXPECT_EQ(library + test::Utf8(test::Beside(L"ZERATools.dll")) + ")", lines[1]);
}

TEST(ZtHelp, EveryCommandExplainsItself) {
  std::set<std::wstring> groups;
  for (const Listed& listed : Commands()) {
    SCOPED_TRACE(test::Utf8(listed.group + L" " + listed.command));
    groups.insert(listed.group);
    EXPECT_NE(listed.help.npos, listed.help.find("Example:")) << listed.help;
    EXPECT_NE(listed.help.npos, listed.help.find("Calls ")) << listed.help;
    EXPECT_NE(listed.help.npos, listed.help.find("Exit codes: ")) << listed.help;
    for (const std::string& line : Lines(listed.help)) EXPECT_LT(line.size(), 80u) << line;
    // Help is given whatever else stands there, and nothing is done.
    for (const wchar_t* word : {L"--help", L"-h", L"/?", L"-?"}) {
      EXPECT_EQ(listed.help, Zt({listed.group, listed.command, L"x", word}).out);
    }
  }
  EXPECT_EQ((std::set<std::wstring>{L"where", L"profile", L"crypt", L"tree", L"path", L"file", L"text",
                                    L"round", L"process", L"completion"}),
            groups);
  EXPECT_GT(Commands().size(), 60u);
  EXPECT_EQ(Commands()[0].help, Zt({L"help", Commands()[0].group, Commands()[0].command}).out);
}

TEST(ZtHelp, TooFewAndTooManyArgumentsAreRefused) {
  for (const Listed& listed : Commands()) {
    std::size_t least = 0, most = 0;
    bool optional = false, repeated = false;
    for (const std::wstring& word : test::Words(L"zt " + listed.arguments)) {
      if (word.starts_with(L"[--")) continue;
      optional = optional || word.starts_with(L"[");
      repeated = repeated || word.ends_with(L"...");
      least += !optional;
      ++most;
      optional = optional && !word.ends_with(L"]");
    }
    SCOPED_TRACE(test::Utf8(listed.group + L" " + listed.command + L" " + listed.arguments));
    const auto refused = [&](std::size_t count, const char* why) {
      std::vector<std::wstring> arguments = {listed.group, listed.command};
      arguments.insert(arguments.end(), count, L"X:\\no\\such\\thing");
      const Result result = Zt(arguments);
      EXPECT_EQ(2u, result.exit) << result;
      EXPECT_EQ("", result.out);
      EXPECT_NE(result.err.npos, result.err.find(why)) << result;
    };
    if (least > 0) refused(least - 1, " is missing");
    if (!repeated) refused(most + 1, "too many arguments");
  }
}

TEST(ZtHelp, ExamplesWithoutFilesGiveWhatTheySay) {
  int run = 0;
  for (const Listed& listed : Commands()) {
    static const std::set<std::wstring> groups = {L"path", L"text", L"round"};
    const bool cipher = listed.group == L"crypt" && listed.command != L"store" && listed.command != L"load";
    if (!groups.contains(listed.group) && !cipher) continue;
    const auto example = Section(listed.help, "Example:");
    ASSERT_EQ(2u, example.size());
    SCOPED_TRACE(example[0]);
    EXPECT_EQ(example[1].substr(2) + "\r\n", Zt(test::Words(test::FromUtf8(example[0].substr(2)))).out);
    ++run;
  }
  EXPECT_EQ(30, run);
}

// The overview alone has to be enough: its command lines run as they stand, in other folders.
TEST(ZtHelp, CommonTasksWork) {
  const test::TempFolder folder;
  const std::wstring viewer = folder.Folder(L"Viewer");
  const std::wstring logs = folder.Folder(L"logs");
  ::CopyFileW(test::Beside(L"zt.exe").c_str(), (viewer + L"view.exe").c_str(), TRUE);
  ::CopyFileW(test::Beside(L"ZERATools.dll").c_str(), (viewer + L"view_FRA.dll").c_str(), TRUE);
  test::WriteBytes(viewer + L"view.ini", "[View]\r\nTitle=Overview\r\n");
  test::WriteBytes(logs + L"new.log", "new");
  folder.Folder(L"Viewer\\template");
  folder.Folder(L"Viewer\\template\\deep");
  test::WriteBytes(viewer + L"template\\deep\\form.txt", "form");
  folder.Folder(L"project");
  ::SetEnvironmentVariableW(L"ZT_PASS", L"pass phrase");

  std::vector<Result> results;
  for (const std::string& line : Section(Zt({L"--help"}).out, "Common tasks:")) {
    if (!line.starts_with("    zt ")) continue;
    std::wstring command = test::FromUtf8(line.substr(4));
    const auto replace = [&](const std::wstring& from, const std::wstring& to) {
      for (std::size_t at; (at = command.find(from)) != command.npos;) command.replace(at, from.size(), to);
    };
    replace(L"C:\\App\\", viewer);
    replace(L"C:\\ProgramData\\Viewer\\logs\\", logs);
    replace(L"D:\\project\\", folder / L"project\\");
    replace(L"D:\\view.ini", folder / L"whole.ini");
    ASSERT_EQ(command.npos, command.find(L"C:\\")) << line;
    ASSERT_EQ(command.npos, command.find(L"D:\\")) << line;
    results.push_back(Zt(test::Words(command)));
    EXPECT_EQ(0u, results.back().exit) << line << "\n" << results.back();
    EXPECT_EQ("", results.back().err) << line;
  }
  ASSERT_EQ(9u, results.size());
  EXPECT_EQ(test::Utf8(viewer + L"view.ini\r\n"), results[0].out);
  EXPECT_EQ("0 DEU German\r\n", results[1].out);
  EXPECT_EQ("2 FRA French\r\n", results[2].out);
  EXPECT_EQ(test::Utf8(viewer + L"view_FRA.dll\r\n"), results[3].out);
  EXPECT_EQ("Licensed to Ann\r\n", results[5].out);
  EXPECT_EQ("new", test::ReadBytes(logs + L"new.log"));
  EXPECT_EQ("form", test::ReadBytes(folder / L"project\\deep\\form.txt"));
  EXPECT_EQ("[View]\nTitle=Plan\nZoom=150\nScale=1.5000000000\n", test::ReadBytes(folder / L"whole.ini"));
}

}  // namespace
