#include "afxwin.h"

namespace {

AFX_MODULE_STATE moduleState;

// The platform's own thread-local storage: the compiler's is emulated on this toolchain, and slow.
// Taken when the module is loaded, before any thread can call; see module_entry.cpp.
DWORD stateIndex = TLS_OUT_OF_INDEXES;

}  // namespace

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
AFX_MODULE_STATE* AfxGetStaticModuleState() {
  return &moduleState;
}

AFX_MODULE_STATE* AfxGetModuleState() {
  return static_cast<AFX_MODULE_STATE*>(::TlsGetValue(stateIndex));
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) {
  AFX_MODULE_STATE* const previous = AfxGetModuleState();
  if (previous != state) ::TlsSetValue(stateIndex, state);
  return previous;
}

BOOL AfxInitModule(HINSTANCE instance) {
  stateIndex = ::TlsAlloc();
  if (stateIndex == TLS_OUT_OF_INDEXES) return FALSE;
  moduleState.m_hCurrentInstanceHandle = instance;
  const AFX_MAINTAIN_STATE2 guard(&moduleState);
  CWinApp* const app = AfxGetApp();
  return !app || app->InitInstance();
}

void AfxTermModule() {
  if (stateIndex == TLS_OUT_OF_INDEXES) return;
  const AFX_MAINTAIN_STATE2 guard(&moduleState);
  if (CWinApp* const app = AfxGetApp()) app->ExitInstance();
}
