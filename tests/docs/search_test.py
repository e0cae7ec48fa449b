"""The search of the site finds what people look for, by the script that the search page runs."""
import json
import re
import subprocess
import unittest

import support
import reference
import search_data
import search_words

SCRIPT = support.ROOT / "tools" / "docs" / "theme" / "static" / "search.js"
ASK = """
const [script, pages, queries] = JSON.parse(require("fs").readFileSync(0, "utf8"));
const search = require(script);
console.log(JSON.stringify(queries.map(query => search.find(pages, query).map(page => page.title))));
"""


class Cases(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = search_data.entries()

    def found(self, *queries):
        ended = subprocess.run(["node", "-e", ASK], input=json.dumps([str(SCRIPT), self.pages, queries]), check=True,
                               stdout=subprocess.PIPE, encoding="utf-8")
        return json.loads(ended.stdout)

    def test_every_member_is_found_first_by_its_name_and_by_a_name_with_gaps(self):
        names = sorted({member.name for member in reference.read() if len(member.name) > 6})
        for query, titles in zip(names, self.found(*names)):
            self.assertEqual(titles[0].partition("(")[0], query)
        shorter = [name[:3] + name[5:] for name in names]
        for query, name, titles in zip(shorter, names, self.found(*shorter)):
            self.assertIn(name, [title.partition("(")[0] for title in titles], query)

    def test_what_people_call_things_is_found(self):
        wanted = {
            "save": ["synchronize", "setIntegerValue", "setStringValue", "setDictionaryValue", "setVariantValue"],
            "delete": ["removeObjectForKey", "removePersistentDomainForName"],
            "checkbox": ["boolForKey", "setBoolValue"],
            "remember a check box": ["boolForKey", "setBoolValue"],
            "list of strings": ["stringArrayForKey", "setStringArrayValue"],
            "locked by the admin": ["objectIsForcedForKey"],
            "sync": ["synchronize"],
            "factory settings": ["registerDefaults"],
            "errors": ["Errors"],
        }
        for (query, expected), titles in zip(wanted.items(), self.found(*wanted)):
            self.assertLessEqual(set(expected), set(titles[:len(expected) + 12]), query)

    def test_gaps_and_parts_of_names_are_forgiven(self):
        self.assertEqual(self.found("dictforkey"), [["dictionaryForKey"]])
        self.assertEqual(self.found("syncronize"), [["synchronize"]])
        self.assertEqual([titles[0] for titles in self.found("dict for key", "DICTIONARYFORKEY", "integer", "forced")],
                         ["dictionaryForKey", "dictionaryForKey", "integerForKey", "objectIsForcedForKey"])

    def test_nothing_is_found_for_nothing(self):
        self.assertEqual(self.found("", "  ", "?!", "xyzzy"), [[], [], [], []])

    def test_every_result_has_a_line_of_text_and_a_member_its_declaration(self):
        self.assertGreater(len(self.pages), 60)
        for page in self.pages:
            self.assertRegex(page["line"], r"^\w.+", page["address"])
            self.assertNotRegex(page["line"], r"[`*|\]]", page["address"])
        self.assertEqual({page["declaration"] for page in self.pages} - {""},
                         {member.declaration for member in reference.read()})

    def test_words_of_one_row_stand_for_each_other_and_no_row_says_a_word_twice(self):
        self.assertIn("save", search_words.others("writes"))
        self.assertIn("writes", search_words.others("save"))
        self.assertEqual(search_words.others("unheard"), [])
        for row in search_words.GROUPS:
            self.assertEqual(len(row), len(set(row)), row)
            self.assertTrue(all(re.fullmatch("[a-z]+", word) for word in row), row)


if __name__ == "__main__":
    unittest.main()
