// SPDX-License-Identifier: MIT
// Processes.h: the process tools without the frame.
#pragma once

#include "afxwin.h"

namespace process {

int Kill(const wchar_t* fileName);
unsigned int CountRunning(const wchar_t* path);
int Post(const CWinThread* thread, UINT message, WPARAM wParam, LPARAM lParam);
void* SafeNew(UINT size);

}  // namespace process
