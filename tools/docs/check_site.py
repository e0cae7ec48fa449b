"""check_site.py SITE: every link of a static site, read from disk, leads to a file and an anchor that are there, nothing
comes from the network, every member of the class has its page, and a reader hears on each page which one it is and can go
past the way around. Prints what is wrong; status 1 if anything is."""
import html.parser
import pathlib
import sys
import urllib.parse

import reference


UNLISTED = ("index.html", "search.html")  # in no list of pages


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.links, self.loaded, self.anchors, self.marks_itself, self.has_skip = [], [], set(), False, False
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if values.get("id"):
            self.anchors.add(values["id"])
        if tag == "a" and values.get("href"):
            self.links.append(values["href"])
            self.marks_itself |= values.get("aria-current") == "page"
            self.has_skip |= values.get("class") == "skip"
        if tag == "link" and values.get("rel") in ("stylesheet", "icon", "preload") and values.get("href"):
            self.loaded.append(values["href"])
        if tag in ("script", "img", "iframe") and values.get("src"):
            self.loaded.append(values["src"])


def problems(site, member_pages):
    pages = {path: Page(path.read_text(encoding="utf-8")) for path in sorted(site.rglob("*.html"))}
    if not pages:
        return [f"{site}: there are no pages"]
    found = []
    for path, page in pages.items():
        shown = path.relative_to(site)
        if not page.has_skip:
            found.append(f"{shown}: there is no way past the list of pages")
        if not page.marks_itself and shown.as_posix() not in UNLISTED:
            found.append(f"{shown}: the page is not marked in the list of pages")
        for address in page.loaded + page.links:
            parts = urllib.parse.urlsplit(address)
            if parts.scheme or parts.netloc:
                if address in page.loaded:
                    found.append(f"{shown}: {address} comes from the network")
                continue
            if parts.path.startswith("/"):
                found.append(f"{shown}: {address} does not work from disk")
                continue
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            if not target.is_file():
                found.append(f"{shown}: {address} leads nowhere")
            elif parts.fragment and target in pages and address in page.links:
                if urllib.parse.unquote(parts.fragment) not in pages[target].anchors:
                    found.append(f"{shown}: {address}: there is no such place on that page")
    for name in member_pages:
        if site / "members" / f"{name}.html" not in pages:
            found.append(f"members/{name}.html is missing")
    return found


def main(arguments):
    if len(arguments) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    found = problems(pathlib.Path(arguments[0]).resolve(), [member.page for member in reference.read()])
    for line in found:
        print(line, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
