# SPDX-License-Identifier: MIT
# The table of a run, and each figure with its verdict.
#   awk -f report.awk [-v markdown=1] [-v missed=FILE] figures.csv rows.csv growth.csv memory.csv
# Of each figure that is missed the worst operation goes into FILE. The fastest batches of all passes count.
# What a ratio differs by between the passes is its spread.
BEGIN { FS = "," }

FNR == 1 { file++ }
/^#/ || /^pass,/ { next }
file == 1 {
  figures++
  split($0, field, ";")
  text[figures] = field[1]; kind[figures] = field[2]; limit[figures] = field[3]
  family[figures] = field[4]; pattern[figures] = field[5]
  next
}
# Lines of the program: pass,family,operation,size,batches, then fastest and median of ours, bare and plain.
file == 2 {
  key = $2 SUBSEP $3
  if (!(key in seen)) {
    seen[key] = ++rows
    familyOf[rows] = $2; operation[rows] = $3; size[rows] = $4
  }
  row = seen[key]
  for (way = 0; way < 3; ++way) {
    if ($(6 + 2 * way) == "") continue
    least(fastest, row SUBSEP way, $(6 + 2 * way))
    least(median, row SUBSEP way, $(7 + 2 * way))
  }
  for (way = 1; way < 3; ++way) {
    if ($(6 + 2 * way) == "" || $(6 + 2 * way) == 0) continue
    least(low, row SUBSEP way, $6 / $(6 + 2 * way))
    most(high, row SUBSEP way, $6 / $(6 + 2 * way))
    least(lowMinus, row SUBSEP way, $6 - $(6 + 2 * way))
    most(highMinus, row SUBSEP way, $6 - $(6 + 2 * way))
  }
  next
}
file == 3 {
  key = $2 SUBSEP $3
  if (!(key in grown)) { grown[key] = ++series; seriesFamily[series] = $2; seriesName[series] = $3 }
  one = grown[key]
  perUnit = $6 / $4
  if (!(one in startOf) || $4 == 1048576) startOf[one] = perUnit
  if ($4 >= lastSize[one]) { lastSize[one] = $4; endOf[one] = perUnit }
  next
}
file == 4 {
  if (!($3 in peaks)) { peaks[$3] = ++operations; peakName[operations] = $3; peakFirst[operations] = $5 }
  one = peaks[$3]
  peakLast[one] = $5
  peakSize[one] = $4
  if ($5 > peakMost[one]) peakMost[one] = $5
}

function least(array, at, value) { if (!(at in array) || value + 0 < array[at]) array[at] = value + 0 }
function most(array, at, value) { if (!(at in array) || value + 0 > array[at]) array[at] = value + 0 }

function time(row, way, ns) {
  if (!((row SUBSEP way) in fastest)) return "-"
  ns = fastest[row, way]
  return ns < 1e3 ? sprintf("%.1f ns", ns) : ns < 1e6 ? sprintf("%.2f us", ns / 1e3) : sprintf("%.2f ms", ns / 1e6)
}
function ratio(array, row, way) {
  if (!((row SUBSEP way) in array) || array[row, way] == 0) return "-"
  return sprintf("%.2f", array[row, 0] / array[row, way])
}
function spread(row, way) {
  return (row SUBSEP way) in low ? sprintf("%.2f", high[row, way] - low[row, way]) : "-"
}
# How far the machine's other work slowed down the usual batch of the way that is measured against.
function noise(row, way) {
  way = (row SUBSEP 1) in fastest ? 1 : 2
  return fastest[row, way] ? sprintf("%.0f %%", 100 * (median[row, way] / fastest[row, way] - 1)) : "-"
}

function line(a, b, c, d, e, f, g, h, i, j, k) {
  if (markdown) printf "| %s | %s | %s | %s | %s | %s | %s | %s | %s | %s | %s |\n", a, b, c, d, e, f, g, h, i, j, k
  else printf "%-40s %9s %10s %10s %10s %7s %7s %7s %7s %7s %8s\n", a, b, c, d, e, f, g, h, i, j, k
}

function table(row, current) {
  for (row = 1; row <= rows; ++row) {
    if (familyOf[row] != current) {
      current = familyOf[row]
      printf (markdown ? "\n### %s\n\n" : "\n%s\n"), current
      line("operation", "size", "export", "bare", "plain", "/bare", "median", "spread", "/plain", "median", "noise")
      if (markdown) print "|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|"
    }
    line(operation[row], size[row], time(row, 0), time(row, 1), time(row, 2), ratio(fastest, row, 1),
         ratio(median, row, 1), spread(row, 1), ratio(fastest, row, 2), ratio(median, row, 2), noise(row))
  }
}

function memory(i) {
  print "\n" (markdown ? "### " : "") "Peak memory: growth in KiB up to the largest input"
  if (markdown) print "\n| operation | largest | KiB |\n|---|--:|--:|"
  for (i = 1; i <= operations; ++i) {
    printf (markdown ? "| %s | %s | %s |\n" : "%-40s %9s %10s\n"), peakName[i], peakSize[i], peakMost[i] + 0
  }
}

# Adds one measured value of a figure: the worst is shown, and how many are met.
function judge(value, spreadOf, what, bound) {
  ++count
  if (value <= bound) ++met
  else if (value - spreadOf <= bound) ++near
  if (count == 1 || value > worst) { worst = value; worstSpread = spreadOf; worstName = what }
}

function verdicts(i, row, way, verdict, format) {
  if (markdown) {
    print "\n### Figures\n\n| figure | limit | worst | spread | where | met | |\n|---|--:|--:|--:|---|--:|---|"
  } else printf "\n%-58s %8s %9s %8s %6s  %s\n", "Figures", "limit", "worst", "spread", "met", "verdict"
  for (i = 1; i <= figures; ++i) {
    count = met = near = 0
    for (row = 1; row <= rows; ++row) {
      if (familyOf[row] != family[i] || operation[row] !~ pattern[i]) continue
      way = kind[i] == "plain" ? 2 : 1
      if (kind[i] == "minus") {
        judge(fastest[row, 0] - fastest[row, 1], highMinus[row, 1] - lowMinus[row, 1], operation[row], limit[i])
      } else if (kind[i] == "bare" || kind[i] == "plain") {
        if (!((row SUBSEP way) in fastest)) {
          print "report: nothing to compare with: " operation[row] >"/dev/stderr"
          failed = 1
          continue
        }
        judge(fastest[row, 0] / fastest[row, way], high[row, way] - low[row, way], operation[row], limit[i])
      }
    }
    for (row = 1; kind[i] == "linear" && row <= series; ++row) {
      if (seriesFamily[row] != family[i] || seriesName[row] !~ pattern[i] || !startOf[row]) continue
      judge(endOf[row] / startOf[row], 0, seriesName[row], limit[i])
    }
    for (row = 1; kind[i] == "memory" && row <= operations; ++row) {
      if (peakName[row] ~ pattern[i]) judge(peakMost[row] - peakFirst[row], 0, peakName[row], limit[i])
      else if (peakLast[row] < peakSize[row] / 2048) {
        print "report: the peak of memory is not counted: " peakName[row] ", " peakLast[row] " KiB" >"/dev/stderr"
        failed = 1
      }
    }
    if (count == 0) {
      print "report: no measurement for: " text[i] >"/dev/stderr"
      failed = 1
      continue
    }
    verdict = met == count ? "met" : met + near == count ? "within the spread" : "missed"
    ++result[verdict]
    if (verdict == "missed" && missed) print worstName >missed
    format = kind[i] == "minus" || kind[i] == "memory" ? (worst > 1000 ? "%.0f" : "%.1f") : "%.2f"
    if (markdown) {
      printf "| %s | %s | " format " | " format " | %s | %d of %d | %s |\n",
        text[i], limit[i], worst, worstSpread, worstName, met, count, verdict
    } else {
      printf "%-58s %8s %9s %8s %6s  %s%s\n", text[i], limit[i], sprintf(format, worst), sprintf(format, worstSpread),
        met "/" count, verdict, (verdict == "met" ? "" : ": " worstName)
    }
  }
  printf "\n%d figures: %d met, %d within the spread of the machine, %d missed.\n", figures, result["met"],
    result["within the spread"], result["missed"]
}

END {
  if (rows == 0) { print "report: no rows" >"/dev/stderr"; exit 1 }
  if (markdown) { verdicts(); table(); memory() }
  else { table(); memory(); verdicts() }
  exit failed
}
