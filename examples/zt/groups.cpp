// SPDX-License-Identifier: MIT
#include "groups.h"

namespace zt {

std::span<const Group* const> AllGroups() {
  static const Group* const groups[] = {&whereGroup,   &profileGroup,   &cryptGroup, &treeGroup,
                                        &pathGroup,    &fileGroup,      &textGroup,  &roundGroup,
                                        &processGroup, &completionGroup};
  return groups;
}

}  // namespace zt
