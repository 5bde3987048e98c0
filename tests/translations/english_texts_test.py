"""The list of texts, translations/en_US.txt, is that of the code."""
import ast
import pathlib
import re

from written_texts import read_texts

ROOT = pathlib.Path(__file__).parents[2]
# In a call and in a table of rows alike, the English text comes after its key: "Key", "Text". The
# text may be in several pieces.
STRING = r'"(?:[^"\\\n]|\\.)*"'
KEY_AND_TEXT = re.compile(
    r'"(Title|(?:Button|Frame|Label|Msg|Page|Radio|Time|Title|TreeView)_\w+|\w+_Store_Item\d+)",\s*'
    rf'({STRING}(?:\s+{STRING})*)')


def texts_in_code():
    """The texts by key, as the list writes them."""
    texts = {}
    for folder in ("app", "pages", "settings", "text"):
        for source in sorted((ROOT / folder).rglob("*.[ch]*")):
            for key, literals in KEY_AND_TEXT.findall(source.read_text(encoding="utf-8")):
                text = "".join(map(ast.literal_eval, re.findall(STRING, literals)))
                text = text.replace("\n", "<br>")
                assert texts.setdefault(key, text) == text, f"{key} has two texts"
    return texts


def test_the_list_is_what_stands_in_the_code():
    assert texts_in_code() == read_texts("en_US")
