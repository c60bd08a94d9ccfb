#!/usr/bin/env bash
# The room page of the web server against nginx sending the same bytes as a file, side by side on
# this machine's loopback; how long the event loop is busy meanwhile; and memory over 200,000
# requests. Machines are noisy: what counts are the ratios, and the processor time of a request,
# which other loads change least. Each server has a core of its own and the client the others, as
# far as there are any; the first lines say which. Start it under taskset for other ones.
# usage: bench/web.sh [ROUNDS]   (after a release build; 5 rounds are the default)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "what the web server is measured with" "${web_bench_packages[@]}"

rounds=${1:-5}
read -ra cores < <(python3 -c 'import os; print(*sorted(os.sched_getaffinity(0)))')
our_core=${cores[0]}
their_core=${cores[1]:-$our_core}
client_cores=$(IFS=,; echo "${cores[*]:2}")
client_cores=${client_cores:-$their_core}
echo "cores by taskset: Homewarden $our_core, nginx $their_core, wrk $client_cores;" \
  "load $(cut -d' ' -f1-2 /proc/loadavg)"
wrk() { taskset -c "$client_cores" wrk "$@"; }
scratch=$(mktemp -d)
pids=()
finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null && wait "$pid" || true; done
  rm -rf "$scratch"
}
trap finish EXIT

# ---- A house of 20 rooms with 10 devices each --------------------------------------------------

read -r port nginx_port < <(bench/web_house.py "$scratch")
HOMEWARDEN_WEB_ADDRESS=127.0.0.1 XDG_DATA_HOME=$scratch XDG_RUNTIME_DIR=$scratch HOME=$scratch \
  QT_QPA_PLATFORM=offscreen taskset -c "$our_core" build/release/bin/homewarden --demo --report-loop >"$scratch/output" 2>&1 &
program=$!
pids+=("$program")
for _ in $(seq 100); do
  grep -q "STATUS: Ready" "$scratch/output" && break
  sleep 0.1
done

room="http://127.0.0.1:$port/index.html?loadroomRoom7"
mkdir "$scratch/www"
curl -sf "$room" -o "$scratch/www/room.html"
devices=$(grep -o '<img border="2"' "$scratch/www/room.html" | wc -l)
echo "room page: $(stat -c %s "$scratch/www/room.html") bytes, $devices devices of 200"
[ "$devices" -eq 10 ]

# ---- Memory --------------------------------------------------------------------------------------

memory() { awk '/^VmRSS/ { print $2 }' "/proc/$program/status"; }
for _ in $(seq 1000); do echo "url = \"$room\""; done >"$scratch/urls"
curl -sfZ --parallel-immediate --parallel-max 12 -K "$scratch/urls" >/dev/null 2>&1
after_1000=$(memory)
requests=0
while [ "$requests" -lt 200000 ]; do
  wrk -t1 -c12 -d3s "$room" >"$scratch/wrk"
  requests=$((requests + $(awk '/requests in/ { print $1 }' "$scratch/wrk")))
done
echo "=> memory after 1,000 requests on 12 connections: $after_1000 KB; after $requests more:" \
  "$(($(memory) - after_1000)) KB more"
for _ in 1 2 3; do
  before=$(memory)
  wrk -t1 -c12 -d2s -H "Connection: close" "$room" >"$scratch/wrk"
  echo "after $(awk '/requests in/ { print $1 }' "$scratch/wrk") more, each on a connection of" \
    "its own: $(($(memory) - before)) KB more"
done

# ---- nginx with one worker -----------------------------------------------------------------------

cat >"$scratch/nginx.conf" <<EOF
daemon off;
master_process off;
pid $scratch/nginx.pid;
error_log $scratch/nginx.log;
$([ "$(id -u)" -ne 0 ] || echo "user root;")
events { worker_connections 1024; }
http {
  access_log off;
  sendfile on;
  tcp_nopush on;
  keepalive_requests 1000000000;
  default_type text/html;
  client_body_temp_path $scratch/body;
  proxy_temp_path $scratch/proxy;
  fastcgi_temp_path $scratch/fastcgi;
  uwsgi_temp_path $scratch/uwsgi;
  scgi_temp_path $scratch/scgi;
  server { listen 127.0.0.1:$nginx_port; root $scratch/www; }
}
EOF
taskset -c "$their_core" /usr/sbin/nginx -c "$scratch/nginx.conf" -e "$scratch/nginx.log" &
nginx=$!
pids+=("$nginx")
file="http://127.0.0.1:$nginx_port/room.html"
for _ in $(seq 50); do
  curl -sf "$file" -o /dev/null && break
  sleep 0.1
done
curl -sf "$file" | cmp - "$scratch/www/room.html"

# ---- Side by side --------------------------------------------------------------------------------

# Nanoseconds that a process has had a core, all of its threads together.
used() { cat /proc/"$1"/task/*/schedstat | awk '{ n += $1 } END { printf "%.0f", n }'; }

# Prints requests per second, the 99th percentile in milliseconds, and the server's microseconds of
# processor time per request.
load() { # connections, seconds, address, process
  local before after
  before=$(used "$4")
  wrk -t$(($1 > 1 ? 2 : 1)) -c"$1" -d"$2"s --latency "$3" >"$scratch/wrk"
  after=$(used "$4")
  if grep -q "Non-2xx" "$scratch/wrk"; then
    grep "Non-2xx" "$scratch/wrk" >&2
    exit 1
  fi
  awk -v used=$((after - before)) '/requests in/ { u = used / 1000 / $1 }
       /^ *99%/ { n = $2 + 0; if ($2 ~ /us$/) n /= 1000; else if ($2 !~ /ms$/) n *= 1000; p = n }
       /^Requests\/sec/ { r = $2 } END { printf "%d %.2f %.1f\n", r, p, u }' "$scratch/wrk"
}
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

lines_before=$(grep -c '^loop' "$scratch/output" || true)
for connections in 1 12; do
  : >"$scratch/ratios"
  : >"$scratch/tails"
  : >"$scratch/costs"
  for round in $(seq "$rounds"); do
    read -r ours tail cost < <(load "$connections" 3 "$room" "$program")
    read -r theirs their_tail their_cost < <(load "$connections" 3 "$file" "$nginx")
    ratio=$(awk -v a="$ours" -v b="$theirs" 'BEGIN { printf "%.2f", a / b }')
    echo "$ratio" >>"$scratch/ratios"
    echo "$tail" >>"$scratch/tails"
    awk -v a="$cost" -v b="$their_cost" 'BEGIN { printf "%.2f\n", b / a }' >>"$scratch/costs"
    echo "$connections connections: Homewarden $ours/s, p99 $tail ms, $cost us each; nginx" \
      "$theirs/s, p99 $their_tail ms, $their_cost us each; ratio $ratio;" \
      "load $(cut -d' ' -f1 /proc/loadavg)"
  done
  wanted=$([ "$connections" -eq 1 ] && echo 0.9 || echo 0.6)
  echo "=> $connections connections: median ratio $(median <"$scratch/ratios") (at least $wanted)," \
    "of the processor time $(median <"$scratch/costs")," \
    "worst p99 $(sort -n "$scratch/tails" | tail -1) ms (at most 10)"
done
for page in "wmcindex.html?loadroomRoom7" "switchon.gif"; do
  echo "$page, 12 connections: $(load 12 3 "http://127.0.0.1:$port/$page" "$program" |
    awk '{ print $1 "/s, p99 " $2 " ms" }')"
done
sleep 1.2
worst() { # word
  grep '^loop' "$scratch/output" | tail -n +$((lines_before + 2)) |
    sed "s/.* \([0-9.]*\) ms $1.*/\1/" | sort -n | tail -1
}
echo "=> longest turn of the event loop under load: $(worst busy) ms busy (under 20); a timer was" \
  "$(worst late) ms late at most, the other loads and nginx on the same cores included"
