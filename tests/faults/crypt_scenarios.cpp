// SPDX-License-Identifier: MIT
// Encryption: -1 from what encrypts; -1 or 0 from what decrypts, and never half a text.
#include "Scenario.h"
#include "crypt/Reference.h"

namespace faults {
namespace {

using ByteArray = CArray<BYTE, const BYTE&>;

const char kPlain[] = "plain text";
std::string Cipher() {
  return reference::Hex(reference::Cipher("key", kPlain));
}

class Bytes final : public HostObject {
 public:
  explicit Bytes(const char* text) {
    for (; *text; ++text) array.Add(static_cast<BYTE>(*text));
  }
  std::string Shown() override {
    if (array.GetSize() < 0 || (array.GetSize() > 0 && !array.GetData())) return "ARRAY HARMED";
    return faults::Shown(std::string(array.GetData(), array.GetData() + array.GetSize()));
  }
  ByteArray array;
};

std::string Both(int result, const std::string& shown) {
  return std::to_string(result) + " " + shown;
}

template <class Char>
void AddEncrypting(std::vector<Scenario>& all, unsigned plain, bool whole) {
  const unsigned ordinal = Twin<Char>(plain);
  const std::string cipher = Cipher();
  all.push_back({ordinal,
                 "a text",
                 {},
                 [=](World& world) {
                   auto& out = world.New<Host<Char>>(Text<Char>("before").c_str());
                   const CStringT<Char> text(Text<Char>(kPlain).c_str());
                   using Call = int(const Char*, const CStringT<Char>&, CStringT<Char>&);
                   const int result = Bound<Call>(ordinal)(Text<Char>("key").c_str(), text, out.object());
                   return Both(result, out.Shown());
                 },
                 Both(20, "\"" + (whole ? cipher : cipher.substr(0, 8)) + "\""),
                 {"-1 \"\""}});
}

}  // namespace

std::vector<Scenario> CryptScenarios() {
  std::vector<Scenario> all;
  const std::string cipher = Cipher();
  const std::string clean = Both(10, "\"plain text\"");
  const std::vector<std::string> nothing = {"-1 \"\"", "0 \"\""};
  AddEncrypting<char>(all, 75, false);
  AddEncrypting<wchar_t>(all, 75, false);
  AddEncrypting<char>(all, 77, true);
  AddEncrypting<wchar_t>(all, 77, true);
  all.push_back({71,
                 "no bytes",
                 {},
                 [](World&) {
                   test::GuardedBuffer<char> out(8);
                   const int result =
                       test::Export<decltype(ZERA_TOOLS_ENC)>(71)("key", nullptr, 0, out.data(), 8, TRUE);
                   return Both(result, Shown(out));
                 },
                 "0 \"\"",
                 {"-1 \"ZZZZZZZZ\""}});
  all.push_back({1071,
                 "bytes",
                 {},
                 [](World& world) {
                   auto& key = world.New<Bytes>("key");
                   auto& text = world.New<Bytes>(kPlain);
                   auto& out = world.New<Host<wchar_t>>(L"before");
                   const int result = test::Export<decltype(ZERA_TOOLS_ENC_UC)>(1071)(key.array, text.array,
                                                                                      out.object(), TRUE);
                   return Both(result, out.Shown());
                 },
                 Both(20, "\"" + cipher + "\""),
                 {"-1 \"\""}});
  all.push_back({72,
                 "a text",
                 {},
                 [=](World&) {
                   test::GuardedBuffer<unsigned char> out(10);
                   const int result =
                       test::Export<decltype(ZERA_TOOLS_DEC)>(72)("key", cipher.c_str(), 1, out.data(), 10);
                   return Both(result, Shown(std::string(out.data(), out.data() + 10)) +
                                           (out.Intact() ? "" : " SURROUNDINGS HARMED"));
                 },
                 clean,
                 {"-1 \"ZZZZZZZZZZ\"", "0 \"ZZZZZZZZZZ\""}});
  all.push_back({1072,
                 "a text",
                 {},
                 [=](World& world) {
                   auto& key = world.New<Bytes>("key");
                   auto& out = world.New<Bytes>("before");
                   const int result = test::Export<decltype(ZERA_TOOLS_DEC_UC)>(1072)(
                       key.array, Text<wchar_t>(cipher).c_str(), TRUE, out.array);
                   world.hosts.push_back(out.array.GetData());
                   return Both(result, out.Shown());
                 },
                 clean,
                 nothing});
  all.push_back({76,
                 "a text",
                 {},
                 [=](World& world) {
                   auto& out = world.New<Host<char>>("before");
                   const CStringA text(cipher.c_str());
                   const int result =
                       test::Export<decltype(ZERA_TOOLS_DEC_STRING)>(76)("key", text, out.object());
                   return Both(result, out.Shown());
                 },
                 clean,
                 nothing});
  all.push_back({1076,
                 "a text",
                 {},
                 [=](World& world) {
                   auto& out = world.New<Host<wchar_t>>(L"before");
                   const int result = test::Export<decltype(ZERA_TOOLS_DEC_STRING_UC)>(1076)(
                       L"key", Text<wchar_t>(cipher).c_str(), out.object());
                   return Both(result, out.Shown());
                 },
                 clean,
                 nothing});
  return all;
}

}  // namespace faults
