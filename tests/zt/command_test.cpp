// SPDX-License-Identifier: MIT
// What the commands do, seen on stdout and on the disk.
#include <gtest/gtest.h>

#include <thread>

#include <windows.h>
// Needs the types of the one above.
#include <winioctl.h>

#include "Zt.h"
#include "support/CodePage.h"
#include "support/StartProcess.h"
#include "support/TempFolder.h"

namespace {

using test::Result;
using test::Utf8;
using test::Zt;

// Outside every ANSI code page, with and without surrogates.
const wchar_t kText[] = L"Gr\u00FC\u00DFe \u65E5\u672C \u0416 \U0001F600";
const wchar_t kName[] = L"Gr\u00FC\u00DFe-\u65E5\u672C-\u0416-\U0001F600";

#define EXPECT_RESULT(code, text, ...)                            \
  do {                                                            \
    const Result result_ = Zt(__VA_ARGS__);                       \
    EXPECT_EQ(static_cast<DWORD>(code), result_.exit) << result_; \
    EXPECT_EQ(Utf8(text), result_.out) << result_;                \
    EXPECT_EQ((code) == 0, result_.err.empty()) << result_;       \
  } while (0)

// "No" as an answer is no error: nothing on stderr.
#define EXPECT_ANSWER(code, text, ...)                            \
  do {                                                            \
    const Result result_ = Zt(__VA_ARGS__);                       \
    EXPECT_EQ(static_cast<DWORD>(code), result_.exit) << result_; \
    EXPECT_EQ(Utf8(text), result_.out) << result_;                \
    EXPECT_EQ("", result_.err);                                   \
  } while (0)

using Args = std::vector<std::wstring>;

TEST(ZtPath, LongestPartsFit) {
  const std::wstring part(255, L'\u65E5');
  const std::wstring extension = L"." + std::wstring(254, L'e');
  const std::wstring path = L"C:" + std::wstring(254, L'd') + L"\\" + part + extension;
  EXPECT_RESULT(0, part + L"\r\n", Args{L"path", L"name", path});
  EXPECT_RESULT(0, part + extension + L"\r\n", Args{L"path", L"file", path});
  EXPECT_RESULT(0, L"D" + path.substr(1) + L"\r\n", Args{L"path", L"set-drive", path, L"D"});
  EXPECT_RESULT(0, path.substr(0, 257) + part + L"." + std::wstring(3000, L'x') + L"\r\n",
                Args{L"path", L"set-ext", path, std::wstring(3000, L'x')});
  EXPECT_RESULT(0, std::wstring(254, L'0') + L"7\r\n", Args{L"path", L"add-index", L"", L"7", L"255"});
}

TEST(ZtPath, TextsThatLookLikeOptions) {
  EXPECT_RESULT(0, L"--help\r\n", Args{L"path", L"name", L"--", L"C:\\--help.txt"});
  EXPECT_RESULT(0, L"--\r\n", Args{L"path", L"name", L"--", L"--"});
}

TEST(ZtText, AnyTextComesThrough) {
  EXPECT_RESULT(0, std::wstring(kName) + L"\r\n",
                Args{L"path", L"name", std::wstring(L"C:\\") + kName + L".txt"});
  const Result utf8 = Zt({L"text", L"to-utf8", kText});
  EXPECT_RESULT(0, std::wstring(kText) + L"\r\n",
                Args{L"text", L"from-utf8", test::FromUtf8(test::Lines(utf8.out).at(0))});
  const Result hex = Zt({L"text", L"to-hex", kText});
  EXPECT_RESULT(0, std::wstring(kText) + L"\r\n",
                Args{L"text", L"from-hex", test::FromUtf8(test::Lines(hex.out).at(0))});
  EXPECT_RESULT(0, L"\r\n", Args{L"text", L"to-hex", L""});
  EXPECT_RESULT(0, L"\r\n", Args{L"text", L"from-utf8", L""});
}

std::wstring Hex(const std::string& bytes) {
  std::wstring text;
  for (const char byte : bytes) {
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    const auto number = static_cast<unsigned char>(byte);
    if (!text.empty()) text += L' ';
    text += {kDigits[number / 16], kDigits[number % 16]};
  }
  return text;
}

TEST(ZtText, CodePage) {
  const test::LocalText& local = test::Local();
  const std::wstring ansi = Hex(local.bytes), utf8 = Hex(local.utf8);
  EXPECT_RESULT(0, ansi + L"\r\n", Args{L"text", L"to-ansi", local.wide});
  EXPECT_RESULT(0, utf8 + L"\r\n", Args{L"text", L"ansi-to-utf8", ansi});
  EXPECT_RESULT(0, ansi + L"\r\n", Args{L"text", L"utf8-to-ansi", utf8});
  if (::GetACP() == 1252) {
    EXPECT_RESULT(0, L"3F\r\n", Args{L"text", L"to-ansi", L"\u65E5"});
    EXPECT_RESULT(0, L"3F\r\n", Args{L"text", L"utf8-to-ansi", L"E6 97 A5"});
  }
  EXPECT_RESULT(0, L"25\u00B0C \u00B5\r\n", Args{L"text", L"from-latin", L"32 35 B0 43 20 B5"});
}

TEST(ZtRound, SaturatesAndRounds) {
  EXPECT_RESULT(0, L"2147483647\r\n", Args{L"round", L"int", L"3e9"});
  EXPECT_RESULT(0, L"-2147483648\r\n", Args{L"round", L"int", L"-3e9"});
  EXPECT_RESULT(0, L"0\r\n", Args{L"round", L"uint", L"-0.1"});
  EXPECT_RESULT(0, L"4294967295\r\n", Args{L"round", L"uint", L"5e9"});
  EXPECT_RESULT(0, L"-1.3\r\n", Args{L"round", L"double", L"-1.25", L"1"});
  EXPECT_RESULT(0, L"8\r\n", Args{L"round", L"double", L"7.6", L"0"});
  EXPECT_EQ(0u, Zt({L"round", L"double", L"1.7e308", L"15"}).exit);
}

TEST(ZtFile, AsksAndChanges) {
  const test::TempFolder folder;
  const std::wstring file = folder / (std::wstring(kName) + L".txt"), other = folder / L"other.txt";
  EXPECT_ANSWER(1, L"no\r\n", Args{L"file", L"exists", file});
  EXPECT_RESULT(0, L"created " + file + L"\r\n", Args{L"file", L"create", file});
  EXPECT_EQ("", test::ReadBytes(file));
  EXPECT_RESULT(0, L"already there: " + file + L"\r\n", Args{L"file", L"create", file});
  EXPECT_RESULT(0, L"yes\r\n", Args{L"file", L"exists", file});
  EXPECT_ANSWER(1, L"no\r\n", Args{L"file", L"wait", file, L"20"});

  const std::string bytes = std::string("a\0\r\n\x1A\xFF", 6) + std::string(100000, 'x');
  EXPECT_RESULT(1, L"", Args{L"file", L"write", file}, bytes);
  EXPECT_EQ("", test::ReadBytes(file));
  EXPECT_RESULT(0, L"wrote 100006 bytes to " + file + L"\r\n", Args{L"file", L"write", L"--overwrite", file},
                bytes);
  EXPECT_TRUE(bytes == test::ReadBytes(file));
  EXPECT_TRUE(bytes == Zt({L"file", L"read", file}).out);
  EXPECT_RESULT(0, L"100006\r\n", Args{L"file", L"size", file});
  EXPECT_RESULT(0, L"yes\r\n", Args{L"file", L"wait", file, L"20"});

  EXPECT_RESULT(0, L"copied " + file + L" to " + other + L"\r\n", Args{L"file", L"copy", file, other});
  EXPECT_RESULT(0, L"equal\r\n", Args{L"file", L"compare", file, other});
  test::WriteBytes(other, "other");
  EXPECT_ANSWER(1, L"different\r\n", Args{L"file", L"compare", file, other});
  EXPECT_RESULT(1, L"", Args{L"file", L"copy", file, other});
  EXPECT_RESULT(1, L"", Args{L"file", L"rename", file, other});
  EXPECT_EQ("other", test::ReadBytes(other));
  EXPECT_RESULT(0, L"renamed " + other + L" to " + file + L"\r\n",
                Args{L"file", L"rename", L"--overwrite", other, file});
  EXPECT_EQ("other", test::ReadBytes(file));
  EXPECT_RESULT(0, L"deleted " + file + L"\r\n", Args{L"file", L"delete", file});
  EXPECT_RESULT(0, L"there was no " + file + L"\r\n", Args{L"file", L"delete", file});
  EXPECT_TRUE(folder.Entries().empty());
}

TEST(ZtFile, FailuresSayWhat) {
  const test::TempFolder folder;
  const std::wstring none = folder / L"none.txt";
  for (const wchar_t* command : {L"size", L"time", L"read", L"version"}) {
    const Result result = Zt({L"file", command, none});
    EXPECT_EQ(1u, result.exit);
    EXPECT_EQ("", result.out);
    EXPECT_TRUE(result.err.starts_with("zt: there is no " + Utf8(none) + ": ")) << result;
    EXPECT_TRUE(result.err.ends_with("(error 2)\r\n")) << result;
  }
  EXPECT_RESULT(1, L"", Args{L"file", L"rename", none, folder / L"x"});
  EXPECT_RESULT(1, L"", Args{L"file", L"delete", folder.path().substr(0, folder.path().size() - 1)});
  EXPECT_RESULT(1, L"", Args{L"file", L"create", folder / L"missing\\x.txt"});
  EXPECT_RESULT(1, L"", Args{L"file", L"version", folder.File(L"text.exe", "text")});
}

// Why the library failed, asked of the platform.
TEST(ZtFile, FailuresSayWhy) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"a.txt", "a"), other = folder.File(L"b.txt", "b");
  const std::wstring none = folder / L"none.txt", inside = folder.path() + L"missing\\x.txt";
  ::SetFileAttributesW(other.c_str(), FILE_ATTRIBUTE_READONLY);
  const HANDLE held = ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  const struct {
    Args arguments;
    const char* number;
  } rows[] = {{{L"file", L"read", file}, "(error 32)"},
              {{L"file", L"delete", file}, "(error 32)"},
              {{L"file", L"delete", other}, "(error 5)"},
              {{L"file", L"rename", file, none}, "(error 32)"},
              {{L"file", L"copy", file, none}, "(error 32)"},
              {{L"file", L"write", L"--overwrite", file}, "(error 32)"},
              {{L"file", L"create", inside}, "(error 3)"},
              {{L"profile", L"set-int", inside, L"S", L"K", L"1"}, "(error 3)"},
              {{L"profile", L"get-string", none, L"S", L"K"}, "(error 2)"},
              {{L"profile", L"get-string", file, L"S", L"K", L"fallback"}, "(error 32)"},
              {{L"profile", L"get-int", file, L"S", L"K", L"1"}, "(error 32)"},
              {{L"profile", L"remove", file, L"S", L"K"}, "(error 32)"},
              {{L"where", L"language", file}, "(error 32)"},
              {{L"crypt", L"load", file, L"S", L"K", L"p"}, "(error 32)"},
              {{L"where", L"data", none}, "(error 2)"}};
  for (const auto& row : rows) {
    const Result result = Zt(row.arguments);
    SCOPED_TRACE(Utf8(row.arguments[0] + L" " + row.arguments[1]));
    EXPECT_EQ(1u, result.exit) << result;
    EXPECT_EQ("", result.out);
    EXPECT_NE(result.err.npos, result.err.find(row.number)) << result;
  }
  // Neither equal nor different: it could not look.
  for (const Args& pair : {Args{file, other}, Args{other, file}, Args{other, none}, Args{none, none},
                           Args{other, folder.path()}}) {
    const Result result = Zt({L"file", L"compare", pair[0], pair[1]});
    EXPECT_EQ(2u, result.exit) << result;
    EXPECT_EQ("", result.out);
    EXPECT_NE(result.err.npos, result.err.find("(error ")) << result;
  }
  ::CloseHandle(held);
}

// The library counts in 32 bits.
TEST(ZtFile, BeyondFourGigabytes) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"large.bin", ""), same = folder.File(L"small.bin", "");
  const auto grow = [](const std::wstring& path, LONGLONG size) {
    const HANDLE handle = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD count = 0;
    ::DeviceIoControl(handle, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &count, nullptr);
    ::SetFilePointerEx(handle, {.QuadPart = size}, nullptr, FILE_BEGIN);
    EXPECT_TRUE(::SetEndOfFile(handle));
    ::CloseHandle(handle);
  };
  grow(file, 0x100000010);
  grow(same, 0x10);
  EXPECT_RESULT(0, L"4294967312\r\n", Args{L"file", L"size", file});
  const Result result = Zt({L"file", L"read", file});
  EXPECT_EQ(2u, result.exit);
  EXPECT_EQ("", result.out);
  EXPECT_NE(result.err.npos, result.err.find("4 GiB or more")) << result;
  EXPECT_ANSWER(1, L"different\r\n", Args{L"file", L"compare", file, same});
  EXPECT_ANSWER(1, L"different\r\n", Args{L"file", L"compare", same, file});
}

// What the library raises is not of this compiler's kind; it ends as a message all the same.
TEST(ZtFile, ExceptionsBecomeMessages) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"a.txt", std::string(1000000, 'x'));
  const std::wstring pipe = L"\\\\.\\pipe\\zt-" + std::to_wstring(::GetCurrentProcessId());
  // Each instance takes the first block and goes, so that writing the next one fails. There are several,
  // since looking whether the target exists takes one as well.
  std::vector<std::thread> readers;
  for (int i = 0; i < 4; ++i) {
    const HANDLE reader =
        ::CreateNamedPipeW(pipe.c_str(), PIPE_ACCESS_INBOUND, PIPE_TYPE_BYTE, 4, 0, 1, 0, nullptr);
    readers.emplace_back([reader] {
      char block[4096];
      DWORD count = 0;
      ::ConnectNamedPipe(reader, nullptr);
      ::ReadFile(reader, block, sizeof block, &count, nullptr);
      ::DisconnectNamedPipe(reader);
      ::CloseHandle(reader);
    });
  }
  const Result result = Zt({L"file", L"copy", L"--overwrite", file, pipe});
  for (HANDLE rest; (rest = ::CreateFileW(pipe.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                                          nullptr)) != INVALID_HANDLE_VALUE;) {
    ::CloseHandle(rest);
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(1u, result.exit);
  EXPECT_EQ("", result.out);
  EXPECT_TRUE(result.err.starts_with("zt: failed: ")) << result;
}

TEST(ZtFile, TimeIsInUtc) {
  const test::TempFolder folder;
  const std::wstring file = folder.File(L"a.txt", "a");
  const SYSTEMTIME calendar = {2024, 3, 0, 5, 14, 7, 9, 0};
  FILETIME time;
  ::SystemTimeToFileTime(&calendar, &time);
  const HANDLE handle = ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ::SetFileTime(handle, nullptr, nullptr, &time);
  ::CloseHandle(handle);
  EXPECT_RESULT(0, L"2024-03-05T14:07:09Z\r\n", Args{L"file", L"time", file});
}

TEST(ZtFile, WriteCheckCreatesFolders) {
  const test::TempFolder folder;
  EXPECT_RESULT(0, L"yes\r\n", Args{L"file", L"check-write", folder / L"new\\deeper\\"});
  EXPECT_EQ((std::vector<std::wstring>{L"new\\", L"new\\deeper\\"}), folder.Entries());
}

// The bytes of a text's UTF-8 go through the file's code page; double-byte ones lose some.
std::wstring TextThatIsKept() {
  for (const wchar_t* const text : {kText, L"\u65E5\u672C", L"\u00E4\u00F6"}) {
    if (test::Kept(Utf8(text)) == Utf8(text)) return text;
  }
  return L"text";
}

TEST(ZtProfile, TextsComeBack) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  const std::wstring text = TextThatIsKept();
  EXPECT_RESULT(1, L"", Args{L"profile", L"get-string", file, L"View", L"Title"});
  EXPECT_RESULT(0, L"none\r\n", Args{L"profile", L"get-string", file, L"View", L"Title", L"none"});
  EXPECT_RESULT(0, L"Title=" + text + L"\r\n",
                Args{L"profile", L"set-string", file, L"View", L"Title", text});
  EXPECT_RESULT(0, text + L"\r\n", Args{L"profile", L"get-string", file, L"View", L"Title"});
  // A bare name is the file in the current folder, not one of the system's.
  EXPECT_RESULT(0, text + L"\r\n", Args{L"profile", L"get-string", L"view.ini", L"View", L"Title"}, {},
                folder.path());
  EXPECT_RESULT(0, L"removed Title\r\n", Args{L"profile", L"remove", file, L"View", L"Title"});
  EXPECT_RESULT(0, L"there was no Title\r\n", Args{L"profile", L"remove", file, L"View", L"Title"});
  EXPECT_RESULT(0, L"there was no x\r\n", Args{L"profile", L"remove", folder / L"none.ini", L"View", L"x"});
  EXPECT_FALSE(test::Exists(folder / L"none.ini"));
  EXPECT_RESULT(1, L"", Args{L"profile", L"get-string", file, L"View", L"Title"});
  EXPECT_RESULT(1, L"",
                Args{L"profile", L"set-string", folder / L"missing\\view.ini", L"View", L"Title", L"x"});
  // The platform takes quotation marks off, which the reader of a settings file has to know.
  EXPECT_RESULT(1, L"", Args{L"profile", L"set-string", file, L"View", L"Title", L"\"quoted\""});
}

TEST(ZtProfile, Numbers) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  const struct {
    const wchar_t *type, *given, *stored;
  } rows[] = {{L"int", L"-2147483648", L"-2147483648"},
              {L"uint", L"4294967295", L"4294967295"},
              {L"word", L"65535", L"65535"},
              {L"double", L"-0.1", L"-0.1000000000"},
              {L"double", L"-1e240", nullptr},
              {L"float", L"2.5", L"2.5000000000"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(Utf8(row.type));
    const Result set = Zt({L"profile", std::wstring(L"set-") + row.type, file, L"View", L"Key", row.given});
    EXPECT_EQ(0u, set.exit) << set;
    if (row.stored) {
      EXPECT_EQ("Key=" + Utf8(row.stored) + "\r\n", set.out);
    }
    const Result get = Zt({L"profile", std::wstring(L"get-") + row.type, file, L"View", L"Key", L"1"});
    EXPECT_EQ(set.out, "Key=" + get.out);
  }
  EXPECT_RESULT(0, L"7\r\n", Args{L"profile", L"get-int", file, L"View", L"None", L"7", L"10", L"20"});
  Zt({L"profile", L"set-int", file, L"View", L"Key", L"5"});
  EXPECT_RESULT(0, L"10\r\n", Args{L"profile", L"get-int", file, L"View", L"Key", L"7", L"10", L"20"});
  EXPECT_RESULT(1, L"", Args{L"profile", L"set-int", folder / L"missing\\view.ini", L"View", L"Key", L"1"});
}

TEST(ZtProfile, WholeText) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  const Args arguments = {L"profile",        L"text",     file,        L"[View]",        L"Title=\u00FC",
                          L"A:string=x=y:z", L"B:int=-1", L"C:uint=1", L"D:double=0.25", L"[Empty]"};
  Result result = Zt(arguments);
  EXPECT_EQ(0u, result.exit) << result;
  if (::GetACP() == 1252) {
    EXPECT_EQ("[View]\nTitle=\xFC\nTitle_utf8=\xC3\xBC\nA=x=y:z\nB=-1\nC=1\nD=0.2500000000\n[Empty]\n",
              test::ReadBytes(file));
  }
  EXPECT_RESULT(0, L"\u00FC\r\n", Args{L"profile", L"get-string", file, L"View", L"Title"});
  EXPECT_RESULT(0, L"0.2500000000\r\n", Args{L"profile", L"get-double", file, L"View", L"D", L"1"});
  test::WriteBytes(file, "mine");
  EXPECT_EQ(1u, Zt(arguments).exit);
  EXPECT_EQ("mine", test::ReadBytes(file));
  // Every line finds room, however long.
  const std::wstring value(9000, L'\u00FC');
  result = Zt({L"profile", L"text", L"--overwrite", file, L"[View]", L"Title=" + value, L"D:double=1e240",
               L"F:float=-3e38"});
  EXPECT_EQ(0u, result.exit) << result;
  EXPECT_RESULT(0, value + L"\r\n", Args{L"profile", L"get-string", file, L"View", L"Title"});
}

TEST(ZtCrypt, RoundTrips) {
  const std::wstring latin = L"Gr\u00FC\u00DFe";
  const std::wstring cipher = test::FromUtf8(test::Lines(Zt({L"crypt", L"encrypt", L"p", latin}).out).at(0));
  EXPECT_EQ(10u, cipher.size());
  EXPECT_RESULT(0, latin + L"\r\n", Args{L"crypt", L"decrypt", L"p", cipher});
  EXPECT_RESULT(0, cipher.substr(0, 8) + L"\r\n", Args{L"crypt", L"short", L"p", latin});
  const std::wstring any =
      test::FromUtf8(test::Lines(Zt({L"crypt", L"encrypt", L"--utf8", kText, kText}).out).at(0));
  EXPECT_EQ(2 * Utf8(kText).size(), any.size());
  EXPECT_RESULT(0, std::wstring(kText) + L"\r\n", Args{L"crypt", L"decrypt", L"--utf8", kText, any});
  EXPECT_RESULT(0, L"\r\n", Args{L"crypt", L"encrypt", L"p", L""});
  EXPECT_RESULT(0, L"\r\n", Args{L"crypt", L"decrypt", L"", L""});
}

TEST(ZtCrypt, SettingsFile) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  EXPECT_RESULT(1, L"", Args{L"crypt", L"load", file, L"L", L"K", L"p"});
  EXPECT_EQ(0u, Zt({L"crypt", L"store", L"--utf8", file, L"L", L"K", L"p", kText}).exit);
  EXPECT_RESULT(0, std::wstring(kText) + L"\r\n", Args{L"crypt", L"load", L"--utf8", file, L"L", L"K", L"p"});
  EXPECT_EQ(test::ReadBytes(file).npos, test::ReadBytes(file).find("Gr")) << "the text stands there in plain";
  test::WriteBytes(file, "[L]\r\nK=plain\r\n");
  EXPECT_RESULT(1, L"", Args{L"crypt", L"load", file, L"L", L"K", L"p"});
}

TEST(ZtWhere, LanguagesByCodeAndNumber) {
  const test::TempFolder folder;
  const std::wstring file = folder / L"view.ini";
  const auto lines = test::Lines(Zt({L"where", L"languages"}).out);
  ASSERT_EQ(13u, lines.size());
  for (const std::string& line : lines) {
    const std::wstring number = test::FromUtf8(line.substr(0, line.find(' ')));
    const std::wstring code = test::FromUtf8(line.substr(line.find(' ') + 1, 3));
    EXPECT_EQ(line + "\r\n", Zt({L"where", L"set-language", file, number}).out);
    EXPECT_NE(std::string::npos, test::ReadBytes(file).find("Language=" + Utf8(code)));
    EXPECT_EQ(line + "\r\n", Zt({L"where", L"language", file}).out);
    EXPECT_EQ(line + "\r\n", Zt({L"where", L"set-language", file, code}).out);
  }
  EXPECT_RESULT(0, L"2 FRA French\r\n", Args{L"where", L"set-language", file, L"fRa"});
  EXPECT_NE(std::string::npos, test::ReadBytes(file).find("Language=FRA"));
  EXPECT_RESULT(1, L"", Args{L"where", L"set-language", folder / L"missing\\view.ini", L"FRA"});
}

TEST(ZtWhere, ModulesOfOthers) {
  const test::TempFolder folder;
  EXPECT_RESULT(1, L"", Args{L"where", L"data", folder / L"none.exe"});
  EXPECT_RESULT(1, L"", Args{L"where", L"data", folder.File(L"text.exe", "no program")});
  const std::wstring module = folder / L"view.exe";
  ::CopyFileW(test::Beside(L"zt.exe").c_str(), module.c_str(), TRUE);
  const auto lines = test::Lines(Zt({L"where", L"data", module}).out);
  ASSERT_EQ(2u, lines.size());
  EXPECT_TRUE(lines[0].starts_with("machine  C:\\ProgramData\\")) << lines[0];
  EXPECT_TRUE(lines[1].starts_with("user     C:\\")) << lines[1];
  EXPECT_RESULT(1, L"", Args{L"where", L"load-language", module, L"FRA"});
  // The path is the result, the missing file the remark.
  const Result result = Zt({L"where", L"settings", module});
  EXPECT_EQ(1u, result.exit);
  EXPECT_EQ(lines[1].substr(9) + ".ini\r\n", result.out);
  EXPECT_EQ("zt: there is no file yet\r\n", result.err);
}

TEST(ZtProcess, CountsAndEnds) {
  const test::TempFolder folder;
  // Processes are counted and ended by name wherever they run: no other run of this test may have one of
  // ours.
  const std::wstring name = L"sleeper" + std::to_wstring(::GetCurrentProcessId());
  const std::wstring program = folder / name + L".exe";
  ::CopyFileW(test::Beside(L"zt.exe").c_str(), program.c_str(), TRUE);
  ::CopyFileW(test::Beside(L"ZERATools.dll").c_str(), (folder / L"ZERATools.dll").c_str(), TRUE);
  EXPECT_ANSWER(1, L"0\r\n", Args{L"process", L"count", program});
  std::wstring line = program + L" file wait " + (folder / L"never") + L" 60000";
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  ASSERT_TRUE(test::StartProcess(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                                 &process));
  while (Zt({L"process", L"count", program}).out == "0\r\n" &&
         ::WaitForSingleObject(process.hProcess, 50) == WAIT_TIMEOUT) {
  }
  EXPECT_RESULT(0, L"1\r\n", Args{L"process", L"count", program});
  const std::wstring shouted = L"S" + name.substr(1) + L".exe";
  EXPECT_RESULT(0, L"there was no process of the name " + shouted + L"\r\n",
                Args{L"process", L"end", shouted});
  EXPECT_EQ(static_cast<DWORD>(WAIT_TIMEOUT), ::WaitForSingleObject(process.hProcess, 100))
      << "case was ignored";
  EXPECT_RESULT(0, L"ended 1 process of the name " + name + L".exe\r\n",
                Args{L"process", L"end", name + L".exe"});
  EXPECT_EQ(static_cast<DWORD>(WAIT_OBJECT_0), ::WaitForSingleObject(process.hProcess, 10000));
  ::CloseHandle(process.hProcess);
  ::CloseHandle(process.hThread);
}

TEST(ZtProcess, Posts) {
  MSG message;
  ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  EXPECT_RESULT(0, L"posted\r\n",
                Args{L"process", L"post", std::to_wstring(::GetCurrentThreadId()), L"1025", L"7", L"-8"});
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, 1025, 1025, PM_REMOVE));
  EXPECT_EQ(7u, message.wParam);
  EXPECT_EQ(-8, message.lParam);
  EXPECT_RESULT(1, L"", Args{L"process", L"post", L"4294967292", L"1025", L"0", L"0"});
}

}  // namespace
