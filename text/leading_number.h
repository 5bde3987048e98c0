// The number that a text begins with.
#pragma once

// The decimal number at the start of the text, after any white space: 0 when there is none, the
// nearest int when it does not fit in one.
int LeadingNumber(const char *text);
