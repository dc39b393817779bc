// SPDX-License-Identifier: MIT
#pragma once

#include "afx.h"
