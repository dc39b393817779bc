// SPDX-License-Identifier: MIT
// ZERATools/Version.h: the version that this header belongs to. A host that asks for the version of the
// library that it has loaded reads the DLL's version resource (ZERA_TOOLS_FILE_GET_VERSION does).
#ifndef ZERATOOLS_VERSION_H
#define ZERATOOLS_VERSION_H

// The numbers of the project's version in CMakeLists.txt, which refuses others.
#define ZERATOOLS_VERSION_MAJOR 1
#define ZERATOOLS_VERSION_MINOR 1
#define ZERATOOLS_VERSION_PATCH 0
#define ZERATOOLS_VERSION_STRING "1.1.0"

#endif  // ZERATOOLS_VERSION_H
