"""The texts of the shipped translations, as their translators wrote them."""
import pathlib

DIRECTORY = pathlib.Path(__file__).parents[2] / "translations"


def read_texts(language):
    """The texts of a language ("de_DE") by key; a line break is the "<br>" of the file."""
    texts = {}
    for line in (DIRECTORY / f"{language}.txt").read_text(encoding="utf-8").splitlines():
        if line and line[0] not in "#[":
            key, text = line.split(" = ", 1)
            assert key not in texts, f"{key} is there twice"
            texts[key] = text
    return texts
