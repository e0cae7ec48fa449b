"""Every program on a page for readers runs, and prints what stands behind it. Those of the members' reference have tests of
their own."""
import re
import unittest

import support

PAGES = sorted([*support.ROOT.glob("*.md"), *(page for folder in ("docs", "examples", "host", "platform", "tools")
                                              for page in (support.ROOT / folder).rglob("*.md"))])
FENCE = re.compile(r"^```(\w+)\n((?:(?!```).*\n)*)```$(?:\n+```text\n((?:(?!```).*\n)*)```$)?", flags=re.M)
PROMPT = re.compile(r"^\d+[>.] ?(.*)$")


def fences(kind):
    """Each fenced block of that kind: its name for messages, its text, and the text block right behind it."""
    found = []
    for page in PAGES:
        text = page.read_text(encoding="utf-8")
        for fence in FENCE.finditer(text):
            if fence.group(1) == kind:
                line = text.count("\n", 0, fence.start()) + 1
                found.append((f"{page.relative_to(support.ROOT)}:{line}", fence.group(2), fence.group(3)))
    return found


class Cases(unittest.TestCase):
    def test_programs_run_and_print_what_stands_behind_them(self):
        programs = fences("xojo")
        self.assertGreater(len(programs), 4)
        for name, code, output in programs:
            with self.subTest(name):
                ended = support.run_plughost(["--check-handles", "run", "-"], code)
                self.assertEqual((ended.stderr, ended.returncode), ("", 0))
                if output is not None:
                    self.assertEqual(ended.stdout, output)

    def test_conversations_are_what_is_shown(self):
        conversations = [(name, text) for name, text, _ in fences("console") if PROMPT.search(text.split("\n", 1)[0])]
        self.assertGreater(len(conversations), 0)
        for name, text in conversations:
            with self.subTest(name):
                lines = [PROMPT.match(line) or line for line in text.splitlines()]
                entered = "".join(line.group(1) + "\n" for line in lines if not isinstance(line, str))
                ended = support.run_plughost(["--check-handles"], entered)
                self.assertEqual((ended.stderr, ended.returncode), ("", 0))
                self.assertEqual(ended.stdout.splitlines(), [line for line in lines if isinstance(line, str)])

    def test_no_program_stands_where_it_is_not_run(self):
        for page in PAGES:
            indented = re.findall(r"^    (?:Dim \w+ As |Print \"|MsgBox ).*$", page.read_text(encoding="utf-8"),
                                  flags=re.M)
            self.assertEqual(indented, [], page)


if __name__ == "__main__":
    unittest.main()
