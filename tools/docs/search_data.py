"""search_data.py: prints what the site's search knows of every page, as a script that the search page loads.

A page has its title, its address, a line of text, a member its declaration; then the words of its title and its line, with
what people call those things, and of the tasks that lead to it; and the words of the rest.
"""
import json
import re
import sys

import pages
import reference
import search_words


def plain(markdown):
    """The text of a page without its marks, its tables of contents and the languages of its programs."""
    text = re.sub(r"```\{toctree\}[\s\S]*?```|^```.*$|^\|[-|]+\|$", "", markdown, flags=re.M)
    text = re.sub(r"\[([^\]]+)\]\([^)\s]+\)", r"\1", text)
    return " ".join(re.sub(r"[`*#|]|^- ", " ", text, flags=re.M).split())


def words_of(text):
    """In small letters; a name also by its parts, objectIsForcedForKey by "forced"."""
    names = re.findall(r"[A-Za-z]\w+", text)
    parts = [part for name in names for part in re.findall(r"[A-Z]?[a-z]+|[A-Z]+(?![a-z])", name)]
    return sorted({word.lower() for word in names + parts if len(word) > 1})


def with_others(words):
    return sorted(set(words).union(*(search_words.others(word) for word in words)))


def tasks():
    """What the page of tasks says in the rows that name a member, by member."""
    text = (pages.WRITTEN / "tasks.md").read_text(encoding="utf-8")
    said = {}
    for row in re.findall(r"^\| .+ \|$", text, flags=re.M):
        task, *cells = row.strip("| ").split(" | ")
        for cell in cells:
            for name in re.findall(r"\[([A-Za-z_-]+)\]", cell):
                said[name] = f"{said.get(name, '')} {task}"
    return said


def line_of(markdown):
    """The first line of text behind the title."""
    for block in markdown.split("\n\n")[1:]:
        if re.match(r"[A-Z`\[\"]", block):
            return plain(block)
    return ""


def entry(title, address, line, body, declaration="", task=""):
    return {"title": title, "address": address, "declaration": declaration, "line": line,
            "words": sorted(set(with_others(words_of(f"{title} {line}")) + words_of(task))), "text": words_of(body)}


def entries():
    written, said = pages.all_pages(), tasks()
    members = {f"members/{member.page}.md": member for member in reference.read()}
    found = []
    for path, text in written.items():
        address = path.removesuffix(".md") + ".html"
        if path in members:
            member = members[path]
            found.append(entry(member.title, address, member.summary, plain(text), member.declaration,
                               said.get(member.page, "")))
        elif path != "index.md":
            found.append(entry(text.partition("\n")[0].removeprefix("# "), address, line_of(text), plain(text)))
    return found


def main():
    print("var searchedPages = " + json.dumps(entries(), ensure_ascii=False, separators=(",", ":")) + ";")
    return 0


if __name__ == "__main__":
    sys.exit(main())
