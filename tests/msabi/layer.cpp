// SPDX-License-Identifier: MIT
// What the library raises comes out of zera.hpp as it is, and what the layer made for the call is freed.
#include "framework.h"
#include "layer_calls.h"
#include "support.h"

namespace {

using namespace host;

void CopyRaises() {
  Subject("copy whose read fails, through the layer");
  const InFolder source(L"layer.bin"), target(L"layer-copy.bin");
  WriteFileBytes(source, "0123456789", 10);
  int caught = 0;
  {
    const Fault fault("ReadFile", &FailingRead);
    try {
      CopyByLayer(source, target);
    } catch (CFileException* e) {
      ++caught;
      CHECK_EQUAL(e->m_lOsError, kReadFault);
      e->Delete();
    }
  }
  CHECK_EQUAL(caught, 1);
  CHECK(CopyByLayer(source, target));
  CHECK(DeleteFileW(source));
  CHECK(DeleteFileW(target));
}

void MemoryRaises() {
  Subject("a view of a long text without memory for it, through the layer");
  static char text[1000];
  memset(text, 'a', sizeof text);
  int caught = 0;
  {
    const Fault fault("malloc", &NoMemory);
    try {
      ExistsByLayer(text, sizeof text);
    } catch (CMemoryException* e) {
      ++caught;
      e->Delete();
    }
  }
  CHECK_EQUAL(caught, 1);
  CHECK(!ExistsByLayer(text, sizeof text));
}

void EncryptionRaises() {
  Subject("encryption without memory, through the layer");
  static char key[1000];
  memset(key, 'k', sizeof key - 1);
  int caught = 0;
  {
    const Fault fault("calloc", &NoZeros);
    try {
      EncryptByLayer(key, "a text in an object");
    } catch (CMemoryException* e) {
      ++caught;
      e->Delete();
    }
  }
  CHECK_EQUAL(caught, 1);
  CHECK_EQUAL(BuffersOfLayer(), 0);
  CHECK(EncryptByLayer(key, "a text in an object"));
}

}  // namespace

extern "C" void Start() {
  RefuseOtherDrives();
  CHECK_EQUAL(Utf8ByLayer(), 3);
  CopyRaises();
  MemoryRaises();
  EncryptionRaises();
  Subject("many calls that raise, through the layer");
  CheckNoGrowth(200, [] {
    CopyRaises();
    MemoryRaises();
    EncryptionRaises();
  });
  CHECK_EQUAL(BuffersOfLayer(), 0);
  RemoveFolder();
  Print(Failures() == 0 ? "all passed\n" : "FAILED\n");
  ExitProcess(Failures() == 0 ? 0 : 1);
}
