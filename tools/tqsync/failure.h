// What a command throws when it cannot do its work: a text for people that says what is wrong and
// what to do about it. main prints it and ends with status 1.
#pragma once

#include <stdexcept>

namespace tqsync {

class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tqsync
