#include "engine/common_fields.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "engine/normalize.h"

namespace tqsync {
namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// What a heading says about the telephones of its column.
constexpr const char* kMobileWords[] = {"携帯", "mobile", "cell"};
constexpr const char* kFixedWords[] = {"自宅", "会社",     "勤務先", "home",
                                       "work", "business", "company"};

template <std::size_t kCount>
bool has_word(const std::string& heading, const char* const (&words)[kCount]) {
  const std::string key = heading_key(heading);
  return std::ranges::any_of(words,
                             [&](const char* word) { return key.find(word) != std::string::npos; });
}

// Mobile numbers of Japan.
bool is_mobile(const std::string& cell) {
  const std::vector<std::string> keys = phone_keys(cell);
  if (keys.empty() || keys.front().size() != 11) return false;
  const std::string_view prefix = std::string_view(keys.front()).substr(0, 3);
  return prefix == "070" || prefix == "080" || prefix == "090";
}

// Whether a telephone number may stand in a field, as far as its heading tells.
bool accepts(const Field& field, const std::string& cell) {
  if (field.column.kind != ValueKind::kPhone) return true;
  if (has_word(field.name, kMobileWords)) return is_mobile(cell);
  return !has_word(field.name, kFixedWords) || !is_mobile(cell);
}

// Several columns of a file may hold such values; each is put where it fits.
bool is_listed(ValueKind kind) { return kind == ValueKind::kPhone || kind == ValueKind::kMail; }

// The three columns in which a name, or its reading, may stand.
struct NameKinds {
  ValueKind family, given, whole;
};
constexpr NameKinds kNames[] = {
    {ValueKind::kFamilyName, ValueKind::kGivenName, ValueKind::kName},
    {ValueKind::kFamilyReading, ValueKind::kGivenReading, ValueKind::kReading}};

bool is_name(ValueKind kind) {
  return std::ranges::any_of(kNames, [kind](const NameKinds& kinds) {
    return kind == kinds.family || kind == kinds.given || kind == kinds.whole;
  });
}

// Family and given name of a whole one that is written with a blank between them.
std::pair<std::string, std::string> split_name(const std::string& whole) {
  for (const std::string_view blank : {std::string_view(" "), std::string_view("\u3000")}) {
    const std::size_t at = whole.find(blank);
    if (at == std::string::npos) continue;
    return {whole.substr(0, at), whole.substr(at + blank.size())};
  }
  return {whole, ""};
}

}  // namespace

// --- Fields --------------------------------------------------------------------------------------

CommonFields::CommonFields(std::span<const AddressFile> files, std::span<const FileColumns> columns)
    : files_(files), columns_(columns) {
  for (std::size_t i = 0; i < files[0].headings.size(); ++i) {
    add_field(files[0].headings[i], columns[0][i]);
  }
  for (std::size_t book = 0; book < files.size(); ++book) find_homes(book);
}

std::size_t CommonFields::find_field(const std::string& heading, const FileColumn& column) const {
  const std::string key = heading_key(heading);
  const auto first_with = [&](const auto& fits) {
    const auto found = std::ranges::find_if(fields_, fits);
    return found == fields_.end() ? kNowhere : static_cast<std::size_t>(found - fields_.begin());
  };
  const std::size_t named =
      first_with([&](const Field& field) { return heading_key(field.name) == key; });
  if (named != kNowhere || column.field == kUnknownField) return named;
  return first_with([&](const Field& field) { return field.column.field == column.field; });
}

std::size_t CommonFields::find_field(ValueKind kind) const {
  std::size_t place = 0;
  while (place < fields_.size() && fields_[place].column.kind != kind) ++place;
  return place == fields_.size() ? kNowhere : place;
}

// Fields are called by their names, so that one that would occur twice gets a number.
std::size_t CommonFields::add_field(const std::string& heading, const FileColumn& column) {
  std::string name = heading;
  for (int i = 2; std::ranges::find(fields_, name, &Field::name) != fields_.end(); ++i) {
    name = heading + " (" + std::to_string(i) + ")";
  }
  fields_.push_back({std::move(name), column});
  return fields_.size() - 1;
}

// The master's columns are the fields one by one, whatever their headings.
void CommonFields::find_homes(std::size_t book) {
  auto& homes = homes_.emplace_back();
  for (std::size_t i = 0; i < columns_[book].size(); ++i) {
    const std::string& heading = files_[book].headings[i];
    const FileColumn& column = columns_[book][i];
    std::size_t home = book == 0 ? i : find_field(heading, column);
    if (home == kNowhere && column.kind == ValueKind::kCompany) home = find_field(column.kind);
    const bool taken = std::ranges::find(homes, std::optional(home)) != homes.end();
    if (home != kNowhere && !taken) {
      homes.emplace_back(home);
    } else if (is_name(column.kind) || is_listed(column.kind)) {
      homes.emplace_back();
    } else {
      homes.emplace_back(add_field(heading, column));
    }
  }
}

// --- Values --------------------------------------------------------------------------------------

// One record on its way into the fields, beside those that were placed before it.
class CommonFields::Placing {
 public:
  Placing(CommonFields& common, RecordRef ref, std::span<const Values> earlier)
      : common_(common),
        headings_(common.files_[ref.book].headings),
        columns_(common.columns_[ref.book]),
        homes_(common.homes_[ref.book]),
        cells_(common.files_[ref.book].rows[ref.record].cells),
        earlier_(earlier),
        values_(common.fields_.size()) {}

  Values values() {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      if (homes_[i]) values_[*homes_[i]] = cells_[i];
    }
    for (const NameKinds& kinds : kNames) place_name(kinds);
    place_listed(&Placing::place_beside_same);
    place_listed(&Placing::place_free);
    return std::move(values_);
  }

 private:
  // The first column of a kind that has a value but no field of its own.
  std::size_t free_column(ValueKind kind) const {
    std::size_t i = 0;
    while (i < cells_.size() && (homes_[i] || columns_[i].kind != kind || cells_[i].empty())) ++i;
    return i == cells_.size() ? kNowhere : i;
  }

  std::string free_cell(ValueKind kind) const {
    const std::size_t column = free_column(kind);
    return column == kNowhere ? std::string() : cells_[column];
  }

  std::string& new_value(std::size_t column) {
    common_.add_field(headings_[column], columns_[column]);
    return values_.emplace_back();
  }

  void put(ValueKind kind, const std::string& text) {
    if (text.empty()) return;
    const std::size_t field = common_.find_field(kind);
    std::string& value = field == kNowhere ? new_value(free_column(kind)) : values_[field];
    if (value.empty()) value = text;
  }

  void place_name(const NameKinds& kinds) {
    std::string family = free_cell(kinds.family), given = free_cell(kinds.given);
    std::string whole = free_cell(kinds.whole);
    const bool takes_parts =
        common_.find_field(kinds.family) != kNowhere && common_.find_field(kinds.given) != kNowhere;
    if (takes_parts) {
      if (family.empty() && given.empty()) std::tie(family, given) = split_name(whole);
      put(kinds.family, family);
      put(kinds.given, given);
    } else if (common_.find_field(kinds.whole) != kNowhere) {
      const bool both = !family.empty() && !given.empty();
      put(kinds.whole, whole.empty() ? family + (both ? " " : "") + given : whole);
    } else {  // the master has no such column
      put(kinds.whole, whole);
      put(kinds.family, family);
      put(kinds.given, given);
    }
  }

  // Telephones and mail addresses that are not placed yet.
  void place_listed(void (Placing::*place)(std::size_t column)) {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      const bool open = !homes_[i] && is_listed(columns_[i].kind) && !cells_[i].empty();
      if (open && !placed(i)) (this->*place)(i);
    }
  }

  // Fields of the kind of a column.
  bool fits(std::size_t field, std::size_t column) const {
    return common_.fields_[field].column.kind == columns_[column].kind;
  }

  bool same(const std::string& value, std::size_t column) const {
    return !value.empty() && same_value(columns_[column].kind, value, cells_[column]);
  }

  bool placed(std::size_t column) const {
    for (std::size_t i = 0; i < values_.size(); ++i) {
      if (fits(i, column) && same(values_[i], column)) return true;
    }
    return false;
  }

  void place_beside_same(std::size_t column) {
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const bool beside = std::ranges::any_of(earlier_, [&](const Values& values) {
        return i < values.size() && same(values[i], column);
      });
      if (!fits(i, column) || !values_[i].empty() || !beside) continue;
      values_[i] = cells_[column];
      return;
    }
  }

  void place_free(std::size_t column) {
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const bool free = fits(i, column) && values_[i].empty();
      if (!free || !accepts(common_.fields_[i], cells_[column])) continue;
      values_[i] = cells_[column];
      return;
    }
    new_value(column) = cells_[column];
  }

  CommonFields& common_;
  const std::vector<std::string>& headings_;
  const FileColumns& columns_;
  const std::vector<std::optional<std::size_t>>& homes_;
  const std::vector<std::string>& cells_;
  std::span<const Values> earlier_;
  Values values_;
};

std::vector<Values> CommonFields::place(std::span<const RecordRef> records) {
  std::vector<Values> placed;
  for (const RecordRef ref : records) placed.push_back(Placing(*this, ref, placed).values());
  for (Values& values : placed) values.resize(fields_.size());
  return placed;
}

// --- Comparing -----------------------------------------------------------------------------------

bool same_value(ValueKind kind, const std::string& a, const std::string& b) {
  if (a == b) return true;
  switch (kind) {
    case ValueKind::kName:
    case ValueKind::kFamilyName:
    case ValueKind::kGivenName:
      return name_key(a) == name_key(b);
    case ValueKind::kReading:
    case ValueKind::kFamilyReading:
    case ValueKind::kGivenReading:
      return reading_key(a) == reading_key(b);
    case ValueKind::kPhone:
      return share_key(phone_keys(a), phone_keys(b));
    case ValueKind::kMail:
      return share_key(mail_keys(a), mail_keys(b));
    case ValueKind::kCompany:
    case ValueKind::kOther:
      break;
  }
  return false;
}

Difference difference(ValueKind kind, std::span<const Values> records, std::size_t field) {
  const std::string* first = nullptr;
  bool some_empty = false, differs = false;
  for (const Values& values : records) {
    const std::string& value = values[field];
    if (value.empty()) {
      some_empty = true;
    } else if (first == nullptr) {
      first = &value;
    } else if (!same_value(kind, *first, value)) {
      differs = true;
    }
  }
  if (differs) return Difference::kDiffers;
  return some_empty && first != nullptr ? Difference::kSomeEmpty : Difference::kNone;
}

}  // namespace tqsync
