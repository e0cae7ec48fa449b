"""The pages that the site is made of."""
import pathlib
import re
import tempfile
import unittest

import support
import examples
import pages
import reference
import xojo_words


class Cases(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = pages.all_pages()

    def test_every_member_has_a_page_with_its_declaration(self):
        members = reference.read()
        self.assertTrue(members)
        for member in members:
            self.assertIn(f"```xojo\n{member.declaration}\n```", self.pages[f"members/{member.page}.md"])
        written = {path for path in self.pages if path.startswith("members/")}
        self.assertEqual(written, {f"members/{member.page}.md" for member in members} | {"members/index.md"})

    def test_every_member_page_has_its_parts(self):
        for member in reference.read():
            text = self.pages[f"members/{member.page}.md"]
            headings = re.findall(r"^## (.+)$", text, flags=re.M)
            expected = [*member.sections, "Hosts and systems", "Example"]
            self.assertIn(headings, (expected, [*expected, "See also"]))
            for code, output in member.example.programs:
                self.assertIn(code, text)
                self.assertIn(output, text)

    def test_a_page_leads_to_what_stores_the_value_the_chapter_and_the_programs(self):
        text = self.pages["members/stringArrayForKey.md"].partition("## See also")[2]
        self.assertIn("- Stored with [setStringArrayValue](setStringArrayValue.md)\n", text)
        self.assertIn("- Arrays and dictionaries: [dictionaryForKey](dictionaryForKey.md), ", text)
        self.assertIn("- Examples: [Recent files](../examples/recent_files.md)", text)
        self.assertIn("- Read with [URLForKey](URLForKey.md)\n", self.pages["members/setURLValue.md"])
        self.assertNotIn("ed with", self.pages["members/synchronize.md"].partition("## See also")[2])

    def test_the_list_of_members_has_each_with_its_declaration_and_what_it_does(self):
        for member in reference.read():
            signature = member.declaration.removeprefix(member.name).strip()
            row = rf"| [{member.name}]({member.page}.md) {f'`{signature}`' if signature else ''} | "
            line = next(line for line in self.pages["members/index.md"].splitlines() if line.startswith(row))
            self.assertTrue(line.endswith(f"{member.summary} |"), line)

    def test_every_word_of_the_language_has_a_colour(self):
        grammar = re.search(r"^## Grammar\n([\s\S]*?)^## ", self.pages["script.md"], flags=re.M)[1]
        words = set(re.findall(r'"([A-Z][A-Za-z]+)"', grammar))
        self.assertGreater(len(words), 40)
        coloured = {*xojo_words.KEYWORDS, *xojo_words.CONSTANTS, *xojo_words.TYPES, *xojo_words.STATEMENTS}
        self.assertEqual(words - coloured, set())

    def test_every_link_leads_to_a_page(self):
        for path, text in self.pages.items():
            without_code = re.sub(r"```[\s\S]*?```|^    .*$|`[^`\n]*`", "", text, flags=re.M)
            for address in re.findall(r"\]\(([^)\s]+)\)", without_code):
                if not re.match(r"\w+:", address):
                    target = pathlib.PurePosixPath(path).parent / address.partition("#")[0]
                    parts = []
                    for part in target.parts:
                        parts = parts[:-1] if part == ".." else parts + [part]
                    self.assertIn("/".join(parts), self.pages, f"{path}: {address}")

    def test_every_page_is_in_a_table_of_contents(self):
        listed = {"index.md"}
        for path, text in self.pages.items():
            folder = path.rpartition("/")[0]
            for block in re.findall(r"```\{toctree\}\n((?:.*\n)*?)```", text):
                listed |= {f"{folder}/{name}.md".lstrip("/") for name in block.split() if not name.startswith(":")}
        self.assertEqual(listed, set(self.pages))

    def test_nothing_is_left_to_fill_in(self):
        for path, text in self.pages.items():
            self.assertNotRegex(re.sub(r"```\{toctree\}", "", text), r"\{\{|\}\}", path)

    def test_the_version_is_that_of_the_project(self):
        version = (support.ROOT / "VERSION").read_text(encoding="utf-8").strip()
        self.assertIn(f"Version {version}.", self.pages["index.md"])

    def test_every_example_has_a_page_with_its_programs_and_what_they_print(self):
        programs = sorted((support.ROOT / "examples").rglob("*.xojo_script"))
        self.assertGreaterEqual(len(programs), 8)
        shown = "".join(text for path, text in self.pages.items() if path.startswith("examples/"))
        for program in programs:
            self.assertIn(program.read_text(encoding="utf-8"), shown)
        for example in examples.read():
            self.assertIn(example.output, self.pages[f"examples/{example.name}.md"])

    def test_an_example_that_is_started_twice_says_so(self):
        self.assertIn("\nStarted 2 times, one after the other, it prints:\n", self.pages["examples/round_trip.md"])
        self.assertNotIn("Started", self.pages["examples/first_run.md"].partition("```text")[0])

    def test_an_example_that_the_table_does_not_name_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            folder = pathlib.Path(folder)
            (folder / "README.md").write_text("| Say hello | [hello](hello.xojo_script) |\n", encoding="utf-8")
            (folder / "hello.xojo_script").write_text("' Says hello.\nPrint \"hello\"\n", encoding="utf-8")
            (folder / "hello.expected").write_text("hello\n", encoding="utf-8")
            self.assertEqual([(example.name, example.task) for example in examples.read(folder)],
                             [("hello", "Say hello")])
            (folder / "other.expected").write_text("", encoding="utf-8")
            with self.assertRaisesRegex(reference.Mistake, "does not name other"):
                examples.read(folder)

    def test_a_link_out_of_the_site_becomes_plain_text(self):
        known = {"docs/conversions.md": "conversions.md"}
        text = "[a](../docs/conversions.md#x) [b](../tools/x.md) [c](https://example.org/) [d](#here)"
        self.assertEqual(pages.only_known_links(text, "host/README.md", known),
                         "[a](conversions.md#x) b [c](https://example.org/) [d](#here)")


if __name__ == "__main__":
    unittest.main()
