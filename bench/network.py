#!/usr/bin/env python3
"""Pages over the network, as a user meets them: QUB-BROWSER as shipped and
the floor (a bare QWebEngineView program) started as processes, each with a
fresh profile, loading a small page, a page of 300 pictures and a page of
20 frames (the page agent runs in each) from a loopback server over http
and over https. A name of the run's own is mapped to the loopback address by
the engine's host rules, so QUB-BROWSER's requests go through its forwarding
proxy as every page's do; the server's certificate is made for the run and
the engines are told to accept it.

For each load: the time from the spawn of the process to the first request
at the server and to the page's onload beacon, and the memory (PSS) of the
process tree two seconds after the beacon. Rounds are interleaved and the
order of the programs alternates. Prints one line per load and, last, a
Markdown table of medians, ratios and the goals' verdicts.

Usage: network.py BIN_FOLDER APP_FOLDER [ROUNDS]
"""
import http.server
import os
import shutil
import signal
import ssl
import statistics
import struct
import subprocess
import sys
import tempfile
import threading
import time
import zlib

HOST = "bench.test"
PICTURES = 300
FRAMES = 20
BEACON = ("<script>addEventListener('load', () => "
          "fetch('/onload', {method: 'POST', cache: 'no-store'}));</script>")


def now_ms():
    return time.time() * 1000.0


def png(seed):
    """A 16x16 picture of one colour: a real PNG, different for each seed."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    colour = bytes(((seed * 37) % 256, (seed * 91) % 256, (seed * 53) % 256))
    raw = b"".join(b"\0" + colour * 16 for _ in range(16))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 16, 16, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b""))


def small_page():
    text = "".join(f"<p>Paragraph {n}: the quick brown fox jumps over the lazy dog.</p>"
                   for n in range(60))
    return f"<html><head><title>Small page</title>{BEACON}</head><body>{text}</body></html>"


def pictures_page():
    pictures = "".join(f'<img src="/picture/{n}.png" width="16" height="16">'
                       for n in range(PICTURES))
    return f"<html><head><title>Pictures</title>{BEACON}</head><body>{pictures}</body></html>"


def frames_page():
    """A page of frames, each a small document of its own: what the page
    agent, which runs in every frame, costs per frame."""
    frames = "".join(f'<iframe src="/frame/{n}" width="120" height="60"></iframe>'
                     for n in range(FRAMES))
    return f"<html><head><title>Frames</title>{BEACON}</head><body>{frames}</body></html>"


def frame(n):
    return f"<html><body><p>Frame {n}: a few words and a <a href='#'>link</a>.</p></body></html>"


class Requests:
    """When each request of the current load reached the server."""

    def __init__(self):
        self.lock = threading.Lock()
        self.first = None
        self.onload = threading.Event()
        self.onload_at = None
        self.count = 0

    def reset(self):
        with self.lock:
            self.first = None
            self.onload_at = None
            self.count = 0
            self.onload.clear()

    def heard(self, path):
        at = now_ms()
        with self.lock:
            self.count += 1
            if self.first is None:
                self.first = at
            if path == "/onload" and self.onload_at is None:
                self.onload_at = at
                self.onload.set()


def server(requests, context):
    pages = {"/small": small_page().encode(), "/pictures": pictures_page().encode(),
             "/frames": frames_page().encode()}
    pages.update({f"/frame/{n}": frame(n).encode() for n in range(FRAMES)})
    pictures = {f"/picture/{n}.png": png(n) for n in range(PICTURES)}

    class Handler(http.server.BaseHTTPRequestHandler):
        protocol_version = "HTTP/1.1"
        # As web servers do on kept connections: an answer's head and body
        # are not held back waiting for the client's acknowledgement.
        disable_nagle_algorithm = True

        def answer(self, body, kind):
            self.send_response(200)
            self.send_header("Content-Type", kind)
            self.send_header("Content-Length", str(len(body)))
            self.send_header("Cache-Control", "no-store")
            self.end_headers()
            self.wfile.write(body)

        def do_GET(self):
            requests.heard(self.path)
            if self.path in pages:
                self.answer(pages[self.path], "text/html; charset=utf-8")
            elif self.path in pictures:
                self.answer(pictures[self.path], "image/png")
            else:
                self.answer(b"", "text/plain")

        def do_POST(self):
            length = int(self.headers.get("Content-Length", 0))
            self.rfile.read(length)
            requests.heard(self.path)
            self.answer(b"", "text/plain")

        def log_message(self, *args):
            pass

    class Server(http.server.ThreadingHTTPServer):
        daemon_threads = True
        request_queue_size = 256

        def get_request(self):
            connection, address = super().get_request()
            if context:
                # The handshake happens in the connection's own thread.
                connection = context.wrap_socket(connection, server_side=True,
                                                 do_handshake_on_connect=False)
            return connection, address

        def handle_error(self, request, client_address):
            pass

    httpd = Server(("127.0.0.1", 0), Handler)
    threading.Thread(target=httpd.serve_forever, daemon=True).start()
    return httpd


def certificate(work):
    key, cert = f"{work}/key.pem", f"{work}/cert.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1",
                    "-subj", f"/CN={HOST}", "-addext", f"subjectAltName=DNS:{HOST}",
                    "-keyout", key, "-out", cert], check=True, capture_output=True)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(cert, key)
    return context


def tree_pss_kib(root):
    children = {}
    for entry in os.listdir("/proc"):
        if not entry.isdigit():
            continue
        try:
            with open(f"/proc/{entry}/stat") as stat:
                line = stat.read()
        except OSError:
            continue
        parent = int(line[line.rindex(")") + 2:].split()[1])
        children.setdefault(parent, []).append(int(entry))
    total, pending = 0, [root]
    while pending:
        pid = pending.pop()
        pending += children.get(pid, [])
        try:
            with open(f"/proc/{pid}/smaps_rollup") as rollup:
                for line in rollup:
                    if line.startswith("Pss:"):
                        total += int(line.split()[1])
        except OSError:
            pass
    return total


def load(program, url, bin_folder, app_folder, work, requests):
    """One start of one program on url: (first request ms, onload ms, PSS KiB)."""
    home = tempfile.mkdtemp(dir=work)
    env = dict(os.environ, XDG_DATA_HOME=f"{home}/data", XDG_CACHE_HOME=f"{home}/cache",
               XDG_CONFIG_HOME=f"{home}/config", XDG_RUNTIME_DIR=f"{home}/runtime")
    os.mkdir(f"{home}/runtime", 0o700)
    # The compiled filter lists, as every start after a user's first has them.
    if os.environ.get("BENCH_FILTER_CACHE"):
        shutil.copytree(os.environ["BENCH_FILTER_CACHE"], f"{home}/cache")
    # The engine reads its flags from here alone when this is set.
    env["QTWEBENGINE_CHROMIUM_FLAGS"] = (os.environ.get("QTWEBENGINE_CHROMIUM_FLAGS", "") +
                                         f' --host-resolver-rules="MAP {HOST} 127.0.0.1"'
                                         " --ignore-certificate-errors")
    if program == "qub":
        shutil.copytree(app_folder, f"{home}/app")
        env["QUB_APPDIR"] = f"{home}/app"
        command = [f"{bin_folder}/qub-browser", url]
    else:
        command = [f"{bin_folder}/bench_floor", url, "0"]
    requests.reset()
    started = now_ms()
    process = subprocess.Popen(command, env=env, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True)
    try:
        if not requests.onload.wait(60):
            raise RuntimeError(f"{program} did not load {url}")
        time.sleep(2)
        memory = tree_pss_kib(process.pid)
    finally:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        shutil.rmtree(home, ignore_errors=True)
    return requests.first - started, requests.onload_at - started, memory, requests.count


def main():
    bin_folder, app_folder = sys.argv[1], sys.argv[2]
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    work = tempfile.mkdtemp()
    try:
        requests = Requests()
        servers = {"http": server(requests, None), "https": server(requests, certificate(work))}
        results = {}
        for round_ in range(rounds):
            for page in ("small", "pictures", "frames"):
                for scheme, httpd in servers.items():
                    url = f"{scheme}://{HOST}:{httpd.server_address[1]}/{page}"
                    order = ("floor", "qub") if round_ % 2 == 0 else ("qub", "floor")
                    for program in order:
                        first, onload, memory, count = load(program, url, bin_folder,
                                                            app_folder, work, requests)
                        results.setdefault((page, scheme, program), []).append(
                            (first, onload, memory))
                        print(f"round {round_ + 1} {page} {scheme} {program}: first request "
                              f"{first:.0f} ms, onload {onload:.0f} ms, {count} requests, "
                              f"{memory} KiB", flush=True)
        report(results)
    finally:
        shutil.rmtree(work, ignore_errors=True)


def report(results):
    """The goals' table, with every figure's floor, program and ratio."""
    def median(page, scheme, program, field):
        return statistics.median(r[field] for r in results[(page, scheme, program)])

    print("| page | over | measure | floor | QUB-BROWSER | × | goal | |")
    print("|---|---|---|---:|---:|---:|---|---|")
    names = {"small": "small text page", "pictures": f"page of {PICTURES} pictures",
             "frames": f"page of {FRAMES} frames"}
    goals = {"onload": 1.10, "first request": 1.05, "memory": 1.10}
    for page in ("small", "pictures", "frames"):
        for scheme in ("http", "https"):
            for field, measure, unit in ((1, "onload", "ms"), (0, "first request", "ms"),
                                         (2, "memory", "MiB")):
                floor = median(page, scheme, "floor", field)
                qub = median(page, scheme, "qub", field)
                scale = 1024 if unit == "MiB" else 1
                ratio = qub / floor
                verdict = "met" if ratio <= goals[measure] else "not met"
                print(f"| {names[page]} | {scheme} | {measure} | {floor / scale:.0f} {unit} | "
                      f"{qub / scale:.0f} {unit} | {ratio:.2f} | ≤ {goals[measure]:.2f} | "
                      f"{verdict} |")


if __name__ == "__main__":
    main()
