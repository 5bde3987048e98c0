// Whether a text names a gateway. No widgets.
#pragma once

#include <string>

// True when `gateway` names a usable IPv4 address: a host name or number that the system's lookup
// resolves, or otherwise an address in full dotted form; never 255.255.255.255. What resolves is
// replaced by its first address in dotted form, so callers pass a copy. Blocks while the lookup
// runs. Main thread only.
bool CheckGateway(std::string &gateway);

// Whether a text is an address in exactly the dotted form in which the system writes it, other than
// 255.255.255.255.
bool IsDottedAddress(const std::string &text);
