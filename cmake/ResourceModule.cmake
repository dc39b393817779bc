# SPDX-License-Identifier: MIT
# zera_add_resource_module(NAME file.rc): a library of resources alone, without code or entry point.
function(zera_add_resource_module name script)
  add_library(${name} MODULE ${script})
  set_target_properties(${name} PROPERTIES PREFIX "" LINKER_LANGUAGE C)
  target_link_options(${name} PRIVATE -nostdlib -Wl,-e,0 -Wl,--no-insert-timestamp)
endfunction()
