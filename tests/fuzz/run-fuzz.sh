#!/usr/bin/env bash
# Runs the score reader's fuzzer for SECONDS over the checked-in seeds.
#   run-fuzz.sh FUZZER SEEDS WORKDIR SECONDS
# New inputs it finds go to WORKDIR/corpus (the seeds stay as checked in),
# a crashing input to WORKDIR/crash-*. Any crash, hang (5 s for one input)
# or leak fails the run.
set -euo pipefail
seconds=$4
mkdir -p "$3/corpus"
# The fuzzer works in a folder of its own: every path is made absolute.
fuzzer=$(realpath "$1") seeds=$(realpath "$2") work=$(realpath "$3")
exec "$fuzzer" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=1024 -max_len=4096 \
  -print_final_stats=1 -artifact_prefix="$work/" "$work/corpus" "$seeds"
