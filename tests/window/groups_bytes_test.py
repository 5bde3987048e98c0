"""Stored groups that are not UTF-8: shown with a replacement for each such byte, kept as they are."""
import os

import pytest

from groups import add, add_group, edit, open_groups, rows, saved

STORED = os.fsdecode(b'\xffB\xe4="\xe4c\xfe";A="1"')


@pytest.fixture
def app(start, device):
    return open_groups(start, device, STORED)


def test_a_list_with_bytes_that_are_no_utf_8_is_written_back(app, device):
    assert rows(app) == [("\ufffdB\ufffd", "\ufffdc\ufffd"), ("A", "1")]
    assert saved(app, device) == STORED


def test_other_groups_can_be_changed(app, device):
    edit(app, 1).fill(value="2").accept()
    add_group(app, "C", "3")
    assert saved(app, device) == STORED.replace('"1"', '"2"') + ';C="3"'


def test_an_edit_that_changes_nothing_keeps_name_and_value(app, device):
    dialog = edit(app, 0)
    assert dialog.texts == ("\ufffdB\ufffd", "\ufffdc\ufffd")
    dialog.accept()
    assert saved(app, device) == STORED


def test_a_new_value_keeps_the_name(app, device):
    edit(app, 0).fill(value="new").accept()
    assert saved(app, device) == os.fsdecode(b'\xffB\xe4="new";A="1"')


def test_a_new_name_keeps_the_value(app, device):
    edit(app, 0).fill(name="new").accept()
    assert saved(app, device) == os.fsdecode(b'NEW="\xe4c\xfe";A="1"')


def test_a_new_name_keeps_a_value_that_is_too_long_to_be_shown(start, device):
    value = "v" * 300
    app = open_groups(start, device, f'A="{value}"')
    dialog = edit(app, 0)
    assert dialog.texts == ("A", value[:255])
    dialog.fill(name="b").accept()
    assert saved(app, device) == f'B="{value}"'


def test_what_was_typed_into_counts_as_shown(app, device):
    dialog = edit(app, 0)
    app.key("End")
    app.type("x")
    dialog.accept()
    assert saved(app, device) == os.fsdecode(b'\xffB\xe4="') + '\ufffdc\ufffdx";A="1"'


def test_a_quote_refused_in_place_of_the_name_keeps_it(app, device):
    dialog = edit(app, 0)
    dialog.name.entry.fill("'")
    assert dialog.texts == ("\ufffdB\ufffd", "\ufffdc\ufffd")
    dialog.accept()
    assert saved(app, device) == STORED


def test_a_picked_name_is_found_in_the_list(app, device):
    dialog = add(app)
    dialog.name.pick_with_keys("\ufffdB\ufffd")
    assert dialog.texts == ("\ufffdB\ufffd", "\ufffdc\ufffd")
    assert dialog.refused().startswith("The group has already existed")


def test_the_group_can_be_deleted(app, device):
    app.table().select(0)
    app.button("Delete").click()
    assert saved(app, device) == 'A="1"'
