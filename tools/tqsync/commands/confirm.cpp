#include <iostream>

#include "commands/command.h"
#include "failure.h"
#include "terminal/console.h"

namespace tqsync {

bool confirmed(const std::string& question, const std::string& what) {
  if (!input_is_terminal()) throw Failure(what + " with --yes, since nobody can be asked.");
  std::cout << question << " [y/N] " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  return answer == "y" || answer == "Y" || answer == "yes";
}

}  // namespace tqsync
