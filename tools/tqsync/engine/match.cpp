#include "engine/match.h"

#include <algorithm>

#include "engine/normalize.h"

namespace tqsync {
namespace {

// A name alone is weak: Japan has many of each. A telephone, a mailbox or an address may be a
// family's or an office's, even all three. A name with any of them is certain, and so is a reading
// with two of them (a name that was misspelt or changed by marriage).
constexpr SignRule kRules[] = {
    {kSameName, 50, "name"},       {kSameCommonName, 45, "name in other kanji"},
    {kSameReading, 20, "reading"}, {kSamePhone, 30, "telephone"},
    {kSameMail, 35, "mail"},       {kSameAddress, 30, "address"}};

bool equal_and_there(const std::string& a, const std::string& b) { return !a.empty() && a == b; }

}  // namespace

std::span<const SignRule> sign_rules() { return kRules; }

Likeness compare(const Person& a, const Person& b) {
  unsigned signs = 0;
  if (equal_and_there(a.name_key, b.name_key)) {
    signs = kSameName;
  } else if (equal_and_there(a.common_key, b.common_key)) {
    signs = kSameCommonName;
  } else if (equal_and_there(a.reading, b.reading)) {
    signs = kSameReading;
  }
  if (share_key(a.phones, b.phones)) signs |= kSamePhone;
  if (share_key(a.mails, b.mails)) signs |= kSameMail;
  if (share_key(a.addresses, b.addresses)) signs |= kSameAddress;

  Likeness likeness{0, static_cast<std::uint8_t>(signs)};
  for (const SignRule& rule : kRules) {
    if (signs & rule.sign) likeness.score += rule.score;
  }
  const bool named = (signs & (kSameName | kSameCommonName | kSameReading)) != 0;
  likeness.score = std::min(likeness.score, named ? 100 : kCertain - 1);
  return likeness;
}

std::string reason_text(std::uint8_t signs) {
  std::string text;
  for (const SignRule& rule : kRules) {
    if (signs & rule.sign) text += (text.empty() ? "" : ", ") + std::string(rule.text);
  }
  return text;
}

void Finder::add(std::uint32_t id, const Person& person) {
  if (!person.common_key.empty()) names_[person.common_key].push_back(id);
  for (const auto& phone : person.phones) phones_[phone].push_back(id);
  for (const auto& mail : person.mails) mails_[mail].push_back(id);
}

std::vector<std::uint32_t> Finder::find(const Person& person) {
  std::vector<std::uint32_t> found;
  if (!person.common_key.empty()) collect(names_, person.common_key, found);
  for (const auto& phone : person.phones) collect(phones_, phone, found);
  for (const auto& mail : person.mails) collect(mails_, mail, found);
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

void Finder::collect(const Index& index, std::string_view key, std::vector<std::uint32_t>& found) {
  const auto holders = index.find(key);
  if (holders == index.end()) return;
  if (holders->second.size() > kCommon) {
    common_[holders->first] = holders->second.size();
  } else {
    found.insert(found.end(), holders->second.begin(), holders->second.end());
  }
}

}  // namespace tqsync
