#!/usr/bin/env bash
# The web server over TLS against plain HTTP, side by side: requests per second on open connections,
# and connections of their own, which over TLS are handshakes. Machines are noisy: what counts are
# the ratios.
# usage: bench/tls.sh [ROUNDS]   (after a release build; 3 rounds are the default)
set -euo pipefail
cd "$(dirname "$0")/.."

source tools/packages.sh
tools/install-packages "what the web server is measured with" "${web_bench_packages[@]}"

scratch=$(mktemp -d)
program=
finish() {
  [ -z "$program" ] || { kill "$program" && wait "$program" || true; }
  rm -rf "$scratch"
}
trap finish EXIT

read -r port tls_port < <(bench/web_house.py "$scratch")
certtool --generate-privkey --key-type=ecdsa --curve=secp256r1 --outfile "$scratch/key.pem" 2>/dev/null
printf 'cn = localhost\nexpiration_days = 9\n' >"$scratch/template"
certtool --generate-self-signed --load-privkey "$scratch/key.pem" --template "$scratch/template" \
  --outfile "$scratch/cert.pem" 2>/dev/null
PYTHONPATH=tests/web_program:bench python3 - "$scratch" "$tls_port" <<'END'
import pathlib
import sys

from store import USER_KEY, write_values

scratch, port = sys.argv[1:]
write_values(pathlib.Path(scratch) / "homewarden-demo", "user", USER_KEY,
             {"webhttps": "1", "webhttpsport": port, "webcert": f"{scratch}/cert.pem",
              "webkey": f"{scratch}/key.pem"})
END
HOMEWARDEN_WEB_ADDRESS=127.0.0.1 XDG_DATA_HOME=$scratch XDG_RUNTIME_DIR=$scratch HOME=$scratch \
  QT_QPA_PLATFORM=offscreen build/release/bin/homewarden --demo >"$scratch/output" 2>&1 </dev/null &
program=$!
plain="http://127.0.0.1:$port/index.html?loadroomRoom7"
tls="https://127.0.0.1:$tls_port/index.html?loadroomRoom7"
for _ in $(seq 100); do
  curl -skf "$tls" -o "$scratch/page" && break
  sleep 0.1
done
[ -s "$scratch/page" ]

rate() { wrk -t1 -c12 -d3s "$@" | awk '/Requests\/sec/ { print $2 }'; }
for _ in $(seq "${1:-3}"); do
  echo "=> requests per second: plain $(rate "$plain"), TLS $(rate "$tls"); with a connection for" \
    "each: plain $(rate -H "Connection: close" "$plain"), TLS $(rate -H "Connection: close" "$tls")"
done
