// Whether a text names a gateway.
#include "pages/general/gateway.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>

#include <cstring>

bool CheckGateway(std::string &gateway) {
  const hostent *host = gethostbyname(gateway.c_str());
  if (host == nullptr) {
    return IsDottedAddress(gateway);
  }
  in_addr address = {};
  if (host->h_addrtype != AF_INET || host->h_addr_list[0] == nullptr) {
    return false;
  }
  std::memcpy(&address, host->h_addr_list[0], sizeof(address));
  gateway = inet_ntoa(address);
  return inet_addr(gateway.c_str()) != INADDR_NONE;
}

bool IsDottedAddress(const std::string &text) {
  in_addr address = {};
  address.s_addr = inet_addr(text.c_str());
  return address.s_addr != INADDR_NONE && text == inet_ntoa(address);
}
