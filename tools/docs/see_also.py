"""What stands at the end of a member's page: where to go from there."""
import re


def counterparts_of(member, members):
    """stringArrayForKey is stored with setStringArrayValue, and the other way round; others have none."""
    for form, other_form in ((r"(\w+)ForKey", "set{}Value"), (r"set(\w+)Value", "{}ForKey")):
        if found := re.fullmatch(form, member.name):
            name = other_form.format(found[1]).lower()
            return [other for other in members if other.name.lower() == name]
    return []


def see_also(member, members, programs):
    """What reads or stores the same value, the rest of the chapter, and the programs that use the member."""
    def links(pages):
        return ", ".join(f"[{title}]({address}.md)" for title, address in pages)

    def linked(others):
        return links((other.title, other.page) for other in others)

    counterparts = counterparts_of(member, members)
    chapter = [other for other in members
               if other.facts["Subject"] == member.facts["Subject"] and other not in (member, *counterparts)]
    used_by = [(program.title, f"../examples/{program.name}") for program in programs
               if any(re.search(rf"\.{member.name}\b", code) for code in program.programs.values())]
    rows = []
    if counterparts:
        rows.append(f"- {'Stored' if member.result else 'Read'} with {linked(counterparts)}")
    if chapter:
        rows.append(f"- {member.facts['Subject']}: {linked(chapter)}")
    if used_by:
        rows.append(f"- Examples: {links(used_by)}")
    return "## See also\n\n" + "\n".join(rows) + "\n" if rows else ""
