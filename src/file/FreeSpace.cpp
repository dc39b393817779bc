// SPDX-License-Identifier: MIT
#include "FreeSpace.h"

#include <windows.h>

#include "Storage.h"
#include "base/QuietErrors.h"

namespace file {

float GetFreeDiskGb(wchar_t driveLetter) {
  // Without a backslash this names the drive's current folder: a volume mounted there is the one asked.
  const wchar_t root[] = {driveLetter, L':', 0};
  const base::QuietErrors quiet;
  ULARGE_INTEGER toCaller;
  ULARGE_INTEGER total;
  ULARGE_INTEGER free;
  if (::GetDiskFreeSpaceExW(root, &toCaller, &total, &free)) {
    return GigabytesFree(toCaller.LowPart, toCaller.HighPart);
  }
  DWORD sectorsPerCluster;
  DWORD bytesPerSector;
  DWORD freeClusters;
  DWORD clusters;
  if (::GetDiskFreeSpaceW(root, &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters)) {
    return FreeByClusters(sectorsPerCluster, bytesPerSector, freeClusters);
  }
  return 0;
}

}  // namespace file
