// SPDX-License-Identifier: MIT
// afxwin.h: the application object and the per-thread module state.
#pragma once

#include <type_traits>

#include "afx.h"

struct AFX_MSGMAP_ENTRY {
  UINT nMessage, nCode, nID, nLastID;
  UINT_PTR nSig;
  void (*pfn)();
};

struct AFX_MSGMAP {
  const AFX_MSGMAP* (*pfnGetBaseMap)();
  const AFX_MSGMAP_ENTRY* lpEntries;
};

/// The one application object of a module. The runtime calls InitInstance when the module is loaded
/// and ExitInstance when it is unloaded.
class CWinApp {
 public:
  explicit CWinApp(const wchar_t* appName = nullptr);
  CWinApp(const CWinApp&) = delete;
  CWinApp& operator=(const CWinApp&) = delete;
  virtual ~CWinApp();
  virtual const AFX_MSGMAP* GetMessageMap() const;
  virtual BOOL InitInstance();
  virtual int ExitInstance();

  const wchar_t* m_pszAppName;

 protected:
  static const AFX_MSGMAP* GetThisMessageMap();
};

/// The application object, null before it is constructed and after it is destroyed.
CWinApp* AfxGetApp();

/// What a module of the framework keeps for itself; which module's is current is a matter of the
/// thread.
struct AFX_MODULE_STATE {
  CWinApp* m_pCurrentWinApp = nullptr;
  HINSTANCE m_hCurrentInstanceHandle = nullptr;
};

namespace framework {
extern AFX_MODULE_STATE moduleState;
}

/// This library's own module state.
inline AFX_MODULE_STATE* AfxGetStaticModuleState() {
  return &framework::moduleState;
}
/// The calling thread's current module state; null when no module's is.
AFX_MODULE_STATE* AfxGetModuleState();
/// Makes a module state current for the calling thread and gives the one before.
AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state);

/// The runtime's side of loading and unloading a module: the application object's InitInstance and
/// ExitInstance, in this library's module state.
BOOL AfxInitModule(HINSTANCE instance);
void AfxTermModule();

/// Makes a module state current while it lives.
class AFX_MAINTAIN_STATE2 {
 public:
  explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) : previous_(AfxSetModuleState(state)) {}
  AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
  AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;
  ~AFX_MAINTAIN_STATE2() { AfxSetModuleState(previous_); }

 private:
  AFX_MODULE_STATE* previous_;
};

#define AFX_MANAGE_STATE(state) const AFX_MAINTAIN_STATE2 afxModuleStateGuard(state)

namespace framework {

/// Where module_state.S keeps the caller's state, in pointers from its stack pointer.
constexpr int kSavedModuleState = 4;

extern "C" void zera_call_in_module_state(AFX_MODULE_STATE* state, void (*work)(void*), void* argument);

/// Calls `body` with a module state current, as AFX_MANAGE_STATE does for a block, and restores the one
/// before also when a host's own exception passes through, which runs no destructor of ours.
template <class Body>
auto CallInModuleState(AFX_MODULE_STATE* state, Body& body) -> decltype(body()) {
  using Result = decltype(body());
  static_assert(std::is_void_v<Result> || std::is_scalar_v<Result>, "results pass through in a register");
  // module_state.S leaves the register alone, whichever it is. The type between is the one that compilers let
  // stand for any function.
  using Call = Result(AFX_MODULE_STATE*, Result(*)(void*), void*);
  auto* const call = reinterpret_cast<Call*>(reinterpret_cast<void (*)()>(&zera_call_in_module_state));
  return call(
      state, [](void* work) -> Result { return (*static_cast<Body*>(work))(); }, &body);
}

}  // namespace framework
