"""pages.py FOLDER: writes the pages of the reference in Markdown into FOLDER, which is emptied first.

The members come from userdefaults/reference.md, the other pages from docs/reference, and what stands elsewhere in the
project (the language of the examples, the changelog, the examples) is taken from there.
"""
import pathlib
import posixpath
import re
import shutil
import sys

import examples
import reference
from see_also import see_also

ROOT = reference.ROOT
WRITTEN = ROOT / "docs" / "reference"

# Pages that are kept elsewhere in the project, for developers, too.
TAKEN = {
    "script.md": "docs/script.md",
    "changelog.md": "CHANGELOG.md",
    "install.md": "tools/package/INSTALL.md",
}

CONTENTS = ["tasks.md", "members/index.md", "examples/index.md", "conversions.md", "search-list.md", "errors.md",
            "systems.md", "script.md", "install.md", "changelog.md"]


def version():
    return (ROOT / "VERSION").read_text(encoding="utf-8").strip()


def toctree(pages, caption="", options=("hidden",)):
    lines = ["```{toctree}", *(f":{option}:" for option in options)]
    if caption:
        lines.append(f":caption: {caption}")
    return "\n".join([*lines, "", *pages, "```"]) + "\n"


def member_links(text, pages, folder):
    """[integerForKey] becomes a link; square brackets in code, and around anything else, stay."""

    def target(found):
        if found.group("code"):
            return found.group("code")
        name = found.group("name")
        return f"[{pages[name]}]({folder}{name}.md)" if name in pages else found.group()

    return re.sub(r"(?P<code>```[\s\S]*?```|`[^`]*`)|\[(?P<name>[A-Za-z_-]+)\](?!\()", target, text)


def only_known_links(text, source, known):
    """Links from a page that is kept elsewhere: to another page here, or, where there is none, plain text."""

    def target(found):
        label, address = found.groups()
        if re.match(r"\w+:", address):
            return found.group()
        path, hash_sign, anchor = address.partition("#")
        if not path:
            return found.group()
        place = posixpath.normpath(posixpath.join(posixpath.dirname(source), path))
        return f"[{label}]({known[place]}{hash_sign}{anchor})" if place in known else label

    return re.sub(r"(?<!!)\[([^\]]+)\]\(([^)\s]+)\)", target, text)


def link_marks(text, folder=""):
    """The head of a column of marks leads to what they mean."""
    return text.replace(" | Known |\n|", f" | [Known]({folder}conversions.md#how-it-is-known) |\n|")


def systems_of(member):
    systems = member.facts.get("Systems", "All, from Mac OS X 10.4 on.")
    return ("## Hosts and systems\n\n- Hosts: all, from 2009 to 2014.x.\n"
            f"- Systems: {systems[0].lower() + systems[1:] if systems.startswith('All') else systems}\n")


def member_page(member, members, programs):
    kind = "shared method" if member.is_shared else "method"
    parts = [f"# {member.title}\n", f"```xojo\n{member.declaration}\n```\n", f"{member.summary}\n"]
    if member.remarks:
        parts.append(f"{member.remarks}\n")
    facts = [f"A {kind} of NSUserDefaultsKTZ."]
    if "Setter" in member.facts:
        setter = member.facts["Setter"]
        facts.append(f"It can be assigned to: `d.{member.name}(key) = value` is the same as [{setter}]({setter}.md).")
    if "Cocoa" in member.facts:
        message = re.sub(r"\b(\w+(?::\w*)+|absoluteString|(?<=constant )\w+)", r"`\1`", member.facts["Cocoa"])
        parts.append(" ".join(facts) + f" What is asked of Cocoa: {message if '`' in message else f'`{message}`'}.\n")
    else:
        parts.append(" ".join(facts) + "\n")
    for name, body in member.sections.items():
        if name == "Exceptions" and body.startswith("|"):
            body = "| Class | Message | When |\n|---|---|---|\n" + body
        parts.append(f"## {name}\n\n{body}\n")
    parts.append(systems_of(member))
    parts.append(example_section(member.example))
    parts.append(see_also(member, members, programs))
    return "\n".join(parts)


def example_section(example):
    parts = ["## Example\n"]
    for path, content in example.files.items():
        parts.append(f"With this file of the administrator, `{path}`:\n\n```xml\n{content}```\n")
    for step, (code, output) in enumerate(example.programs, 1):
        if len(example.programs) > 1:
            parts.append(f"Run {step}:\n")
        parts.append(f"```xojo\n{code}```\n")
        parts.append(f"Prints:\n\n```text\n{output}```\n")
    return "\n".join(parts)


def members_index(members):
    parts = ["# Members\n", f"The class has {sum(not member.is_shared for member in members)} methods and "
             f"{sum(member.is_shared for member in members)} shared methods. Shared ones are called on the class: "
             "`NSUserDefaultsKTZ.standardUserDefaults`.\n"]
    for subject in reference.SUBJECTS:
        parts.append(f"## {subject}\n\n| Member | What it does |\n|---|---|")
        for member in members:
            if member.facts["Subject"] == subject:
                shared = "*Shared.* " if member.is_shared else ""
                signature = member.declaration.removeprefix(member.name).strip()
                parts.append(f"| [{member.name}]({member.page}.md) {f'`{signature}`' if signature else ''} "
                             f"| {shared}{member.summary} |")
        parts.append("")
    by_subject = sorted(members, key=lambda member: reference.SUBJECTS.index(member.facts["Subject"]))
    parts.append(toctree([member.page for member in by_subject]))
    return "\n".join(parts)


def example_page(example):
    parts = [f"# {example.title}\n", f"{example.task}.\n"]
    for name, content in example.managed.items():
        parts.append(f"With this file of the administrator, `{name}`:\n\n```xml\n{content}```\n")
    for name, code in example.programs.items():
        if len(example.programs) > 1:
            parts.append(f"`{name}`:\n")
        parts.append(f"```xojo\n{code}```\n")
    started = "Prints" if example.runs == 1 else f"Started {example.runs} times, one after the other, it prints"
    parts.append(f"{started}:\n\n```text\n{example.output}```\n")
    return "\n".join(parts)


def examples_index(all_examples):
    rows = [f"| {example.task} | [{example.title}]({example.name}.md) |" for example in all_examples]
    return "\n".join(["# Examples\n", "Whole programs, each run by the tests.\n", "| To … | see |\n|---|---|", *rows, "",
                      toctree([example.name for example in all_examples])])


def all_pages():
    members, programs = reference.read(), examples.read()
    pages = {f"members/{member.page}.md": link_marks(member_page(member, members, programs), "../") for member in members}
    pages["members/index.md"] = members_index(members)
    pages.update({f"examples/{example.name}.md": example_page(example) for example in programs})
    pages["examples/index.md"] = examples_index(programs)
    names = {member.page: member.title for member in members}
    known = {source: page for page, source in TAKEN.items()}
    for file in sorted(WRITTEN.glob("*.md")):
        text = file.read_text(encoding="utf-8").replace("{{version}}", version())
        pages[file.name] = link_marks(member_links(text, names, "members/"))
    for page, source in TAKEN.items():
        pages[page] = only_known_links((ROOT / source).read_text(encoding="utf-8"), source, known)
    pages["index.md"] += "\n" + toctree([page.removesuffix(".md") for page in CONTENTS])
    return pages


def main(arguments):
    if len(arguments) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    folder = pathlib.Path(arguments[0])
    shutil.rmtree(folder, ignore_errors=True)
    for path, text in all_pages().items():
        file = folder / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except reference.Mistake as mistake:
        sys.exit(str(mistake))
