#!/usr/bin/env python3
"""Writes a request set for the filter engine's comparison and benchmark:
make_requests.py TRACKERDB.json COUNT LIST... > REQUESTS

Each line is URL<TAB>SOURCE-PAGE-URL<TAB>TYPE. The pages are the websites of
the tracker database's organisations; a page's requests are its own files,
files from the database's tracker, advertising and hosting domains, and
addresses made from the lists' own filters (so that every kind of filter is
tried against addresses it matches and ones it nearly matches). Seeded: the
same inputs give the same set.
"""
import json
import random
import re
import sys
from urllib.parse import urlsplit

rng = random.Random(20261127)
words = ("ad ads banner track pixel collect analytics tag static assets img media "
         "cdn js css api v1 v2 event widget embed player video news article sport "
         "user login cart search image thumb logo icon font main app bundle vendor "
         "beacon sync match id gdpr consent frame slot prebid bid impression").split()
types = {"script": 30, "image": 30, "stylesheet": 8, "xmlhttprequest": 12, "subdocument": 5,
         "media": 2, "font": 4, "websocket": 1, "ping": 3, "object": 1, "other": 3, "document": 1}
type_names, type_weights = zip(*types.items())
suffix = {"script": ".js", "image": ".gif", "stylesheet": ".css", "font": ".woff2",
          "media": ".mp4", "subdocument": ".html"}


def word():
    return rng.choice(words)


def path(kind):
    depth = rng.randint(0, 3)
    parts = [word() for _ in range(depth)]
    name = word() + (str(rng.randint(1, 999)) if rng.random() < 0.4 else "")
    query = ""
    if rng.random() < 0.35:
        query = "?" + "&".join(f"{word()}={rng.randint(0, 99999)}" for _ in range(rng.randint(1, 4)))
    return "/" + "/".join(parts + [name + suffix.get(kind, "")]) + query


def host_of(url):
    try:
        return urlsplit(url).hostname
    except ValueError:
        return None


def from_filter(line, pages):
    """An address the filter's pattern describes, with its wildcards filled
    in, and a type and page its options allow; None for one it cannot use."""
    text = line.strip()
    if text.startswith("@@"):
        text = text[2:]
    pattern, _, options = text.partition("$")
    if not pattern or pattern.startswith("/") and pattern.endswith("/") or "#" in pattern:
        return None
    kind = rng.choices(type_names, type_weights)[0]
    page = rng.choice(pages)
    for option in options.split(","):
        if option in types:
            kind = option
        elif option.startswith("domain=") and rng.random() < 0.7:
            named = [d for d in option[7:].split("|") if not d.startswith("~") and "*" not in d]
            if named:
                page = "https://" + rng.choice(["", "www."]) + rng.choice(named) + "/"
    body = pattern.lstrip("|")
    body = re.sub(r"\*+", lambda m: word(), body).replace("^", rng.choice(["/", "?", ":443/"]))
    body = body.rstrip("|")
    if pattern.startswith("||"):
        url = "https://" + (word() + "." if rng.random() < 0.3 else "") + body
    elif pattern.startswith("|"):
        url = body
    else:
        url = "https://" + host_of(rng.choice(pages)) + ("" if body.startswith("/") else "/") + body
    if rng.random() < 0.3:
        url += word()
    if not host_of(url) or "://" not in url:
        return None
    return url, page, kind


def main():
    db = json.load(open(sys.argv[1]))
    count = int(sys.argv[2])
    pages = sorted({f"https://{host_of(o['website_url'])}/" for o in db["organizations"].values()
                    if o.get("website_url") and host_of(o["website_url"])})
    third = sorted(db["domains"])
    filters = []
    for name in sys.argv[3:]:
        with open(name, encoding="utf-8") as f:
            filters += [line for line in f if line.strip() and line[0] not in "![" and "##" not in line
                        and "#@#" not in line and "#?#" not in line and "#$#" not in line]
    out = sys.stdout
    made = 0
    while made < count:
        page = rng.choice(pages)
        chance = rng.random()
        if chance < 0.45:
            kind = rng.choices(type_names, type_weights)[0]
            host = host_of(page)
            if rng.random() < 0.3:
                host = rng.choice(["static.", "cdn.", "img."]) + host.removeprefix("www.")
            line = (f"https://{host}{path(kind)}", page, kind)
        elif chance < 0.75:
            kind = rng.choices(type_names, type_weights)[0]
            host = rng.choice(third)
            if rng.random() < 0.5:
                host = word() + "." + host
            line = (f"https://{host}{path(kind)}", page, kind)
        else:
            line = from_filter(rng.choice(filters), pages)
            if not line or "\t" in "".join(line) or "\n" in "".join(line):
                continue
        if line[2] == "document":
            line = (line[0], line[0], "document")
        out.write("\t".join(line) + "\n")
        made += 1


main()
