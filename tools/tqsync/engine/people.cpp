#include "engine/people.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "engine/normalize.h"
#include "files/place.h"

namespace tqsync {
namespace {

struct Heading {
  Column column;
  const char* texts;  // separated by blanks; compared as heading_key has them
};

// The headings of the programs that people export from: the mail clients and address services in
// both languages, telephones, postcard programs.
constexpr Heading kHeadings[] = {
    {Column::kName, "氏名 名前 お名前 姓名 表示名 宛名 name fullname displayname"},
    {Column::kFamilyName, "姓 苗字 名字 氏 lastname familyname surname"},
    {Column::kGivenName, "名 firstname givenname"},
    {Column::kReading,
     "ふりがな フリガナ よみ よみがな 読み 読み仮名 かな カナ カナ氏名 氏名カナ 氏名かな "
     "氏名(カナ) "
     "氏名(かな) 氏名(フリガナ) 氏名(ふりがな) 氏名よみ 名前よみ 氏名フリガナ 氏名ふりがな "
     "phoneticname "
     "reading kana"},
    {Column::kFamilyReading,
     "せい セイ 姓カナ 姓かな 姓(カナ) 姓(かな) 姓(フリガナ) 姓(ふりがな) 姓よみ 姓フリガナ "
     "姓ふりがな "
     "phoneticlastname lastnamephonetic familynameyomi lastnameyomi"},
    {Column::kGivenReading,
     "めい メイ 名カナ 名かな 名(カナ) 名(かな) 名(フリガナ) 名(ふりがな) 名よみ 名フリガナ "
     "名ふりがな "
     "phoneticfirstname firstnamephonetic givennameyomi firstnameyomi"},
    {Column::kCompany, "会社 会社名 勤務先 勤務先名 company organization organizationname"},
    {Column::kPhone,
     "電話 電話1 電話2 電話3 電話番号 電話番号1 電話番号2 電話番号3 電話(自宅) 電話(会社) "
     "電話(携帯) "
     "電話番号(自宅) 電話番号(会社) 電話番号(携帯) 自宅電話 自宅電話番号 自宅の電話番号 自宅tel "
     "会社電話 "
     "会社電話番号 会社の電話番号 会社tel 勤務先電話 勤務先電話番号 勤務先tel 携帯 携帯電話 "
     "携帯番号 "
     "携帯電話番号 携帯tel tel tel1 tel2 tel3 phone phone1 phone2 phonenumber telephone "
     "telephonenumber "
     "mobile mobilephone mobilenumber cellphone homephone homephone2 businessphone businessphone2 "
     "workphone companymainphone primaryphone otherphone phone1value phone2value phone3value"},
    {Column::kMail,
     "メール メール1 メール2 メールアドレス メールアドレス1 メールアドレス2 メールアドレス3 "
     "電子メール 電子メール1 電子メール2 電子メールアドレス 電子メール2アドレス "
     "電子メール3アドレス "
     "eメール eメールアドレス 携帯メール 携帯メールアドレス pcメール mail mailaddress mail1 mail2 "
     "email email1 "
     "email2 emailaddress email2address email3address primaryemail secondaryemail email1value "
     "email2value email3value"},
};

std::unordered_map<std::string, Column> read_headings() {
  std::unordered_map<std::string, Column> columns;
  for (const Heading& heading : kHeadings) {
    std::string_view rest = heading.texts;
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(' '), rest.size());
      columns.emplace(heading_key(rest.substr(0, end)), heading.column);
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
  }
  return columns;
}

bool is_key(Column column) { return column != Column::kOther && column != Column::kCompany; }

std::vector<Column> columns_of(const AddressFile& file) {
  std::vector<Column> columns;
  for (const std::string& heading : file.headings) columns.push_back(column_of(heading));
  if (std::ranges::none_of(columns, is_key)) {
    fail_at(
        file.name, 1,
        "no heading names a column to compare. The first line must hold headings such as "
        "\"氏名\", \"電話番号\" and \"メールアドレス\", or \"Name\", \"Phone\" and \"E-mail\".");
  }
  return columns;
}

// The texts of a name's parts, joined as people write them.
std::string joined(const std::string& family, const std::string& given) {
  return family + (family.empty() || given.empty() ? "" : " ") + given;
}

void append(std::vector<std::string>& keys, std::vector<std::string> more) {
  for (std::string& key : more) {
    if (std::ranges::find(keys, key) == keys.end()) keys.push_back(std::move(key));
  }
}

Person person_of(const std::vector<Column>& columns, const CsvRow& row) {
  // By column: the first cell that is not empty.
  std::string texts[static_cast<std::size_t>(Column::kMail) + 1];
  const auto text = [&](Column column) -> std::string& {
    return texts[static_cast<std::size_t>(column)];
  };
  Person person;
  person.line = row.line;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const std::string& cell = row.cells[i];
    if (columns[i] == Column::kPhone) append(person.phones, phone_keys(cell));
    if (columns[i] == Column::kMail) append(person.mails, mail_keys(cell));
    if (text(columns[i]).empty()) text(columns[i]) = cell;
  }

  person.name = text(Column::kName);
  if (person.name.empty()) {
    person.name = joined(text(Column::kFamilyName), text(Column::kGivenName));
  }
  std::string reading = text(Column::kReading);
  if (reading.empty()) {
    reading = joined(text(Column::kFamilyReading), text(Column::kGivenReading));
  }
  if (person.name.empty()) person.name = text(Column::kCompany);
  person.name_key = name_key(person.name);
  person.common_key = common_spelling(person.name_key);
  person.reading = reading_key(reading);
  if (person.reading.empty() && is_kana(person.name_key)) {
    person.reading = reading_key(person.name_key);
  }
  if (person.name.empty()) person.name = reading;
  return person;
}

// Marks the rows whose cells are those of an earlier row.
void mark_copies(const AddressFile& file, std::vector<Person>& people) {
  struct SameCells {
    bool operator()(const std::vector<std::string>* a, const std::vector<std::string>* b) const {
      return *a == *b;
    }
  };
  struct HashCells {
    std::size_t operator()(const std::vector<std::string>* cells) const {
      std::size_t hash = 0;
      for (const auto& cell : *cells) hash = hash * 31 + std::hash<std::string>()(cell);
      return hash;
    }
  };
  std::unordered_map<const std::vector<std::string>*, std::uint32_t, HashCells, SameCells> first;
  first.reserve(people.size());
  for (std::uint32_t i = 0; i < people.size(); ++i) {
    const auto [found, added] = first.try_emplace(&file.rows[i].cells, i);
    if (!added) people[i].copy_of = found->second;
  }
}

}  // namespace

Column column_of(const std::string& heading) {
  static const std::unordered_map<std::string, Column> columns = read_headings();
  const auto found = columns.find(heading_key(heading));
  return found == columns.end() ? Column::kOther : found->second;
}

std::vector<Person> people_of(AddressFile& file) {
  const std::vector<Column> columns = columns_of(file);
  std::vector<Person> people;
  people.reserve(file.rows.size());
  for (const CsvRow& row : file.rows) {
    people.push_back(person_of(columns, row));
    if (!people.back().comparable()) {
      file.warnings.push_back(at_line(
          file.name, row.line, "there is no name, telephone or mail; the record is left out"));
    }
  }
  mark_copies(file, people);
  return people;
}

}  // namespace tqsync
