// SPDX-License-Identifier: MIT
// FencedManager.h: a host's string manager whose buffers end where an inaccessible page begins.
#pragma once

#include <cstring>
#include <map>
#include <memory>

#include "Fence.h"
#include "support/HostString.h"

namespace garbage {

class FencedManager final : public test::CountingManager {
 public:
  CStringData* Allocate(int chars, int charSize) noexcept override {
    // Rounded up, so that the header is aligned; the capacity tells all that there is.
    const int step = 8 / charSize;
    const int capacity = (chars + step) / step * step - 1;
    auto fence = std::make_unique<Fence>(sizeof(CStringData) + Bytes(capacity, charSize), Fence::Side::kEnd);
    auto* const data = reinterpret_cast<CStringData*>(fence->data());
    *data = {this, 0, capacity, 1};
    fences_[data] = std::move(fence);
    return data;
  }
  void Free(CStringData* data) noexcept override {
    const auto found = fences_.find(data);
    if (found == fences_.end()) {
      CountingManager::Free(data);
      return;
    }
    intact_ = intact_ && found->second->Intact();
    fences_.erase(found);
  }
  CStringData* Reallocate(CStringData* data, int chars, int charSize) noexcept override {
    CStringData* const other = Allocate(chars, charSize);
    const int kept = std::min(data->nAllocLength, other->nAllocLength);
    std::memcpy(other->data(), data->data(), Bytes(kept, charSize));
    other->nDataLength = data->nDataLength;
    Free(data);
    return other;
  }

  /// Whether nothing was written beside a buffer, nor into the empty string.
  bool Intact() const {
    bool intact = intact_ && NilIntact();
    for (const auto& fence : fences_) intact = intact && fence.second->Intact();
    return intact;
  }

 private:
  static std::size_t Bytes(int chars, int charSize) {
    return (static_cast<std::size_t>(chars) + 1) * static_cast<std::size_t>(charSize);
  }

  std::map<CStringData*, std::unique_ptr<Fence>> fences_;
  bool intact_ = true;
};

}  // namespace garbage
