// The management agent's version, as its executable tells it.
#pragma once

#include <string>

#include "text/heap_text.h"

// The version text, bytes as the agent printed them, its line end included; null when none is
// known. Shown by the General page, freed by OK and by Cancel.
extern HeapText agent_version;

// Runs the agent's executable with "-v", its library directory added to LD_LIBRARY_PATH, and makes
// the last line that it prints the version text. A command that cannot be started or prints nothing
// leaves the text null.
//
// Afterwards, LD_LIBRARY_PATH holds just the library directory when it was not set before, for all
// later commands to inherit, and is not set at all when it was.
void QueryAgentVersion();

// What a line tells: the text after its first ":", or all of it, without blanks at its ends. A
// line end is not a blank and stays.
std::string VersionFromLine(const std::string &line);
