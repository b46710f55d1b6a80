#include "commands/command.h"

namespace tqsync {

CLI::Option* add_encoding_option(CLI::App& command, Encoding& encoding, const std::string& help) {
  const auto take = [&encoding](const std::string& name) {
    const auto found = encoding_from_name(name);
    if (!found) throw CLI::ValidationError("--encoding", name + " is none of sjis, utf8, auto");
    encoding = *found;
  };
  return command.add_option_function<std::string>("--encoding", take, help)
      ->type_name("sjis|utf8|auto");
}

}  // namespace tqsync
