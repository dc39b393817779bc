// SPDX-License-Identifier: MIT
// afxtempl.h: the framework's array template, under its usual name.
#pragma once

#include "afx.h"
