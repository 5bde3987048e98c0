"""The program in other languages: those that are shipped, and one made up for a test."""
from conftest import LOCALES
from tests.translations.written_texts import read_texts


def language_of(locale):
    """The language that the texts come from: "de_DE" for "de_DE.ISO-8859-1"."""
    return "en_US" if locale == "C.UTF-8" else locale.split(".")[0]


def start_in(locale, start, device, **options):
    """Starts the program with the shipped tables in a locale of theirs ("de_DE.UTF-8"); the App,
    which has the language's texts by key in `written`."""
    device.install_languages()
    written = {key: text.replace("<br>", "\r")
               for key, text in read_texts(language_of(locale)).items()}
    app = start(locale=locale, env={"LOCPATH": LOCALES}, title=written["Title"], **options)
    app.written = written
    return app


def made_up(key):
    """The text of a key in the made-up language; titles take an underscore for a mnemonic."""
    return f"«{key.replace('_', ' ')}»"


def install_made_up(device, keys):
    """Makes the made-up language, for these keys by section, that of the tests' locale."""
    device.write_table("C.UTF-8", "".join(
        f"[{section}]\n" + "".join(f"{key} = {made_up(key)}\n" for key in keys[section])
        for section in keys))
