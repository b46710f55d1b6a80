// Standard input and output as a filter uses them: bytes as they are, taken as soon as they come.
#pragma once

#include <cstddef>
#include <string_view>

namespace tqsync {

// Whether the user's locale (on Windows the system's code page) has Shift-JIS text.
bool locale_is_shift_jis();

// Keeps the system from translating line ends.
void use_binary_streams();

// Waits for input and takes what has come, at most `size` bytes; 0 at its end. Throws Failure.
std::size_t read_input(char* bytes, std::size_t size);

// Hands the bytes on at once. Throws Failure when nobody can take them.
void write_output(std::string_view bytes);

}  // namespace tqsync
