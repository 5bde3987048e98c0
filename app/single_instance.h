// The lock by which a second instance of the program finds out that it is one.
#pragma once

// The file that holds the running instance's process id, in decimal, and a line end.
inline constexpr char kPidFile[] = "/var/run/korv-agent-mgr.pid";

// Takes the lock for as long as this process lives and writes its process id into the pid file. To
// be called once: opening and closing the file again would drop the lock. True when another
// instance holds it; false otherwise, after an error too, which is said on standard output and
// which start-up survives.
bool TakeInstanceLock();

// The same with the file named.
bool TakeInstanceLockAt(const char *pid_file);
