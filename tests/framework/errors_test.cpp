// SPDX-License-Identifier: MIT
// Platform codes as exceptions, calendar times, and the lock.
#include <afxmt.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "support/ImportHook.h"
#include "support/Leave.h"

// Compilers without sized deallocation do not declare it.
void operator delete(void* block, std::size_t size) noexcept;

namespace {

// The code of the exception that a body raises; E_OUTOFMEMORY for the memory exception.
template <class Body>
HRESULT CodeOf(Body body) {
  try {
    body();
  } catch (COleException* exception) {
    const HRESULT code = exception->m_sc;
    exception->Delete();
    return code;
  } catch (CMemoryException* exception) {
    exception->Delete();
    return E_OUTOFMEMORY;
  }
  return 1;
}

TEST(Errors, ExhaustedMemoryIsTheMemoryException) {
  EXPECT_EQ(CodeOf([] { AtlThrow(E_OUTOFMEMORY); }), E_OUTOFMEMORY);
  EXPECT_EQ(CodeOf([] { AtlThrow(E_FAIL); }), E_FAIL);
  EXPECT_EQ(CodeOf([] { AtlThrow(E_INVALIDARG); }), E_INVALIDARG);
}

// An OLE exception may carry the same code and is another class all the same.
TEST(Errors, TheMemoryExceptionIsNoOleException) {
  bool memory = false, ole = false;
  try {
    AtlThrow(E_OUTOFMEMORY);
  } catch (CMemoryException*) {
    memory = true;
  } catch (COleException* exception) {
    exception->Delete();
  }
  try {
    AfxThrowOleException(E_OUTOFMEMORY);
  } catch (CMemoryException*) {
  } catch (COleException* exception) {
    ole = exception->m_sc == E_OUTOFMEMORY;
    exception->Delete();
  }
  EXPECT_TRUE(memory);
  EXPECT_TRUE(ole);
}

// Counts how often a block is given back, while it lives.
class Freed {
 public:
  explicit Freed(void* block) { block_ = block, count_ = 0; }
  int Count() const { return count_; }

 private:
  static void Count(void* block) {
    count_ += block == block_;
    test::Platform<void(void*)>(L"ucrtbase.dll", "free")(block);
  }
  static inline void* block_;
  static inline int count_;
  const test::ImportHook hook_{"free", static_cast<void (*)(void*)>(&Freed::Count),
                               ::GetModuleHandleW(nullptr)};
};

// A host may destroy an object in place and give its memory back by itself.
TEST(Errors, DestroyedWithoutFreeing) {
  auto* const exception = new COleException(E_FAIL);
  const Freed freed(exception);
  EXPECT_EQ(exception->DeletingDestructor(0), exception);
  EXPECT_EQ(freed.Count(), 0);
  ::operator delete(static_cast<void*>(exception));
  EXPECT_EQ(freed.Count(), 1);
}

// Who catches one deletes it, and its memory with it.
TEST(Errors, DeletedWithTheirMemory) {
  auto* const exception = new COleException(E_FAIL);
  const Freed freed(exception);
  exception->Delete();
  EXPECT_EQ(freed.Count(), 1);
}

// Those that stand ready are destroyed as a host destroys any, and stay.
TEST(Errors, ReadyObjectsSurviveTheirDestruction) {
  int raised = 0;
  static int freed;
  freed = 0;
  const test::ImportHook hook(
      "free",
      +[](void* block) {
        HMODULE owner = nullptr;
        freed += ::GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            static_cast<const wchar_t*>(block), &owner);
        if (!owner) test::Platform<void(void*)>(L"ucrtbase.dll", "free")(block);
      },
      ::GetModuleHandleW(nullptr));
  for (int time = 0; time < 2; ++time) {
    try {
      AfxThrowMemoryException();
    } catch (CMemoryException* exception) {
      ++raised;
      EXPECT_EQ(exception->DeletingDestructor(1), exception);
    }
    try {
      AfxThrowInvalidArgException();
    } catch (CInvalidArgException* exception) {
      ++raised;
      EXPECT_EQ(exception->DeletingDestructor(1), exception);
    }
  }
  EXPECT_EQ(raised, 4);
  EXPECT_EQ(freed, 0) << "what lies in a module is no block of the heap";
}

// No message of its own, no resource: what a host's base class of these reads.
TEST(Errors, SimpleExceptionsHoldNoMessage) {
  const CMemoryException exception(FALSE);
  const char none[2 * sizeof(BOOL) + 128 * sizeof(wchar_t) + sizeof(UINT)] = {};
  EXPECT_EQ(std::memcmp(reinterpret_cast<const char*>(&exception) + sizeof(CException), none, sizeof none),
            0);
}

TEST(Errors, NothingIsShown) {
  COleException exception(E_FAIL);
  EXPECT_EQ(exception.ReportError(), 0);
}

// Nobody may go on behind the point where an exception was raised.
test::Leave leave;
struct Raised {
  DWORD code, flags;
  std::vector<ULONG_PTR> parameters;
  CException* object;
} raised;

// What a host of the Microsoft ABI gets for an exception.
void Raise(CException* exception) {
  const test::ImportHook hook(
      "RaiseException",
      +[](DWORD code, DWORD flags, DWORD count, const ULONG_PTR* parameters) {
        raised = {code, flags, {parameters, parameters + count}, nullptr};
        if (count > 1) raised.object = *reinterpret_cast<CException**>(parameters[1]);
        leave.Now();
      },
      ::GetModuleHandleW(nullptr));
  raised = {};
  static CException* thrown;
  thrown = exception;
  leave.Within([] { framework::RaiseToHost(thrown); });
}

TEST(Errors, AreRaisedAsNoncontinuable) {
  static COleException exception(E_FAIL);
  Raise(&exception);
  EXPECT_EQ(raised.code, 0xE06D7363);
  EXPECT_EQ(raised.flags, static_cast<DWORD>(EXCEPTION_NONCONTINUABLE));
  ASSERT_EQ(raised.parameters.size(), 4u);
  EXPECT_EQ(raised.parameters[0], 0x19930520u);
  EXPECT_EQ(raised.object, &exception);
  EXPECT_EQ(raised.parameters[3], reinterpret_cast<ULONG_PTR>(::GetModuleHandleW(nullptr)));
}

// The tables by which such a host finds its catch block: offsets from the image's base, one entry for the
// class and one for each that it converts to.
TEST(Errors, AreRaisedAsTheirClassAndItsBases) {
  static CFileException file(0, 0, nullptr);
  static CMemoryException memory;
  static CInvalidArgException invalidArgument;
  static COleException ole;
  using Names = std::vector<std::string>;
  const Names simple = {".PEAVCSimpleException@@", ".PEAVCException@@", ".PEAVCObject@@", ".PEAX"};
  const struct {
    CException* exception;
    const char* name;
    std::size_t bases;  // the last ones of those
  } rows[] = {{&file, ".PEAVCFileException@@", 3},
              {&memory, ".PEAVCMemoryException@@", 4},
              {&invalidArgument, ".PEAVCInvalidArgException@@", 4},
              {&ole, ".PEAVCOleException@@", 3}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Raise(row.exception);
    ASSERT_EQ(raised.parameters.size(), 4u);
    using Offsets = const LONG*;
    const auto at = [](LONG offset) {
      return reinterpret_cast<const char*>(raised.parameters[3]) + static_cast<DWORD>(offset);
    };
    const auto* const info = reinterpret_cast<Offsets>(raised.parameters[2]);
    EXPECT_EQ(std::vector<LONG>(info, info + 3), std::vector<LONG>(3)) << "a pointer has no destructor";
    const auto* const types = reinterpret_cast<Offsets>(at(info[3]));
    Names names;
    for (LONG i = 1; i <= types[0]; ++i) {
      const auto* const type = reinterpret_cast<Offsets>(at(types[i]));
      EXPECT_EQ(type[0], 1) << "copied as it is";
      EXPECT_EQ(std::vector<LONG>(type + 2, type + 7), (std::vector<LONG>{0, -1, 0, 8, 0}));
      names.emplace_back(at(type[1]) + 2 * sizeof(void*));
    }
    Names expected(simple.end() - static_cast<std::ptrdiff_t>(row.bases), simple.end());
    expected.insert(expected.begin(), row.name);
    EXPECT_EQ(names, expected);
  }
}

TEST(Errors, PlatformNumbersBecomeCodes) {
  const struct {
    DWORD number;
    DWORD code;
  } rows[] = {
      {1, 0x80070001},
      {ERROR_ACCESS_DENIED, 0x80070005},
      {ERROR_OUTOFMEMORY, 0x8007000E},  // which is the memory exception's
      {0x12345, 0x80072345},
      {0x7FFFFFFF, 0x8007FFFF},
      {0, 0},
      {0x80004005, 0x80004005},
      {0xFFFFFFFF, 0xFFFFFFFF},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(static_cast<DWORD>(CodeOf([&] {
                ::SetLastError(row.number);
                AtlThrowLastWin32();
              })),
              row.code)
        << std::hex << row.number;
  }
}

BOOL WINAPI NoSection(LPCRITICAL_SECTION, DWORD) {
  ::SetLastError(ERROR_NO_SYSTEM_RESOURCES);
  return FALSE;
}

TEST(Errors, LockThatCannotBeMadeRaises) {
  const test::ImportHook hook("InitializeCriticalSectionAndSpinCount", &NoSection,
                              ::GetModuleHandleW(nullptr));
  EXPECT_EQ(CodeOf([] { CCriticalSection section; }),
            static_cast<HRESULT>(0x80070000 | ERROR_NO_SYSTEM_RESOURCES));
}

// What was done to one lock.
void* theLock;
int entries, exits, ends;

TEST(Errors, ALockIsHeldFromLockToUnlock) {
  const HMODULE self = ::GetModuleHandleW(nullptr);
  const test::ImportHook entering(
      "EnterCriticalSection",
      +[](CRITICAL_SECTION* section) {
        entries += section == theLock;
        test::Platform<void(CRITICAL_SECTION*)>(L"kernel32.dll", "EnterCriticalSection")(section);
      },
      self);
  const test::ImportHook leaving(
      "LeaveCriticalSection",
      +[](CRITICAL_SECTION* section) {
        exits += section == theLock;
        test::Platform<void(CRITICAL_SECTION*)>(L"kernel32.dll", "LeaveCriticalSection")(section);
      },
      self);
  const test::ImportHook ending(
      "DeleteCriticalSection",
      +[](CRITICAL_SECTION* section) {
        ends += section == theLock;
        test::Platform<void(CRITICAL_SECTION*)>(L"kernel32.dll", "DeleteCriticalSection")(section);
      },
      self);
  const auto counts = [] { return std::pair(std::exchange(entries, 0), std::exchange(exits, 0)); };
  entries = exits = ends = 0;
  {
    CCriticalSection section;
    theLock = &section;
    { CSingleLock idle(&section); }
    EXPECT_EQ(counts(), std::pair(0, 0));
    {
      CSingleLock lock(&section, TRUE);
      EXPECT_EQ(counts(), std::pair(1, 0));
    }
    EXPECT_EQ(counts(), std::pair(0, 1));
    {
      CSingleLock lock(&section);
      lock.Lock();
      EXPECT_EQ(counts(), std::pair(1, 0));
      lock.Unlock();
      lock.Unlock();
      EXPECT_EQ(counts(), std::pair(0, 1));
      lock.Lock();
      EXPECT_EQ(counts(), std::pair(1, 0));
    }
    EXPECT_EQ(counts(), std::pair(0, 1));
    EXPECT_EQ(ends, 0);
  }
  EXPECT_EQ(ends, 1);
}

// The library's own new and delete.
TEST(Errors, MemoryIsTheRuntimesAndItsLackAnException) {
  static std::size_t asked;
  static int freed;
  static void* block;
  const HMODULE self = ::GetModuleHandleW(nullptr);
  const test::ImportHook allocation(
      "malloc",
      +[](std::size_t size) -> void* {
        asked = size;
        return size == 12345 ? nullptr : test::Platform<void*(std::size_t)>(L"ucrtbase.dll", "malloc")(size);
      },
      self);
  const test::ImportHook release(
      "free",
      +[](void* one) {
        freed += one == block;
        test::Platform<void(void*)>(L"ucrtbase.dll", "free")(one);
      },
      self);
  freed = 0;
  block = ::operator new(100);
  EXPECT_EQ(asked, 100u);
  ::operator delete(block);
  EXPECT_EQ(freed, 1);
  block = ::operator new(100);
  void (*const deleteSized)(void*, std::size_t) = &::operator delete;
  deleteSized(block, 100);
  EXPECT_EQ(freed, 2);
  block = ::operator new(0);
  EXPECT_NE(block, nullptr);
  ::operator delete(block);
  EXPECT_EQ(freed, 3);
  EXPECT_EQ(CodeOf([] { ::operator delete(::operator new(12345)); }), E_OUTOFMEMORY);
}

struct tm askedFields;
TEST(Errors, CalendarFieldsReachTheRuntimeAsTheyAre) {
  const test::ImportHook hook(
      "_mktime64",
      +[](struct tm* fields) -> __time64_t {
        askedFields = *fields;
        return 0;
      },
      ::GetModuleHandleW(nullptr));
  for (const int dst : {0, 1, -1}) {
    EXPECT_EQ(CTime(1981, 2, 3, 4, 5, 6, dst).GetTime(), 0);
    EXPECT_EQ(askedFields.tm_year, 81);
    EXPECT_EQ(askedFields.tm_mon, 1);
    EXPECT_EQ(askedFields.tm_mday, 3);
    EXPECT_EQ(askedFields.tm_hour, 4);
    EXPECT_EQ(askedFields.tm_min, 5);
    EXPECT_EQ(askedFields.tm_sec, 6);
    EXPECT_EQ(askedFields.tm_isdst, dst);
  }
  EXPECT_EQ(CTime(1981, 2, 3, 4, 5, 6).GetTime(), 0);
  EXPECT_EQ(askedFields.tm_isdst, -1) << "the runtime decides";
  EXPECT_EQ(CTime().GetTime(), 0);
}

TEST(Errors, CalendarTimes) {
  // Standard time is asked for: the C runtime's own answer is the measure.
  struct tm fields = {};
  fields.tm_year = 80;
  fields.tm_mday = 1;
  fields.tm_hour = 1;
  EXPECT_EQ(CTime(1980, 1, 1, 1, 0, 0, 0).GetTime(), ::_mktime64(&fields));
  // The first and the last that each field may be (not 1 January 1970, which may lie before the epoch).
  const int good[][6] = {{1970, 1, 2, 0, 0, 0}, {1970, 12, 31, 23, 59, 59}};
  for (const auto& row : good) {
    fields = {};
    fields.tm_year = row[0] - 1900;
    fields.tm_mon = row[1] - 1;
    fields.tm_mday = row[2];
    fields.tm_hour = row[3];
    fields.tm_min = row[4];
    fields.tm_sec = row[5];
    EXPECT_EQ(CTime(row[0], row[1], row[2], row[3], row[4], row[5], 0).GetTime(), ::_mktime64(&fields));
  }
  const int bad[][6] = {{1969, 1, 1, 0, 0, 0},  {1980, 0, 1, 0, 0, 0},  {1980, 13, 1, 0, 0, 0},
                        {1980, 1, 0, 0, 0, 0},  {1980, 1, 32, 0, 0, 0}, {1980, 1, 1, -1, 0, 0},
                        {1980, 1, 1, 24, 0, 0}, {1980, 1, 1, 0, 60, 0}, {1980, 1, 1, 0, 0, 60},
                        {1980, 1, 1, 0, -1, 0}, {1980, 1, 1, 0, 0, -1}};
  for (const auto& row : bad) {
    EXPECT_EQ(CodeOf([&] { CTime(row[0], row[1], row[2], row[3], row[4], row[5], 0); }), E_FAIL);
  }
  EXPECT_EQ(CodeOf([] { CTime(9999, 1, 1, 0, 0, 0, 0); }), E_INVALIDARG);
}

TEST(Errors, FileTimesBefore1970AreNegative) {
  const auto at = [](ULONGLONG steps) {
    return CTime(FILETIME{static_cast<DWORD>(steps), static_cast<DWORD>(steps >> 32)}).GetTime();
  };
  EXPECT_EQ(at(116'444'736'000'000'000), 0);
  EXPECT_EQ(at(116'444'736'019'999'999), 1);
  EXPECT_EQ(at(116'444'735'990'000'000), -1);
  EXPECT_EQ(at(0), -11'644'473'600);
}

TEST(Errors, MessagesComeFromThePlatform) {
  wchar_t text[200] = L"old";
  UINT help = 77;
  CFileException file(CFileException::fileNotFound, ERROR_FILE_NOT_FOUND, nullptr);
  EXPECT_TRUE(file.GetErrorMessage(text, 200, &help));
  EXPECT_NE(text[0], 0);
  EXPECT_EQ(help, 0u);
  CFileException unknown(CFileException::diskFull, -1, nullptr);
  EXPECT_FALSE(unknown.GetErrorMessage(text, 200));
  EXPECT_EQ(text[0], 0);
  text[0] = L'x';
  CFileException untold(CFileException::diskFull, 0x1FFFFFFF, nullptr);
  EXPECT_FALSE(untold.GetErrorMessage(text, 200)) << "a code that the platform has no text for";
  EXPECT_EQ(text[0], 0);
  text[0] = L'x';
  EXPECT_FALSE(file.GetErrorMessage(text, 0));
  EXPECT_EQ(text[0], L'x');
  text[1] = L'y';
  EXPECT_FALSE(file.GetErrorMessage(text, 1)) << "room for an empty text alone";
  EXPECT_EQ(text[0], 0);
  EXPECT_EQ(text[1], L'y');
  EXPECT_FALSE(file.GetErrorMessage(nullptr, 200));
}

// The platform's own text for a number.
std::wstring PlatformText(DWORD number) {
  wchar_t text[200] = {};
  ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, number, 0, text, 200,
                   nullptr);
  return text;
}

TEST(Errors, MessagesSayWhatEachClassStandsFor) {
  const auto message = [](const CException& exception) {
    wchar_t text[200] = {};
    EXPECT_TRUE(exception.GetErrorMessage(text, 200));
    return std::wstring(text);
  };
  EXPECT_EQ(message(CMemoryException(FALSE)), PlatformText(ERROR_OUTOFMEMORY));
  EXPECT_EQ(message(CInvalidArgException(FALSE)), PlatformText(ERROR_INVALID_PARAMETER));
  EXPECT_EQ(message(CFileException(CFileException::genericException, 1, nullptr)), PlatformText(1));
  EXPECT_EQ(message(COleException(ERROR_ACCESS_DENIED)), PlatformText(ERROR_ACCESS_DENIED));
  // One with a place for an insert, of which there is none.
  EXPECT_EQ(message(COleException(ERROR_BAD_EXE_FORMAT)), PlatformText(ERROR_BAD_EXE_FORMAT));
}

TEST(Errors, ObjectsThatStandReadyAreNotDeleted) {
  const CMemoryException* first = nullptr;
  for (int round = 0; round < 3; ++round) {
    try {
      AfxThrowMemoryException();
    } catch (CMemoryException* exception) {
      if (!first) first = exception;
      EXPECT_EQ(exception, first);
      exception->DeletingDestructor(1);
      exception->Delete();
    }
  }
}

// What the framework documents for a platform's number; hosts branch on the cause.
TEST(Errors, PlatformNumbersBecomeCauses) {
  const struct {
    DWORD number;
    int cause;
  } rows[] = {
      {NO_ERROR, 0},
      {0x12345, 1},
      {ERROR_FILE_NOT_FOUND, 2},
      {ERROR_NO_MORE_FILES, 2},
      {ERROR_PATH_NOT_FOUND, 3},
      {ERROR_INVALID_DRIVE, 3},
      {ERROR_BAD_NETPATH, 3},
      {ERROR_BAD_NET_NAME, 3},
      {ERROR_BAD_PATHNAME, 3},
      {ERROR_FILENAME_EXCED_RANGE, 3},
      {ERROR_INVALID_NAME, 3},
      {ERROR_TOO_MANY_OPEN_FILES, 4},
      {ERROR_NO_MORE_SEARCH_HANDLES, 4},
      {ERROR_ACCESS_DENIED, 5},
      {ERROR_WRITE_PROTECT, 5},
      {ERROR_FILE_EXISTS, 5},
      {ERROR_ALREADY_EXISTS, 5},
      {ERROR_NETWORK_ACCESS_DENIED, 5},
      {ERROR_DIR_NOT_EMPTY, 5},
      {ERROR_INVALID_HANDLE, 6},
      {ERROR_CURRENT_DIRECTORY, 7},
      {ERROR_CANNOT_MAKE, 8},
      {ERROR_SEEK, 9},
      {ERROR_NEGATIVE_SEEK, 9},
      {ERROR_NOT_READY, 10},
      {ERROR_BAD_UNIT, 10},
      {ERROR_CRC, 10},
      {ERROR_SECTOR_NOT_FOUND, 10},
      {ERROR_WRITE_FAULT, 10},
      {ERROR_READ_FAULT, 10},
      {ERROR_GEN_FAILURE, 10},
      {ERROR_IO_DEVICE, 10},
      {ERROR_SHARING_VIOLATION, 11},
      {ERROR_LOCK_VIOLATION, 12},
      {ERROR_DISK_FULL, 13},
      {ERROR_HANDLE_DISK_FULL, 13},
      {ERROR_HANDLE_EOF, 14},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CFileException::OsErrorToException(static_cast<LONG>(row.number)), row.cause) << row.number;
  }
}

// A class's record is its own, and those of its bases are found through it.
TEST(Errors, ClassRecordsLeadToTheirBases) {
  const CFileException file(CFileException::diskFull, ERROR_DISK_FULL, nullptr);
  const CMemoryException memory;
  const CRuntimeClass* const fileClass = file.GetRuntimeClass();
  const CRuntimeClass* const memoryClass = memory.GetRuntimeClass();
  EXPECT_STREQ(fileClass->m_lpszClassName, "CFileException");
  EXPECT_STREQ(memoryClass->m_lpszClassName, "CMemoryException");
  EXPECT_TRUE(file.IsKindOf(fileClass));
  EXPECT_FALSE(file.IsKindOf(memoryClass));
  EXPECT_FALSE(memory.IsKindOf(fileClass));
  const CRuntimeClass* const base = fileClass->m_pfnGetBaseClass();
  EXPECT_STREQ(base->m_lpszClassName, "CException");
  EXPECT_TRUE(file.IsKindOf(base));
  EXPECT_TRUE(memory.IsKindOf(base));
  const CRuntimeClass* const simple = memoryClass->m_pfnGetBaseClass();
  EXPECT_STREQ(simple->m_lpszClassName, "CSimpleException");
  EXPECT_TRUE(memory.IsKindOf(simple));
  EXPECT_FALSE(file.IsKindOf(simple));
  EXPECT_FALSE(file.IsKindOf(nullptr));
}

// Each record of a chain, down to the root, is that of the Microsoft ABI's object.
TEST(Errors, ClassRecordsTellNamesAndSizes) {
  using Row = std::pair<std::string, int>;
  const auto chain = [](const CException& exception) {
    std::vector<Row> rows;
    for (const CRuntimeClass* one = exception.GetRuntimeClass(); one;
         one = one->m_pfnGetBaseClass ? one->m_pfnGetBaseClass() : nullptr) {
      rows.emplace_back(one->m_lpszClassName, one->m_nObjectSize);
      EXPECT_EQ(one->m_wSchema, 0xFFFFu) << "is not stored in archives";
      EXPECT_EQ(one->m_pfnCreateObject, nullptr);
    }
    return rows;
  };
  const Row object("CObject", 8), base("CException", 16), simple("CSimpleException", 288);
  EXPECT_EQ(chain(CFileException(0, 0, nullptr)), (std::vector<Row>{{"CFileException", 32}, base, object}));
  EXPECT_EQ(chain(COleException()), (std::vector<Row>{{"COleException", 24}, base, object}));
  EXPECT_EQ(chain(CMemoryException()), (std::vector<Row>{{"CMemoryException", 288}, simple, base, object}));
  EXPECT_EQ(chain(CInvalidArgException()),
            (std::vector<Row>{{"CInvalidArgException", 288}, simple, base, object}));
}

// The Microsoft ABI's deleting destructor gives the object's address, whichever class it is.
TEST(Errors, DestructorsGiveTheAddress) {
  const auto destroyed = [](auto* object) {
    const bool same = object->DeletingDestructor(0) == object;
    ::operator delete(object);
    return same;
  };
  EXPECT_TRUE(destroyed(new CFileException(0, 0, nullptr)));
  EXPECT_TRUE(destroyed(new COleException));
  EXPECT_TRUE(destroyed(new CMemoryException));
  EXPECT_TRUE(destroyed(new CInvalidArgException));
}

}  // namespace
