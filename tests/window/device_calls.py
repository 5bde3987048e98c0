"""What the registry's client is called with in one life of the program."""

SETTINGS = ["CurrentGateway", "BackupGateway", "Interval_min", "LogLevel", "DelayScope_min",
            "GetGroupsFromDHCP", "PreAssignGroups"]
BRANCH = "root/vexa/agent/"


def gets():
    """The calls of a start."""
    return [["get", BRANCH + name] for name in SETTINGS]


def writes(values):
    """The calls of OK, for a dict of the seven values; one that is None is left out."""
    calls = []
    for name in SETTINGS:
        if values[name] is not None:
            calls += [["create", BRANCH + name], ["set", BRANCH + name, values[name]]]
    return [*calls, ["commit"]]


def written(device):
    """The calls so far that change the registry, in order."""
    return [call.args for call in device.journal() if call.args[0] != "get"]
