#!/usr/bin/env bash
# truth.sh: compares what the speed test and the traffic list say with lines whose speed is known. All
# of it happens between three network namespaces, which nothing leads out of and which end with it:
# client --- line (queues and delay) --- server.
set -euo pipefail
cd "$(dirname "$0")/.."
limit=480 # seconds, whatever happens

if [ "${1:-}" != inside ]; then
    user=
    if [ "$(id -u)" -ne 0 ]; then
        user="--user --map-root-user"
    fi
    apart="unshare $user --net --mount --pid --fork --kill-child --mount-proc"
    if ! $apart true 2>/dev/null; then
        echo "make truth: skipped, because this machine allows no network namespaces."
        exit 0
    fi
    exec timeout --kill-after=5 "$limit" $apart "$0" inside "$@"
fi

# A crowd beside this would be measured as well.
chrt --rr --pid 1 $$ 2>/dev/null || true
mount -t tmpfs none /run
mkdir -p /run/served/.well-known
for name in client line server; do
    ip netns add "$name"
    ip -n "$name" link set lo up
done
if ! { ip -n line link add c1 type veth peer name c0 netns client &&
    ip -n line link add s1 type veth peer name s0 netns server &&
    ip -n line tuntap add delay mode tun &&
    ip netns exec line tc qdisc add dev c1 root tbf rate 1mbit burst 10kb limit 10kb; } 2>/dev/null; then
    echo "make truth: skipped, because this kernel has no veth pairs, no TUN device, or no tbf."
    exit 0
fi

# Addresses that stand for documentation: they belong to nobody.
ip -n client addr add 192.0.2.2/24 dev c0
ip -n line addr add 192.0.2.1/24 dev c1
ip -n line addr add 198.51.100.1/24 dev s1
ip -n server addr add 198.51.100.2/24 dev s0
ip -n client link set c0 up
ip -n server link set s0 up
ip -n line link set c1 up
ip -n line link set s1 up
# A long queue: a crowded machine may be late, but loses nothing here.
ip -n line link set delay up txqueuelen 20000

ip -n client route add default via 192.0.2.1
ip -n server route add default via 198.51.100.1
# Enough to fill the longest queue with one connection.
for name in client server; do
    ip netns exec "$name" sysctl -qw net.ipv4.tcp_rmem="4096 131072 67108864" \
        net.ipv4.tcp_wmem="4096 16384 67108864"
done

# Whatever passes the line goes through the delay.
ip netns exec line sysctl -qw net.ipv4.ip_forward=1 net.ipv4.conf.all.rp_filter=0 \
    net.ipv4.conf.c1.rp_filter=0 net.ipv4.conf.s1.rp_filter=0 net.ipv4.conf.delay.rp_filter=0
ip -n line route add default dev delay table 100
ip -n line rule add iif c1 table 100
ip -n line rule add iif s1 table 100

openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=truth \
    -addext subjectAltName=IP:198.51.100.2 -keyout /run/key.pem -out /run/certificate.pem 2>/dev/null
printf x >/run/served/small
truncate -s 8G /run/served/large
base=https://198.51.100.2:8443
printf '{"version":1,"urls":{"small_download_url":"%s","large_download_url":"%s","upload_url":"%s"}}' \
    $base/small $base/large $base/small >/run/served/.well-known/nq
ip netns exec server nghttpd --address=198.51.100.2 --htdocs=/run/served --window-bits=26 \
    --connection-window-bits=28 8443 /run/key.pem /run/certificate.pem >/run/nghttpd.log 2>&1 &

unset http_proxy https_proxy all_proxy HTTP_PROXY HTTPS_PROXY ALL_PROXY
ip netns exec client build/release/bin/truth $base/.well-known/nq /run/certificate.pem "${@:2}"
