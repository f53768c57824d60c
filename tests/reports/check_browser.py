#!/usr/bin/env python3
"""What a browser makes of the pages of the sample visit: those with frames, and the one in one file on a phone. Every frame
loads, every category has its heading, every picture can be decoded, links lead into the other frame, and nothing is wider
than a phone. Where Chromium is missing, there is nothing to check (exit 77).

    check_browser.py INSPECTOR_CLI
"""
import functools
import html
import http.server
import json
import os
import re
import shutil
import subprocess
import sys
import threading
from pathlib import Path

sys.dont_write_bytecode = True
from visits import Home

SKIPPED = 77
PHONE = 390  # pixels across
# Looks into the page from outside, which holds no program of its own, and puts what it sees into its own words.
LOOKER = """<!DOCTYPE html><title>looker</title><iframe id="page" width="%d" height="844" src="%s"></iframe><script>
function seen(view) {
  const page = view.document;
  return {name: view.name, width: page.documentElement.scrollWidth,
          titles: Array.from(page.querySelectorAll("h2, a[name], a[target]"), title => title.innerText),
          pictures: Array.from(page.images, picture => picture.naturalWidth),
          place: view.location.hash, frames: Array.from({length: view.length}, (_, at) => seen(view[at]))};
}
onload = () => {
  const view = document.getElementById("page").contentWindow;
  if (view.length) Array.from(view[0].document.links).pop().click();
  setTimeout(() => { document.body.textContent = JSON.stringify(seen(view)); }, 500);
};
</script>
"""


class Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


def look(browser, home, page, width):
    (home.root / "looker.html").write_text(LOOKER % (width, page), encoding="utf-8")
    with http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=home.root)) as server:
        threading.Thread(target=server.serve_forever, daemon=True).start()
        options = ["--headless", "--disable-gpu", "--user-data-dir=%s" % (home.root / "profile"),
                   "--virtual-time-budget=20000", *(["--no-sandbox"] if os.geteuid() == 0 else [])]
        done = subprocess.run([browser, *options, "--dump-dom", "http://127.0.0.1:%d/looker.html" % server.server_port],
                              capture_output=True, text=True, timeout=300, check=True)
        server.shutdown()
    return json.loads(html.unescape(re.search(r"<body>(.*)</body>", done.stdout, re.DOTALL)[1]))


def faults(seen, titles, pictures):
    if [title for title in seen["titles"] if title in titles] != titles:
        yield "titles %s, not %s" % (seen["titles"], titles)
    if len(seen["pictures"]) != pictures or not all(seen["pictures"]):
        yield "pictures as wide as %s, not %d that can be seen" % (seen["pictures"], pictures)


def frame_faults(frames, titles, keys, pictures):
    if [frame["name"] for frame in frames] != ["contents", "main"]:
        yield "frames %s" % [frame["name"] for frame in frames]
        return
    contents, main = frames
    yield from faults(contents, titles, 0)
    yield from faults(main, titles, pictures)
    if main["place"] != "#cat%d" % keys[-1]:
        yield "the last link leads to %s" % main["place"]


def main(program):
    browser = shutil.which("chromium") or shutil.which("chromium-browser") or shutil.which("google-chrome")
    if not browser:
        print("Chromium is not installed: nothing to check")
        return SKIPPED
    home = Home(program, "--sample")
    with home.connect() as database:
        present = database.execute("SELECT CategoryID, CategoryTitle FROM Category WHERE InspectionID = 1000 AND NOT "
                                   "NotPresentFlag ORDER BY CategoryNumber, CategoryTitle").fetchall()
    reported, device = home.reported(1000), home.device()
    pictures = 1 + sum(len(home.pictures(step, device)) for _, steps in reported for step in steps)
    home.run("html", 1000, "--out", home.root / "pages")
    home.run("web", 1000, "--out", home.root / "page.html")
    found = ["frames: " + fault for fault in
             frame_faults(look(browser, home, "pages/index.htm", 1024)["frames"], [title for _, title in present],
                          [key for key, _ in present], pictures)]
    page = look(browser, home, "page.html", PHONE)
    found += ["one file: " + fault for fault in faults(page, [category["CategoryTitle"] for category, _ in reported], pictures)]
    if page["width"] > PHONE:
        found.append("one file: %d pixels wide on a phone" % page["width"])
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1])))
