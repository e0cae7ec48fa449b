# The site of the reference: Sphinx with MyST (Markdown), as Debian has them, and a theme of its own on Sphinx's plainest.
# The site is read from disk, so nothing in it may need a server or the network.
import pathlib

import re

from docutils import nodes
from pygments.lexers.dotnet import VbNetLexer
from sphinx.search.en import SearchEnglish

here = pathlib.Path(__file__).resolve().parent

project = "NSUserDefaultsKTZ"
release = version = (here.parents[1] / "VERSION").read_text().strip()
language = "en"

extensions = ["myst_parser"]
myst_heading_anchors = 3
source_suffix = {".md": "markdown"}
root_doc = "index"
smartquotes = False

html_theme = "theme"
html_theme_path = [str(here)]
html_title = f"NSUserDefaultsKTZ {release}"
html_copy_source = False
html_show_search_summary = False  # it would be read from the other pages, which a browser does not allow on disk
html_use_index = False


class SearchParts(SearchEnglish):
    """Finds a member by the words in its name, too: objectIsForcedForKey by "forced"."""

    def split(self, text):
        words = super().split(text)
        return words + [part for word in words for part in re.findall(r"[A-Z]?[a-z]+|[A-Z]+(?![a-z])", word) if part != word]


def wrap_tables(app, doctree, name):
    """A table that is wider than the screen scrolls alone."""
    for table in list(doctree.findall(nodes.table)):
        wrapper = nodes.container(classes=["table-wrapper"])
        table.replace_self(wrapper)
        wrapper += table


def setup(app):
    app.add_lexer("xojo", VbNetLexer)  # the nearest thing that the highlighter knows to the host's language
    app.add_search_language(SearchParts)
    app.connect("doctree-resolved", wrap_tables)
