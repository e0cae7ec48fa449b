"""The reference says of the class what the class is."""
import contextlib
import io
import re
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


def a_member(declaration="someForKey(key as string) as string", summary="Gives it.", result="| no value | nil |"):
    return A_MEMBER.format(declaration=declaration, name=declaration.partition("(")[0], summary=summary, result=result)


class Cases(unittest.TestCase):
    def test_every_registered_member_has_its_section_on_new_hosts(self):
        tables = support.registered_class("2014.1")
        self.assertEqual(len(tables["methods"]) + len(tables["sharedMethods"]), 49)
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
        code = (support.ROOT / "plugin" / "class_tables.cpp").read_text(encoding="utf-8")
        functions = dict(re.findall(r'^    METHOD\("(\w+)\(.*", (\w+)\),$', code, flags=re.M))
        setters = dict(re.findall(r'^    PROPERTY\("(\w+)\(.*", \w+, (\w+)\),$', code, flags=re.M))
        self.assertEqual(len(setters), 10)
        self.assertEqual({member.name: functions[member.facts["Setter"]] for member in reference.read()
                          if "Setter" in member.facts}, setters)

    def test_messages_of_exceptions_are_those_of_the_code(self):
        code = "".join(path.read_text(encoding="utf-8") for folder in ("plugin", "bridge", "userdefaults")
                       for path in sorted((support.ROOT / folder).rglob("*.[cm][pm]*")))
        raised = set(re.findall(r'RaiseException\(\s*"\w+",\s*"([^"]+)"', code))
        raised |= set(re.findall(r'snprintf\([^;]*?"(Failed[^"]+)"', code))
        self.assertGreaterEqual(len(raised), 3)
        for page in (reference.SOURCE, support.ROOT / "docs" / "reference" / "errors.md"):
            text = page.read_text(encoding="utf-8")
            self.assertEqual(set(re.findall(r"`((?:Constructor called|Failed to)[^`]*)`", text)), raised, page.name)

    def test_every_member_stands_in_the_index_by_task(self):
        text = (support.ROOT / "docs" / "reference" / "tasks.md").read_text(encoding="utf-8")
        linked = set(re.findall(r"\[([A-Za-z_-]+)\]", text))
        self.assertEqual(linked, {member.page for member in reference.read()})

    def test_what_a_section_must_say(self):
        self.assertEqual([member.page for member in reference.parse(a_member())], ["someForKey"])
        for text, complaint in (
            (a_member(result="nil"), "it does not say what a missing key gives"),
            (a_member(summary="Gives it. And more."), "in one sentence"),
            (a_member(declaration="someForKey(name as string) as string"), r"its parameters are \['name'\]"),
            (a_member(declaration="someForKey(key as string) as"), "is no declaration"),
            (a_member().replace("### Result\n\n| no value | nil |\n", ""), "it does not say what it gives"),
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
        show = ["sh", "-c", 'cat "$1/$0" "$2"; exit 3', path]
        self.assertEqual(reference.run_example(example, show), (content + example.code, "", 3))

    def test_an_example_that_prints_something_else_fails(self):
        for command, status in ((["sh", "-c", "printf 'Runs: 0\\nRuns: 1\\nAs a text: 12\\n'"], 0),
                                (["sh", "-c", "printf 'Runs: 0\\nRuns: 2\\nAs a text: 12\\n'"], 1),
                                (["sh", "-c", "printf 'Runs: 0\\nRuns: 1\\nAs a text: 12\\n'; exit 4"], 1)):
            with contextlib.redirect_stdout(io.StringIO()):
                self.assertEqual(reference.main(["run", "integerForKey", "--", *command]), status)


if __name__ == "__main__":
    unittest.main()
