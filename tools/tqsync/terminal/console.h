// What a command-line program asks of the system: its arguments and its output in UTF-8, its
// environment, and whether a person sits at the other end.
#pragma once

#include <string>
#include <vector>

namespace tqsync {

// The arguments in UTF-8, without the program's name.
std::vector<std::string> utf8_arguments(int argc, char** argv);
// Makes the console show UTF-8; the code page in which it showed text before, which is to be put
// back at the end, since the console outlives the program. 0 and no effect except on Windows.
unsigned use_utf8_output();
void use_output_code_page(unsigned code_page);

// Sets an environment variable of this process, both UTF-8.
void set_environment(const std::string& name, const std::string& value);

// Whether standard input is a terminal, so that a question can be asked.
bool input_is_terminal();

}  // namespace tqsync
