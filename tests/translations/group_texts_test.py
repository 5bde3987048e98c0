"""What the translations say of the characters that a group must not hold."""
import pytest

from written_texts import DIRECTORY, read_texts

REFUSED = {"Msg_DlgGroup_Err3": '=;"\\<>*?|:&', "Msg_DlgGroup_Err6": '^=;\\"',
           "Msg_DlgGroup_Err8": '=;"\\<>*?|:&/'}


@pytest.mark.parametrize("language", sorted(file.stem for file in DIRECTORY.glob("*_*.txt")))
def test_every_refused_character_is_named(language):
    texts = read_texts(language)
    assert {key: set(characters) - set(texts[key]) for key, characters in REFUSED.items()} \
        == {key: set() for key in REFUSED}
