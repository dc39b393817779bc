# SPDX-License-Identifier: MIT
# One picture of how a family grows:  gnuplot -e "family='...'; unit='...'; out='....png'; data='...'" growth.gp
# `data` has a block for each operation: size, export, bare, plain, in nanoseconds a unit; its title comes first.
set terminal pngcairo size 1000,picture_height font "sans,10" background "white"
set output out
set datafile missing "-"
set logscale xy
set format x "10^{%T}"
set format y "10^{%T}"
set grid
set key top right samplen 1
set multiplot layout picture_rows,3 title family.": nanoseconds for each ".unit
stats data using 1 nooutput
blocks = STATS_blocks
do for [i = 0:blocks - 1] {
  set title word(titles, i + 1)
  plot data index i using 1:2 with linespoints lw 2 pt 7 ps 0.5 lc rgb "#0060c0" title "export", \
       data index i using 1:3 with linespoints lw 1 pt 6 ps 0.5 lc rgb "#c06000" title "bare", \
       data index i using 1:4 with linespoints lw 1 pt 4 ps 0.5 lc rgb "#808080" title "plain"
  unset key
}
unset multiplot
