// SPDX-License-Identifier: MIT
// The GNU standard library asks for the header and, on this target, for nothing in it.
#pragma once
