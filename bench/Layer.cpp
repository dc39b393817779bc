// SPDX-License-Identifier: MIT
// The layer in today's C++, beside the bare exports, and beside them with one copy of the text that comes
// out.
#include "Harness.h"
#include "LayerRows.h"

namespace bench {

void Layer() {
  const HMODULE library = ::LoadLibraryW(L"zera_layer.dll");
  const auto list = reinterpret_cast<decltype(&::LayerRows)>(
      reinterpret_cast<void*>(library ? ::GetProcAddress(library, "LayerRows") : nullptr));
  if (!list) std::abort();
  const std::wstring file = Folder() + L"layer.ini";
  for (const LayerRow* row = list(file.c_str()); row->operation; ++row) {
    const auto calls = [](long long (*way)()) { return Calls([way] { sink = way(); }); };
    Measure("Layer", row->operation, static_cast<std::size_t>(row->size), calls(row->layer), calls(row->bare),
            row->copied ? calls(row->copied) : Way());
  }
  ::DeleteFileW(file.c_str());
  ::FreeLibrary(library);
}

}  // namespace bench
