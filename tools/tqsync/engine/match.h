// How alike two records are, and why. The scores stand in one table, which the help prints.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/people.h"

namespace tqsync {

// What two records have in common; a set of these is the reason for a score.
enum Sign : std::uint8_t {
  kSameName = 1,
  kSameCommonName = 2,  // only after old and variant kanji became the common ones
  kSameReading = 4,     // counts where the names differ
  kSamePhone = 8,
  kSameMail = 16,
  kSameAddress = 32
};

struct SignRule {
  Sign sign;
  int score;
  const char* text;  // for people
};
std::span<const SignRule> sign_rules();

// From this score on two records are the same person without asking, and below this one they have
// nothing to do with each other.
inline constexpr int kCertain = 75;
inline constexpr int kPossible = 30;

struct Likeness {
  int score = 0;  // sum of its signs' scores, at most 100; see compare
  std::uint8_t signs = 0;

  bool certain() const { return score >= kCertain; }
  bool same_name() const { return (signs & (kSameName | kSameCommonName)) != 0; }
};

// Without a name or a reading in common two records are never the same person for certain.
Likeness compare(const Person& a, const Person& b);

// "name, telephone", in the order of the table.
std::string reason_text(std::uint8_t signs);

// Finds, among many people, those who share a name, a telephone number or a mail address with one.
// What more than kCommon people share (a switchboard, an office's mailbox) finds nobody, so that
// the work stays in proportion to the records; it still counts in `compare`. The people must stay
// where they are as long as the finder is used.
class Finder {
 public:
  static constexpr std::size_t kCommon = 50;

  void add(std::uint32_t id, const Person& person);
  // The ids, ascending, each once.
  std::vector<std::uint32_t> find(const Person& person);

  // Keys that were left out because too many share them, with how many do.
  const std::map<std::string_view, std::size_t>& common_keys() const { return common_; }

 private:
  using Index = std::unordered_map<std::string_view, std::vector<std::uint32_t>>;

  void collect(const Index& index, std::string_view key, std::vector<std::uint32_t>& found);

  Index names_, phones_, mails_;
  std::map<std::string_view, std::size_t> common_;
};

}  // namespace tqsync
