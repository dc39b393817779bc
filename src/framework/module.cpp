// SPDX-License-Identifier: MIT
#include "afxwin.h"

#include <utility>

#include "thread_storage.h"

AFX_MODULE_STATE framework::moduleState;

using framework::moduleState;

CWinApp::CWinApp(const wchar_t* appName) : m_pszAppName(appName) {
  moduleState.m_pCurrentWinApp = this;
}

CWinApp::~CWinApp() {
  moduleState.m_pCurrentWinApp = nullptr;
}

const AFX_MSGMAP* CWinApp::GetThisMessageMap() {
  static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, 0, nullptr}};
  static const AFX_MSGMAP map = {nullptr, entries};
  return &map;
}

const AFX_MSGMAP* CWinApp::GetMessageMap() const {
  return GetThisMessageMap();
}
BOOL CWinApp::InitInstance() {
  return TRUE;
}
int CWinApp::ExitInstance() {
  return 0;
}

CWinApp* AfxGetApp() {
  return moduleState.m_pCurrentWinApp;
}

AFX_MODULE_STATE* AfxGetModuleState() {
  return framework::CurrentThread().moduleState;
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) {
  return std::exchange(framework::CurrentThread().moduleState, state);
}

// Called while an exception of any kind leaves CallInModuleState.
extern "C" EXCEPTION_DISPOSITION zera_restore_module_state(EXCEPTION_RECORD*, void* frame, CONTEXT*, void*) {
  AfxSetModuleState(static_cast<AFX_MODULE_STATE**>(frame)[framework::kSavedModuleState]);
  return ExceptionContinueSearch;
}

BOOL AfxInitModule(HINSTANCE instance) {
  moduleState.m_hCurrentInstanceHandle = instance;
  const AFX_MAINTAIN_STATE2 guard(&moduleState);
  CWinApp* const app = AfxGetApp();
  return !app || app->InitInstance();
}

void AfxTermModule() {
  const AFX_MAINTAIN_STATE2 guard(&moduleState);
  if (CWinApp* const app = AfxGetApp()) app->ExitInstance();
}
