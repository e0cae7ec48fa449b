"""Every member of the class is tested, validated, measured and described: a new one that is not fails here, and is told
where it is missing."""
import pathlib
import re
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "docs"))
import support

# What a member needs, and where that stands. A declaration in the list of all declarations shows no behaviour.
PLACES = {
    "a case that shows its behaviour": "tests/userdefaults/*_test.[cm]*",
    "a row in the validator's tables": "host/validate/rows/*.mm",
    "a case in the benchmark": "bench/cases/members.mm",
    "a section in the reference": "userdefaults/reference.md",
    "a line in the check for users": "examples/self_check.xojo_script",
}


def registered_declarations():
    tables = support.registered_class()
    return [method["declaration"] for method in tables["methods"] + tables["sharedMethods"]]


def name_of(declaration):
    return re.match(r"\w+", declaration)[0]


def mentions(text, declaration, is_overloaded):
    """Overloads are told apart by their parameters; any other member by its name."""
    wanted = re.match(r"\w+(\([^)]*\))?", declaration)[0] if is_overloaded else name_of(declaration)
    return re.search(r"\b" + re.escape(wanted) + (r"(?![\w(])" if is_overloaded else r"\b"), text) is not None


def missing(declarations, texts):
    names = [name_of(declaration) for declaration in declarations]
    return [f"{declaration}: add {need} to {PLACES[need]}"
            for declaration in declarations
            for need, text in texts.items()
            if not mentions(text, declaration, names.count(name_of(declaration)) > 1)]


def texts_of_the_tree():
    return {need: "".join(path.read_text() for path in sorted(support.ROOT.glob(pattern))
                          if path.name != "class_tables_test.cpp")
            for need, pattern in PLACES.items()}


class Cases(unittest.TestCase):
    def test_every_member_is_tested_validated_measured_and_described(self):
        declarations = registered_declarations()
        self.assertTrue(declarations)
        self.assertEqual("\n".join(missing(declarations, texts_of_the_tree())), "")

    def test_a_member_that_nobody_mentions_is_missed_everywhere(self):
        found = missing(["zoneForKey(key as string) as string"], texts_of_the_tree())
        self.assertEqual(len(found), len(PLACES))
        self.assertIn("zoneForKey(key as string) as string: add a case in the benchmark to bench/cases/members.mm", found)

    def test_a_declaration_in_the_list_of_all_shows_no_behaviour(self):
        self.assertNotIn("kSharedMethods", texts_of_the_tree()["a case that shows its behaviour"])

    def test_an_overload_that_nobody_mentions_is_missed(self):
        declarations = ["synchronize as boolean", "synchronize(domain as string) as boolean"]
        found = missing(declarations, texts_of_the_tree())
        self.assertEqual({text.split(":")[0] for text in found}, {declarations[1]})


if __name__ == "__main__":
    unittest.main()
