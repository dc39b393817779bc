// SPDX-License-Identifier: MIT
// The export table is what hosts bind to. The library's own export directory, the module definition file, the
// public header and the import library say the same. (That none of it changes is interface_test's, against
// its record.)
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string>

#include "support/Library.h"

namespace {

using Table = std::map<unsigned, std::string>;

// Written by the build from the definition file, the public header and the import library.
const Table kDefined = {
#include "defined_exports.inc"
};
const Table kDeclared = {
#include "declared_exports.inc"
};
const std::set<std::string> kImportable = {
#include "importable_names.inc"
};

// The loaded library's export directory.
class ExportTable : public ::testing::Test {
 protected:
  const BYTE* const base_ = reinterpret_cast<const BYTE*>(test::Library());
  const IMAGE_NT_HEADERS64& headers_ = *reinterpret_cast<const IMAGE_NT_HEADERS64*>(
      base_ + reinterpret_cast<const IMAGE_DOS_HEADER*>(base_)->e_lfanew);
  const IMAGE_DATA_DIRECTORY& where_ = headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const IMAGE_EXPORT_DIRECTORY& directory_ = At<IMAGE_EXPORT_DIRECTORY>(where_.VirtualAddress);
  const DWORD* const functions_ = &At<DWORD>(directory_.AddressOfFunctions);

  template <class Type>
  const Type& At(DWORD offset) const {
    return *reinterpret_cast<const Type*>(base_ + offset);
  }

  Table Named() const {
    const DWORD* const names = &At<DWORD>(directory_.AddressOfNames);
    const WORD* const slots = &At<WORD>(directory_.AddressOfNameOrdinals);
    Table table;
    for (DWORD at = 0; at < directory_.NumberOfNames; ++at) {
      const auto [entry, fresh] = table.emplace(directory_.Base + slots[at], &At<char>(names[at]));
      EXPECT_TRUE(fresh) << entry->second << " shares its ordinal with another name";
    }
    return table;
  }
};

TEST_F(ExportTable, HoldsEveryNameAtItsNumber) {
  EXPECT_EQ(directory_.Base, 1u);
  EXPECT_EQ(directory_.NumberOfFunctions, kDefined.rbegin()->first);
  EXPECT_EQ(directory_.NumberOfNames, kDefined.size());
  EXPECT_EQ(Named(), kDefined);
  EXPECT_STREQ(&At<char>(directory_.Name), "ZERATools.dll");
}

TEST_F(ExportTable, OtherSlotsAreEmptyAndNothingIsForwarded) {
  const auto& code = IMAGE_FIRST_SECTION(&headers_)[0];
  ASSERT_TRUE(code.Characteristics & IMAGE_SCN_MEM_EXECUTE);
  for (DWORD slot = 0; slot < directory_.NumberOfFunctions; ++slot) {
    const DWORD function = functions_[slot];
    if (!kDefined.count(slot + 1)) {
      EXPECT_EQ(function, 0u) << "slot of ordinal " << slot + 1;
      continue;
    }
    // A forwarder is an offset into the directory itself; a function lies in the code.
    EXPECT_TRUE(function >= code.VirtualAddress && function < code.VirtualAddress + code.Misc.VirtualSize)
        << "ordinal " << slot + 1 << " is no function of the library's own";
  }
}

TEST_F(ExportTable, NameAndNumberLeadToTheSameFunction) {
  for (const auto& [ordinal, name] : kDefined) {
    const FARPROC byName = ::GetProcAddress(test::Library(), name.c_str());
    EXPECT_NE(byName, nullptr) << name;
    EXPECT_EQ(byName, ::GetProcAddress(test::Library(),
                                       reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal))))
        << name;
  }
}

// Hosts work the number of a UTF-16 variant out of its plain partner's. The application group has numbers of
// its own.
TEST_F(ExportTable, PairsAreAThousandApart) {
  std::map<std::string, unsigned> numbers;
  for (const auto& [ordinal, name] : kDefined) numbers[name] = ordinal;
  unsigned pairs = 0;
  for (const auto& [name, ordinal] : numbers) {
    const auto wide = numbers.find(name + "_UC");
    if (wide == numbers.end()) continue;
    EXPECT_EQ(wide->second, ordinal + 1000) << name;
    ++pairs;
  }
  EXPECT_GT(pairs, 50u);
}

TEST_F(ExportTable, PublicHeaderSaysTheSame) {
  EXPECT_EQ(kDeclared, kDefined);
}

TEST_F(ExportTable, ImportLibraryOffersTheSame) {
  std::set<std::string> names;
  for (const auto& [ordinal, name] : kDefined) names.insert(name);
  EXPECT_EQ(kImportable, names);
}

}  // namespace
