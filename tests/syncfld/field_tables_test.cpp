// Field lists of member files and of the master: compared with the model on seeded random databases
// and field files; what is not there; walks; handles.
#include <algorithm>
#include <random>

#include "platform/fault.h"
#include "support/test.h"
#include "support/zeros.h"
#include "syncfld/model.h"
#include "tqutil/syncfld.h"

namespace {

using tq::s_fldAttrTbl;

const std::string kAddress = "住所録"_sjis;

struct Member : tSYNC_INFO {
  Member(std::string path, short number, short second = 0) : tSYNC_INFO{}, path_(std::move(path)) {
    fldFile = path_.data();
    memberText = tmpFileO = tmpFileN = srchFile = nullptr;
    appType = number;
    appType2 = second;
  }
  std::string path_;
};

short add(CSyncFldCtl& fields, const FieldDatabase& db, const char* file, short appNo,
          short second = 0) {
  Member member(db.at(file), appNo, second);
  return static_cast<short>(fields.SyflAddFileInfo(&member));
}

void set_master(CSyncFldCtl& fields, const FieldDatabase& db, const char* file) {
  db.save();
  const std::string path = db.at(file);
  ASSERT_EQ(fields.SyflSetMstFileInfo(reinterpret_cast<const unsigned char*>(path.c_str())), 0);
}

// Ids that the rules speak of, their neighbours, and some that nothing knows.
std::vector<short> interesting_ids() {
  std::vector<short> ids = {-32768, -1, 700, 969, 970, 972, 974, 975, 998, 999, 1000, 32767};
  for (short id = 0; id <= 50; ++id) ids.push_back(id);
  for (short id = 195; id <= 300; ++id) ids.push_back(id);
  for (const short id : Ids{512, 513, 588, 593, 594, 595, 596, 624, 625, 626, 631})
    ids.push_back(id);
  return ids;
}

// `count` of the ids, some of them more than once.
std::vector<short> pick(std::mt19937& random, const std::vector<short>& ids, std::size_t count) {
  std::vector<short> picked;
  while (picked.size() < count) picked.push_back(ids[random() % ids.size()]);
  return picked;
}

void fill(FieldDatabase& db, std::mt19937& random) {
  std::vector<short> ids = interesting_ids();
  std::erase_if(ids, [](short id) { return id < 0; });
  const std::string tables[] = {kAddress, "x" + kAddress + "y", "メモ"_sjis};
  const short truths[] = {0, 0, 1, 2, -1};
  for (const short id : pick(random, ids, random() % 150)) {
    if (db.find(id) != nullptr) continue;
    db.fields.push_back({id, tables[random() % 8 < 6 ? random() % 2 : 2],
                         static_cast<short>(random() % 3 == 0 ? 10 : 1),
                         static_cast<short>(random() % 8 == 0 ? 3 : 0), truths[random() % 5]});
  }
  for (const char* name : {"a", "b", "c", "master"}) {
    for (const short id : pick(random, ids, random() % 150)) {
      db.files[name].push_back({id, static_cast<short>(random() % 400)});
    }
  }
}

void expect_same(const CSyncFldCtl& fields, short file, const ModelList& model) {
  ASSERT_EQ(fields.SyflGetFldCnt(file), static_cast<short>(model.size()));
  for (std::size_t i = 0; i < model.size(); ++i) {
    const auto pos = static_cast<short>(i);
    ASSERT_EQ(fields.SyflGetFldId(file, pos), model[i].fldId) << i;
    ASSERT_EQ(fields.SyflGetMugen(file, pos), model[i].mugenType) << i;
    ASSERT_EQ(fields.SyflGetSchFlg(file, pos), model[i].schFld) << i;
  }
  EXPECT_EQ(fields.SyflGetFldId(file, -1), -1);
  EXPECT_EQ(fields.SyflGetFldId(file, static_cast<short>(model.size())), -1);
  for (const short id : interesting_ids()) {
    SCOPED_TRACE(id);
    const ModelField* found = model_find(model, id);
    ASSERT_EQ(fields.SyflIsFldId(file, id), found != nullptr);
    ASSERT_EQ(fields.SyflIsOutPutFldId(file, id), found == nullptr ? 1 : found->special);
    ASSERT_EQ(fields.SyflIsOutPutFldId2(file, id), found == nullptr ? 0 : found->special);
    ASSERT_EQ(fields.SyflGetDataIdS(file, id), found == nullptr ? -1 : found->dataId);
    ASSERT_EQ(fields.SyflGetExtGrpFldIdOrg(file, id), model_replacement(model, id));
    ASSERT_EQ(fields.SyflGetDataId(file, id), model_data_id(model, id));
  }
}

void expect_same_master(const CSyncFldCtl& fields, const ModelList& model) {
  const auto visible = std::count_if(model.begin(), model.end(),
                                     [](const ModelField& field) { return field.hidden == 0; });
  ASSERT_EQ(fields.SyflGetMstFldCnt(), visible);
  ASSERT_EQ(fields.SyflGetMstFldCntMax(), static_cast<short>(model.size()));
  for (std::size_t i = 0; i < model.size(); ++i) {
    const auto pos = static_cast<short>(i);
    ASSERT_EQ(fields.SyflGetMstFldId(pos), model[i].fldId) << i;
    ASSERT_EQ(fields.SyflGetMstFldIdM(pos), model[i].fldId) << i;
    ASSERT_EQ(fields.SyflGetMstMugen(pos), model[i].mugenType) << i;
    ASSERT_EQ(fields.SyflGetMstMugenM(pos), model[i].mugenType) << i;
    ASSERT_EQ(fields.SyflGetMstType(pos), model[i].dataType) << i;
    ASSERT_EQ(fields.SyflGetMstTypeM(pos), model[i].dataType) << i;
    ASSERT_EQ(fields.SyflGetMstSchFlg(pos), model[i].schFld) << i;
  }
  EXPECT_EQ(fields.SyflGetMstFldId(static_cast<short>(model.size())), -1);
  EXPECT_EQ(fields.SyflGetMstType(-1), -1);
  const ModelList shown(model.begin(), model.begin() + visible);
  for (const short id : interesting_ids()) {
    SCOPED_TRACE(id);
    const ModelField* found = model_find(model, id);
    ASSERT_EQ(fields.SyflIsMstFld(id), model_find(shown, id) != nullptr);
    ASSERT_EQ(fields.SyflGetDataType(id), found == nullptr ? -1 : found->dataType);
  }
}

// What a walk through a group gives, found without an index.
std::vector<short> model_walk(const ModelList& master, short visible, short grp) {
  const ModelList shown(master.begin(), master.begin() + visible);
  std::vector<short> types, given;
  for (const tq::FieldAttributes& row : s_fldAttrTbl) {
    if (row.mugenGrp != grp || model_find(shown, row.fldId) == nullptr) continue;
    if (std::find(types.begin(), types.end(), row.mugenType) != types.end()) continue;
    types.push_back(row.mugenType);
    given.push_back(row.fldId);
  }
  return given;
}

std::vector<short> walk(const CSyncFldCtl& fields, short grp) {
  std::vector<short> given;
  tSYNC_MSCH state{};
  for (short id; (id = fields.SykyGetMugenGrpNext(grp, &state)) != -1;) given.push_back(id);
  EXPECT_EQ(state.count, static_cast<short>(given.size()));
  EXPECT_EQ(fields.SykyGetMugenGrpNext(grp, &state), -1) << "the end stays the end";
  return given;
}

TEST(FieldTables, LikeTheModel) {
  constexpr short kApps[] = {0, 1, 7, 12, 44, 46, 47, 57, 77, 79, 20, 1};
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    FieldDatabase db;
    fill(db, random);
    if (seed % 20 == 0) db.fields.clear();
    CSyncFldCtl fields;
    fields.SyflCreateFileTbl(3);
    const short built_in = static_cast<short>(random() % 2);
    fields.SyflSetMode(built_in);
    set_master(fields, db, "master");
    ModelList main, second;
    model_master(db, "master", main, second);
    std::vector<ModelFile> models;
    for (const char* name : {"a", "b", "c"}) {
      const short appNo = kApps[random() % std::size(kApps)];
      models.push_back({db, built_in, {}, {}});
      models.back().build(name, appNo);
      // The second number stands for the application when the first is 0.
      const bool second_number = appNo == 0 || random() % 2 == 0;
      ASSERT_EQ(add(fields, db, name, second_number ? 0 : appNo, second_number ? appNo : 9),
                static_cast<short>(models.size() - 1));
    }
    EXPECT_EQ(add(fields, db, "a", 1), -1) << "full";
    EXPECT_EQ(tq::platform::fault::open_handles(), 0);
    for (const short mode : Ids{0, 1, -5}) {
      fields.SyflSetMode(mode);
      for (short file = 0; file < 3; ++file) {
        const ModelFile& model = models[static_cast<std::size_t>(file)];
        expect_same(fields, file, mode == 0 ? model.main : model.second);
      }
      expect_same_master(fields, mode == 0 ? main : second);
      // The fields that a walk may give were decided in the mode of building.
      const ModelList& seen = built_in == 0 ? main : second;
      const auto visible = std::count_if(seen.begin(), seen.end(),
                                         [](const ModelField& field) { return field.hidden == 0; });
      for (short grp = 0; grp <= 7; ++grp) {
        EXPECT_EQ(walk(fields, grp), model_walk(seen, static_cast<short>(visible), grp));
      }
    }
    if (HasFailure()) return;
  }
}

TEST(FieldTables, WhatIsNotThere) {
  FieldDatabase db;
  db.fields = {{31, kAddress, 1, 0, 0}, {999, "x", 1, 9, 0}};
  db.files["f"] = {{31, 4}};
  db.save();
  CSyncFldCtl fields;
  EXPECT_EQ(add(fields, db, "f", 1), -1) << "no table yet";
  EXPECT_EQ(fields.SykyIsKeiFldID(31), 1) << "no groups yet: fields without one belong to them";
  fields.SyflCreateFileTbl(2);
  EXPECT_EQ(fields.SyflAddFileInfo(nullptr), -1);
  ASSERT_EQ(add(fields, db, "missing", 1), 0);
  EXPECT_EQ(fields.SyflGetFldCnt(0), 0) << "without a field file not even special fields";
  ASSERT_EQ(add(fields, db, "f", 1000), 1);
  EXPECT_EQ(fields.SyflGetDataIdS(1, 31), 4);
  EXPECT_EQ(fields.SyflGetDataId(1, 31), 99) << "a master's places are those of compare groups";
  EXPECT_EQ(fields.SyflGetDataId(1, 0), 3);
  EXPECT_EQ(fields.SyflGetDataId(1, 6), 1);
  EXPECT_EQ(fields.SyflGetDataId(1, 17), 0);
  for (const short file : Ids{-1, 2, 32767}) {
    EXPECT_EQ(
        (Ids{fields.SyflGetFldCnt(file), fields.SyflGetFldId(file, 0), fields.SyflIsFldId(file, 31),
             fields.SyflIsOutPutFldId(file, 31), fields.SyflIsOutPutFldId2(file, 31),
             fields.SyflGetDataId(file, 31), fields.SyflGetExtGrpFldIdOrg(file, 31)}),
        (Ids{-1, -1, 0, 1, 0, -1, -1}));
  }
  set_master(fields, db, "missing");
  EXPECT_EQ(fields.SyflGetMstFldCntMax(), 0);
  EXPECT_EQ(fields.SykyIsKeiFldID(31), 0);
  EXPECT_EQ(fields.SykyIsKeiFldID(595), 1);
  EXPECT_EQ(fields.SykyIsKeiFldID(601), 1);
  fields.SyflFreeFileTbl();
  EXPECT_EQ(fields.SyflGetFldCnt(0), -1);
  EXPECT_EQ(add(fields, db, "f", 1), -1);
}

TEST(Walks, GroupsTypesAndHostileStates) {
  FieldDatabase db;
  for (const short id : Ids{242, 246, 247, 512, 593, 594, 595}) {
    db.fields.push_back({id, id == 594 ? "x" : kAddress, 1, 0, 0});
    db.files["master"].push_back({id, 0});
  }
  CSyncFldCtl fields;
  tSYNC_MSCH early{};
  EXPECT_EQ(fields.SykyGetMugenGrpNext(6, &early), -1) << "no master yet";
  set_master(fields, db, "master");
  EXPECT_EQ(walk(fields, 6), (std::vector<short>{512, 593, 595})) << "a hidden one is passed over";
  EXPECT_EQ(walk(fields, 3), (std::vector<short>{242})) << "the others are of its type";
  db.files["master"].erase(db.files["master"].begin());
  set_master(fields, db, "master");
  EXPECT_EQ(walk(fields, 3), (std::vector<short>{246})) << "a linked field serves as well";

  std::vector<short> linked;
  tSYNC_MSCH state{};
  for (short id; (id = fields.SykyGetMugenLinkFldNext(230, &state)) != -1;) linked.push_back(id);
  EXPECT_EQ(linked, (std::vector<short>{233, 527, 528}));
  tSYNC_MSCH none{};
  EXPECT_EQ(fields.SykyGetMugenLinkFldNext(31, &none), -1);
  EXPECT_EQ(fields.SykyGetMugenTypeFld(246), 242);
  EXPECT_EQ(fields.SykyGetMugenTypeFld(31), -1);
  EXPECT_EQ(fields.SykyGetMugenTypeFld(5000), -1);
  EXPECT_EQ(fields.SykyGetMugenGrpCnt(6), 4);
  EXPECT_EQ(fields.SykyGetMugenGrpCnt(77), 0);
  EXPECT_EQ(fields.SykyGetMugenGrpSizeMax(), 20);

  struct State {
    short next, count;
  };
  for (const State hostile : {State{-2, 0}, State{511, 0}, State{32767, 0}, State{0, -1},
                              State{0, 51}, State{0, 32767}, State{-32768, 3}}) {
    tSYNC_MSCH broken{};
    broken.next = hostile.next;
    broken.count = hostile.count;
    broken.types[0] = 3;
    EXPECT_EQ(fields.SykyGetMugenGrpNext(6, &broken), -1);
    if (hostile.next == 0) continue;
    EXPECT_EQ(fields.SykyGetMugenLinkFldNext(242, &broken), -1);
  }
  EXPECT_EQ(fields.SykyGetMugenGrpNext(6, nullptr), -1);
  EXPECT_EQ(fields.SykyGetMugenLinkFldNext(242, nullptr), -1);
}

TEST(Handles, OfFieldTables) {
  std::vector<int32_t> handles;
  for (int i = 0; i < 10; ++i) handles.push_back(CreateSyflCtl());
  EXPECT_EQ(handles.back(), 10);
  EXPECT_EQ(CreateSyflCtl(), 0);
  EXPECT_EQ(SykyGetMugenTypeFld(246, 3), 242);
  EXPECT_STREQ(SykyGetSchTblName(2, 3), "Tel");
  for (const int32_t handle : handles) EXPECT_EQ(FreeSyflCtl(handle), 0);
  EXPECT_EQ(FreeSyflCtl(0), 1);
  for (const int32_t dead : {0, 3, 11, -1}) {
    expect_answers(dead, -1, SyflCreateFileTbl, SyflSetMode, SyflAddFileInfo, SyflGetFldCnt,
                   SyflGetDataId, SyflGetMstDataId, SykyIsMugen, SykyGetMugenGrpSizeMax);
    expect_answers(dead, 0, SyflIsFldId, SyflIsOutPutFldId, SyflIsMstFld, SykyIsKeiFldID);
    EXPECT_EQ(SykyGetSchTblName(2, dead), nullptr);
  }
}

TEST(Handles, OfFieldComparison) {
  for (int32_t handle = 1; handle <= 20; ++handle) EXPECT_EQ(CreateFldCompCtl(), handle);
  EXPECT_EQ(CreateFldCompCtl(), 0);
  for (const int32_t handle : {7, 7}) EXPECT_EQ(FreeFldCompCtl(handle), 0);
  EXPECT_EQ(CreateFldCompCtl(), 7);
  for (int32_t handle = 1; handle <= 20; ++handle) EXPECT_EQ(FreeFldCompCtl(handle), 0);
  EXPECT_EQ(FreeFldCompCtl(0), 1);
  for (const int32_t any : {0, 1, 20, 21, -7}) EXPECT_EQ(isFldComp(5, any), 1);
}

}  // namespace
