#!/usr/bin/env python3
"""Compares qub-filter-check's decisions with the reference engine's:
compare.py QUB-FILTER-CHECK DOC LIST...

Builds the request set, runs both on it and prints the agreement. Each
disagreement must fall into a kind DOC names (its heading's key in
backquotes) with the reason; any other fails the comparison, and is
printed.
"""
import os
import subprocess
import sys

here = os.path.dirname(os.path.abspath(__file__))
tool, doc, lists = sys.argv[1], sys.argv[2], sys.argv[3:]
if not os.path.isdir(os.path.join(here, "node_modules")):
    subprocess.run(["npm", "ci", "--no-audit", "--no-fund", "--silent"], cwd=here, check=True)
requests = subprocess.run(
    [sys.executable, os.path.join(here, "make_requests.py"),
     os.path.join(here, "node_modules/@ghostery/trackerdb/dist/trackerdb.json"), "120000"] + lists,
    check=True, capture_output=True, text=True).stdout
ours = subprocess.run([tool] + [a for path in lists for a in ("--list", path)], input=requests,
                      check=True, capture_output=True, text=True).stdout.splitlines()
theirs = subprocess.run(["node", os.path.join(here, "decide.mjs")] + lists, input=requests,
                        check=True, capture_output=True, text=True).stdout.splitlines()
lines = requests.splitlines()
if not (len(lines) == len(ours) == len(theirs)):
    sys.exit(f"{len(lines)} requests, {len(ours)} and {len(theirs)} decisions")


def kind(request, our, their):
    url, _, type_ = request.split("\t")
    host = url.split("://", 1)[1].split("/", 1)[0].split("?", 1)[0].split(":", 1)[0]
    filter_ = (our if our.startswith("block") else their).split("\t", 1)[1]
    if type_ == "document" and their.startswith("block"):
        return "part-of-address-page"
    if host.endswith("."):
        return "host-ending-in-dot"
    if "popup" in filter_.rpartition("$")[2].split(","):
        return "popup-with-other-types"
    return None


known = open(doc, encoding="utf-8").read()
counts, unexplained = {}, []
for request, our, their in zip(lines, ours, theirs):
    if our.split("\t")[0] == their.split("\t")[0]:
        continue
    name = kind(request, our, their)
    if name is None or f"`{name}`" not in known:
        unexplained.append(f"{request}\n  QUB-BROWSER: {our}\n  reference:   {their}")
    counts[name] = counts.get(name, 0) + 1
agree = len(lines) - sum(counts.values())
blocked = sum(1 for o in ours if o.startswith("block"))
print(f"{agree} of {len(lines)} decisions agree ({100 * agree / len(lines):.2f} %); "
      f"QUB-BROWSER blocks {blocked}; disagreements by kind: {counts}")
if unexplained:
    print(f"{len(unexplained)} disagreements not explained in {doc}:")
    print("\n".join(unexplained[:50]))
    sys.exit(1)
