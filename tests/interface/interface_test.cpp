// SPDX-License-Identifier: MIT
// The built library and the compiled layouts against interface.txt, which is written by hand and only ever
// grows: a line that changes or goes is a broken host somewhere.
#include <afx.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <map>
#include <set>
#include <string>

#include "support/Library.h"
#include "support/TempFolder.h"

namespace {

using Lines = std::set<std::string>;

std::string Text(const std::string& text) {
  return text;
}
std::string Text(std::size_t number) {
  return std::to_string(number);
}
template <class... Parts>
std::string Line(const Parts&... parts) {
  return (Text(parts) + ...);
}

Lines Recorded() {
  Lines lines;
  const std::string bytes = test::ReadBytes(L"interface.txt");
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
    const std::string line = bytes.substr(at, end - at);
    at = end + 1;
    if (line.empty() || line[0] == '#') continue;
    EXPECT_TRUE(lines.insert(line).second) << "recorded twice: " << line;
  }
  return lines;
}

// The export directory of the loaded library, read as a loader reads it.
Lines Exports() {
  const auto* const base = reinterpret_cast<const BYTE*>(test::Library());
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  const auto& entry = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const auto* const directory = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + entry.VirtualAddress);
  const auto* const functions = reinterpret_cast<const DWORD*>(base + directory->AddressOfFunctions);
  const auto* const names = reinterpret_cast<const DWORD*>(base + directory->AddressOfNames);
  const auto* const slots = reinterpret_cast<const WORD*>(base + directory->AddressOfNameOrdinals);

  Lines lines;
  lines.insert(Line("library ", reinterpret_cast<const char*>(base + directory->Name)));
  lines.insert(
      Line("ordinals ", directory->Base, " to ", directory->Base + directory->NumberOfFunctions - 1));
  lines.insert(Line("names ", directory->NumberOfNames));
  std::map<unsigned, std::string> named;
  for (DWORD i = 0; i < directory->NumberOfNames; ++i) {
    named[slots[i]] = reinterpret_cast<const char*>(base + names[i]);
  }
  for (unsigned slot = 0; slot < directory->NumberOfFunctions; ++slot) {
    const auto name = named.find(slot);
    if (functions[slot] == 0 && name == named.end()) continue;
    lines.insert(
        Line("export ", directory->Base + slot, " ", name == named.end() ? "(no name)" : name->second));
  }
  return lines;
}

// The place of a virtual function in its table, as this compiler's pointers to members carry it.
template <class Member>
std::size_t Slot(Member member) {
  std::size_t raw = 0;
  std::memcpy(&raw, &member, sizeof raw);
  EXPECT_EQ(raw % 8, 1u) << "not a virtual function";
  return raw / 8;
}

#pragma GCC diagnostic ignored "-Winvalid-offsetof"

struct ByteArray : CArray<BYTE, const BYTE&> {
  static void Record(Lines& lines) {
    lines.insert(Line("CArray size ", sizeof(CArray<BYTE, const BYTE&>)));
    lines.insert(Line("CArray.m_pData offset ", offsetof(ByteArray, m_pData)));
    lines.insert(Line("CArray.m_nSize offset ", offsetof(ByteArray, m_nSize)));
    lines.insert(Line("CArray.m_nMaxSize offset ", offsetof(ByteArray, m_nMaxSize)));
    lines.insert(Line("CArray.m_nGrowBy offset ", offsetof(ByteArray, m_nGrowBy)));
  }
};

Lines Layouts() {
  Lines lines;
  lines.insert(Line("CStringA size ", sizeof(CStringA)));
  lines.insert(Line("CStringW size ", sizeof(CStringW)));
  lines.insert(Line("CStringData size ", sizeof(CStringData)));
  lines.insert(Line("CStringData.pStringMgr offset ", offsetof(CStringData, pStringMgr)));
  lines.insert(Line("CStringData.nDataLength offset ", offsetof(CStringData, nDataLength)));
  lines.insert(Line("CStringData.nAllocLength offset ", offsetof(CStringData, nAllocLength)));
  lines.insert(Line("CStringData.nRefs offset ", offsetof(CStringData, nRefs)));
  lines.insert(Line("IAtlStringMgr.Allocate slot ", Slot(&IAtlStringMgr::Allocate)));
  lines.insert(Line("IAtlStringMgr.Free slot ", Slot(&IAtlStringMgr::Free)));
  lines.insert(Line("IAtlStringMgr.Reallocate slot ", Slot(&IAtlStringMgr::Reallocate)));
  lines.insert(Line("IAtlStringMgr.GetNilString slot ", Slot(&IAtlStringMgr::GetNilString)));
  lines.insert(Line("IAtlStringMgr.Clone slot ", Slot(&IAtlStringMgr::Clone)));
  ByteArray::Record(lines);
  lines.insert(Line("CWinThread.m_nThreadID offset ", offsetof(CWinThread, m_nThreadID)));

  lines.insert(Line("CException size ", sizeof(CException)));
  lines.insert(Line("CException.m_bAutoDelete offset ", offsetof(CException, m_bAutoDelete)));
  lines.insert(Line("CException.GetRuntimeClass slot ", Slot(&CException::GetRuntimeClass)));
  lines.insert(Line("CException.DeletingDestructor slot ", Slot(&CException::DeletingDestructor)));
  lines.insert(Line("CException.Serialize slot ", Slot(&CException::Serialize)));
  lines.insert(Line("CException.AssertValid slot ", Slot(&CException::AssertValid)));
  lines.insert(Line("CException.Dump slot ", Slot(&CException::Dump)));
  using GetMessage = BOOL (CException::*)(wchar_t*, UINT, UINT*);
  using GetConstMessage = BOOL (CException::*)(wchar_t*, UINT, UINT*) const;
  lines.insert(
      Line("CException.GetErrorMessage slot ", Slot(static_cast<GetMessage>(&CException::GetErrorMessage))));
  lines.insert(Line("CException.GetErrorMessage const slot ",
                    Slot(static_cast<GetConstMessage>(&CException::GetErrorMessage))));
  lines.insert(Line("CException.ReportError slot ", Slot(&CException::ReportError)));
  lines.insert(Line("CMemoryException size ", sizeof(CMemoryException)));
  lines.insert(Line("CInvalidArgException size ", sizeof(CInvalidArgException)));
  lines.insert(Line("CFileException size ", sizeof(CFileException)));
  lines.insert(Line("CFileException.m_cause offset ", offsetof(CFileException, m_cause)));
  lines.insert(Line("CFileException.m_lOsError offset ", offsetof(CFileException, m_lOsError)));
  lines.insert(Line("CFileException.m_strFileName offset ", offsetof(CFileException, m_strFileName)));
  lines.insert(Line("COleException size ", sizeof(COleException)));
  lines.insert(Line("COleException.m_sc offset ", offsetof(COleException, m_sc)));
  return lines;
}

TEST(Interface, IsTheRecordedOne) {
  const Lines recorded = Recorded();
  Lines actual = Exports();
  actual.merge(Layouts());
  for (const std::string& line : recorded) {
    EXPECT_EQ(actual.count(line), 1u) << "recorded, but not so any more: " << line;
  }
  for (const std::string& line : actual) {
    EXPECT_EQ(recorded.count(line), 1u) << "not recorded: " << line;
  }
}

}  // namespace
