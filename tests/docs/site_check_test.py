"""The look over a finished site finds what would be wrong on a reader's disk."""
import pathlib
import tempfile
import unittest

import support  # noqa: F401 (the tools' folder)
import check_site


def problems(pages, members=("one",)):
    with tempfile.TemporaryDirectory() as folder:
        site = pathlib.Path(folder).resolve()
        for path, text in pages.items():
            (site / path).parent.mkdir(parents=True, exist_ok=True)
            (site / path).write_text(text, encoding="utf-8")
        return check_site.problems(site, members)


SKIP = '<a class="skip" href="#text">Skip</a><main id="text"></main>'
AROUND = SKIP + '<a aria-current="page" href="#">x</a>'
GOOD = {"index.html": SKIP + '<link rel="stylesheet" href="s.css"><a href="members/one.html#part">one</a>', "s.css": "",
        "members/one.html": AROUND + '<h2 id="part">Part</h2><a href="../index.html">up</a><a href="#part">here</a>'}


class Cases(unittest.TestCase):
    def test_a_good_site_is_good(self):
        self.assertEqual(problems(GOOD), [])

    def test_a_missing_page_of_a_member_is_found(self):
        self.assertEqual(problems(GOOD, ["one", "two"]), ["members/two.html is missing"])

    def test_a_dead_link_is_found(self):
        self.assertEqual(problems({**GOOD, "x.html": AROUND + '<a href="gone.html">x</a>'}),
                         ["x.html: gone.html leads nowhere"])

    def test_a_link_to_a_folder_is_dead_on_disk(self):
        self.assertEqual(problems({**GOOD, "x.html": AROUND + '<a href="members/">x</a>'}),
                         ["x.html: members/ leads nowhere"])

    def test_a_missing_place_on_a_page_is_found(self):
        self.assertEqual(problems({**GOOD, "x.html": AROUND + '<a href="members/one.html#gone">x</a>'}),
                         ["x.html: members/one.html#gone: there is no such place on that page"])

    def test_a_link_from_the_root_is_found(self):
        self.assertEqual(problems({**GOOD, "x.html": AROUND + '<a href="/index.html">x</a>'}),
                         ["x.html: /index.html does not work from disk"])

    def test_what_comes_from_the_network_is_found(self):
        self.assertEqual(problems({**GOOD, "x.html": AROUND + '<script src="https://example.org/x.js"></script>'}),
                         ["x.html: https://example.org/x.js comes from the network"])

    def test_a_page_that_the_list_of_pages_does_not_mark_is_found(self):
        self.assertEqual(problems({**GOOD, "x.html": SKIP}), ["x.html: the page is not marked in the list of pages"])

    def test_a_page_without_a_way_past_the_list_is_found(self):
        self.assertEqual(problems({**GOOD, "search.html": "<p>x</p>"}),
                         ["search.html: there is no way past the list of pages"])

    def test_a_link_to_the_network_is_allowed(self):
        self.assertEqual(problems({**GOOD, "x.html": AROUND + '<a href="https://example.org/">x</a>'}), [])

    def test_a_site_without_pages_is_none(self):
        self.assertEqual(len(problems({"s.css": ""})), 1)


if __name__ == "__main__":
    unittest.main()
