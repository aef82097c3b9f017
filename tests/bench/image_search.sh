#!/usr/bin/env bash
# Benchmark of the image search against OpenCV (not a pass/fail test):
#   tests/bench/image_search.sh build/linux/bin/kx_bench
# Times our search (median of 15 runs each, from kx_bench) and, on the very
# same PNGs, OpenCV's cv2.matchTemplate with cv2.minMaxLoc (Debian's
# python3-opencv, needed only here), and prints both with their ratio.
set -euo pipefail
bench=$(realpath "$1")
# Debian's own Python, where python3-opencv installs cv2, before any other.
py=""
for p in /usr/bin/python3 python3; do
  "$p" -c 'import cv2' 2>/dev/null && { py=$p; break; }
done
[ -n "$py" ] || { echo "needs python3-opencv (apt-get install python3-opencv)" >&2; exit 2; }
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
KX_IMAGE_BENCH_DIR=$dir "$bench" --benchmark_filter='^FindImage' --benchmark_repetitions=15 \
  --benchmark_report_aggregates_only=true --benchmark_format=json >"$dir/ours.json"
"$py" - "$dir" <<'PY'
import json, statistics, sys, time
import cv2
d = sys.argv[1]
ours = {b["run_name"].split("/")[1]: (b["real_time"], b["cpu_time"])
        for b in json.load(open(f"{d}/ours.json"))["benchmarks"]
        if b.get("aggregate_name") == "median" and not b.get("error_occurred")}
screen = cv2.imread(f"{d}/screen.png")
cases = [("exact_found", "icon.png"), ("variation32_found", "icon.png"),
         ("exact_absent", "absent.png"), ("variation32_absent", "absent.png")]
print(f"OpenCV {cv2.__version__} (TM_SQDIFF + minMaxLoc, {cv2.getNumThreads()} threads); "
      "screen 1920x1080, template 48x48; medians of 15, wall / CPU ms")
print(f"{'case':<20}{'Kestrelix':>16}{'OpenCV':>16}{'ratio wall':>12}{'ratio CPU':>11}")
for name, template in cases:
    t = cv2.imread(f"{d}/{template}")
    wall, cpu = [], []
    for _ in range(15):
        w0, c0 = time.perf_counter(), time.process_time()
        result = cv2.matchTemplate(screen, t, cv2.TM_SQDIFF)
        cv2.minMaxLoc(result)
        wall.append((time.perf_counter() - w0) * 1000)
        cpu.append((time.process_time() - c0) * 1000)
    theirs = (statistics.median(wall), statistics.median(cpu))
    mine = ours.get(name)
    if mine is None:
        print(f"{name:<20}{'failed':>16}{theirs[0]:>8.2f} /{theirs[1]:>6.2f}")
        continue
    print(f"{name:<20}{mine[0]:>8.2f} /{mine[1]:>6.2f}{theirs[0]:>8.2f} /{theirs[1]:>6.2f}"
          f"{theirs[0] / mine[0]:>11.0f}x{theirs[1] / mine[1]:>10.0f}x")
PY
