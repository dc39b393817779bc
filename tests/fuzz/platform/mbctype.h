// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>
