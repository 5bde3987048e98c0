"""The compiler takes only product data that fit, and the build takes the file that it is told."""
import os
import pathlib
import subprocess

import pytest

SOURCE_DIR = os.environ["KORV_SOURCE_DIR"]
CXX = os.environ["KORV_CXX"]
FAMILIES = "ABCD"
MODELS = (["a1", "a1", "b2", "b2", "c3", "c3", "d4", "e5", "f6", "g7", "h8", "i9"]
          + ["101", "102", "103", "104", "105", "106"])
COUNT = "18 model codes are wanted"
TWO_CHARACTERS = "the model codes of rows 1 to 12 are two letters or digits each"
THREE_DIGITS = "the model codes of rows 13 to 18 are three digits each"
PAIRS = "model rows 1 and 2, 3 and 4, 5 and 6 share a code, and no others do"


def compile_data(path):
    """The exit status and the complaints."""
    result = subprocess.run(
        [CXX, "-std=c++17", "-fsyntax-only", "-I", SOURCE_DIR, f'-DPRODUCT_DATA_HEADER="{path}"',
         "-x", "c++", "-"], input='#include "app/checked_product_data.h"\n',
        env={**os.environ, "LC_ALL": "C"}, capture_output=True, text=True, timeout=60, check=False)
    return result.returncode, result.stderr


def header(families, models):
    literals = ", ".join('"%s"' % code.replace("\\", r"\\").replace('"', r"\"") for code in models)
    return (f'#include <string_view>\ninline constexpr std::string_view kFamilyLetters = "{families}";\n'
            f"inline constexpr std::string_view kModelCodes[] = {{{literals}}};\n")


def data_with(families=FAMILIES, more=(), **changes):
    """Good data except for the families and some codes, model_1 to model_18; None is left out."""
    codes = {f"model_{row}": code for row, code in enumerate(MODELS, 1)}
    codes.update(changes)
    return header(families, [code for code in codes.values() if code is not None] + list(more))


@pytest.mark.parametrize("text", [
    data_with(),
    data_with(families="AaBb"),
    data_with(families="azAZ", model_7="00", model_8="zz", model_9="ZZ", model_18="999"),
    data_with(model_7="1a", model_8="a9", model_13="000"),
])
def test_takes_data_that_fit(tmp_path, text):
    (tmp_path / "data.h").write_text(text)
    status, complaints = compile_data(tmp_path / "data.h")
    assert status == 0, complaints


@pytest.mark.parametrize("text, complaint", [
    (data_with(families="ABC"), "four family letters are wanted"),
    (data_with(families="ABCDE"), "four family letters are wanted"),
    (data_with(families="ABC4"), "a family is a letter"),
    (data_with(families="AB-D"), "a family is a letter"),
    (data_with(families=" ABC"), "a family is a letter"),
    (data_with(families="ABCA"), "the family letters are all different"),
    (data_with(families="AABC"), "the family letters are all different"),
    (data_with(model_18=None), COUNT),
    (data_with(more=["107"]), COUNT),
    (data_with(model_1="a", model_2="a"), TWO_CHARACTERS),
    (data_with(model_12="i99"), TWO_CHARACTERS),
    (data_with(model_12=""), TWO_CHARACTERS),
    (data_with(model_7='"4'), TWO_CHARACTERS),
    (data_with(model_7="'4"), TWO_CHARACTERS),
    (data_with(model_7="\\4"), TWO_CHARACTERS),
    (data_with(model_7="d;"), TWO_CHARACTERS),
    (data_with(model_7="d "), TWO_CHARACTERS),
    (data_with(model_7="é"), TWO_CHARACTERS),
    (data_with(model_13="10"), THREE_DIGITS),
    (data_with(model_13="1a0"), THREE_DIGITS),
    (data_with(model_18="10x"), THREE_DIGITS),
    (data_with(model_18="1066"), THREE_DIGITS),
    (data_with(model_2="a2"), PAIRS),
    (data_with(model_3="b1"), PAIRS),
    (data_with(model_6="C3"), PAIRS),
    (data_with(model_3="a1", model_4="a1"), PAIRS),
    (data_with(model_8="d4"), PAIRS),
    (data_with(model_9="a1"), PAIRS),
    (data_with(model_18="101"), PAIRS),
    (data_with(model_18="105"), PAIRS),
])
def test_refuses_data_that_do_not_fit(tmp_path, text, complaint):
    (tmp_path / "data.h").write_text(text, encoding="utf-8")
    status, complaints = compile_data(tmp_path / "data.h")
    assert status != 0
    assert f"static assertion failed: {complaint}" in complaints
    assert complaints.count("static assertion failed") == 1


def test_refuses_a_file_without_data(tmp_path):
    (tmp_path / "data.h").touch()
    status, complaints = compile_data(tmp_path / "data.h")
    assert status != 0
    assert "kFamilyLetters" in complaints and "kModelCodes" in complaints


def test_refuses_what_is_not_a_file(tmp_path):
    for path in (tmp_path, tmp_path / "missing.h"):
        status, complaints = compile_data(path)
        assert status != 0
        assert str(path) in complaints


def test_the_build_takes_the_file_that_it_is_told_by_whatever_path(tmp_path):
    """And takes it anew when it has changed."""
    data = tmp_path / "own data.h"
    data.write_text(data_with(families="ABCA"))
    subprocess.run(["cmake", "-S", SOURCE_DIR, "-B", "tree", "-G", "Ninja",
                    f"-DCMAKE_CXX_COMPILER={CXX}", "-DPRODUCT_DATA=own data.h"],
                   cwd=tmp_path, stdout=subprocess.DEVNULL, timeout=60, check=True)

    def build():
        result = subprocess.run(["ninja", "-C", "tree", "app/CMakeFiles/app.dir/platform.cpp.o"],
                                cwd=tmp_path, capture_output=True, text=True, timeout=60, check=False)
        return result.returncode, result.stdout

    status, output = build()
    assert status != 0
    assert "the family letters are all different" in output
    data.write_text(data_with(families="KLMN"))
    assert build()[0] == 0
    objects = pathlib.Path(tmp_path / "tree/app/CMakeFiles/app.dir/platform.cpp.o").read_bytes()
    assert b"105" in objects and b"905" not in objects
