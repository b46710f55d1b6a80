// The fields that the system adds to a member file so that repeated data can be carried where the
// application's own field file lacks a field for it.
//
// Whether a file has a field is asked of the list that the current mode shows, as far as it is
// built by then.
#include "common/text.h"
#include "syncfld/sync_fld_state.h"

namespace tq {
namespace {

// The mail addresses and the names that go with them.
constexpr short kHomeMail = 242;
constexpr short kCompanyMail = 243;
constexpr short kHomeMailName = 244;
constexpr short kCompanyMailName = 245;
constexpr short kPartnerRecord = 588;
constexpr short kJointName = 286;
constexpr short kJointHonorific = 287;
constexpr short kGivenReading = 0;
constexpr short kFamilyReading = 2;
constexpr short kWholeReading = 4;

struct Counterpart {
  short address;
  short name;
};

// The name that goes with each mail address. 255 and 259 share theirs with others; partners' files
// are made for that.
constexpr Counterpart kCounterparts[] = {
    {246, 266}, {247, 267}, {248, 268}, {249, 269}, {250, 270}, {251, 271}, {252, 272},
    {253, 273}, {254, 274}, {255, 266}, {256, 276}, {257, 277}, {258, 278}, {259, 280},
    {260, 280}, {261, 281}, {262, 282}, {263, 283}, {264, 284}, {265, 285}};

// Applications that get more than every file does.
bool has_mail_lists(short appNo) { return appNo == 44 || appNo == 1 || appNo == 57 || appNo == 79; }
bool has_record_numbers(short appNo) { return appNo == 12; }
bool has_joint_names(short appNo) { return appNo == 7 || appNo == 77; }
bool has_split_readings(short appNo) { return appNo == 47 || appNo == 46; }

void append_to_both(tSYFL_FILEINFO& of, const tSYFL_FLDINFO& field) {
  of.main.append(field);
  append_to_second(of, field);
}

constexpr int kNoAlias = 0x10000;  // no field id

// Whether a list has the target; an entry of `alias` that comes before it becomes the target.
bool has_or_takes(FieldList& list, short target, int alias) {
  for (short pos = 0; pos < list.size(); ++pos) {
    const short fldId = list.at(pos)->fldId;
    if (fldId == target) return true;
    if (fldId == alias) {
      list.rename(pos, target);
      return true;
    }
  }
  return false;
}

}  // namespace
}  // namespace tq

using tq::append_to_both;

void CSyncFldCtl::State::add_special_fields(tq::tSYFL_FILEINFO& of, short appNo) const {
  mAddMailSpFld(of);
  if (tq::has_mail_lists(appNo)) mAddMailSpFld2(of);
  if (tq::has_record_numbers(appNo)) mAddMailSpFld3(of);
  if (tq::has_joint_names(appNo)) mAddMugenJoinSpFld(of);
  if (tq::has_split_readings(appNo)) mAddFKanaSpFld(of);
}

bool CSyncFldCtl::State::mSyflIsFldId(const tq::tSYFL_FILEINFO& of, short fldId) const {
  return list(of).find(fldId) >= 0;
}

std::string_view CSyncFldCtl::State::mGetTblName(short fldId) const {
  const std::int32_t place = definition_of.find(fldId);
  if (place < 0) return {};
  return tq::view(definitions[static_cast<std::size_t>(place)].table);
}

tq::tSYFL_FLDINFO CSyncFldCtl::State::special_field(short fldId, short special) const {
  tq::tSYFL_FLDINFO field = tq::new_field(fldId, mGetTblName(fldId));
  field.special = special;
  return field;
}

// Every mail address that a file carries gets the name that goes with it.
void CSyncFldCtl::State::mAddMailSpFld(tq::tSYFL_FILEINFO& of) const {
  const auto pair_up = [&](short address, short name) {
    if (mSyflIsFldId(of, address) && !mSyflIsFldId(of, name)) {
      append_to_both(of, special_field(name, 1));
    }
  };
  pair_up(tq::kHomeMail, tq::kHomeMailName);
  pair_up(tq::kCompanyMail, tq::kCompanyMailName);
  for (const tq::Counterpart& pair : tq::kCounterparts) pair_up(pair.address, pair.name);
}

void CSyncFldCtl::State::mAddMailSpFld2(tq::tSYFL_FILEINFO& of) const {
  for (const short fldId :
       {tq::kHomeMail, tq::kHomeMailName, tq::kCompanyMail, tq::kCompanyMailName}) {
    append_to_both(of, special_field(fldId, 0));
  }
}

void CSyncFldCtl::State::mAddMailSpFld3(tq::tSYFL_FILEINFO& of) const {
  append_to_both(of, special_field(tq::kPartnerRecord, 1));
}

void CSyncFldCtl::State::mAddMugenJoinSpFld(tq::tSYFL_FILEINFO& of) const {
  of.main.append(special_field(tq::kJointName, 0));
  of.main.append(special_field(tq::kJointHonorific, 0));
}

// An undivided reading stands for the given name's. The second list is only looked at when the main
// one lacked the field.
void CSyncFldCtl::State::mAddFKanaSpFld(tq::tSYFL_FILEINFO& of) const {
  const auto ensure = [&](short target, int alias) {
    if (tq::has_or_takes(of.main, target, alias)) return;
    const tq::tSYFL_FLDINFO field = special_field(target, 0);
    of.main.append(field);
    if (!tq::has_or_takes(of.second, target, alias)) append_to_second(of, field);
  };
  ensure(tq::kGivenReading, tq::kWholeReading);
  ensure(tq::kFamilyReading, tq::kNoAlias);
}
