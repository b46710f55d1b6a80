#!/usr/bin/env bash
# nkf beside `tqsync text` as whole programs, on address-book text in Shift-JIS.
#
#   bench/nkf_bench.sh TQSYNC TEXT [ROUNDS]    TEXT is a Shift-JIS file; build/bench/bench/text_bench
#                                              --corpus FILE writes one of 64 MB
#
# Both read the file and write to /dev/null, in turn; the best round of each counts. nkf's tables
# differ (it leaves symbols alone or maps them its own way), so the results are not compared.
set -euo pipefail
tqsync=$1 text=$2 rounds=${3:-5}

best_of() {
  local best=999999 start took
  for ((round = 0; round < rounds; ++round)); do
    start=$(date +%s%N)
    "$@" < "$text" > /dev/null
    took=$((($(date +%s%N) - start) / 1000000))
    [ "$took" -ge "$best" ] || best=$took
  done
  echo "$best"
}

row() {
  local what=$1 ours peer
  ours=$(best_of "$tqsync" text "$2" --encoding sjis)
  peer=$(best_of nkf -S -s -x -m0 "$3")
  printf '%-12s tqsync %6d ms   nkf %6d ms   ratio %d.%02d\n' "$what" "$ours" "$peer" \
    $((peer / ours)) $((peer * 100 / ours % 100))
}

row "half width" han -Z4
row "full width" zen -X
