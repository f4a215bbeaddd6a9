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
hyperfine --runs "$runs" --export-json "$out/result.json" \
    "$sample --scale $scale --force $out/estate.kvdb"
python3 - "$out/result.json" "$scale" <<'PY'
import json, sys
r = json.load(open(sys.argv[1]))["results"][0]
print("korvane-sample --scale %s: median %.1f s, min %.1f s, max %.1f s over %d runs"
      % (sys.argv[2], r["median"], r["min"], r["max"], len(r["times"])))
PY
