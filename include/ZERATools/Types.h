// SPDX-License-Identifier: MIT
// ZERATools/Types.h: the objects that cross the boundary between the library and its hosts.
//
// Hosts of the family pass their framework's own string, byte array and thread objects. What counts
// is how those objects lie in memory; this header states it, and gives a host without that framework
// small classes of the same names and layout. It is included by ZERATools.h unless the host's own
// framework is there (see ZERATOOLS_HOST_FRAMEWORK).
//
// C++17. No exception of the classes below ever leaves a destructor.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

#if defined(ZERATOOLS_BUILDING)
[[noreturn]] void AfxThrowMemoryException();
#endif

struct CStringData;

/// The manager that owns a string's buffer. The order of the functions is the interface: there is
/// no destructor slot.
struct IAtlStringMgr {
  /// A new buffer for `chars` characters of `charSize` bytes and a terminator; null when out of memory.
  virtual CStringData* Allocate(int chars, int charSize) noexcept = 0;
  /// Takes back a buffer whose last reference is gone.
  virtual void Free(CStringData* data) noexcept = 0;
  /// Enlarges an unshared buffer; null when out of memory, the old buffer then stays valid.
  virtual CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept = 0;
  /// The empty string of this manager, with a reference counted for the caller.
  virtual CStringData* GetNilString() noexcept = 0;
  /// The manager that copies of this manager's strings use.
  virtual IAtlStringMgr* Clone() noexcept = 0;

 protected:
  ~IAtlStringMgr() = default;
};

/// What stands before the characters of every string. A string object is one pointer to the
/// characters, so this header lies 24 bytes below them.
struct CStringData {
  IAtlStringMgr* pStringMgr;
  int nDataLength;   ///< characters in use, without the terminator
  int nAllocLength;  ///< characters there is room for, without the terminator
  long nRefs;        ///< above 1: shared; below 0: locked, the buffer must stay where it is

  void* data() noexcept { return this + 1; }
  void AddRef() noexcept { ::InterlockedIncrement(&nRefs); }
  void Release() noexcept {
    if (::InterlockedDecrement(&nRefs) <= 0) pStringMgr->Free(this);
  }
  bool IsShared() const noexcept { return nRefs > 1; }
  bool IsLocked() const noexcept { return nRefs < 0; }
};

static_assert(sizeof(CStringData) == 24 && offsetof(CStringData, nDataLength) == 8 &&
                  offsetof(CStringData, nAllocLength) == 12 && offsetof(CStringData, nRefs) == 16,
              "hosts and library read each other's string headers");

namespace zera_types {

/// The string manager of this module: buffers from the shared C runtime's heap.
class HeapStringMgr final : public IAtlStringMgr {
 public:
  static HeapStringMgr& Instance() noexcept { return instance_; }

  CStringData* Allocate(int chars, int charSize) noexcept override {
    const std::size_t bytes = Bytes(chars, charSize);
    auto* data = bytes ? static_cast<CStringData*>(std::malloc(bytes)) : nullptr;
    if (data) {
      data->pStringMgr = this;
      data->nDataLength = 0;
      data->nAllocLength = chars;
      data->nRefs = 1;
    }
    return data;
  }
  // Not inlined: a compiler that sees through both functions warns of the static empty string being
  // given to the heap, which its reference count rules out.
  __declspec(noinline) void Free(CStringData* data) noexcept override {
    if (data != &nil_.header) std::free(data);
  }
  __declspec(noinline) CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    const std::size_t bytes = Bytes(chars, charSize);
    auto* larger = bytes ? static_cast<CStringData*>(std::realloc(data, bytes)) : nullptr;
    if (larger) larger->nAllocLength = chars;
    return larger;
  }
  CStringData* GetNilString() noexcept override {
    nil_.header.AddRef();
    return &nil_.header;
  }
  IAtlStringMgr* Clone() noexcept override { return this; }

 private:
  // Two references that nobody gives back keep the empty string shared, so every writer takes a
  // buffer of its own first.
  struct Nil {
    CStringData header;
    wchar_t terminator[2];
  };

  constexpr HeapStringMgr() noexcept : nil_{{this, 0, 0, 2}, {}} {}

  static std::size_t Bytes(int chars, int charSize) noexcept {
    if (chars < 0 || chars >= 0x7FFFFFF0) return 0;
    return sizeof(CStringData) + (static_cast<std::size_t>(chars) + 1) * static_cast<std::size_t>(charSize);
  }

  Nil nil_;

  static HeapStringMgr instance_;
};

// Initialised before any code runs, and never destroyed: it outlives every string.
inline HeapStringMgr HeapStringMgr::instance_;
static_assert(std::is_trivially_destructible_v<HeapStringMgr>, "outlives every string");

/// What a string or array of this header does when memory is exhausted. Inside the library that is the
/// framework's own exception; a host without exceptions ends.
[[noreturn]] inline void ThrowMemory() {
#if defined(ZERATOOLS_BUILDING)
  ::AfxThrowMemoryException();
#elif defined(__cpp_exceptions) || defined(_CPPUNWIND)
  throw std::bad_alloc();
#else
  std::abort();
#endif
}

}  // namespace zera_types

/// A string object as the family's framework lays it out: one pointer to zero-terminated characters
/// behind a CStringData. Reading is free; every change respects the buffer's manager, its shared and
/// its locked state.
template <class Char>
class CStringT {
 public:
  using XCHAR = Char;

  CStringT() noexcept : text_(Text(zera_types::HeapStringMgr::Instance().GetNilString())) {}
  CStringT(const Char* text) : CStringT() { SetString(text); }
  CStringT(const Char* text, int length) : CStringT() { SetString(text, length); }
  /// Converts between UTF-16 and the ANSI code page; a null pointer gives an empty string.
  template <class Other,
            class = std::enable_if_t<!std::is_same_v<Other, Char> &&
                                     (std::is_same_v<Other, char> || std::is_same_v<Other, wchar_t>)>>
  explicit CStringT(const Other* text) : CStringT() {
    *this = text;
  }
  CStringT(const CStringT& other) : CStringT() { *this = other; }
  ~CStringT() { Header()->Release(); }

  CStringT& operator=(const CStringT& other) {
    CStringData* const theirs = other.Header();
    if (theirs == Header()) return *this;
    // Only buffers of one manager are shared, and never one that is locked at either end.
    if (!theirs->IsLocked() && !Header()->IsLocked() && theirs->pStringMgr == Header()->pStringMgr) {
      theirs->AddRef();
      Header()->Release();
      text_ = Text(theirs);
      return *this;
    }
    SetString(other.text_, other.GetLength());
    return *this;
  }
  CStringT& operator=(const Char* text) {
    SetString(text);
    return *this;
  }
  template <class Other>
  std::enable_if_t<!std::is_same_v<Other, Char>, CStringT&> operator=(const Other* text) {
    Convert(text);
    return *this;
  }

  operator const Char*() const noexcept { return text_; }
  const Char* GetString() const noexcept { return text_; }
  int GetLength() const noexcept { return Header()->nDataLength; }
  int GetAllocLength() const noexcept { return Header()->nAllocLength; }
  bool IsEmpty() const noexcept { return GetLength() == 0; }
  Char operator[](int at) const noexcept { return text_[at]; }
  Char GetAt(int at) const noexcept { return text_[at]; }

  /// Makes the string empty and gives its buffer back; a locked buffer stays where it is.
  void Empty() noexcept {
    CStringData* const old = Header();
    if (old->nDataLength == 0) return;
    if (old->IsLocked()) {
      SetLength(0);
      return;
    }
    CStringData* const nil = old->pStringMgr->GetNilString();
    old->Release();
    text_ = Text(nil);
  }

  void SetString(const Char* text) { SetString(text, Length(text)); }
  /// Takes `length` characters, which may lie in this string's own buffer.
  void SetString(const Char* text, int length) {
    if (length <= 0 || !text) {
      Empty();
      return;
    }
    const std::size_t offset = Offset(text);
    const bool own = offset <= static_cast<std::size_t>(GetLength());
    Char* const buffer = GetBuffer(length);
    std::memmove(buffer, own ? buffer + offset : text, static_cast<std::size_t>(length) * sizeof(Char));
    SetLength(length);
  }

  void Append(const Char* text) { Append(text, Length(text)); }
  void Append(const Char* text, int length) {
    if (length <= 0 || !text) return;
    const int before = GetLength();
    if (length > 0x7FFFFFEF - before) zera_types::ThrowMemory();
    const std::size_t offset = Offset(text);
    const bool own = offset <= static_cast<std::size_t>(GetLength());
    Char* const buffer = GetBuffer(before + length);
    std::memmove(buffer + before, own ? buffer + offset : text,
                 static_cast<std::size_t>(length) * sizeof(Char));
    SetLength(before + length);
  }
  void AppendChar(Char one) { Append(&one, 1); }
  CStringT& operator+=(const Char* text) {
    Append(text);
    return *this;
  }
  CStringT& operator+=(const CStringT& other) {
    Append(other.text_, other.GetLength());
    return *this;
  }
  CStringT& operator+=(Char one) {
    AppendChar(one);
    return *this;
  }

  /// Room for `chars` characters and a terminator in a buffer that no other string shares. The text
  /// so far is kept. Call ReleaseBuffer or ReleaseBufferSetLength after writing.
  Char* GetBuffer(int chars) {
    CStringData* const old = Header();
    if (old->IsShared()) {
      Fork(chars < old->nDataLength ? old->nDataLength : chars);
    } else if (old->nAllocLength < chars) {
      Grow(chars);
    }
    return text_;
  }
  void ReleaseBufferSetLength(int length) noexcept { SetLength(length); }
  void ReleaseBuffer() noexcept {
    int length = 0;
    while (length < GetAllocLength() && text_[length]) ++length;
    SetLength(length);
  }
  /// Shortens the text to its first `length` characters.
  void Truncate(int length) {
    if (length >= GetLength()) return;
    GetBuffer(GetLength());
    SetLength(length);
  }

  friend bool operator==(const CStringT& a, const CStringT& b) noexcept {
    return a.GetLength() == b.GetLength() &&
           std::memcmp(a.text_, b.text_, static_cast<std::size_t>(a.GetLength()) * sizeof(Char)) == 0;
  }
  friend bool operator!=(const CStringT& a, const CStringT& b) noexcept { return !(a == b); }

 private:
  static Char* Text(CStringData* data) noexcept { return static_cast<Char*>(data->data()); }
  CStringData* Header() const noexcept { return reinterpret_cast<CStringData*>(text_) - 1; }

  // How many characters `text` lies behind the start of this string; beyond its length if elsewhere.
  std::size_t Offset(const Char* text) const noexcept {
    return (reinterpret_cast<std::uintptr_t>(text) - reinterpret_cast<std::uintptr_t>(text_)) / sizeof(Char);
  }

  static int Length(const Char* text) noexcept {
    std::size_t length = 0;
    if (text) {
      while (text[length]) ++length;
    }
    return length > 0x7FFFFFEF ? 0x7FFFFFEF : static_cast<int>(length);
  }

  void SetLength(int length) noexcept {
    Header()->nDataLength = length;
    text_[length] = 0;
  }

  // A buffer of our own in place of a shared one. The manager that copies use provides it.
  void Fork(int chars) {
    CStringData* const old = Header();
    CStringData* const fresh = old->pStringMgr->Clone()->Allocate(chars, sizeof(Char));
    if (!fresh) zera_types::ThrowMemory();
    fresh->nDataLength = old->nDataLength;
    std::memcpy(fresh->data(), text_, (static_cast<std::size_t>(old->nDataLength) + 1) * sizeof(Char));
    old->Release();
    text_ = Text(fresh);
  }

  void Grow(int chars) {
    CStringData* const old = Header();
    const int half = old->nAllocLength < 0x40000000 ? old->nAllocLength / 2 : 0x100000;
    const int roomy = old->nAllocLength > 0x7FFFFFEF - half ? chars : old->nAllocLength + half;
    CStringData* const larger =
        old->pStringMgr->Reallocate(old, roomy > chars ? roomy : chars, static_cast<int>(sizeof(Char)));
    if (!larger) zera_types::ThrowMemory();
    text_ = Text(larger);
  }

  void Convert(const char* text) {
    const int chars = text ? ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0) : 0;
    if (chars <= 1) {
      Empty();
      return;
    }
    // Half a character at the end may take the terminator with it, so it is looked for, not assumed.
    const int written = ::MultiByteToWideChar(CP_ACP, 0, text, -1, GetBuffer(chars), chars);
    SetLength(written > 0 && text_[written - 1] == 0 ? written - 1 : written);
  }
  void Convert(const wchar_t* text) {
    const int chars = text ? ::WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr) : 0;
    if (chars <= 1) {
      Empty();
      return;
    }
    const int written =
        ::WideCharToMultiByte(CP_ACP, 0, text, -1, GetBuffer(chars - 1), chars, nullptr, nullptr);
    SetLength(written > 0 ? written - 1 : 0);
  }

  Char* text_;
};

using CStringA = CStringT<char>;
using CStringW = CStringT<wchar_t>;
static_assert(sizeof(CStringA) == sizeof(void*) && sizeof(CStringW) == sizeof(void*),
              "a string object is one pointer");

/// The framework's growable array, for trivially copyable elements. Its storage comes from the
/// shared C runtime's heap, as the array forms of a host's new and delete do.
template <class Type, class Arg = const Type&>
class CArray {
  static_assert(std::is_trivially_copyable_v<Type>, "elements are moved as bytes");

 public:
  CArray() noexcept = default;
  CArray(const CArray&) = delete;
  CArray& operator=(const CArray&) = delete;
  virtual ~CArray() { std::free(m_pData); }

  INT_PTR GetSize() const noexcept { return m_nSize; }
  INT_PTR GetCount() const noexcept { return m_nSize; }
  bool IsEmpty() const noexcept { return m_nSize == 0; }
  const Type* GetData() const noexcept { return m_pData; }
  Type* GetData() noexcept { return m_pData; }
  const Type& operator[](INT_PTR at) const noexcept { return m_pData[at]; }
  Type& operator[](INT_PTR at) noexcept { return m_pData[at]; }

  /// Gives the storage back; the array is empty afterwards.
  void RemoveAll() noexcept {
    std::free(m_pData);
    m_pData = nullptr;
    m_nSize = m_nMaxSize = 0;
  }

  /// Sets the number of elements; new ones are zero. Size 0 gives the storage back.
  void SetSize(INT_PTR size, INT_PTR growBy = -1) {
    if (growBy >= 0) m_nGrowBy = growBy;
    if (size <= 0) {
      RemoveAll();
      return;
    }
    if (size > m_nMaxSize) {
      if (static_cast<std::size_t>(size) > static_cast<std::size_t>(-1) / 2 / sizeof(Type)) {
        zera_types::ThrowMemory();
      }
      // The platform has large blocks of zeros ready.
      const bool first = !m_pData;
      void* const larger = first ? std::calloc(static_cast<std::size_t>(size), sizeof(Type))
                                 : std::realloc(m_pData, static_cast<std::size_t>(size) * sizeof(Type));
      if (!larger) zera_types::ThrowMemory();
      m_pData = static_cast<Type*>(larger);
      m_nMaxSize = size;
      if (first) m_nSize = size;
    }
    if (size > m_nSize) {
      std::memset(static_cast<void*>(m_pData + m_nSize), 0,
                  static_cast<std::size_t>(size - m_nSize) * sizeof(Type));
    }
    m_nSize = size;
  }

  /// Appends one element; the storage grows by half, so that n calls take linear time.
  INT_PTR Add(Arg element) {
    const Type copy = element;
    if (m_nSize == m_nMaxSize) {
      const INT_PTR used = m_nSize;
      SetSize(used + used / 2 + 16);
      m_nSize = used;
    }
    m_pData[m_nSize] = copy;
    return m_nSize++;
  }

 protected:
  Type* m_pData = nullptr;
  INT_PTR m_nSize = 0;
  INT_PTR m_nMaxSize = 0;
  INT_PTR m_nGrowBy = 0;
};

static_assert(sizeof(CArray<BYTE, const BYTE&>) == 40, "hosts and library share byte arrays");

/// The part of the framework's thread object that the library reads: the thread's identifier.
class CWinThread {
 public:
  explicit CWinThread(DWORD threadId = 0) noexcept : m_nThreadID(threadId) {}

  char reserved[96] = {};
  DWORD m_nThreadID;
};

static_assert(offsetof(CWinThread, m_nThreadID) == 96, "hosts' thread objects carry their identifier here");
