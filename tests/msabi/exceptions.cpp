// SPDX-License-Identifier: MIT
// Framework exceptions that leave the library arrive as the host's own: caught by class, by base, by
// pointer to anything and by "...", readable, deletable, and with every destructor run on the way.
#include "framework.h"
#include "support.h"

namespace {

using namespace host;

constexpr int kHeldRounds = 100'000;

const wchar_t* source;
const wchar_t* target;
int statesDuringCall;

// --- Operations that raise. The platform functions that fail look at the library's state as well.

template <auto function>
struct Observed;
template <class Result, class... Arguments, Result (*function)(Arguments...)>
struct Observed<function> {
  static Result Call(Arguments... arguments) {
    statesDuringCall = CurrentStates();
    return function(arguments...);
  }
};
template <auto function>
void* Observe() {
  return reinterpret_cast<void*>(&Observed<function>::Call);
}

void RaiseFile() {
  Export<int(const wchar_t*, const wchar_t*)>(1016)(source, target);
}

// A text longer than any path is the one that a plain export converts on the heap.
void RaiseMemory() {
  static char text[1000];
  memset(text, 'a', sizeof text - 1);
  Export<int(const char*)>(1)(text);
}

// A file exception that cannot be made for want of memory is a memory exception, and the export that
// catches file exceptions lets it through.
void RaiseMemoryInsteadOfFile() {
  const Fault fault("ReadFile", Observe<&FailingRead>());
  unsigned char buffer[16];
  unsigned long long count = 0;
  Export<int(const wchar_t*, unsigned char*, unsigned long long, unsigned long long*)>(1025)(
      source, buffer, sizeof buffer, &count);
}

void RaiseOle() {
  long long time = 0;
  Export<int(const wchar_t*, long long*)>(1027)(L"X:\\tmp\\missing.txt", &time);
}

// No byte can be put into the array that this export fills, so any count is an invalid argument.
void RaiseInvalidArgument() {
  char text[16];
  Export<int(const char*, const BYTE*, int, char*, UINT, BOOL)>(71)("key", nullptr, 1, text, sizeof text, 1);
}

// The class records of the host's own framework, beside which the library has others.
const CRuntimeClass hostRecords[] = {{"CObject"},          {"CException"},           {"CSimpleException"},
                                     {"CMemoryException"}, {"CInvalidArgException"}, {"CFileException"},
                                     {"COleException"}};

// --- What was raised

void ReadFile(CFileException* e) {
  const int kHardIo = 10;
  CHECK_EQUAL(e->m_cause, kHardIo);
  CHECK_EQUAL(e->m_lOsError, kReadFault);
  CHECK_EQUAL(wcslen(e->m_strFileName), wcslen(source));
  CHECK(memcmp(e->m_strFileName, source, wcslen(source) * 2) == 0);
  CHECK_EQUAL(reinterpret_cast<const CStringData*>(e->m_strFileName)[-1].nDataLength, wcslen(source));
  CHECK_EQUAL(e->m_bAutoDelete, 1);
}
void ReadMemory(CMemoryException* e) {
  CHECK_EQUAL(e->m_bAutoDelete, 0);
}
void ReadInvalidArgument(CInvalidArgException* e) {
  CHECK_EQUAL(e->m_bAutoDelete, 0);
}
void ReadOle(COleException* e) {
  CHECK_EQUAL(e->m_sc, static_cast<LONG>(0x80070057));
  CHECK_EQUAL(e->m_bAutoDelete, 1);
}

/// One way out of the library: an operation that raises an exception of a class.
template <class Class>
struct Way {
  const char* name;
  const char* classes[5];  // its class and the bases of that
  const char* import;      // the platform function that fails; null if none has to
  void* fault;
  void (*raise)();
  void (*read)(Class*);
};

// Raises with the fault in place and a host object in the frame that the exception passes.
template <class Class>
void Raise(const Way<Class>& way, int& witnessed) {
  const Fault fault(way.import, way.fault);
  const Witness witness(witnessed);
  way.raise();
}

template <class Caught, class Class, class Look>
void CatchAs(const Way<Class>& way, Look look) {
  int witnessed = 0;
  bool caught = false;
  statesDuringCall = -1;
  try {
    Raise(way, witnessed);
  } catch (Caught e) {
    caught = true;
    look(e);
  }
  CHECK(caught);
  CHECK_EQUAL(witnessed, 1);
  if (way.import) CHECK_EQUAL(statesDuringCall, 1);
  CHECK_EQUAL(CurrentStates(), 0);
}

class SomethingElse {};

template <class Class>
void TestWay(const Way<Class>& way) {
  Subject(way.name);

  // By its class, its bases, and what any pointer converts to.
  CatchAs<Class*>(way, [&](Class* e) {
    way.read(e);
    e->Delete();
  });
  CatchAs<CException*>(way, [&](CException* e) {
    CHECK(strcmp(e->GetRuntimeClass()->m_lpszClassName, way.classes[0]) == 0);
    wchar_t text[200];
    UINT help = 77;
    CHECK_EQUAL(e->GetErrorMessage(text, 200, &help), 1);
    CHECK(text[0] != 0 && wcslen(text) < 200);
    CHECK_EQUAL(help, 0);
    e->Delete();
  });
  CatchAs<const CException*>(way, [](const CException* e) { const_cast<CException*>(e)->Delete(); });
  // A host that deletes without asking whether the object wants it.
  CatchAs<CException*>(way, [](CException* e) { delete e; });
  CatchAs<CObject*>(way, [](CObject* e) { static_cast<CException*>(e)->Delete(); });
  CatchAs<void*>(way, [](void* e) { static_cast<CException*>(e)->Delete(); });

  // Asked by record it is what its own records say, and by the host's of the same names nothing.
  CatchAs<CException*>(way, [&](CException* e) {
    const char* const* name = way.classes;
    for (const CRuntimeClass* one = e->GetRuntimeClass(); one; one = one->Base()) {
      CHECK(*name && strcmp(one->m_lpszClassName, *name) == 0);
      if (*name) ++name;
      CHECK(e->IsKindOf(one));
    }
    CHECK(!*name);
    CHECK_EQUAL(e->GetRuntimeClass()->m_nObjectSize, sizeof(Class));
    for (const CRuntimeClass& record : hostRecords) CHECK(!e->IsKindOf(&record));
    e->Delete();
  });

  // By "...", raised on by the host and then caught by class; the wrong classes are passed over.
  int witnessed = 0;
  bool any = false, wrong = false, caught = false;
  try {
    try {
      Raise(way, witnessed);
    } catch (SomethingElse*) {
      wrong = true;
    } catch (int) {
      wrong = true;
    } catch (...) {
      any = true;
      throw;
    }
  } catch (Class* e) {
    caught = true;
    e->Delete();
  }
  CHECK(any && caught && !wrong);
  CHECK_EQUAL(witnessed, 1);

  CheckNoGrowth(kHeldRounds, [&] {
    int count = 0;
    try {
      Raise(way, count);
      CHECK(false && "nothing was raised");
    } catch (CException* e) {
      e->Delete();
    }
    CHECK_EQUAL(count, 1);
  });
}

// The classes stand beside each other, not under each other.
template <class Other, class Class>
void CheckIsNo(const Way<Class>& way) {
  Subject(way.name);
  int witnessed = 0;
  bool wrong = false;
  try {
    Raise(way, witnessed);
  } catch (Other*) {
    wrong = true;
  } catch (CException* e) {
    e->Delete();
  }
  CHECK(!wrong);
}

template <class Class>
void TestSimple(const Way<Class>& way) {
  Subject(way.name);
  CatchAs<CSimpleException*>(way, [](CSimpleException* e) { e->Delete(); });
}

}  // namespace

void TestExceptions() {
  const InFolder sourcePath(L"source.bin"), targetPath(L"target.bin");
  source = sourcePath;
  target = targetPath;
  WriteFileBytes(source, "0123456789", 10);

  const Way<CFileException> file = {"copy whose read fails",
                                    {"CFileException", "CException", "CObject"},
                                    "ReadFile",
                                    Observe<&FailingRead>(),
                                    &RaiseFile,
                                    &ReadFile};
  const Way<CMemoryException> memory = {"conversion without memory",
                                        {"CMemoryException", "CSimpleException", "CException", "CObject"},
                                        "malloc",
                                        Observe<&NoMemory>(),
                                        &RaiseMemory,
                                        &ReadMemory};
  const Way<CMemoryException> memoryForFile = {
      "file exception without memory",
      {"CMemoryException", "CSimpleException", "CException", "CObject"},
      "malloc",
      Observe<&NoMemory>(),
      &RaiseMemoryInsteadOfFile,
      &ReadMemory};
  const Way<COleException> ole = {"date that cannot be converted",
                                  {"COleException", "CException", "CObject"},
                                  "_mktime64",
                                  Observe<&NoTime>(),
                                  &RaiseOle,
                                  &ReadOle};
  const Way<CInvalidArgException> invalidArgument = {
      "encryption of a count of bytes",
      {"CInvalidArgException", "CSimpleException", "CException", "CObject"},
      nullptr,
      nullptr,
      &RaiseInvalidArgument,
      &ReadInvalidArgument};
  TestWay(file);
  TestWay(memory);
  TestWay(memoryForFile);
  TestWay(invalidArgument);
  TestWay(ole);
  TestSimple(memory);
  TestSimple(invalidArgument);
  CheckIsNo<CMemoryException>(file);
  CheckIsNo<CSimpleException>(file);
  CheckIsNo<COleException>(file);
  CheckIsNo<CFileException>(memory);
  CheckIsNo<CInvalidArgException>(memory);
  CheckIsNo<CFileException>(ole);
  CheckIsNo<CMemoryException>(invalidArgument);

  // Nothing stays open: both files can be deleted at once.
  Subject("files after a failed copy");
  CHECK(DeleteFileW(source));
  CHECK(DeleteFileW(target));
}
