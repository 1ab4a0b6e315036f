#!/bin/sh
# Turns what the test printer wrote (PostScript) into images.
#   printer.sh render FILE.ps PREFIX [DPI]  one raw grey map per page, PREFIX-1.pgm, ...;
#                                           PREFIX.done holds gs's exit status when finished
#   printer.sh png FILE.ps OUT.png [DPI]    the first page as a PNG picture
# The tests run the first form from inside Wine, which cannot wait for a Unix process: they
# wait for PREFIX.done instead.
set -u
command="${1:-}"
input="${2:-}"
output="${3:-}"
dpi="${4:-30}"
# gs_page DEVICE OUTPUT [OPTION...]
gs_page() {
  device="$1" target="$2"
  shift 2
  gs -q -dNOPAUSE -dBATCH -dSAFER -r"$dpi" "$@" -sDEVICE="$device" -sOutputFile="$target" "$input"
}
case "$command" in
render)
  rm -f "$output".done "$output"-*.pgm
  gs_page pgmraw "$output-%d.pgm" >"$output.log" 2>&1
  echo $? >"$output.done.tmp" && mv -f "$output.done.tmp" "$output.done"
  ;;
png)
  gs_page pnggray "$output" -dFirstPage=1 -dLastPage=1
  ;;
*)
  echo "usage: $0 render FILE.ps PREFIX [DPI] | png FILE.ps OUT.png [DPI]" >&2
  exit 2
  ;;
esac
