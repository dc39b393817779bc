// SPDX-License-Identifier: MIT
// FreeSpace.h: what the free-space query answers, as numbers. No platform calls.
#pragma once

#include <cstdint>

namespace file {

// Gigabytes from the two halves of a count of bytes.
//
// KEPT FOR HOSTS: the upper half counts 65535 x 65535 bytes, a little less than 2 to the 32nd. Hosts
// compare the result with limits that were found with this undercount.
inline float GigabytesFree(std::uint32_t low, std::uint32_t high) {
  const double megabytes = low / 1024.0 / 1024.0 + high / 1024.0 / 1024.0 * 65535.0 * 65535.0;
  return static_cast<float>(megabytes / 1024.0);
}

// What a drive gives that only tells its free clusters.
//
// KEPT FOR HOSTS: this is kilobytes, not gigabytes. Hosts that meet such drives know their numbers.
inline float FreeByClusters(std::uint32_t sectorsPerCluster, std::uint32_t bytesPerSector,
                            std::uint32_t freeClusters) {
  const double bytes = static_cast<double>(sectorsPerCluster) * bytesPerSector * freeClusters;
  return static_cast<float>(bytes / 1024.0);
}

}  // namespace file
