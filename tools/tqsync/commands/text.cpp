// tqsync text: the library's text and date utilities as filters over arguments or standard input.
#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands/command.h"
#include "failure.h"
#include "terminal/filter_io.h"
#include "text/library_text.h"
#include "text/line_filter.h"
#include "text/unicode.h"
#include "tqutil/textutil.h"

namespace tqsync {
namespace {

struct TextOptions {
  Encoding encoding = Encoding::kDetect;
  std::vector<std::string> arguments;
  std::string unwanted = "-";
  std::string separator = "/";
  bool pad = true;
  bool century = false;
};

constexpr std::size_t kInputSize = 65536;

// A result of `growth` bytes at most for each byte of the text.
std::string converted(auto function, const std::string& sjis, std::size_t growth) {
  std::string out(growth * sjis.size() + 1, '\0');
  const std::int32_t size = function(sjis.c_str(), out.data());
  if (size < 0) throw std::bad_alloc();
  out.resize(static_cast<std::size_t>(size));
  return out;
}

// The library takes a separator as its number, and 200 to expand two-digit years.
short date_mode(const TextOptions& options) {
  constexpr std::array<const char*, 7> kSeparators = {"none", "/", "-", ".", ":", ";", ","};
  for (std::size_t at = 0; at < kSeparators.size(); ++at) {
    if (options.separator != kSeparators[at]) continue;
    if (!options.century) return static_cast<short>(static_cast<int>(at) - 1);
    if (options.separator == "/") return 200;
    throw Failure("--century prints dates with \"/\" only. Leave out --separator.");
  }
  throw Failure("--separator takes one of none / - . : ; ,");
}

std::string date_line(const std::string& sjis, short mode, bool pad) {
  // A date takes 21 bytes at most; what is no date comes back as it was, 1000 bytes of it.
  std::string out(1001, '\0');
  if (tqDateFormatCnv(sjis.c_str(), out.data(), mode, pad ? 1 : 0) != 0) return sjis;
  out.resize(out.find('\0'));
  return out;
}

LineFilter::Convert strip(const TextOptions& options) {
  const std::string unwanted = to_sjis("--characters", options.unwanted);
  for (const char byte : unwanted) {
    if (byte < ' ') {  // all others are of two bytes, or would join lines
      throw Failure("--characters takes half-width characters of ASCII only.");
    }
  }
  return [unwanted](const std::string& sjis) {
    const auto without = [&](const char* src, char* dst) {
      return tqStrDelAnyTok(unwanted.c_str(), src, dst);
    };
    return converted(without, sjis, 1);
  };
}

void filter_arguments(LineFilter& filter, const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) write_output(filter.feed(argument + "\n"));
}

void filter_input(LineFilter& filter) {
  use_binary_streams();
  const auto bytes = std::make_unique<char[]>(kInputSize);
  while (const std::size_t got = read_input(bytes.get(), kInputSize)) {
    write_output(filter.feed({bytes.get(), got}));
  }
  write_output(filter.finish());
}

// The locale decides unless --encoding does. Arguments may have been typed in UTF-8 all the same:
// the Windows console gives them so.
bool has_shift_jis(const TextOptions& options) {
  if (options.encoding != Encoding::kDetect) return options.encoding == Encoding::kShiftJis;
  const auto is_utf8 = [](const std::string& text) {
    return find_malformed(text) == std::string::npos;
  };
  const bool typed_in_utf8 =
      !options.arguments.empty() && std::ranges::all_of(options.arguments, is_utf8);
  return locale_is_shift_jis() && !typed_in_utf8;
}

void run_filter(const LineFilter::Convert& convert, LineFilter::Scope scope,
                const TextOptions& options) {
  LineFilter filter(convert, scope, has_shift_jis(options),
                    [](const std::string& fault) { std::cerr << "tqsync: " << fault << '\n'; });
  if (options.arguments.empty()) {
    filter_input(filter);
  } else {
    filter_arguments(filter, options.arguments);
  }
  if (filter.faults() > 0) {
    throw Failure("lines left as they were: " + std::to_string(filter.faults()));
  }
}

// A subcommand whose conversion `make` builds from the options when it runs.
CLI::App* add_filter(CLI::App& text, Program& program, const std::shared_ptr<TextOptions>& options,
                     const char* name, const char* help, LineFilter::Scope scope, auto make) {
  CLI::App* command = text.add_subcommand(name, help);
  command->add_option("TEXT", options->arguments, "Texts to convert, instead of standard input");
  add_encoding_option(*command, options->encoding,
                      "Encoding of input and output; auto: that of the locale");
  command->callback([&program, options, scope, make] {
    program.action = [options, scope, make] { run_filter(make(*options), scope, *options); };
  });
  return command;
}

// A conversion without options of its own.
auto plain(std::int32_t (*function)(const char*, char*), std::size_t growth) {
  return [function, growth](const TextOptions&) -> LineFilter::Convert {
    return
        [function, growth](const std::string& sjis) { return converted(function, sjis, growth); };
  };
}

}  // namespace

void add_text_command(CLI::App& app, Program& program) {
  using Scope = LineFilter::Scope;
  CLI::App* text = app.add_subcommand("text", "Convert addresses, dates and widths, line by line");
  text->require_subcommand(1);
  text->footer(
      "Without TEXT, standard input is converted to standard output. A line that Shift-JIS cannot\n"
      "hold stays as it is; a message names it and the exit status is 1.");
  const auto options = std::make_shared<TextOptions>();
  const auto add = [&](const char* name, const char* help, Scope scope, auto make) {
    return add_filter(*text, program, options, name, help, scope, make);
  };
  add("han", "To half width", Scope::kManyLines, plain(tqStrToHan, 1));
  add("zen", "To full width", Scope::kManyLines, plain(tqStrToZen, 2));
  add("nospace", "Without spaces of either width", Scope::kManyLines, plain(tqStrDelSpace, 1));
  add("strip", "Without given characters", Scope::kManyLines, strip)
      ->add_option("-c,--characters", options->unwanted, "Half-width characters to take out")
      ->capture_default_str();
  add("address", "Kanji numbers of addresses to digits, without spaces", Scope::kLine,
      plain(tqAddressStrKan2Nrm, 5));
  CLI::App* date = add("date", "Dates of any form to year, month and day", Scope::kLine,
                       [](const TextOptions& given) -> LineFilter::Convert {
                         const short mode = date_mode(given);
                         return [mode, pad = given.pad](const std::string& sjis) {
                           return date_line(sjis, mode, pad);
                         };
                       });
  date->add_option("--separator", options->separator, "none / - . : ; or ,")->capture_default_str();
  date->add_flag("--pad,!--no-pad", options->pad, "Two digits for month and day, or not");
  date->add_flag("--century", options->century, "Two-digit years to 1920 to 2019");
}

}  // namespace tqsync
