# The site of the reference: Sphinx with MyST (Markdown), as Debian has them, and a theme of its own on Sphinx's plainest.
# The site is read from disk, so nothing in it may need a server or the network.
import pathlib
import sys

from docutils import nodes

here = pathlib.Path(__file__).resolve().parent
sys.path.append(str(here))

from xojo_lexer import XojoLexer  # noqa: E402 (from this folder)

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
html_use_index = False


def wrap_tables(app, doctree, name):
    """A table that is wider than the screen scrolls alone."""
    for table in list(doctree.findall(nodes.table)):
        wrapper = nodes.container(classes=["table-wrapper"])
        table.replace_self(wrapper)
        wrapper += table


def setup(app):
    app.add_lexer("xojo", XojoLexer)
    app.connect("doctree-resolved", wrap_tables)
