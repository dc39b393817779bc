// SPDX-License-Identifier: MIT
// The export table is what hosts bind to: numbers and names, exactly these, for ever. The library's own
// export directory, the module definition file, the public header and the import library say the same.
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

// A group of names that have a plain ordinal each, and for pairs one for UTF-16 at + 1000.
struct Group {
  unsigned first;
  const char* name;
};

constexpr Group kPairs[] = {
    {1, "FILE_EXIST"},
    {2, "FILE_DELETE"},
    {3, "FILE_DELETE_ALL"},
    {4, "FILE_GET_SIZE"},
    {5, "FILE_HAS_EXTENSION"},
    {6, "FILE_WAIT_FOR_FILE"},
    {7, "FILE_RENAME"},
    {8, "FILE_DELETE_ALL_OLD"},
    {9, "FILE_GET_FREEDISK_GB"},
    {10, "FILE_GET_DRIVE"},
    {11, "FILE_GET_DIR"},
    {12, "FILE_GET_NAME"},
    {13, "FILE_GET_EXT"},
    {14, "FILE_GET_DRIVE_DIR"},
    {15, "FILE_GET_NAME_EXT"},
    {16, "FILE_COPY"},
    {17, "FILE_COMPARE"},
    {18, "FILE_COPY_ALL"},
    {19, "FILE_CREATE"},
    {20, "FILE_REPLACE_DRIVE"},
    {21, "FILE_REPLACE_DIR"},
    {22, "FILE_REPLACE_NAME"},
    {23, "FILE_REPLACE_EXT"},
    {24, "FILE_REPLACE_NAME_EXT"},
    {25, "FILE_TO_BUFFER"},
    {26, "FILE_FROM_BUFFER"},
    {27, "FILE_GET_TIME_MODIFIED"},
    {28, "FILE_REPLACE_DRIVE_DIR"},
    {29, "FILE_DELETE_ALL_OLD_EX"},
    {30, "FILE_ADD_DIR"},
    {31, "FILE_CHECK_WRITE"},
    {32, "FILE_ADD_NAME"},
    {33, "FILE_ADD_IDX_NAME"},
    {34, "FILE_GET_VERSION"},
    {50, "READ_STRING"},
    {51, "READ_INT"},
    {52, "READ_UINT"},
    {53, "READ_DOUBLE"},
    {54, "READ_FLOAT"},
    {58, "READ_WORD"},
    {60, "WRITE_STRING"},
    {61, "WRITE_INT"},
    {62, "WRITE_UINT"},
    {63, "WRITE_DOUBLE"},
    {64, "WRITE_FLOAT"},
    {65, "WRITE_WORD"},
    {71, "ENC"},
    {72, "DEC"},
    {75, "ENC_STRING_S"},
    {76, "DEC_STRING"},
    {77, "ENC_STRING_L"},
    {80, "BUFWRITE_SECTION"},
    {81, "BUFWRITE_STRING"},
    {82, "BUFWRITE_INT"},
    {83, "BUFWRITE_UINT"},
    {84, "BUFWRITE_DOUBLE"},
    {85, "BUFWRITE_FLOAT"},
    {90, "KILLPROCESS"},
    {91, "GETNUM_APPRUNNING"},
};

constexpr Group kSingles[] = {
    {92, "POSTTHREADMESSAGE"},
    {93, "SAFE_NEW"},
    {100, "ROUND_INT"},
    {101, "ROUND_DOUBLE"},
    {102, "ROUND_UINT"},
    {110, "UC_TO_MBC"},
    {111, "CHAR8_TO_MBC"},
    {112, "CHAR8_TO_UC"},
    {113, "STRING_MBC_TO_UTF8"},
    {114, "STRING_UC_TO_UTF8"},
    {115, "STRING_UTF8_TO_MBC"},
    {116, "STRING_UTF8_TO_UC"},
    {117, "STRING_UC_TO_HEX"},
    {118, "STRING_HEX_TO_UC"},
    {200, "APPLICATION_GET_INIFILE_MBC"},
    {201, "APPLICATION_GET_INIFILE_UC"},
    {202, "APPLICATION_GET_LANGUAGE_ENUM_MBC"},
    {203, "APPLICATION_GET_LANGUAGE_ENUM_UC"},
    {204, "APPLICATION_LOAD_LANGUAGE_DLL"},
    {205, "APPLICATION_SAVE_LANGUAGE_MBC"},
    {206, "APPLICATION_SAVE_LANGUAGE_UC"},
    {207, "APPLICATION_GET_INIFILE_EX_MBC"},
    {208, "APPLICATION_GET_INIFILE_EX_UC"},
    {209, "APPLICATION_GET_APPDATAFILES_UC"},
};

Table Expected() {
  Table table;
  for (const auto& [ordinal, name] : kPairs) {
    table[ordinal] = std::string("ZERA_TOOLS_") + name;
    table[ordinal + 1000] = std::string("ZERA_TOOLS_") + name + "_UC";
  }
  for (const auto& [ordinal, name] : kSingles) table[ordinal] = std::string("ZERA_TOOLS_") + name;
  return table;
}

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
  EXPECT_EQ(directory_.NumberOfFunctions, 1091u);
  EXPECT_EQ(directory_.NumberOfNames, 142u);
  EXPECT_EQ(Expected().size(), 142u);
  EXPECT_EQ(Named(), Expected());
  EXPECT_STREQ(&At<char>(directory_.Name), "ZERATools.dll");
}

TEST_F(ExportTable, OtherSlotsAreEmptyAndNothingIsForwarded) {
  const Table expected = Expected();
  const auto& code = IMAGE_FIRST_SECTION(&headers_)[0];
  ASSERT_TRUE(code.Characteristics & IMAGE_SCN_MEM_EXECUTE);
  for (DWORD slot = 0; slot < directory_.NumberOfFunctions; ++slot) {
    const DWORD function = functions_[slot];
    if (!expected.count(slot + 1)) {
      EXPECT_EQ(function, 0u) << "slot of ordinal " << slot + 1;
      continue;
    }
    // A forwarder is an offset into the directory itself; a function lies in the code.
    EXPECT_TRUE(function >= code.VirtualAddress && function < code.VirtualAddress + code.Misc.VirtualSize)
        << "ordinal " << slot + 1 << " is no function of the library's own";
  }
}

TEST_F(ExportTable, NameAndNumberLeadToTheSameFunction) {
  for (const auto& [ordinal, name] : Expected()) {
    const FARPROC byName = ::GetProcAddress(test::Library(), name.c_str());
    EXPECT_NE(byName, nullptr) << name;
    EXPECT_EQ(byName, ::GetProcAddress(test::Library(),
                                       reinterpret_cast<const char*>(static_cast<ULONG_PTR>(ordinal))))
        << name;
  }
}

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

TEST_F(ExportTable, DefinitionFileSaysTheSame) {
  EXPECT_EQ(kDefined, Expected());
}

TEST_F(ExportTable, PublicHeaderSaysTheSame) {
  EXPECT_EQ(kDeclared, Expected());
}

TEST_F(ExportTable, ImportLibraryOffersTheSame) {
  std::set<std::string> names;
  for (const auto& [ordinal, name] : Expected()) names.insert(name);
  EXPECT_EQ(kImportable, names);
}

}  // namespace
