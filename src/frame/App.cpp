// SPDX-License-Identifier: MIT
#include "App.h"

namespace {

// The one instance: constructed when the library is loaded, destroyed when it is unloaded.
CZERAToolsApp theApp;

const AFX_MSGMAP_ENTRY noEntries[] = {{0, 0, 0, 0, 0, nullptr}};

struct BaseMap : CWinApp {
  using CWinApp::GetThisMessageMap;
};

const AFX_MSGMAP messageMap = {&BaseMap::GetThisMessageMap, noEntries};

}  // namespace

const AFX_MSGMAP* CZERAToolsApp::GetMessageMap() const {
  return &messageMap;
}

// Loading never fails for a reason of the library's own, whatever the base says.
BOOL CZERAToolsApp::InitInstance() {
  CWinApp::InitInstance();
  return TRUE;
}

int CZERAToolsApp::ExitInstance() {
  return CWinApp::ExitInstance();
}
