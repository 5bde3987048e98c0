// One instance at a time: the lock that tells a second start that it is one, and the process that
// holds it.
#pragma once

#include <cstdint>
#include <optional>

// The file that holds the running instance's process id, in decimal, and a line end. To lock it is
// to be that instance.
inline constexpr char kPidFile[] = "/var/run/korv-agent-mgr.pid";

// Takes the lock for as long as this process lives and writes its process id into the pid file,
// unless another instance holds the lock: true then. False otherwise, after an error too, which is
// said on standard output and which start-up survives. To be called once: opening and closing the
// file again would drop the lock.
bool AnotherInstanceHoldsLock(const char *pid_file = kPidFile);

// The process id that the pid file names: the number at the start of its first line, after any
// white space; 0 when there are no digits, and the nearest 32-bit number for one that does not fit.
// Of the line, 1023 bytes count. Nothing when the file's reading, a command, cannot be started: the
// shell reads the path as it stands, so nothing in it may mean something to the shell.
std::optional<std::int32_t> RunningInstancePid(const char *pid_file = kPidFile);
