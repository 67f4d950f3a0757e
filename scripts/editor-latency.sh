#!/usr/bin/env bash
# How long a change in the editor takes to reach the screen: opens the editor through
# hueloom-look on a 3840x2160 float chart in an X server of its own (Xvfb with openbox), holds
# the wheel and moves it step by step around its middle, as a colourist drags it, and times
# each step from the pointer's move to the first changed pixel of the preview, read from the
# X server itself. Prints each step and ends with the line
#   latency: steps=N median_ms=M max_ms=X min_ms=Y proxy=WxH
# Builds the bundle, hueloom-look and hueloom-chart into build/ (or $HUELOOM_BUILD_DIR) first. A figure,
# not a test: it depends on the machine and its load (goal: at most 100 ms at 4K).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
steps=${HUELOOM_LATENCY_STEPS:-24}
cmake --build "$build_dir" -j"${HUELOOM_JOBS:-$(nproc)}" --target Hueloom hueloom-look hueloom-chart >/dev/null

work=$(mktemp -d)
server=""
manager=""
look=""
cleanup() {
  for pid in $look $manager $server; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

exec 3>"$work/display"
Xvfb -displayfd 3 -screen 0 1600x900x24 -nolisten tcp >/dev/null 2>&1 &
server=$!
exec 3>&-
for _ in $(seq 50); do [ -s "$work/display" ] && break; sleep 0.1; done
export DISPLAY=":$(cat "$work/display")"
openbox >/dev/null 2>&1 &
manager=$!
for _ in $(seq 100); do xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q "window id" && break; sleep 0.1; done

export HOME="$work/home" HUELOOM_LOG=stderr
mkdir -p "$HOME"
"$build_dir/tools/hueloom_chart/hueloom-chart" "$work/chart.exr" --width 3840 --height 2160 >/dev/null
"$build_dir/tools/hueloom_look/hueloom-look" -i "$work/chart.exr" -o "$work/graded.exr" \
  --set Strength=90 --set Angle=0 2>"$work/look.log" &
look=$!
window=""
for _ in $(seq 300); do
  window=$(xdotool search --name '^Varnlight - Hueloom$' 2>/dev/null | head -1) && [ -n "$window" ] && break
  sleep 0.1
done
[ -n "$window" ] || { echo "editor-latency: the editor did not open" >&2; cat "$work/look.log" >&2; exit 1; }
# The first picture is the timed full pass that sets the proxy size.
for _ in $(seq 300); do grep -q "even render." "$work/look.log" && break; sleep 0.1; done
xdotool windowactivate --sync "$window"
sleep 1
geometry=$(xwininfo -id "$window" | awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4} /Width/{w=$2} /Height/{h=$2} END{print x, y, w, h}')

python3 - "$steps" $geometry <<'EOF'
# Pointer moves through XTest and screen reads through XGetImage, on the X server's own
# connection: no tool start-up between the move and the read.
import ctypes, math, statistics, sys, time

steps, left, top, width, height = (int(v) for v in sys.argv[1:6])
x11 = ctypes.CDLL("libX11.so.6")
xtest = ctypes.CDLL("libXtst.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
x11.XDefaultRootWindow.restype = ctypes.c_ulong
x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
x11.XGetImage.restype = ctypes.c_void_p
x11.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int, ctypes.c_uint,
                          ctypes.c_uint, ctypes.c_ulong, ctypes.c_int]
x11.XGetPixel.restype = ctypes.c_ulong
x11.XGetPixel.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int]
x11.XDestroyImage.argtypes = [ctypes.c_void_p]
x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
xtest.XTestFakeMotionEvent.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_ulong]
xtest.XTestFakeButtonEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]

display = x11.XOpenDisplay(None)
root = x11.XDefaultRootWindow(display)
# The preview fills the window left of the 494-point column; a block of it in the middle.
block = 24
px, py = left + (width - 494) // 2 - block // 2, top + height // 2 - block // 2
# The wheel: 451 points square, 16 points into the column and 108 below the 64-point toolbar.
wx, wy, reach = left + width - 494 + 16 + 225, top + 64 + 108 + 225, 150

def preview():
    image = x11.XGetImage(display, root, px, py, block, block, 0xFFFFFFFF, 2)  # ZPixmap
    pixels = tuple(x11.XGetPixel(image, x, y) for y in range(0, block, 3) for x in range(0, block, 3))
    x11.XDestroyImage(image)
    return pixels

def move(x, y):
    xtest.XTestFakeMotionEvent(display, -1, x, y, 0)
    x11.XSync(display, 0)

def settled(quiet=0.4, limit=5.0):
    # Waits until the preview stops changing; its last picture.
    end, last, since = time.perf_counter() + limit, preview(), time.perf_counter()
    while time.perf_counter() < end:
        now = preview()
        if now != last:
            last, since = now, time.perf_counter()
        elif time.perf_counter() - since >= quiet:
            break
        time.sleep(0.005)
    return last

point = lambda k: (wx + round(reach * math.sin(k * 0.5)), wy - round(reach * math.cos(k * 0.5)))
move(*point(0))
xtest.XTestFakeButtonEvent(display, 1, 1, 0)
x11.XSync(display, 0)
times = []
for k in range(1, steps + 1):
    before = settled()
    move(*point(k))
    start = time.perf_counter()
    while preview() == before and time.perf_counter() - start < 5.0:
        pass
    elapsed = (time.perf_counter() - start) * 1000.0
    times.append(elapsed)
    print(f"step {k:2d}: {elapsed:6.1f} ms")
xtest.XTestFakeButtonEvent(display, 1, 0, 0)
x11.XSync(display, 0)
settled()
print(f"latency: steps={len(times)} median_ms={statistics.median(times):.1f} max_ms={max(times):.1f} "
      f"min_ms={min(times):.1f}", end="")
EOF
proxy=$(grep -o "Preview proxy size: [0-9]*x[0-9]*" "$work/look.log" | tail -1 | awk '{print $4}' || true)
echo " proxy=${proxy:-unknown}"
xdotool windowactivate --sync "$window" key alt+F4
wait "$look" 2>/dev/null || true
look=""
