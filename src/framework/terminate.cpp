// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <exception>

// What ends the process when an exception finds no handler inside the library. The GNU runtime's own
// function prints the exception's name, for which it brings a demangler and formatted output, a
// quarter of the library's size; defining it here leaves both out.
namespace __gnu_cxx {
void __verbose_terminate_handler() {
  std::abort();
}
}  // namespace __gnu_cxx
