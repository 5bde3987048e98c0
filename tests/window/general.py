"""The General page as a person uses it: its rows, its messages, and what OK saves of it."""
import os

INTERVALS = ["Never Pull", "30 minutes", "1 hour", "6 hours", "1 day(recommended)", "7 days"]
LOG_LEVELS = ["Error(recommended)", "Warning", "Information"]
DELAYS = ["No Delay", "1 minute", "10 minutes", "30 minutes", "1 hour"]

CURRENT_FAULT = "Current gateway is not correct.."
BACKUP_FAULT = "Backup gateway is not correct.."
INTERVAL_EMPTY = ("The pull interval value is empty.\n"
                  "Set interval using the recommended default value(1 day - 1440 minutes)")
INTERVAL_RANGE = "The pull interval should be a number between 0 and 10080."
INTERVAL_FORMAT = "The input pull interval format is wrong."
INTERVAL_LENGTH = "The input pull interval value max size can not exceed 50 characters."
DELAY_EMPTY = ("The delay scope value is empty.\n"
               "Set delay scope using the recommended default value(10 minutes)")
DELAY_RANGE = "The delay scope should be a number between 0 and 60."
DELAY_FORMAT = "The input delay scope interval format is wrong."
DELAY_LENGTH = "The input delay scope value max size can not exceed 50 characters."


def expect_message(app, text):
    """The error message with the text, closed, and no other after it."""
    message = app.message()
    assert (message.kind, message.text) == ("error", text)
    message.close()
    app.no_message()


def expect_row(combo, fixed, text):
    """The row with the text is chosen: a fixed one, or one more at the end."""
    assert combo.shown == text
    assert combo.rows() == (fixed if text in fixed else [*fixed, text])
    assert combo.active == combo.rows().index(text)


def save(app):
    """OK, and the hint closed."""
    app.button("OK").click()
    app.message().close()
    assert app.wait_exit() == 0


def saved(app, device, *names):
    """What OK saves of these settings."""
    save(app)
    return [os.fsdecode(device.registry.committed()[name]) for name in names]
