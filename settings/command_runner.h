// Running one command line through the system shell.
//
// Both operations take a printf format and its arguments. The command line is cut silently at 4093
// bytes and run as cut. Nothing is quoted or escaped: the callers' formats put single quotes around
// what they pass. Main thread only.
#pragma once

#include <sys/types.h>

#include <cstdio>

namespace CommandRunner {

// Runs the command line and waits for it. Returns the shell's exit code, 0 to 255; 127 also when
// the shell could not be executed; -1 when no child could be made, when waiting failed, and when
// the child ended by a signal; 1 for a null format.
int RunCommand(const char *format, ...) __attribute__((format(printf, 1, 2)));

// Starts the command line with its descriptors 1 and 2 joined on one pipe; the format is not null.
// Returns 0 with the read end in `*stream` and the child in `*child`: the caller closes the stream
// with fclose and does not wait for the child. Returns 1 when the pipe could not be made, or the
// stream, which leaves a running child in `*child`; -1 when the child could not. `*stream` is then
// null, and `*child` is -1 where there is no child.
int OpenCommandOutput(std::FILE **stream, pid_t *child, const char *format, ...)
    __attribute__((format(printf, 3, 4)));

// Waits for a child's end. Returns its exit code, or -1 when it ended by a signal or there is no
// such child.
int WaitChild(pid_t child);

}  // namespace CommandRunner
