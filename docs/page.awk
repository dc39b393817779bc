# SPDX-License-Identifier: MIT
# Prepares one page (`page` is its name without ".md") for the reference: the page gets a name of its own, and
# links between pages go by these names, wherever the files are.
function Name(page) {
  if (page == "index") return "mainpage"
  gsub(/-/, "_", page)
  return "page_" page
}
NR == 1 { $0 = $0 " {#" Name(page) "}" }
{
  done = ""
  while (match($0, /\]\([a-z-]+\.md\)/)) {
    done = done substr($0, 1, RSTART) "(@ref " Name(substr($0, RSTART + 2, RLENGTH - 6)) ")"
    $0 = substr($0, RSTART + RLENGTH)
  }
  $0 = done $0
  # A page that is named without a link.
  done = ""
  while (match($0, /docs\/[a-z-]+\.md/)) {
    done = done substr($0, 1, RSTART - 1) "@ref " Name(substr($0, RSTART + 5, RLENGTH - 8))
    $0 = substr($0, RSTART + RLENGTH)
  }
  print done $0
}
