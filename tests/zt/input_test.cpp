// SPDX-License-Identifier: MIT
// Bad input: a clear message on stderr, exit code 2, nothing changed.
#include <gtest/gtest.h>

#include "Zt.h"
#include "support/TempFolder.h"

namespace {

using test::Result;

class ZtInput : public testing::Test {
 protected:
  ZtInput() {
    folder.File(L"a.txt", "first");
    folder.File(L"b.txt", "second");
    folder.File(L"view.ini", "[View]\r\nTitle=Overview\r\n");
    folder.Folder(L"logs");
    folder.File(L"logs\\old.log", "old");
  }

  // Everything in the folder, with contents.
  std::vector<std::pair<std::wstring, std::string>> State() const {
    std::vector<std::pair<std::wstring, std::string>> state;
    for (const std::wstring& name : folder.Entries()) {
      state.emplace_back(name, name.ends_with(L'\\') ? "" : test::ReadBytes(folder / name));
    }
    return state;
  }

  // Runs in the folder, so that a relative path that slipped through would hit it.
  void Refused(std::vector<std::wstring> arguments, const char* why) {
    for (std::wstring& argument : arguments) {
      const std::size_t at = argument.find(L"$");
      if (at != argument.npos) argument.replace(at, 1, folder.path());
    }
    std::string call;
    for (const std::wstring& argument : arguments) call += test::Utf8(argument.substr(0, 80)) + " ";
    SCOPED_TRACE(call);
    const auto before = State();
    const Result result = test::ZtHere(arguments, "input", folder.path());
    EXPECT_EQ(2u, result.exit) << result;
    EXPECT_EQ("", result.out);
    EXPECT_TRUE(result.err.starts_with("zt: ")) << result;
    EXPECT_NE(result.err.npos, result.err.find(why)) << result;
    EXPECT_EQ(before, State());
  }

  const test::TempFolder folder;
};

TEST_F(ZtInput, UnknownNames) {
  Refused({L"patt"}, "there is no command \"patt\"");
  Refused({L"path", L"nam", L"x"}, "path has no command \"nam\"");
  Refused({L"path", L"name", L"--raw", L"x"}, "there is no option --raw");
  Refused({L"file", L"copy", L"--force", L"$a.txt", L"$c.txt"}, "there is no option --force");
  Refused({L"file", L"copy", L"-f", L"$a.txt", L"$c.txt"}, "there is no option -f");
  Refused({L"file", L"copy", L"-overwirte", L"$a.txt", L"$b.txt"}, "did you mean --overwrite?");
  Refused({L"tree", L"delete", L"--dryrun", L"$logs\\", L"*.*"}, "did you mean --dry-run?");
  Refused({L"flie"}, "did you mean file?");
  Refused({L"file", L"SIZE", L"$a.txt"}, "did you mean size?");
  Refused({L"tree", L"delte", L"$logs\\", L"*.*"}, "did you mean delete?");
}

TEST_F(ZtInput, Paths) {
  const std::wstring longName(256, L'n');
  const std::wstring longPath = L"X:\\" + std::wstring(200, L'd') + L"\\" + std::wstring(60, L'n');
  for (const wchar_t* command :
       {L"exists", L"size", L"time", L"create", L"delete", L"read", L"write", L"check-write", L"version"}) {
    Refused({L"file", command, L""}, "is empty");
    Refused({L"file", command, L"$*.txt"}, "no file name can have");
    Refused({L"file", command, L"$a?txt"}, "no file name can have");
    Refused({L"file", command, L"$a\nb"}, "control character");
    Refused({L"file", command, longPath}, "259 characters");
    Refused({L"file", command, longName}, "more than 255");
  }
  Refused({L"file", L"wait", L"", L"100"}, "is empty");
  Refused({L"file", L"rename", L"$a.txt", L""}, "is empty");
  Refused({L"file", L"rename", L"", L"$c.txt"}, "is empty");
  Refused({L"file", L"copy", L"$a.txt", L"$<c>"}, "no file name can have");
  Refused({L"file", L"compare", L"$a.txt", L"*"}, "no file name can have");
}

TEST_F(ZtInput, OneFileUnderTwoNames) {
  Refused({L"file", L"rename", L"$a.txt", L"$a.txt"}, "is the same file");
  Refused({L"file", L"rename", L"$a.txt", L"$A.TXT"}, "is the same file");
  Refused({L"file", L"rename", L"--overwrite", L"$a.txt", L"$logs\\..\\a.txt"}, "is the same file");
  Refused({L"file", L"rename", L"--overwrite", L"$a.txt", L"a.txt"}, "is the same file");
  Refused({L"file", L"copy", L"--overwrite", L"$a.txt", L"$.\\a.txt"}, "is the same file");
}

TEST_F(ZtInput, Numbers) {
  for (const wchar_t* text :
       {L"", L"x", L"1x", L"0x10", L" 1", L"1 ", L"+1", L"1.0", L"-", L"--1x", L"99999999999999999999"}) {
    Refused({L"file", L"wait", L"$a.txt", L"--", text}, "is not a whole number");
    Refused({L"path", L"add-index", L"a.txt", L"--", text, L"1"}, "is not a whole number");
    Refused({L"profile", L"set-int", L"$view.ini", L"View", L"Key", L"--", text}, "is not a whole number");
    Refused({L"profile", L"get-uint", L"$view.ini", L"View", L"Key", L"--", text}, "is not a whole number");
  }
  // Below one poll the library waits for ever.
  Refused({L"file", L"wait", L"$nothing", L"19"}, "from 20 to 4294967295");
  Refused({L"file", L"wait", L"$nothing", L"4294967296"}, "from 20 to 4294967295");
  Refused({L"path", L"add-index", L"a.txt", L"2147483648", L"1"}, "from 0 to 2147483647");
  Refused({L"path", L"add-index", L"a.txt", L"-1", L"1"}, "from 0 to 2147483647");
  Refused({L"path", L"add-index", L"a.txt", L"1", L"256"}, "from 0 to 255");
  Refused({L"profile", L"set-int", L"$view.ini", L"View", L"Key", L"2147483648"},
          "from -2147483648 to 2147483647");
  Refused({L"profile", L"set-int", L"$view.ini", L"View", L"Key", L"-2147483649"},
          "from -2147483648 to 2147483647");
  Refused({L"profile", L"set-uint", L"$view.ini", L"View", L"Key", L"-1"}, "from 0 to 4294967295");
  Refused({L"profile", L"set-word", L"$view.ini", L"View", L"Key", L"65536"}, "from 0 to 65535");
  for (const wchar_t* text : {L"", L"x", L"1,5", L"0x1p3", L"inf", L"nan", L"1e999", L" 1", L"1e", L"."}) {
    Refused({L"round", L"int", text}, "is not a decimal number");
    Refused({L"round", L"double", text, L"1"}, "is not a decimal number");
    Refused({L"profile", L"set-double", L"$view.ini", L"View", L"Key", text}, "is not a decimal number");
  }
  Refused({L"profile", L"set-float", L"$view.ini", L"View", L"Key", L"4e38"}, "is too large");
  // Its digits would be cut when they are read.
  Refused({L"profile", L"set-double", L"$view.ini", L"View", L"Key", L"1e241"}, "is too large");
  Refused({L"round", L"double", L"1", L"16"}, "from 0 to 15");
  Refused({L"profile", L"get-int", L"$view.ini", L"View", L"Key", L"0", L"5"}, "needs a MAX");
  Refused({L"profile", L"get-int", L"$view.ini", L"View", L"Key", L"0", L"5", L"4"}, "is above MAX");
}

TEST_F(ZtInput, PathTexts) {
  const std::wstring name(255, L'n');
  for (const wchar_t* command : {L"drive", L"dir", L"name", L"ext", L"folder", L"file"}) {
    Refused({L"path", command, name + L"n"}, "file name of more than 255");
    Refused({L"path", command, L"C:\\" + name + L"\\x"}, "directory of more than 255");
    Refused({L"path", command, L"x." + name}, "extension of more than 255");
  }
  Refused({L"path", L"set-file", L"x", name + L"n"}, "file name of more than 255");
  Refused({L"path", L"set-folder", L"x", L"\\" + name + L"\\"}, "directory of more than 255");
  Refused({L"path", L"add-name", name, L"n"}, "longer than 255");
  Refused({L"path", L"add-dir", L"\\x", name}, "longer than 255");
  Refused({L"path", L"add-index", name, L"1", L"1"}, "longer than 255");
  Refused({L"path", L"add-index", L"n", L"1", L"255"}, "longer than 255");
}

TEST_F(ZtInput, Trees) {
  for (const wchar_t* command : {L"delete", L"prune", L"copy"}) {
    const auto tree = [&](const std::wstring& start, const char* why) {
      std::vector<std::wstring> arguments = {L"tree", command, start};
      if (std::wstring_view(command) == L"copy") {
        arguments.insert(arguments.end(), {L"$copy\\", L"keep"});
      } else {
        arguments.push_back(L"*.*");
        if (std::wstring_view(command) == L"prune") arguments.push_back(L"0s");
      }
      Refused(arguments, why);
    };
    tree(L"", "is empty");
    tree(L"*.*", "no file name can have");
    tree(L"$logs\\*.*", "no file name can have");
    tree(L"$logs", "does not end in a backslash");
    tree(L"logs\\", "is not a full path");
    tree(L".\\", "is not a full path");
    tree(L"X:", "does not end in a backslash");
    tree(L"X:logs\\", "is not a full path");
    tree(L"\\", "is not a full path");
    tree(L"$logs\\..\\", "is not a full path");
    tree(L"$logs/", "does not end in a backslash");
  }
  for (const wchar_t* root : {L"X:\\", L"\\\\server\\share\\"}) {
    Refused({L"tree", L"delete", root, L".log"}, "is a whole drive");
    Refused({L"tree", L"prune", root, L".log", L"0s"}, "is a whole drive");
  }
  for (const wchar_t* filter :
       {L"", L"*", L"log", L".", L"*.", L"*.*.*", L"old.log", L".tar.gz", L".l?g", L".l*", L"*.log*"}) {
    Refused({L"tree", L"delete", L"$logs\\", filter}, "is neither an extension");
  }
  // The library compares these as they are: they would match nothing.
  for (const wchar_t* filter : {L"", L"*", L"log", L"*.log", L".*"}) {
    Refused({L"tree", L"prune", L"$logs\\", filter, L"0s"}, "is neither an extension");
  }
  for (const wchar_t* age :
       {L"", L"d", L"-1", L"1w", L"1.5d", L"4294967296s", L"49711d", L"99999999999s", L"1dd", L" 1d"}) {
    Refused({L"tree", L"prune", L"$logs\\", L"*.*", age}, "is not an age");
  }
  // Who means days must not get seconds.
  for (const wchar_t* age : {L"0", L"1", L"30"}) {
    Refused({L"tree", L"prune", L"$logs\\", L"*.*", age}, "has no unit");
  }
  for (const wchar_t* age : {L"0d", L"0h", L"0m"}) {
    Refused({L"tree", L"prune", L"$logs\\", L"*.*", age}, "write 0s");
  }
  Refused({L"tree", L"copy", L"$logs\\", L"$logs\\", L"keep"}, "lies inside");
  Refused({L"tree", L"copy", L"$logs\\", L"$LOGS\\copy\\", L"keep"}, "lies inside");
  Refused({L"tree", L"copy", L"$logs\\", L"$copy", L"keep"}, "does not end in a backslash");
  Refused({L"tree", L"copy", L"$logs\\", L"copy\\", L"keep"}, "is not a full path");
  Refused({L"tree", L"copy", L"$logs\\", L"$copy\\", L"yes"}, "neither keep nor overwrite");
  // In quotes, a final backslash keeps the quotation mark, and the rest becomes one argument.
  Refused({L"tree", L"delete", L"$logs\" *.*"}, "inside quotes a final backslash is written twice");
}

TEST_F(ZtInput, SettingsFiles) {
  for (const wchar_t* command : {L"get-string", L"remove"}) {
    Refused({L"profile", command, L"", L"View", L"Title"}, "is empty");
    Refused({L"profile", command, L"$logs\\", L"View", L"Title"}, "is a folder");
    Refused({L"profile", command, L"$view.ini", L"", L"Title"}, "is empty");
    Refused({L"profile", command, L"$view.ini", L"View", L""}, "is empty");
    Refused({L"profile", command, L"$view.ini", L"Vi]ew", L"Title"}, "cannot be the name of a section");
    Refused({L"profile", command, L"$view.ini", L"View", L"Ti=tle"}, "cannot be the name of a key");
    Refused({L"profile", command, L"$view.ini", L"View", L" Title"}, "cannot be the name of a key");
    Refused({L"profile", command, L"$view.ini", L"View", L";Title"}, "cannot be the name of a key");
    Refused({L"profile", command, L"$view.ini", L"View\r\n[X]", L"Title"}, "holds a line break");
  }
  Refused({L"profile", L"set-string", L"$view.ini", L"View", L"Title", L""}, "is empty");
  Refused({L"profile", L"set-string", L"$view.ini", L"View", L"Title", L"a\r\n[Other]"},
          "holds a line break");
  Refused({L"profile", L"text", L"$new.ini", L"Title=x"}, "before the first [SECTION]");
  Refused({L"profile", L"text", L"$new.ini", L"[View]", L"Title"}, "is neither [SECTION] nor KEY=VALUE");
  Refused({L"profile", L"text", L"$new.ini", L"[View]", L"Zoom:int=x"}, "is not a whole number");
  Refused({L"profile", L"text", L"$new.ini", L"[View]", L"Zoom:int="}, "is not a whole number");
  Refused({L"profile", L"text", L"$new.ini", L"[View]", L"Zoom:word=1"}, "has a type other than");
  Refused({L"profile", L"text", L"$new.ini", L"[View]", L"=1"}, "cannot be the name of a key");
  Refused({L"profile", L"text", L"$new.ini", L"[]"}, "cannot be the name of a section");
}

TEST_F(ZtInput, Encryption) {
  Refused({L"crypt", L"encrypt", L"pass", L"\u20AC"}, "above U+00FF");
  Refused({L"crypt", L"encrypt", L"\u20AC", L"text"}, "above U+00FF");
  Refused({L"crypt", L"short", L"pass", L"\u20AC"}, "above U+00FF");
  Refused({L"crypt", L"decrypt", L"pass", L"ABC"}, "pairs of hexadecimal digits");
  Refused({L"crypt", L"decrypt", L"pass", L"AX"}, "pairs of hexadecimal digits");
  Refused({L"crypt", L"decrypt", L"pass", L"AB CD"}, "pairs of hexadecimal digits");
  Refused({L"crypt", L"store", L"$view.ini", L"View", L"Title", L"pass", L"\u20AC"}, "above U+00FF");
  Refused({L"crypt", L"store", L"$view.ini", L"View", L"Title", L"pass", L""}, "is empty");
}

TEST_F(ZtInput, TextAndOthers) {
  for (const wchar_t* bytes : {L"4", L"4G", L"48  69", L"48 6", L" 48", L"48 ", L"48,69"}) {
    Refused({L"text", L"from-utf8", bytes}, "pairs of hexadecimal digits");
  }
  Refused({L"text", L"ansi-to-utf8", L"48 00"}, "zero byte");
  for (const wchar_t* numbers : {L"48  69", L" 48", L"48 ", L"12345", L"4G", L"0", L"48 0000"}) {
    Refused({L"text", L"from-hex", numbers}, "numbers 1 to FFFF");
  }
  for (const wchar_t* drive : {L"", L"1", L"CD", L"C:\\x", L"\u00DF"}) {
    Refused({L"file", L"free-space", drive}, "is not a drive");
  }
  // A process of its own: here the command would be another.
  EXPECT_NE(std::string::npos, test::Zt({L"process", L"end", L"zt.exe"}).err.find("is this command itself"));
  Refused({L"process", L"end", L"X:\\zt.exe"}, "is a path");
  Refused({L"process", L"end", L""}, "is empty");
  Refused({L"process", L"post", L"0", L"1", L"0", L"0"}, "from 1 to 4294967295");
  Refused({L"where", L"set-language", L"$view.ini", L"XYZ"}, "neither a code such as FRA nor a number");
  Refused({L"where", L"set-language", L"$view.ini", L"13"}, "from 0 to 12");
  Refused({L"where", L"load-language", L"$view.exe", L"DEU"}, "needs no language module");
  Refused({L"where", L"settings", L"$view"}, "no extension of three letters");
  Refused({L"where", L"settings", L"X:\\" + std::wstring(240, L'd') + L"\\view.exe"}, "too long a path");
}

}  // namespace
