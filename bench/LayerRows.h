// SPDX-License-Identifier: MIT
// LayerRows.h: the layer in today's C++, measured in a library of its own. That one is bound to the exports
// by the import library, as hosts are; the program itself loads the library when it wants to.
#pragma once

namespace bench {

/// One operation: by the layer, by the bare export, and, where text comes out, by the export with one copy of
/// the text into a standard string. Each gives something of its result.
struct LayerRow {
  const char* operation;  ///< null ends the list
  long long size;
  long long (*layer)();
  long long (*bare)();
  long long (*copied)();
};

}  // namespace bench

/// The operations; those of settings use this file.
extern "C" __declspec(dllexport) const bench::LayerRow* LayerRows(const wchar_t* settingsFile);
