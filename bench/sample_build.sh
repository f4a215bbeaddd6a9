#!/usr/bin/env bash
# Time to write a sample estate with korvane-sample, as hyperfine medians.
#   bench/sample_build.sh [SCALE] [RUNS]     (defaults: 200, 3)
# Scale 200 writes about 1.25M rows of code and 5.6M words.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
scale="${1:-200}"
runs="${2:-3}"
sample="$root/build/bin/korvane-sample"
[ -x "$sample" ] || { echo "build first: ./test or ./run" >&2; exit 1; }
command -v hyperfine >/dev/null || { echo "hyperfine is not installed (apt-get install hyperfine)" >&2; exit 1; }
out="$(mktemp -d)"
trap 'rm -rf "$out"' EXIT
hyperfine --runs "$runs" --export-markdown "$out/result.md" \
    "$sample --scale $scale --force $out/estate.kvdb"
cat "$out/result.md"
