// SPDX-License-Identifier: MIT
#include "thread_storage.h"

// The part of the .tls section that each thread gets a copy of. The section's name puts it between the
// two marks that the C runtime's start-up code sets around the storage.
extern "C" __attribute__((section(".tls$ZERA"))) framework::ThreadStorage zera_thread_storage;
framework::ThreadStorage zera_thread_storage = {nullptr, {nullptr, 0}};
