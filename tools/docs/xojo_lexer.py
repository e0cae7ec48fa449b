"""The host's language for the highlighter."""
import re

from pygments.lexer import RegexLexer, bygroups, words
from pygments.token import Comment, Keyword, Name, Number, Operator, Punctuation, String, Text

import xojo_words


class XojoLexer(RegexLexer):
    name = "Xojo"
    aliases = ["xojo"]
    flags = re.IGNORECASE | re.MULTILINE

    tokens = {
        "root": [
            (r"\s+", Text),
            (r"(?:'|//|\bRem\b).*", Comment.Single),
            (r'"(?:[^"\n]|"")*"', String.Double),
            (r"#\w+", Comment.Preproc),
            (r"&(?:[cuh][0-9a-f]+|o[0-7]+|b[01]+)", Number.Hex),
            (r"\d+\.\d+(?:e[+-]?\d+)?|\d+e[+-]?\d+", Number.Float),
            (r"\d+", Number.Integer),
            (r"(\.)(\w+)", bygroups(Punctuation, Name.Attribute)),
            (words(xojo_words.CONSTANTS, r"\b", r"\b"), Keyword.Constant),
            (words(xojo_words.TYPES, r"\b", r"\b"), Keyword.Type),
            (words(xojo_words.KEYWORDS + xojo_words.STATEMENTS, r"\b", r"\b"), Keyword),
            (r"\w+", Name),
            (r"[-+*/\\^=<>]", Operator),
            (r"[(),._:]", Punctuation),
            (r".", Text),
        ],
    }
