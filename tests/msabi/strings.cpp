// SPDX-License-Identifier: MIT
// Every export that writes a string object of the host's: the result lies in the buffer that the host's
// own manager provides, and shared, locked and fixed buffers are respected.
#include "manager.h"

namespace {

using namespace host;

// An export that writes one string, with its arguments bound.
template <class Char>
struct Writer {
  const char* name;
  void (*write)(HostString<Char>&);
  const Char* expected;
};

// --- The exports

template <unsigned Ordinal, class Char, class From>
void Convert(const From* text, HostString<Char>& result) {
  Export<void(const From*, HostString<Char>&)>(Ordinal)(text, result);
}

using TextA = HostString<char>;
using TextW = HostString<wchar_t>;

void* const kThisModule = nullptr;
char settingsA[128];
wchar_t settingsW[128];

// Plain texts that the encrypting exports read: strings of the host's as well.
template <class Char>
struct Phrase;
template <>
struct Phrase<char> {
  static constexpr const char* kKey = "secret";
  static constexpr const char* kPlain = "plain text";
  static constexpr unsigned kLong = 77;
};
template <>
struct Phrase<wchar_t> {
  static constexpr const wchar_t* kKey = L"secret";
  static constexpr const wchar_t* kPlain = L"plain text";
  static constexpr unsigned kLong = 1077;
};

template <class Char>
CountingManager<Char>& Inputs() {
  static CountingManager<Char> manager;
  return manager;
}

template <class Char, unsigned Ordinal>
void Encrypt(HostString<Char>& result) {
  const Owned<Char> plain(NewString(Inputs<Char>(), Phrase<Char>::kPlain, 10));
  CHECK_EQUAL(Export<int(const Char*, const HostString<Char>&, HostString<Char>&)>(Ordinal)(
                  Phrase<Char>::kKey, plain, result),
              20);
  CHECK_EQUAL(plain->data().nRefs, 1);
  CHECK(memcmp(plain->text, Phrase<Char>::kPlain, 11 * sizeof(Char)) == 0);
}

const char* cipherA;
const wchar_t* cipherW;

const Writer<char> kNarrow[] = {
    {"UC_TO_MBC", [](TextA& s) { Convert<110>(L"25 \u20ACx", s); }, "25 \x80x"},
    {"CHAR8_TO_MBC", [](TextA& s) { Convert<111>("25 x", s); }, "25 x"},
    {"STRING_MBC_TO_UTF8", [](TextA& s) { Convert<113>("\xE9x", s); }, "\xC3\xA9x"},
    {"STRING_UC_TO_UTF8", [](TextA& s) { Convert<114>(L"\u20AC", s); }, "\xE2\x82\xAC"},
    {"STRING_UTF8_TO_MBC", [](TextA& s) { Convert<115>("x\xE2\x82\xAC", s); }, "x\x80"},
    {"APPLICATION_GET_INIFILE_MBC",
     [](TextA& s) { CHECK_EQUAL(Export<int(void*, TextA&)>(200)(kThisModule, s), 1); }, settingsA},
    {"APPLICATION_GET_INIFILE_EX_MBC",
     [](TextA& s) {
       int copied = 77;
       CHECK_EQUAL(Export<int(void*, TextA&, int*)>(207)(kThisModule, s, &copied), 1);
       CHECK_EQUAL(copied, 0);
     },
     settingsA},
    {"DEC_STRING",
     [](TextA& s) {
       const Owned<char> cipher(NewString(Inputs<char>(), cipherA, 20));
       CHECK_EQUAL(Export<int(const char*, const TextA&, TextA&)>(76)("secret", cipher, s), 10);
       CHECK_EQUAL(cipher->data().nRefs, 1);
     },
     "plain text"},
};

const Writer<wchar_t> kWide[] = {
    {"CHAR8_TO_UC", [](TextW& s) { Convert<112>("25\xB0\xB5\x80", s); }, L"25\u00B0\u00B5\u20AC"},
    {"STRING_UTF8_TO_UC", [](TextW& s) { Convert<116>("x\xE2\x82\xAC", s); }, L"x\u20AC"},
    {"STRING_UC_TO_HEX", [](TextW& s) { Convert<117>(L"Hi", s); }, L"48 69"},
    {"STRING_HEX_TO_UC", [](TextW& s) { Convert<118>(L"48 69", s); }, L"Hi"},
    {"APPLICATION_GET_INIFILE_UC",
     [](TextW& s) { CHECK_EQUAL(Export<int(void*, TextW&)>(201)(kThisModule, s), 1); }, settingsW},
    {"APPLICATION_GET_INIFILE_EX_UC",
     [](TextW& s) {
       int copied = 77;
       CHECK_EQUAL(Export<int(void*, TextW&, int*)>(208)(kThisModule, s, &copied), 1);
       CHECK_EQUAL(copied, 0);
     },
     settingsW},
    {"DEC_STRING_UC",
     [](TextW& s) {
       CHECK_EQUAL(Export<int(const wchar_t*, const wchar_t*, TextW&)>(1076)(L"secret", cipherW, s), 10);
     },
     L"plain text"},
};

// --- The buffers

template <class Char>
int Length(const Char* text) {
  int length = 0;
  while (text[length]) ++length;
  return length;
}

template <class Char>
void CheckText(HostString<Char> string, const Char* expected) {
  const int length = Length(expected);
  const CStringData& data = string.data();
  CHECK_EQUAL(data.nDataLength, length);
  CHECK(data.nAllocLength >= length);
  CHECK(memcmp(string.text, expected, (static_cast<size_t>(length) + 1) * sizeof(Char)) == 0);
}

template <class Char>
constexpr const Char* kOld = nullptr;
template <>
constexpr const char* kOld<char> = "old";
template <>
constexpr const wchar_t* kOld<wchar_t> = L"old";

constexpr int kRoom = 300;

// A string that is empty: the buffer comes from the host's manager.
template <class Char>
void WriteToEmpty(const Writer<Char>& writer) {
  CountingManager<Char> manager;
  HostString<Char> string = StringOf<Char>(manager.GetNilString());
  writer.write(string);
  CheckText(string, writer.expected);
  CHECK(string.data().pStringMgr == &manager);
  CHECK_EQUAL(string.data().nRefs, 1);
  CHECK_EQUAL(manager.outstanding, 1);
  manager.CheckNil(0);
  // What it holds now is replaced, not added to.
  writer.write(string);
  CheckText(string, writer.expected);
  CHECK(string.data().pStringMgr == &manager);
  CHECK_EQUAL(manager.outstanding, 1);
  Release(string);
  CHECK_EQUAL(manager.outstanding, 0);
  manager.CheckNil(0);
}

// A string that shares its buffer with another one, which must not see anything.
template <class Char>
void WriteToShared(const Writer<Char>& writer) {
  CountingManager<Char> manager;
  const HostString<Char> other = NewString(manager, kOld<Char>, kRoom);
  other.data().nRefs = 2;
  HostString<Char> string = other;
  writer.write(string);
  CheckText(string, writer.expected);
  CHECK(string.text != other.text);
  CHECK(string.data().pStringMgr == &manager);
  CheckText(other, kOld<Char>);
  CHECK_EQUAL(other.data().nRefs, 1);
  CHECK_EQUAL(manager.outstanding, 2);
  Release(string);
  Release(other);
  CHECK_EQUAL(manager.outstanding, 0);
  manager.CheckNil(0);
}

// A locked buffer stays where it is, for the host works on it.
template <class Char>
void WriteToLocked(const Writer<Char>& writer) {
  CountingManager<Char> manager;
  HostString<Char> string = NewString(manager, kOld<Char>, kRoom);
  string.data().nRefs = -1;
  const Char* const buffer = string.text;
  writer.write(string);
  CHECK(string.text == buffer);
  CHECK_EQUAL(string.data().nRefs, -1);
  CHECK_EQUAL(manager.allocated, 1);
  CheckText(string, writer.expected);
  string.data().nRefs = 1;
  Release(string);
  CHECK_EQUAL(manager.outstanding, 0);
  manager.CheckNil(0);
}

// A string with a buffer of its own, large enough or not.
template <int Room, class Char>
void WriteToFixed(const Writer<Char>& writer) {
  CountingManager<Char> heap;
  FixedManager<Char, Room> manager(heap);
  HostString<Char> string = StringOf<Char>(manager.GetNilString());
  const bool fits = Length(writer.expected) <= Room;
  for (int round = 0; round < 2; ++round) {
    writer.write(string);
    CheckText(string, writer.expected);
    CHECK(string.data().pStringMgr == &manager);
    CHECK_EQUAL(manager.Holds(string.text), fits);
    CHECK(manager.Intact());
    CHECK_EQUAL(heap.outstanding, fits ? 0 : 1);
  }
  if (fits) CHECK_EQUAL(heap.allocated, 0);
  Release(string);
  CHECK_EQUAL(heap.outstanding, 0);
  heap.CheckNil(0);
}

// The host's manager has no memory: the memory exception, and a string that is still one.
template <class Char>
void WriteWithoutMemory(const Writer<Char>& writer) {
  CountingManager<Char> manager;
  const HostString<Char> other = NewString(manager, kOld<Char>, 3);
  other.data().nRefs = 2;
  HostString<Char> string = other;
  manager.refuse = true;
  bool raised = false;
  try {
    writer.write(string);
  } catch (CMemoryException* e) {
    raised = true;
    e->Delete();
  }
  CHECK(raised);
  CHECK_EQUAL(CurrentStates(), 0);
  CHECK_EQUAL(string.text[string.data().nDataLength], 0);
  CheckText(other, kOld<Char>);
  Release(string);
  Release(other);
  CHECK_EQUAL(manager.outstanding, 0);
  manager.CheckNil(0);
}

template <class Char>
void TestWriter(const Writer<Char>& writer) {
  Subject(writer.name);
  const auto round = [&] {
    WriteToEmpty(writer);
    WriteToShared(writer);
    WriteToLocked(writer);
    WriteToFixed<kRoom>(writer);
    WriteToFixed<1>(writer);
    WriteWithoutMemory(writer);
    CHECK_EQUAL(CurrentStates(), 0);
  };
  round();
  CheckNoGrowth(20, round);
}

// Encrypted text is not known beforehand: the long form is taken from a first call, the short one is its
// beginning, and the decrypting exports give the plain text back.
template <class Char>
const Char* Encrypted(Char (&longForm)[32], Char (&shortForm)[32]) {
  CountingManager<Char> manager;
  HostString<Char> string = StringOf<Char>(manager.GetNilString());
  Subject("ENC_STRING_L");
  Encrypt<Char, Phrase<Char>::kLong>(string);
  CHECK_EQUAL(string.data().nDataLength, 20);
  memcpy(longForm, string.text, 21 * sizeof(Char));
  memcpy(shortForm, string.text, 8 * sizeof(Char));
  shortForm[8] = 0;
  Release(string);
  return longForm;
}

// Both results of one export, in strings of two managers.
void TestDataFolders() {
  Subject("APPLICATION_GET_APPDATAFILES_UC");
  CountingManager<wchar_t> first, second;
  const auto round = [&] {
    TextW common = StringOf<wchar_t>(first.GetNilString());
    TextW user = NewString(second, L"old", kRoom);
    CHECK_EQUAL(Export<int(void*, TextW&, TextW&)>(209)(kThisModule, common, user), 1);
    const wchar_t tail[] = L"\\bin\\msabi_host";
    const int length = sizeof tail / sizeof *tail - 1;
    const TextW both[] = {common, user};
    for (const TextW& one : both) {
      const int whole = one.data().nDataLength;
      CHECK(whole > length && memcmp(one.text + whole - length, tail, sizeof tail) == 0);
    }
    CHECK(common.data().pStringMgr == &first);
    CHECK(user.data().pStringMgr == &second);
    Release(common);
    Release(user);
  };
  CheckNoGrowth(100, round);
  CHECK_EQUAL(first.outstanding, 0);
  CHECK_EQUAL(second.outstanding, 0);
  first.CheckNil(0);
  second.CheckNil(0);
}

}  // namespace

void TestStrings() {
  // The settings file beside the program is the one that is found.
  const DWORD length = GetModuleFileNameW(nullptr, settingsW, 128);
  CHECK(length > 4 && length < 128);
  memcpy(settingsW + length - 3, L"ini", 3 * sizeof(wchar_t));
  for (DWORD at = 0; at <= length; ++at) settingsA[at] = static_cast<char>(settingsW[at]);
  WriteFileBytes(settingsW, "[A]\r\n", 5);

  static char longA[32], shortA[32];
  static wchar_t longW[32], shortW[32];
  cipherA = Encrypted(longA, shortA);
  cipherW = Encrypted(longW, shortW);

  for (const auto& writer : kNarrow) TestWriter(writer);
  for (const auto& writer : kWide) TestWriter(writer);
  TestWriter<char>({"ENC_STRING_S", &Encrypt<char, 75>, shortA});
  TestWriter<char>({"ENC_STRING_L", &Encrypt<char, 77>, longA});
  TestWriter<wchar_t>({"ENC_STRING_S_UC", &Encrypt<wchar_t, 1075>, shortW});
  TestWriter<wchar_t>({"ENC_STRING_L_UC", &Encrypt<wchar_t, 1077>, longW});
  TestDataFolders();
  CHECK_EQUAL(Inputs<char>().outstanding, 0);
  CHECK_EQUAL(Inputs<wchar_t>().outstanding, 0);
  CHECK(DeleteFileW(settingsW));
}
