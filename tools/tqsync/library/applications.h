// The registry of partner applications, in UTF-8.
#pragma once

#include <string>
#include <vector>

namespace tqsync {

// How many matching keys there are; they are numbered from 0.
inline constexpr short kKeys = 20;

struct Application {
  short number, type;
  std::string name;
  std::vector<short> keys;  // by which records of the type can be matched
};

// In the registry's order. Throws Failure when the registry cannot be read or has a bad line.
std::vector<Application> registered_applications();

}  // namespace tqsync
