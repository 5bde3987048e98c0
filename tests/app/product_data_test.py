"""What the configure step makes of product data files: only well-formed ones are taken."""
import os
import subprocess

import pytest

SOURCE_DIR = os.environ["KORV_SOURCE_DIR"]
FAMILIES = ["A", "B", "C", "D"]
MODELS = (["a1", "a1", "b2", "b2", "c3", "c3", "d4", "e5", "f6", "g7", "h8", "i9"]
          + ["101", "102", "103", "104", "105", "106"])


def check(path):
    """The exit status and the complaint, whose lines CMake breaks where it likes."""
    result = subprocess.run(
        ["cmake", f"-DPRODUCT_DATA={path}", "-P", f"{SOURCE_DIR}/cmake/ProductData.cmake"],
        capture_output=True, text=True, timeout=60, check=False)
    return result.returncode, " ".join(result.stderr.split())


def data_with(**changes):
    """Good data but for some words: family_1 to family_4, model_1 to model_18."""
    words = {f"family_{row}": word for row, word in enumerate(FAMILIES, 1)}
    words.update({f"model_{row}": word for row, word in enumerate(MODELS, 1)})
    words.update(changes)
    return "\n".join(words.values()) + "\n"


@pytest.mark.parametrize("text", [
    data_with(),
    data_with().replace("\n", " "),
    data_with().replace("\n", "\r\n"),
    "# [a]; \"comment\" \\ ${of} any kind é\n\n" + data_with().replace("A\n", "\tA # first\n"),
    data_with(family_2="a"),
    data_with(model_7="00", model_18="000"),
])
def test_takes_well_formed_data(tmp_path, text):
    (tmp_path / "data").write_text(text, encoding="utf-8", newline="")
    assert check(tmp_path / "data") == (0, "")


@pytest.mark.parametrize("changes, complaint", [
    ({"model_18": ""}, "21 words found"),
    ({"model_18": "106 107"}, "23 words found"),
    ({"family_1": "AB"}, "family 'AB' is not one letter"),
    ({"family_4": "4"}, "family '4' is not one letter"),
    ({"family_4": "A"}, "the family letters are not all different: A B C A"),
    ({"model_1": "a", "model_2": "a"}, "model row 1, 'a', is not two characters"),
    ({"model_12": "i99"}, "model row 12, 'i99', is not two characters"),
    ({"model_13": "10"}, "model row 13, '10', is not three digits"),
    ({"model_18": "10x"}, "model row 18, '10x', is not three digits"),
    ({"model_18": "1066"}, "model row 18, '1066', is not three digits"),
    ({"model_2": "a2"}, "model rows 1 and 2 differ: a1 a2"),
    ({"model_3": "b1"}, "model rows 3 and 4 differ: b1 b2"),
    ({"model_6": "C3"}, "model rows 5 and 6 differ: c3 C3"),
    ({"model_9": "a1"}, "the model codes are not all different"),
    ({"model_18": "101"}, "the model codes are not all different"),
    ({"model_7": '"4'}, "'\"' is neither letter, digit nor blank"),
    ({"model_7": "'4"}, "''' is neither letter, digit nor blank"),
    ({"model_7": "\\4"}, "'\\' is neither letter, digit nor blank"),
    ({"model_7": "d;"}, "';' is neither letter, digit nor blank"),
    ({"model_7": "[4"}, "'[' is neither letter, digit nor blank"),
    ({"model_7": "é"}, "'é' is neither letter, digit nor blank"),
])
def test_refuses_data_of_another_shape(tmp_path, changes, complaint):
    (tmp_path / "data").write_text(data_with(**changes), encoding="utf-8")
    status, stderr = check(tmp_path / "data")
    assert status != 0
    assert complaint in stderr
    assert str(tmp_path / "data") in stderr


def test_refuses_an_empty_file(tmp_path):
    (tmp_path / "data").touch()
    status, stderr = check(tmp_path / "data")
    assert status != 0
    assert "4 family letters and 18 model codes wanted, 0 words found" in stderr


def test_refuses_what_is_no_file(tmp_path):
    for path in (tmp_path, tmp_path / "missing"):
        status, stderr = check(path)
        assert status != 0
        assert f"{path}: there is no such product data file" in stderr
