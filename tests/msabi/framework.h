// SPDX-License-Identifier: MIT
// framework.h: the host's own framework, as far as its objects cross to the library. Written for the
// Microsoft ABI, where this is how the real one's objects lie in memory.
#pragma once

#include "platform.h"

// --- Exceptions. Declared only: the objects and their tables are the library's.

class CObject;

struct CRuntimeClass {
  const char* m_lpszClassName;
  int m_nObjectSize = 0;
  UINT m_wSchema = 0xFFFF;
  CObject* (*m_pfnCreateObject)() = nullptr;
  CRuntimeClass* (*m_pfnGetBaseClass)() = nullptr;
  CRuntimeClass* m_pNextClass = nullptr;
  const void* m_pClassInit = nullptr;

  const CRuntimeClass* Base() const { return m_pfnGetBaseClass ? m_pfnGetBaseClass() : nullptr; }
};

class CObject {
 public:
  // As the framework's function of this name answers: the host's code, over the record of the object's class.
  bool IsKindOf(const CRuntimeClass* wanted) const {
    const CRuntimeClass* one = GetRuntimeClass();
    while (one && one != wanted) one = one->Base();
    return one != nullptr;
  }

  virtual CRuntimeClass* GetRuntimeClass() const;
  virtual ~CObject();
  virtual void Serialize(void* archive);
  virtual void AssertValid() const;
  virtual void Dump(void* context) const;
};

class CException : public CObject {
 public:
  virtual BOOL GetErrorMessage(wchar_t* text, UINT capacity, UINT* helpContext = nullptr) const;
  virtual BOOL GetErrorMessage(wchar_t* text, UINT capacity, UINT* helpContext = nullptr);
  virtual int ReportError(UINT type = 0, UINT message = 0);

  // What the framework's own function of this name does.
  void Delete() {
    if (m_bAutoDelete > 0) delete this;
  }

  BOOL m_bAutoDelete;
};

class CSimpleException : public CException {
 public:
  BOOL m_bInitialized;
  BOOL m_bLoaded;
  wchar_t m_szMessage[128];
  UINT m_nResourceID;
};
class CMemoryException : public CSimpleException {};
class CInvalidArgException : public CSimpleException {};

class CFileException : public CException {
 public:
  int m_cause;
  LONG m_lOsError;
  const wchar_t* m_strFileName;
};

class COleException : public CException {
 public:
  LONG m_sc;
};

// --- Strings

struct IAtlStringMgr;

struct CStringData {
  IAtlStringMgr* pStringMgr;
  int nDataLength;
  int nAllocLength;
  long nRefs;
};

struct IAtlStringMgr {
  virtual CStringData* Allocate(int chars, int charSize) = 0;
  virtual void Free(CStringData* data) = 0;
  virtual CStringData* Reallocate(CStringData* data, int chars, int charSize) = 0;
  virtual CStringData* GetNilString() = 0;
  virtual IAtlStringMgr* Clone() = 0;
};

/// A string object of the host: one pointer.
template <class Char>
struct HostString {
  Char* text;

  CStringData& data() const { return reinterpret_cast<CStringData*>(text)[-1]; }
};

// --- Byte arrays

struct ByteArray {
  const void* table;
  BYTE* m_pData;
  long long m_nSize;
  long long m_nMaxSize;
  long long m_nGrowBy;
};
