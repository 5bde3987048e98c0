// Reading what a command prints.
#pragma once

#include <cstdio>
#include <string>

// Starts the command line with /bin/sh, its standard output on a pipe, and returns the stream that
// reads from it; null when it cannot be started. The caller closes the stream with fclose, at any
// time: nothing here ever waits for the command, which may live on after its output has ended. When
// it ends it stays a finished child of this process, which is one entry in the process table.
//
// A single command is best run with "exec": otherwise the shell that starts it holds the pipe open,
// and the output does not end before the command does.
std::FILE *OpenOutputOf(const std::string &command);
