// What start-up prints for whoever watches it.
#pragma once

// Prints `text` on standard output so that a pipe has it at once, before anything that a child
// command writes there. What cannot be printed is lost; that nobody reads it any more is no reason
// to end.
void PrintNow(const char *text);
