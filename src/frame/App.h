// SPDX-License-Identifier: MIT
// App.h: the library's application object.
#pragma once

#include "afxwin.h"

class CZERAToolsApp : public CWinApp {
 public:
  CZERAToolsApp() : CWinApp(nullptr) {}
  ~CZERAToolsApp() override = default;
  const AFX_MSGMAP* GetMessageMap() const override;
  BOOL InitInstance() override;
  int ExitInstance() override;
};
