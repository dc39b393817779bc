// SPDX-License-Identifier: MIT
// The built library as a file: what it imports, its protections and its version resource.
#include <gtest/gtest.h>
#include <windows.h>

#include <ZERATools.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

class Binary : public ::testing::Test {
 protected:
  const BYTE* const base_ = reinterpret_cast<const BYTE*>(test::Library());
  const IMAGE_NT_HEADERS64& headers_ = *reinterpret_cast<const IMAGE_NT_HEADERS64*>(
      base_ + reinterpret_cast<const IMAGE_DOS_HEADER*>(base_)->e_lfanew);
};

// Hosts share the universal runtime with the library; nothing else has to be installed.
TEST_F(Binary, ImportsOnlyThePlatform) {
  const std::set<std::string> allowed = {"KERNEL32", "USER32", "ADVAPI32", "SHELL32", "VERSION"};
  const auto& directory = headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base_ + directory.VirtualAddress);
  int count = 0;
  for (; import->Name; ++import, ++count) {
    const std::string name = reinterpret_cast<const char*>(base_ + import->Name);
    std::string upper = name.substr(0, name.find_last_of('.'));
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char one) { return static_cast<char>(std::toupper(one)); });
    EXPECT_TRUE(allowed.count(upper) || name.rfind("api-ms-win-crt-", 0) == 0) << name;
  }
  EXPECT_GT(count, 0);
  EXPECT_EQ(headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT].Size, 0u);
}

TEST_F(Binary, IsProtected) {
  const WORD flags = headers_.OptionalHeader.DllCharacteristics;
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
  // Without relocations the loader could not use another address.
  EXPECT_FALSE(headers_.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
  EXPECT_GT(headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC].Size, 0u);
  EXPECT_TRUE(headers_.FileHeader.Characteristics & IMAGE_FILE_DLL);
  EXPECT_EQ(headers_.FileHeader.Machine, IMAGE_FILE_MACHINE_AMD64);

  const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(&headers_);
  for (int at = 0; at < headers_.FileHeader.NumberOfSections; ++at, ++section) {
    const std::string name(section->Name, std::find(section->Name, section->Name + 8, 0));
    const bool writable = section->Characteristics & IMAGE_SCN_MEM_WRITE;
    const bool executable = section->Characteristics & IMAGE_SCN_MEM_EXECUTE;
    EXPECT_FALSE(writable && executable) << name;
    EXPECT_FALSE(section->Characteristics & IMAGE_SCN_MEM_SHARED) << name;
  }
}

// A relocation of any other kind would change half of an address, or an operand that is none: the
// library would fail at every address but its preferred one.
TEST_F(Binary, RelocatesWholeAddressesOnly) {
  const auto& directory = headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC];
  int count = 0;
  for (DWORD at = 0; at < directory.Size;) {
    const auto* block = reinterpret_cast<const IMAGE_BASE_RELOCATION*>(base_ + directory.VirtualAddress + at);
    ASSERT_GE(block->SizeOfBlock, sizeof *block);
    const auto* entries = reinterpret_cast<const WORD*>(block + 1);
    for (DWORD i = 0; i < (block->SizeOfBlock - sizeof *block) / sizeof(WORD); ++i) {
      const int kind = entries[i] >> 12;
      if (kind == IMAGE_REL_BASED_ABSOLUTE) continue;  // fills a block up
      EXPECT_EQ(kind, IMAGE_REL_BASED_DIR64) << std::hex << block->VirtualAddress + (entries[i] & 0xFFF);
      ++count;
    }
    at += block->SizeOfBlock;
  }
  EXPECT_GT(count, 0);
}

// Two copies in one process cannot both have the preferred address.
TEST_F(Binary, WorksAtAnotherAddress) {
  wchar_t path[MAX_PATH];
  ASSERT_NE(::GetModuleFileNameW(test::Library(), path, MAX_PATH), 0u);
  const test::TempFolder folder;
  const std::wstring copy = folder / L"copy.dll";
  ASSERT_TRUE(::CopyFileW(path, copy.c_str(), TRUE));
  const HMODULE second = ::LoadLibraryW(copy.c_str());
  ASSERT_NE(second, nullptr) << ::GetLastError();
  EXPECT_NE(second, test::Library());
  EXPECT_NE(reinterpret_cast<ULONGLONG>(second), headers_.OptionalHeader.ImageBase);
  const auto exist = reinterpret_cast<decltype(&ZERA_TOOLS_FILE_EXIST_UC)>(
      reinterpret_cast<void*>(::GetProcAddress(second, MAKEINTRESOURCEA(1001))));
  EXPECT_EQ(exist(copy.c_str()), 1);
  EXPECT_TRUE(::FreeLibrary(second));
}

TEST_F(Binary, CarriesItsVersion) {
  wchar_t path[MAX_PATH];
  ASSERT_NE(::GetModuleFileNameW(test::Library(), path, MAX_PATH), 0u);
  DWORD unused;
  std::vector<BYTE> block(::GetFileVersionInfoSizeW(path, &unused));
  ASSERT_FALSE(block.empty());
  ASSERT_TRUE(::GetFileVersionInfoW(path, 0, static_cast<DWORD>(block.size()), block.data()));

  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  ASSERT_TRUE(::VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
  EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_DLL));
  EXPECT_EQ(fixed->dwFileVersionMS, MAKELONG(ZERATOOLS_MINOR, ZERATOOLS_MAJOR));
  EXPECT_EQ(fixed->dwFileVersionLS, MAKELONG(0, ZERATOOLS_PATCH));
  EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);

  const std::string number = std::to_string(ZERATOOLS_MAJOR) + "." + std::to_string(ZERATOOLS_MINOR) + "." +
                             std::to_string(ZERATOOLS_PATCH) + ".0";
  const std::pair<const wchar_t*, std::wstring> texts[] = {
      {L"FileVersion", std::wstring(number.begin(), number.end())},
      {L"ProductVersion", std::wstring(number.begin(), number.end())},
      {L"OriginalFilename", L"ZERATools.dll"},
      {L"ProductName", L"ZERATools"},
      {L"InternalName", L"ZERATools"},
  };
  for (const auto& [name, expected] : texts) {
    wchar_t* text = nullptr;
    ASSERT_TRUE(::VerQueryValueW(block.data(), (std::wstring(L"\\StringFileInfo\\040904B0\\") + name).c_str(),
                                 reinterpret_cast<void**>(&text), &size));
    EXPECT_EQ(std::wstring(text), expected);
  }
}

}  // namespace
