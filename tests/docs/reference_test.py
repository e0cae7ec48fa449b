"""The reference says of the class what the class is."""
import re
import subprocess
import unittest

import support
import reference

A_MEMBER = """# Members

## {declaration}

- Subject: Objects

{summary}

### Parameters

- `key`: a name.

### Result

| Under the key | Result | Known |
|---|---|---|
{result}

### Nil and empty

Nothing.

### Exceptions

| `NSExceptionKTZ` | Cocoa's reason | Cocoa raises. |

### Example

```xojo
Print d.{name}("key")
```

```text
value
```
"""


def a_member(declaration="someForKey(key as string) as string", summary="Gives it.", result="| no value | nil | plug-in |"):
    return A_MEMBER.format(declaration=declaration, name=declaration.partition("(")[0], summary=summary, result=result)


def ended(output, status=0):
    return subprocess.CompletedProcess([], status, output, "")


class Cases(unittest.TestCase):
    def test_every_registered_member_has_its_section_on_new_hosts(self):
        tables = support.registered_class("2014.1")
        self.assertTrue(tables["methods"] and tables["sharedMethods"])
        self.assertEqual(reference.differences(reference.read(), tables), [])

    def test_every_registered_member_has_its_section_on_old_hosts(self):
        self.assertEqual(reference.differences(reference.read(), support.registered_class("2009")), [])

    def test_a_member_without_a_section_is_found(self):
        tables = support.registered_class()
        tables["methods"].append({"declaration": "added as integer", "assignable": False})
        self.assertEqual(reference.differences(reference.read(), tables), ["no page: added as integer"])

    def test_a_section_without_a_member_is_found(self):
        tables = support.registered_class()
        gone = tables["sharedMethods"].pop(2)["declaration"]
        self.assertEqual(reference.differences(reference.read(), tables), [f"no such member: {gone}"])

    def test_a_declaration_that_differs_is_found(self):
        tables = support.registered_class()
        row = next(row for row in tables["methods"] if row["declaration"].startswith("integerForKey("))
        row["declaration"] = "integerForKey(key as string) as int64"
        self.assertEqual(reference.differences(reference.read(), tables), [
            "no page: integerForKey(key as string) as int64",
            "no such member: integerForKey(key as string) as integer",
        ])

    def test_a_setter_that_is_not_told_of_is_found(self):
        tables = support.registered_class()
        row = next(row for row in tables["methods"] if row["declaration"].startswith("arrayForKey("))
        row["assignable"] = True
        self.assertEqual(reference.differences(reference.read(), tables),
                         ["a setter is registered: arrayForKey(key as string) as variant()"])

    def test_another_order_is_found(self):
        tables = support.registered_class()
        tables["methods"].reverse()
        self.assertEqual(reference.differences(reference.read(), tables), ["the order of the methods is another one"])

    def test_the_setters_are_those_of_the_code(self):
        code = (support.ROOT / "userdefaults" / "class_tables.cpp").read_text(encoding="utf-8")
        functions = dict(re.findall(r'^    METHOD\("(\w+)\(.*", (\w+)\),$', code, flags=re.M))
        setters = dict(re.findall(r'^    ASSIGNABLE\("(\w+)\(.*", \w+, (\w+)\),$', code, flags=re.M))
        self.assertTrue(setters)
        self.assertEqual({member.name: functions[member.facts["Setter"]] for member in reference.read()
                          if "Setter" in member.facts}, setters)

    def test_messages_of_exceptions_are_those_of_the_code(self):
        code = "".join(path.read_text(encoding="utf-8") for folder in ("hostapi", "bridge", "userdefaults", "plugin")
                       for path in sorted((support.ROOT / folder).rglob("*.[cm][pm]*")))
        raised = set(re.findall(r'RaiseException\(\s*"\w+",\s*"([^"]+)"', code))
        raised |= set(re.findall(r'snprintf\([^;]*?"(Failed[^"]+)"', code))
        raised |= set(re.findall(r'message\[\] = "([^"]+)"', code))
        self.assertGreaterEqual(len(raised), 4)
        for page in (reference.SOURCE, support.ROOT / "docs" / "reference" / "errors.md"):
            text = page.read_text(encoding="utf-8")
            self.assertEqual(set(re.findall(r"`((?:Constructor called|Failed to)[^`]*)`", text)), raised, page.name)

    def test_every_member_stands_in_the_index_by_task(self):
        text = (support.ROOT / "docs" / "reference" / "tasks.md").read_text(encoding="utf-8")
        linked = set(re.findall(r"\[([A-Za-z_-]+)\]", text))
        self.assertEqual(linked, {member.page for member in reference.read()}, "in docs/reference/tasks.md")

    def test_what_a_section_must_say(self):
        self.assertEqual([member.page for member in reference.parse(a_member())], ["someForKey"])
        for text, complaint in (
            (a_member(result="| a text | it | plug-in |"), "it does not say what a missing key gives"),
            (a_member(result="| no value | nil | surely |"), r"it does not say how this is known: \| no value"),
            (a_member(result="| no value | nil |"), "it does not say how this is known"),
            (a_member().replace(" Known |\n|---", "\n|"), "its table lacks the column"),
            (a_member(summary="Gives it. And more."), "in one sentence"),
            (a_member(declaration="someForKey(name as string) as string"), r"its parameters are \['name'\]"),
            (a_member(declaration="someForKey(key as string) as"), "is no declaration"),
            (a_member().replace("### Result\n", ""), "it does not say what it gives"),
            (a_member().replace("### Nil and empty\n\nNothing.\n", ""), "what nil and empty give"),
            (a_member().replace("NSExceptionKTZ", "Other"), "NSExceptionKTZ belongs to members that ask Cocoa"),
            (a_member().replace("Subject: Objects", "Subject: Things"), "its subject is no chapter"),
            (a_member().replace("```text\nvalue\n```\n", ""), "it needs one example"),
            (a_member().replace("Print d.someForKey", "Print d.other"), "its example does not use it"),
            (a_member().replace("Nothing.", "See [nowhere]."), "there is no page called \"nowhere\""),
            (a_member().replace("Nothing.", "{{no such phrase}}"), "there is no phrase called"),
        ):
            with self.assertRaisesRegex(reference.Mistake, complaint):
                reference.parse(text)

    def test_a_second_method_of_a_name_is_told_apart(self):
        text = a_member() + a_member("someForKey(key as string, other as string) as string").partition("\n\n")[2].replace(
            "- `key`: a name.", "- `key`: a name.\n- `other`: another.")
        self.assertEqual([member.page for member in reference.parse(text)], ["someForKey", "someForKey-other"])

    def test_an_example_gets_its_files_and_its_output_is_taken(self):
        example = next(member.example for member in reference.read() if member.page == "objectIsForcedForKey")
        (path, content), = example.files.items()
        (code, _), = example.programs

        def show(folder, program):
            return ended((folder / "defaults" / path).read_text() + (folder / program).read_text(), 3)

        self.assertEqual(support.run_example(example, show), ([content + code], "", 3))

    def test_the_programs_of_an_example_run_one_after_the_other_on_one_database(self):
        text = a_member().replace("```text\nvalue\n```\n", "```text\nvalue\n```\n\n"
                                  "```xojo\nPrint second\n```\n\n```text\nthe second\n```\n")
        example = reference.parse(text)[0].example
        self.assertEqual(example.programs, [('Print d.someForKey("key")\n', "value\n"), ("Print second\n", "the second\n")])

        def show_what_ran(folder, program):
            with open(folder / "seen", "a+") as seen:
                seen.write((folder / program).read_text())
                seen.seek(0)
                return ended(seen.read())

        self.assertEqual(support.run_example(example, show_what_ran),
                         (['Print d.someForKey("key")\n', 'Print d.someForKey("key")\nPrint second\n'], "", 0))
        self.assertEqual(support.run_example(example, lambda *_: ended("", 3)), ([""], "", 3))

    def test_every_row_about_values_says_how_it_is_known(self):
        for path in ("docs/conversions.md", "docs/reference/conversions.md", "docs/reference/errors.md",
                     "docs/reference/systems.md"):
            text = (support.ROOT / path).read_text(encoding="utf-8")
            self.assertGreater(len(reference.MARKED.findall(text)), 1, path)
            self.assertEqual(reference.unmarked_rows(text), [], path)
        for mark in reference.MARKS:
            explained = (support.ROOT / "docs/reference/conversions.md").read_text(encoding="utf-8")
            self.assertIn(f"\n| {mark} | ", explained)


if __name__ == "__main__":
    unittest.main()
