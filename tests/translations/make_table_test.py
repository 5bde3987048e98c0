"""How a translation becomes a table."""
import pathlib
import subprocess

MAKE_TABLE = pathlib.Path(__file__).parents[2] / "translations" / "make_table"


def make_table(directory, translation, charset):
    """(the table's bytes, None when it failed; what was said on standard error)"""
    source, table = directory / "xx.txt", directory / "xx.prop"
    source.write_bytes(translation if isinstance(translation, bytes) else translation.encode())
    made = subprocess.run([MAKE_TABLE, source, charset, table], stderr=subprocess.PIPE, check=False)
    said = made.stderr.decode(errors="replace")
    return table.read_bytes() if made.returncode == 0 else None, said


def test_is_in_the_charset_and_without_comments(tmp_path):
    table, _ = make_table(tmp_path, "# für alle\n[Message]\nk = größer = höher\n", "ISO-8859-1")
    assert table == "[Message]\nk = größer = höher\n".encode("iso-8859-1")


def test_breaks_lines_with_a_carriage_return(tmp_path):
    table, _ = make_table(tmp_path, "[Message]\nk = a<br>b<br>c\n", "UTF-8")
    assert table == b"[Message]\nk = a\rb\rc\n"


def test_leaves_out_what_no_table_can_hold(tmp_path):
    escapes = "".join(f"k{i} = a \\{c} b\n" for i, c in enumerate("\"'\\nrt"))
    table, _ = make_table(tmp_path, "[Message]\n" + escapes + 'k = a \\ "\n', "UTF-8")
    assert table == b'[Message]\nk = a \\ "\n'


def test_names_the_texts_that_the_charset_lacks(tmp_path):
    table, said = make_table(
        tmp_path, "[Message]\na = coeur\nb = cœur\nc = €\n", "ISO-8859-1")
    assert table is None
    assert said.splitlines() == [f"{tmp_path}/xx.txt: not in ISO-8859-1: b = cœur",
                                 f"{tmp_path}/xx.txt: not in ISO-8859-1: c = €"]


def test_refuses_bytes_that_are_no_utf8(tmp_path):
    table, said = make_table(tmp_path, b"[Message]\nk = \xe9\n", "UTF-8")
    assert table is None and "not in UTF-8" in said


def test_a_failure_keeps_the_table_that_is_there(tmp_path):
    make_table(tmp_path, "[Message]\nk = x\n", "UTF-8")
    assert make_table(tmp_path, "[Message]\nk = €\n", "ISO-8859-1")[0] is None
    assert sorted(file.name for file in tmp_path.iterdir()) == ["xx.prop", "xx.txt"]
