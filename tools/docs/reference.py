"""The reference of the class: reads userdefaults/reference.md, which says itself how it is written.

reference.py check TABLES   compares it with the registered class, as `plughost describe --json` prints it
"""
import dataclasses
import json
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCE = ROOT / "userdefaults" / "reference.md"

# The chapters, in their order.
SUBJECTS = [
    "Objects", "Numbers and booleans", "Texts and URLs", "Data and files", "Arrays and dictionaries", "Any value",
    "Registered and forced values", "The whole database", "Domains", "Suites", "Names", "Exceptions",
]
FACTS = ["Subject", "Setter", "Cocoa", "Systems", "Guarded"]
SECTIONS = ["Parameters", "Result", "Nil and empty", "Exceptions", "Example"]

# name(parameters) as result; an array has "()" behind its name or its type.
DECLARATION = re.compile(r"(?P<name>\w+)(?:\((?P<parameters>(?:[^()]|\(\))+)\))?(?: as (?P<result>\w+(?:\(\))?))?")

OTHER_PAGES = {name: f"../{name}.md" for name in ("conversions", "errors", "search-list")}

# How a row of a table is known, in its last column; docs/reference/conversions.md explains the marks.
MARKS = ["plug-in", "measured", "documented", "believed"]
MARKED = re.compile(r"^\|.*\| Known \|\n\|[-|]+\|\n((?:\|.*\n?)*)", flags=re.M)


class Mistake(Exception):
    """What is wrong with the source, with its line."""


@dataclasses.dataclass
class Example:
    programs: list  # of (code, what it prints): one, or several that run one after the other on the same database
    files: dict  # path within the defaults folder: content
    source: str  # as it stands in the reference


@dataclasses.dataclass
class Member:
    declaration: str
    is_shared: bool
    line: int
    page: str = ""
    facts: dict = dataclasses.field(default_factory=dict)
    summary: str = ""  # one sentence
    remarks: str = ""  # the rest of the text in front of the first section
    sections: dict = dataclasses.field(default_factory=dict)
    example: Example = None

    @property
    def name(self):
        return DECLARATION.fullmatch(self.declaration).group("name")

    @property
    def title(self):
        """The name; a second method of that name has its parameters, too."""
        return self.name if self.page == self.name else f"{self.name}({', '.join(self.parameters)})"

    @property
    def parameters(self):
        return re.findall(r"(\w+)(?:\(\))? as ", DECLARATION.fullmatch(self.declaration).group("parameters") or "")

    @property
    def result(self):
        return DECLARATION.fullmatch(self.declaration).group("result")


def parse(text):
    """The members in the order of the text, with every phrase and link in its place."""
    phrases, members, part, member, block = {}, [], None, None, []

    def close():
        if member:
            fill(member, block, phrases)
        block.clear()

    in_code = False
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("```"):
            in_code = not in_code
        if not in_code and line.startswith("# "):
            close()
            part, member = line[2:], None
        elif not in_code and line.startswith("## "):
            close()
            member = Member(line[3:], part == "Shared members", number)
            members.append(member)
        elif part == "Phrases" and line.startswith("- "):
            name, _, phrase = line[2:].partition(": ")
            phrases[name] = phrase
        elif member:
            block.append(line)
    close()
    name_pages(members)
    for member in members:
        link(member, members)
    return members


def fill(member, lines, phrases):
    """Takes the text of a member apart."""
    if not DECLARATION.fullmatch(member.declaration):
        raise Mistake(f"{member.line}: \"{member.declaration}\" is no declaration")
    head, *rest = re.split(r"^### (.+)\n", "\n".join(lines) + "\n", flags=re.M)
    facts = re.findall(r"^- (\w+): (.+)$", head, flags=re.M)
    member.facts = dict(facts)
    prose = re.sub(r"^- \w+: .+\n", "", head, flags=re.M).strip()
    for name in member.facts:
        if name not in FACTS:
            raise Mistake(f"{member.line}: {member.name}: there is no fact called {name}")
    if member.facts.get("Subject") not in SUBJECTS:
        raise Mistake(f"{member.line}: {member.name}: its subject is no chapter")
    summary, _, remarks = prose.partition("\n\n")
    member.summary = " ".join(summary.split())
    if not re.fullmatch(r"[A-Z][^.]*(?:\.\d[^.]*)*\.", member.summary):
        raise Mistake(f"{member.line}: {member.name}: what it does must be said in one sentence")
    member.remarks = spell_out(remarks, phrases, member)
    names = rest[::2]
    if [name for name in SECTIONS if name in names] != names:
        raise Mistake(f"{member.line}: {member.name}: its sections must be some of {', '.join(SECTIONS)}, in this order")
    for name, body in zip(names, rest[1::2]):
        member.sections[name] = body.strip() if name == "Example" else spell_out(body.strip(), phrases, member)
    check_sections(member)
    member.example = example_of(member)


def spell_out(text, phrases, member):
    def phrase(found):
        name, _, argument = found.group(1).partition("|")
        if name not in phrases:
            raise Mistake(f"{member.line}: {member.name}: there is no phrase called \"{name}\"")
        return phrases[name].replace("$1", argument)

    return re.sub(r"\{\{(.+?)\}\}", phrase, text)


def check_sections(member):
    def need(condition, what):
        if not condition:
            raise Mistake(f"{member.line}: {member.name}: {what}")

    described = re.findall(r"^- `(\w+)`: ", member.sections.get("Parameters", ""), flags=re.M)
    need(described == member.parameters, f"its parameters are {member.parameters}, not {described}")
    need("Exceptions" in member.sections, "it does not say what it raises")
    need(not member.result or "Result" in member.sections, "it does not say what it gives")
    need(not member.parameters or "Nil and empty" in member.sections, "it does not say what nil and empty give")
    if member.name.endswith("ForKey") and member.name != "objectIsForcedForKey" and member.result:
        need("| no value | " in member.sections["Result"], "it does not say what a missing key gives")
    for row in unmarked_rows("\n".join(member.sections.values())):
        need(False, f"it does not say how this is known: {row}")
    need("| Under the key | Result |\n" not in member.sections.get("Result", ""), "its table lacks the column \"Known\"")
    raises = "NSExceptionKTZ" in member.sections["Exceptions"]
    need(raises == (member.facts.get("Guarded") != "no"), "NSExceptionKTZ belongs to members that ask Cocoa, and only there")


def unmarked_rows(text):
    """The rows of tables with the column "Known" that have none of its marks."""
    return [row for table in MARKED.findall(text) for row in table.splitlines()
            if row.rstrip("| ").rpartition("| ")[2] not in MARKS]


def example_of(member):
    blocks = re.findall(r"^```(\w+) ?(.*)\n((?:.*\n)*?)```$", member.sections.get("Example", ""), flags=re.M)
    files = {path: content for kind, path, content in blocks if kind == "xml"}
    steps = [(kind, content) for kind, _, content in blocks if kind != "xml"]
    if not steps or [kind for kind, _ in steps] != ["xojo", "text"] * (len(steps) // 2):
        raise Mistake(f"{member.line}: {member.name}: it needs one example and what that prints")
    contents = [content for _, content in steps]
    programs = list(zip(contents[::2], contents[1::2]))
    if not any(re.search(rf"\b{re.escape(member.name)}\b|\bNew NSUserDefaultsKTZ\b|As NSExceptionKTZ", code)
               for code, _ in programs):
        raise Mistake(f"{member.line}: {member.name}: its example does not use it")
    return Example(programs, files, member.sections.pop("Example"))


def name_pages(members):
    """A page has its member's name; a second method of that name has its last parameter behind it."""
    seen = set()
    for member in members:
        member.page = member.name if member.name not in seen else f"{member.name}-{member.parameters[-1]}"
        seen.add(member.page)


def link(member, members):
    pages = {other.page: other.title for other in members}

    def target(found):
        name = found.group(1)
        if name in OTHER_PAGES:
            return f"[{name.replace('-', ' ')}]({OTHER_PAGES[name]})"
        if name not in pages:
            raise Mistake(f"{member.line}: {member.name}: there is no page called \"{name}\"")
        return f"[{pages[name]}]({name}.md)"

    link_form = re.compile(r"\[([A-Za-z_-]+)\]")
    member.remarks = link_form.sub(target, member.remarks)
    member.sections = {name: link_form.sub(target, body) for name, body in member.sections.items()}
    setter = member.facts.get("Setter")
    if setter and setter not in pages:
        raise Mistake(f"{member.line}: {member.name}: there is no page of its setter {setter}")


def read(path=SOURCE):
    return parse(path.read_text(encoding="utf-8"))


def differences(members, tables):
    """What the reference and the registered class do not have in common, one line each."""
    found = []
    for kind, is_shared in (("methods", False), ("sharedMethods", True)):
        written = [member for member in members if member.is_shared == is_shared]
        registered = {row["declaration"]: row for row in tables[kind]}
        for declaration in registered.keys() - {member.declaration for member in written}:
            found.append(f"no page: {declaration}")
        for member in written:
            row = registered.get(member.declaration)
            if not row:
                found.append(f"no such member: {member.declaration}")
            elif row["assignable"] != ("Setter" in member.facts):
                found.append(f"{'a setter' if row['assignable'] else 'no setter'} is registered: {member.declaration}")
        if not found and [member.declaration for member in written] != list(registered):
            found.append(f"the order of the {kind} is another one")
    return sorted(found)


def main(arguments):
    if arguments[:1] == ["check"] and len(arguments) == 2:
        found = differences(read(), json.loads(pathlib.Path(arguments[1]).read_text(encoding="utf-8")))
        for line in found:
            print(line)
        return 1 if found else 0
    print(__doc__.strip(), file=sys.stderr)
    return 2


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except Mistake as mistake:
        sys.exit(f"{SOURCE.relative_to(ROOT)}:{mistake}")
