// SPDX-License-Identifier: MIT
/* A module that has nothing but its resources. */
int sample_module(void);
int sample_module(void) {
  return 0;
}
