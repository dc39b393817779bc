// SPDX-License-Identifier: MIT
// exceptions.h: the framework's exception classes, laid out as a Microsoft-ABI host knows them.
//
// Such a host deletes an exception through the table behind its first pointer. That table has one
// slot for the deleting destructor, which takes flags; a GNU destructor takes two slots and no
// flags. The slots are therefore declared one by one, and the C++ destructors are not virtual.
#pragma once

#include <windows.h>

#include <cstddef>

class CArchive;
class CDumpContext;

namespace framework {

/// Type information for a host of the Microsoft ABI; see throw_tables.S.
struct ThrowInfo;

extern "C" const ThrowInfo zera_throwinfo_memory;
extern "C" const ThrowInfo zera_throwinfo_invalidarg;
extern "C" const ThrowInfo zera_throwinfo_file;
extern "C" const ThrowInfo zera_throwinfo_ole;

}  // namespace framework

struct CRuntimeClass {
  const char* m_lpszClassName;
  int m_nObjectSize;
  UINT m_wSchema;
  void* (*m_pfnCreateObject)();
  CRuntimeClass* (*m_pfnGetBaseClass)();
  CRuntimeClass* m_pNextClass;
  const void* m_pClassInit;
};

/// The base of all exceptions. Thrown and caught by pointer; who catches one deletes it.
class CException {
 public:
  // The table, in the framework's order of declaration.
  virtual CRuntimeClass* GetRuntimeClass() const = 0;
  virtual void* DeletingDestructor(unsigned flags) = 0;
  virtual void Serialize(CArchive& archive);
  virtual void AssertValid() const;
  virtual void Dump(CDumpContext& context) const;
  virtual BOOL GetErrorMessage(wchar_t* text, UINT capacity, UINT* helpContext = nullptr);
  virtual BOOL GetErrorMessage(wchar_t* text, UINT capacity, UINT* helpContext = nullptr) const;
  virtual int ReportError(UINT type = MB_OK, UINT messageId = 0);
  // Behind the slots that hosts know: ours.
  virtual const framework::ThrowInfo* HostThrowInfo() const = 0;

  /// Deletes the object unless it is one of the framework's static ones.
  void Delete();

  /// Walks the class records, for hosts that ask by record instead of by type.
  BOOL IsKindOf(const CRuntimeClass* wanted) const;

  BOOL m_bAutoDelete;

 protected:
  explicit CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}
  CException(const CException&) = delete;
  CException& operator=(const CException&) = delete;
  ~CException() = default;

  /// What GetErrorMessage gives: the platform's text for this code, 0 for none.
  virtual DWORD PlatformCode() const;

 private:
  // The Microsoft ABI starts a derived class behind its base's full size; the GNU ABI would use the
  // tail of the base. Spelling the tail out makes both agree.
  DWORD padding_ = 0;
};

/// The base of exceptions that must work when resources are short: their message needs no memory.
class CSimpleException : public CException {
 protected:
  explicit CSimpleException(BOOL autoDelete) : CException(autoDelete) {}
  ~CSimpleException() = default;

 private:
  BOOL initialized_ = FALSE;
  BOOL loaded_ = FALSE;
  wchar_t message_[128] = {};
  UINT resource_ = 0;
};

/// Memory is exhausted. A static object: raising it allocates nothing.
class CMemoryException final : public CSimpleException {
 public:
  explicit CMemoryException(BOOL autoDelete = TRUE) : CSimpleException(autoDelete) {}
  ~CMemoryException() = default;

  CRuntimeClass* GetRuntimeClass() const override;
  void* DeletingDestructor(unsigned flags) override;
  const framework::ThrowInfo* HostThrowInfo() const override { return &framework::zera_throwinfo_memory; }

 protected:
  DWORD PlatformCode() const override;
};

/// An argument of a framework operation is invalid.
class CInvalidArgException final : public CSimpleException {
 public:
  explicit CInvalidArgException(BOOL autoDelete = TRUE) : CSimpleException(autoDelete) {}
  ~CInvalidArgException() = default;

  CRuntimeClass* GetRuntimeClass() const override;
  void* DeletingDestructor(unsigned flags) override;
  const framework::ThrowInfo* HostThrowInfo() const override { return &framework::zera_throwinfo_invalidarg; }

 protected:
  DWORD PlatformCode() const override;
};

/// A file operation failed.
class CFileException final : public CException {
 public:
  enum Cause {
    none,
    genericException,
    fileNotFound,
    badPath,
    tooManyOpenFiles,
    accessDenied,
    invalidFile,
    removeCurrentDir,
    directoryFull,
    badSeek,
    hardIO,
    sharingViolation,
    lockViolation,
    diskFull,
    endOfFile,
  };

  CFileException(int cause, LONG osError, const wchar_t* fileName);
  ~CFileException() = default;

  /// Raises the exception that belongs to a platform error.
  [[noreturn]] static void ThrowOsError(LONG osError, const wchar_t* fileName = nullptr);
  [[noreturn]] static void Throw(int cause, LONG osError = -1, const wchar_t* fileName = nullptr);
  /// The cause that belongs to a platform error.
  static int OsErrorToException(LONG osError);

  CRuntimeClass* GetRuntimeClass() const override;
  void* DeletingDestructor(unsigned flags) override;
  const framework::ThrowInfo* HostThrowInfo() const override { return &framework::zera_throwinfo_file; }

  int m_cause;
  LONG m_lOsError;
  CStringW m_strFileName;

 protected:
  DWORD PlatformCode() const override;
};

/// A platform code (HRESULT) as an exception.
class COleException final : public CException {
 public:
  explicit COleException(SCODE code = S_OK) : CException(TRUE), m_sc(code) {}
  ~COleException() = default;

  CRuntimeClass* GetRuntimeClass() const override;
  void* DeletingDestructor(unsigned flags) override;
  const framework::ThrowInfo* HostThrowInfo() const override { return &framework::zera_throwinfo_ole; }

  SCODE m_sc;

 protected:
  DWORD PlatformCode() const override;
};

[[noreturn]] void AfxThrowOleException(SCODE code);

namespace framework {

/// Whether the C++ exception that is being handled was thrown by this module.
bool IsOwnExceptionInFlight() noexcept;

/// Hands an exception to a host of the Microsoft ABI: raises it as that ABI's exception of the
/// object's class pointer. Call it when no destructor of ours is left to run above.
[[noreturn]] void RaiseToHost(CException* exception);

}  // namespace framework
