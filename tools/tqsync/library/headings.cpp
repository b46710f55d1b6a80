#include "library/headings.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <set>
#include <unordered_map>
#include <utility>

#include "engine/normalize.h"

namespace tqsync {
namespace {

// The fields that each heading of a format may name, in the format's order.
using Dictionary = std::unordered_map<std::string, std::vector<short>>;

Dictionary dictionary_of(const Format& format) {
  Dictionary dictionary;
  for (const FormatColumn& field : format.fields) {
    std::string key = heading_key(field.heading);
    if (!key.empty()) dictionary[std::move(key)].push_back(field.field);
  }
  return dictionary;
}

// The columns that have no field yet, and the fields that no column has.
class Matching {
 public:
  explicit Matching(const std::vector<std::string>& headings) : headings_(headings) {
    constexpr std::size_t kMost = std::numeric_limits<short>::max();  // the library's places
    for (std::size_t i = 0; i < std::min(headings.size(), kMost); ++i) {
      keys_.push_back(heading_key(headings[i]));
    }
    fields_.assign(keys_.size(), kNone);
  }

  // How many columns have a field.
  std::size_t size() const { return taken_.size(); }

  void take(const Dictionary& dictionary) {
    for (std::size_t i = 0; i < keys_.size(); ++i) {
      const auto found = dictionary.find(keys_[i]);
      if (fields_[i] != kNone || found == dictionary.end()) continue;
      const auto free =
          std::ranges::find_if(found->second, [&](short field) { return !taken_.contains(field); });
      if (free != found->second.end()) set(i, *free);
    }
  }

  // By the places that a format gives.
  void take_places(const Format& format) {
    for (const FormatColumn& field : format.fields) {
      if (field.column >= fields_.size() || fields_[field.column] != kNone) continue;
      if (!taken_.contains(field.field)) set(field.column, field.field);
    }
  }

  std::vector<FormatColumn> result() const {
    std::vector<FormatColumn> result;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (fields_[i] != kNone) result.push_back({fields_[i], i, headings_[i]});
    }
    return result;
  }

 private:
  static constexpr short kNone = -1;

  void set(std::size_t column, short field) {
    fields_[column] = field;
    taken_.insert(field);
  }

  const std::vector<std::string>& headings_;
  std::vector<std::string> keys_;
  std::vector<short> fields_;  // by column
  std::set<short> taken_;
};

}  // namespace

HeadingMatch match_headings(const std::vector<std::string>& headings,
                            std::span<const Format> formats, short application) {
  const auto wanted = [application](const Format& format) {
    return application == format.application;
  };
  const bool any = application == 0 || std::ranges::none_of(formats, wanted);
  std::vector<Dictionary> dictionaries;
  std::ranges::transform(formats, std::back_inserter(dictionaries), dictionary_of);

  Matching matching(headings);
  std::size_t best = formats.size(), most = 0;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    if (!any && !wanted(formats[i])) continue;
    Matching trial = matching;
    trial.take(dictionaries[i]);
    const std::size_t known = trial.size();
    const bool smaller =
        known == most && best < formats.size() && formats[i].columns() < formats[best].columns();
    if (known > most || smaller) best = i;
    most = std::max(most, known);
  }

  HeadingMatch match;
  if (best < formats.size()) {
    match.format = &formats[best];
    matching.take(dictionaries[best]);
  } else if (!any) {
    match.format = &*std::ranges::find_if(formats, wanted);
    match.by_place = true;
    matching.take_places(*match.format);
  }
  if (!match.by_place) {
    for (const Dictionary& dictionary : dictionaries) matching.take(dictionary);
  }
  match.fields = matching.result();
  if (match.fields.empty()) match = {};
  return match;
}

}  // namespace tqsync
