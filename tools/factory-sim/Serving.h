// The factory UI server's port check and the page as factory-sim serves it.
#pragma once

#include <string>

namespace factorysim {

// Whether the factory UI server's port is free on the address; the reason if not.
// Checked before anything runs, so that the page never talks to another program.
std::string CheckServerPort(const std::string& address, int port);
// The page learns the control endpoint from the server that serves it.
std::string WithControlUrl(const std::string& page, const std::string& url);
// The address a browser on this machine reaches the server at.
std::string HostForUrl(const std::string& address);

}  // namespace factorysim
