// SPDX-License-Identifier: MIT
#include <cxxabi.h>

#include "afx.h"

#include <cstring>
#include <new>

extern "C" IMAGE_DOS_HEADER __ImageBase;

// Hosts read these objects in the layout that the Microsoft ABI gives them.
static_assert(sizeof(CException) == 16 && sizeof(CSimpleException) == 288);
static_assert(sizeof(CMemoryException) == 288 && sizeof(CInvalidArgException) == 288);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(CException, m_bAutoDelete) == 8);
static_assert(sizeof(CFileException) == 32 && offsetof(CFileException, m_cause) == 16 &&
              offsetof(CFileException, m_lOsError) == 20 && offsetof(CFileException, m_strFileName) == 24);
static_assert(sizeof(COleException) == 24 && offsetof(COleException, m_sc) == 16);
#pragma GCC diagnostic pop

namespace {

template <const CRuntimeClass* Record>
CRuntimeClass* RecordOf() {
  return const_cast<CRuntimeClass*>(Record);
}

extern const CRuntimeClass classCObject;
extern const CRuntimeClass classCException;
extern const CRuntimeClass classCSimpleException;

constexpr UINT kNoSchema = 0xFFFF;

const CRuntimeClass classCObject = {"CObject", 8, kNoSchema, nullptr, nullptr, nullptr, nullptr};
const CRuntimeClass classCException = {
    "CException", sizeof(CException), kNoSchema, nullptr, RecordOf<&classCObject>, nullptr, nullptr};
const CRuntimeClass classCSimpleException = {"CSimpleException",
                                             sizeof(CSimpleException),
                                             kNoSchema,
                                             nullptr,
                                             RecordOf<&classCException>,
                                             nullptr,
                                             nullptr};
const CRuntimeClass classCMemoryException = {"CMemoryException",
                                             sizeof(CMemoryException),
                                             kNoSchema,
                                             nullptr,
                                             RecordOf<&classCSimpleException>,
                                             nullptr,
                                             nullptr};
const CRuntimeClass classCInvalidArgException = {"CInvalidArgException",
                                                 sizeof(CInvalidArgException),
                                                 kNoSchema,
                                                 nullptr,
                                                 RecordOf<&classCSimpleException>,
                                                 nullptr,
                                                 nullptr};
const CRuntimeClass classCFileException = {"CFileException", sizeof(CFileException),     kNoSchema,
                                           nullptr,          RecordOf<&classCException>, nullptr,
                                           nullptr};
const CRuntimeClass classCOleException = {
    "COleException", sizeof(COleException), kNoSchema, nullptr, RecordOf<&classCException>, nullptr, nullptr};

// The deleting destructor of the Microsoft ABI: bit 0 asks for the memory to be given back. The objects that
// stand ready have none to give, also for a host that deletes what it caught without asking.
template <class Class>
void* Destroy(Class* object, unsigned flags) {
  const bool fromHeap = object->m_bAutoDelete > 0;
  object->~Class();
  if ((flags & 1) && fromHeap) ::operator delete(static_cast<void*>(object));
  return object;
}

// Raised when memory is exhausted, so they stand ready; Delete leaves them alone.
CMemoryException memoryException(FALSE);
CInvalidArgException invalidArgException(FALSE);

}  // namespace

void CException::Serialize(CArchive&) {}
void CException::AssertValid() const {}
void CException::Dump(CDumpContext&) const {}
DWORD CException::PlatformCode() const {
  return 0;
}

BOOL CException::GetErrorMessage(wchar_t* text, UINT capacity, UINT* helpContext) {
  return static_cast<const CException*>(this)->GetErrorMessage(text, capacity, helpContext);
}

BOOL CException::GetErrorMessage(wchar_t* text, UINT capacity, UINT* helpContext) const {
  if (helpContext) *helpContext = 0;
  if (!text || capacity == 0) return FALSE;
  text[0] = 0;
  const DWORD code = PlatformCode();
  return code != 0 && ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                       code, 0, text, capacity, nullptr) != 0;
}

// The library never shows a message; hosts that want one have GetErrorMessage.
int CException::ReportError(UINT, UINT) {
  return 0;
}

void CException::Delete() {
  if (m_bAutoDelete > 0) DeletingDestructor(1);
}

BOOL CException::IsKindOf(const CRuntimeClass* wanted) const {
  for (const CRuntimeClass* one = GetRuntimeClass(); one;
       one = one->m_pfnGetBaseClass ? one->m_pfnGetBaseClass() : nullptr) {
    if (one == wanted) return TRUE;
  }
  return FALSE;
}

CRuntimeClass* CMemoryException::GetRuntimeClass() const {
  return RecordOf<&classCMemoryException>();
}
void* CMemoryException::DeletingDestructor(unsigned flags) {
  return Destroy(this, flags);
}
DWORD CMemoryException::PlatformCode() const {
  return ERROR_OUTOFMEMORY;
}

CRuntimeClass* CInvalidArgException::GetRuntimeClass() const {
  return RecordOf<&classCInvalidArgException>();
}
void* CInvalidArgException::DeletingDestructor(unsigned flags) {
  return Destroy(this, flags);
}
DWORD CInvalidArgException::PlatformCode() const {
  return ERROR_INVALID_PARAMETER;
}

CRuntimeClass* COleException::GetRuntimeClass() const {
  return RecordOf<&classCOleException>();
}
void* COleException::DeletingDestructor(unsigned flags) {
  return Destroy(this, flags);
}
DWORD COleException::PlatformCode() const {
  return static_cast<DWORD>(m_sc);
}

CFileException::CFileException(int cause, LONG osError, const wchar_t* fileName)
    : CException(TRUE), m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

CRuntimeClass* CFileException::GetRuntimeClass() const {
  return RecordOf<&classCFileException>();
}
void* CFileException::DeletingDestructor(unsigned flags) {
  return Destroy(this, flags);
}
DWORD CFileException::PlatformCode() const {
  return m_lOsError > 0 ? static_cast<DWORD>(m_lOsError) : 0;
}

void CFileException::Throw(int cause, LONG osError, const wchar_t* fileName) {
  throw new CFileException(cause, osError, fileName);
}

void CFileException::ThrowOsError(LONG osError, const wchar_t* fileName) {
  Throw(OsErrorToException(osError), osError, fileName);
}

int CFileException::OsErrorToException(LONG osError) {
  switch (osError) {
    case NO_ERROR:
      return none;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_NO_MORE_FILES:
      return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
    case ERROR_NO_MORE_SEARCH_HANDLES:
      return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_DIR_NOT_EMPTY:
      return accessDenied;
    case ERROR_INVALID_HANDLE:
      return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
      return removeCurrentDir;
    case ERROR_CANNOT_MAKE:
      return directoryFull;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK:
      return badSeek;
    case ERROR_NOT_READY:
    case ERROR_BAD_UNIT:
    case ERROR_CRC:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
      return hardIO;
    case ERROR_SHARING_VIOLATION:
      return sharingViolation;
    case ERROR_LOCK_VIOLATION:
      return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return diskFull;
    case ERROR_HANDLE_EOF:
      return endOfFile;
    default:
      return genericException;
  }
}

bool framework::IsOwnExceptionInFlight() noexcept {
  // The thrower's own record of the type; another module has its own, whatever the name in it.
  const auto type = reinterpret_cast<ULONG_PTR>(abi::__cxa_current_exception_type());
  const auto base = reinterpret_cast<ULONG_PTR>(&__ImageBase);
  const auto* const headers =
      reinterpret_cast<const IMAGE_NT_HEADERS*>(base + static_cast<ULONG_PTR>(__ImageBase.e_lfanew));
  return type - base < headers->OptionalHeader.SizeOfImage;
}

void AfxThrowMemoryException() {
  throw &memoryException;
}
void AfxThrowInvalidArgException() {
  throw &invalidArgException;
}
void AfxThrowOleException(SCODE code) {
  throw new COleException(code);
}

void AtlThrow(HRESULT code) {
  if (code == E_OUTOFMEMORY) AfxThrowMemoryException();
  AfxThrowOleException(code);
}

void AtlThrowLastWin32() {
  const LONG error = static_cast<LONG>(::GetLastError());
  // The usual rule: a positive number becomes a Win32 code, anything else is one already.
  AtlThrow(error > 0 ? static_cast<HRESULT>(0x80070000u | (static_cast<DWORD>(error) & 0xFFFF))
                     : static_cast<HRESULT>(error));
}
